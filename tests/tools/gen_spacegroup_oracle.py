#!/usr/bin/python3
"""Writes the independent reference data of the crystallography tests from
python3-gemmi (Debian). Run from the repository root:
    /usr/bin/python3 tests/tools/gen_spacegroup_oracle.py
Outputs:
  tests/data/crystal/spacegroups.txt  one block per setting gemmi knows:
    S <number> <xhm>          symbol with ':' and the setting code when there is one
    H <hall symbol>
    D <centring> <laue> <point group> <C|A>   (A: acentric)
    O <op>;<op>;...           sorted x,y,z operators
    R <2197 characters>       h,k,l from -6 to 6 (h slowest): '.' absent,
                              otherwise chr(48 + powder multiplicity); 000 is '.'
  tests/data/crystal/cells.txt  a b c alpha beta gamma V a* b* c* al* be* ga*
                              G11 G22 G33 G12 G13 G23 G*11 G*22 G*33 G*12 G*13 G*23
"""
import gemmi

N = 6


def multiplicity(sg, ops, hkl):
    # powder multiplicity: size of the orbit of hkl under the Laue group
    eps = ops.epsilon_factor_without_centering(hkl)
    npg = len(ops.sym_ops)
    if sg.is_centrosymmetric():
        return npg // eps
    centric = ops.is_reflection_centric(hkl)
    return 2 * npg // (eps * (2 if centric else 1))


def settings(out):
    for sg in gemmi.spacegroup_table():
        ops = sg.operations()
        out.write("S %d %s\n" % (sg.number, sg.xhm()))
        out.write("H %s\n" % sg.hall.strip())
        out.write("D %s %s %s %s\n" % (sg.centring_type(), sg.laue_str(), sg.point_group_hm(),
                                        "C" if sg.is_centrosymmetric() else "A"))
        out.write("O %s\n" % ";".join(sorted(op.triplet() for op in ops)))
        row = []
        for h in range(-N, N + 1):
            for k in range(-N, N + 1):
                for l in range(-N, N + 1):
                    if (h, k, l) == (0, 0, 0) or ops.is_systematically_absent([h, k, l]):
                        row.append(".")
                    else:
                        row.append(chr(48 + multiplicity(sg, ops, [h, k, l])))
        out.write("R %s\n" % "".join(row))


CELLS = [
    (5.1, 6.2, 7.3, 81.0, 95.5, 103.2),
    (4.0, 9.5, 12.25, 90, 107.3, 90),
    (8.2, 9.1, 10.7, 90, 90, 90),
    (5.43, 5.43, 11.1, 90, 90, 90),
    (4.76, 4.76, 12.99, 90, 90, 120),
    (5.6, 5.6, 5.6, 64.0, 64.0, 64.0),
    (20.0, 20.0, 20.0, 90, 90, 90),
    (3.0, 3.2, 3.1, 120.0, 100.0, 110.0),
]


def cells(out):
    for c in CELLS:
        uc = gemmi.UnitCell(*c)
        rc = uc.reciprocal()
        g = uc.metric_tensor()
        gr = uc.reciprocal_metric_tensor()
        vals = list(c) + [uc.volume, rc.a, rc.b, rc.c, rc.alpha, rc.beta, rc.gamma,
                          g.u11, g.u22, g.u33, g.u12, g.u13, g.u23,
                          gr.u11, gr.u22, gr.u33, gr.u12, gr.u13, gr.u23]
        out.write(" ".join("%.10g" % v for v in vals) + "\n")


with open("tests/data/crystal/spacegroups.txt", "w") as f:
    settings(f)
with open("tests/data/crystal/cells.txt", "w") as f:
    cells(f)
