#!/usr/bin/python3
# Relative powder intensities of the standards, computed with gemmi's structure
# factors (IT92 X-ray form factors, Sears neutron lengths) and numpy; the
# Lorentz-polarisation and the grouping of equivalent reflections are worked
# here, independently of the program. Ions take Waasmaier & Kirfel's f0 from
# python3-periodictable, added to gemmi's neutral-atom f0 as an addend worked out
# afresh for every reflection.
#   /usr/bin/python3 tests/data/crystal/powder_reference.py > tests/data/crystal/powder_reference.txt
# (python3-gemmi 0.5.7 of Debian 12)
import math, os, re
import gemmi
import numpy as np
from periodictable.cromermann import fxrayatstol

HERE = os.path.dirname(os.path.abspath(__file__))
CASES = [  # file, group set here (not read from the file), lambda, 2theta range, neutrons, sites in the cell
    ("Si.cif", "F d -3 m:1", 1.540593, 10.0, 140.0, False, 8),
    ("LaB6.cif", "P m -3 m", 1.540593, 10.0, 140.0, False, 7),
    ("CeO2.cif", "F m -3 m", 1.540593, 10.0, 140.0, False, 12),
    ("ALUMINA.cif", "R -3 c:H", 1.540593, 10.0, 120.0, False, 30),
    ("PbSO4.cif", "P n m a", 1.909, 10.0, 155.0, True, 24),
]

def lines_of(path, hm, lam, t0, t1, neutron, nsites):
    text = open(path).read()
    # gemmi 0.5 reads the underscore names only: the dot names are turned into those.
    text = re.sub(r"(?m)^(\s*_[A-Za-z_]+)\.", r"\1_", text)
    st = gemmi.make_small_structure_from_block(gemmi.cif.read_string(text).sole_block())
    st.spacegroup_hm = hm
    st.setup_cell_images()
    assert len(st.get_all_unit_cell_sites()) == nsites, (path, len(st.get_all_unit_cell_sites()))
    cell = st.cell
    ops = st.find_spacegroup().operations()
    # gemmi sums an atom over every operator: a site on a special position
    # takes the share mult / order of the group, as its comment asks.
    order = len(ops.sym_ops) * len(ops.cen_ops)
    images = [s.label for s in st.get_all_unit_cell_sites()]
    for site in st.sites:
        site.occ = site.occ * images.count(site.label) / order
    # The Laue class: the rotations with the inversion added.
    rots = set()
    for op in ops.sym_ops:
        r = tuple(tuple(v // gemmi.Op.DEN for v in row) for row in op.rot)
        rots.add(r)
        rots.add(tuple(tuple(-v for v in row) for row in r))
    rots = [np.array(r) for r in rots]
    calc = gemmi.StructureFactorCalculatorN(cell) if neutron else gemmi.StructureFactorCalculatorX(cell)
    ions = {} if neutron else {s.element.name: s.type_symbol for s in st.sites if s.type_symbol[-1:] in "+-"}
    for el, ion in ions.items():
        # one ion per element in these standards
        assert all(s.type_symbol == ion for s in st.sites if s.element.name == el), path
    smax = math.sin(math.radians(t1 / 2)) / lam
    smin = math.sin(math.radians(t0 / 2)) / lam
    hmax = [int(2 * smax * v) + 1 for v in (cell.a, cell.b, cell.c)]
    seen = set()
    refl = []
    for h in range(-hmax[0], hmax[0] + 1):
        for k in range(-hmax[1], hmax[1] + 1):
            for l in range(-hmax[2], hmax[2] + 1):
                if (h, k, l) == (0, 0, 0) or (h, k, l) in seen:
                    continue
                s = 0.5 / cell.calculate_d([h, k, l])
                if s < smin or s > smax:
                    continue
                # hkl . R for every rotation of the Laue class
                orbit = {tuple(int(v) for v in np.array([h, k, l]) @ r) for r in rots}
                seen |= orbit
                for el, ion in ions.items():
                    e = gemmi.Element(el)
                    calc.addends.set(e, float(fxrayatstol(ion, s)) - e.it92.calculate_sf(s * s))
                f = calc.calculate_sf_from_small_structure(st, [h, k, l])
                f2 = abs(f) ** 2
                if f2 < 1e-6:
                    continue
                th = math.asin(s * lam)
                lp = 1 / (math.sin(th) ** 2 * math.cos(th))
                if not neutron:
                    lp *= 1 + math.cos(2 * th) ** 2
                refl.append((2 * math.degrees(th), len(orbit) * f2 * lp, (h, k, l), len(orbit)))
    refl.sort()
    merged = []
    for t, i, hkl, m in refl:
        if merged and abs(merged[-1][0] - t) < 1e-4:
            merged[-1][1] += i
        else:
            merged.append([t, i])
    top = max(i for _, i in merged)
    return [(t, 100 * i / top) for t, i in merged]

import periodictable
print("# file lambda neutron 2theta relative_intensity  (gemmi %s, periodictable %s)" % (gemmi.__version__, periodictable.__version__))
for name, hm, lam, t0, t1, neutron, nsites in CASES:
    for t, i in lines_of(os.path.join(HERE, "structures", name), hm, lam, t0, t1, neutron, nsites):
        if i >= 0.05:
            print("%s %.6f %d %.4f %.4f" % (name, lam, int(neutron), t, i))
