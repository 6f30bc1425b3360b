#!/usr/bin/python3
"""Writes crystal/sg_wyckoff_table.cpp: for every row of crystal/sg_setting_table.cpp
(same order; tests/crystal/test_wyckoff.cpp checks the symbols line up) the box
holding an asymmetric unit and the special Wyckoff positions (multiplicity,
letter, oriented site symmetry, representative coordinate triplet).
Sources (Debian packages python3-gemmi and python3-cctbx, the latter installed
by hand with apt-get for this script only): the boxes from gemmi's
find_asu_brick, letters, multiplicities and triplets from cctbx's wyckoff_table.
Origin-choice-1 settings take their positions from their choice-2 twin, moved
so that position a sits at the origin as in the International Tables. The
oriented site-symmetry symbols are worked out here from the operators that fix
the point, along the symmetry directions of the crystal system; a triplet
through the origin is written through it.
Run (about three minutes):
/usr/bin/python3 crystal/tools/gen_wyckoff_table.py > crystal/sg_wyckoff_table.cpp"""
import re
import sys
from fractions import Fraction

import gemmi
from cctbx import sgtbx

DEN = 24


def parse_triplet(text):
    """'x,-x+1/4,2*z' -> integer matrix rows and translations in 24ths."""
    rows, trans = [], []
    for field in text.replace(" ", "").replace("*", "").split(","):
        row = [0, 0, 0]
        t = Fraction(0)
        for sign, num, var in re.findall(r"([+-]?)(\d+(?:/\d+)?)?([xyz]?)", field):
            if not num and not var:
                continue
            s = -1 if sign == "-" else 1
            if var:
                k = Fraction(num) if num else Fraction(1)
                assert k.denominator == 1, text
                row["xyz".index(var)] += s * int(k)
            else:
                t += s * Fraction(num)
        td = t * DEN
        assert td.denominator == 1, text
        rows.append(row)
        trans.append(int(td) % DEN)
    assert len(rows) == 3, text
    return rows, trans


def mat_vec(r, v):
    return [sum(r[i][j] * v[j] for j in range(3)) for i in range(3)]


def rot_of(op):
    n = op.r().num()
    d = op.r().den()
    return [[n[3 * i + j] // d for j in range(3)] for i in range(3)]


def det3(r):
    return (r[0][0] * (r[1][1] * r[2][2] - r[1][2] * r[2][1]) - r[0][1] * (r[1][0] * r[2][2] - r[1][2] * r[2][0])
            + r[0][2] * (r[1][0] * r[2][1] - r[1][1] * r[2][0]))


def order_of(r):
    m = [[int(i == j) for j in range(3)] for i in range(3)]
    for n in range(1, 7):
        m = [[sum(m[i][k] * r[k][j] for k in range(3)) for j in range(3)] for i in range(3)]
        if m == [[int(i == j) for j in range(3)] for i in range(3)]:
            return n
    raise ValueError(r)


def directions(system, rhomb_axes, r_lattice):
    """The sets of symmetry directions (primary, secondary, tertiary) of a system."""
    if system == "Orthorhombic":
        return [[(1, 0, 0)], [(0, 1, 0)], [(0, 0, 1)]]
    if system == "Tetragonal":
        return [[(0, 0, 1)], [(1, 0, 0), (0, 1, 0)], [(1, -1, 0), (1, 1, 0)]]
    if system == "Cubic":
        return [[(1, 0, 0), (0, 1, 0), (0, 0, 1)], [(1, 1, 1), (1, -1, -1), (-1, 1, -1), (-1, -1, 1)],
                [(1, -1, 0), (1, 1, 0), (0, 1, -1), (0, 1, 1), (-1, 0, 1), (1, 0, 1)]]
    if rhomb_axes:
        return [[(1, 1, 1)], [(1, -1, 0), (0, 1, -1), (-1, 0, 1)]]
    hexes = [[(0, 0, 1)], [(1, 0, 0), (0, 1, 0), (-1, -1, 0)], [(1, -1, 0), (1, 2, 0), (-2, -1, 0)]]
    if r_lattice:
        return hexes[:2]
    return hexes


def element_along(ops, d):
    """The symbol of the site-symmetry elements along direction d ('' when none)."""
    proper, improper = set(), set()
    for r in ops:
        det = det3(r)
        p = r if det == 1 else [[-x for x in row] for row in r]
        if p == [[int(i == j) for j in range(3)] for i in range(3)]:
            continue
        if mat_vec(p, d) != list(d):
            continue
        n = order_of(p)
        if det == 1:
            proper.add(n)
        else:
            tr = sum(r[i][i] for i in range(3))
            improper.add({1: "m", -1: "-4", 0: "-3", -2: "-6"}[tr])
    m = "m" in improper
    if 6 in proper:
        return "6/m" if m else "6"
    if "-6" in improper:
        return "-6"
    if 4 in proper:
        return "4/m" if m else "4"
    if "-4" in improper:
        return "-4"
    if "-3" in improper:
        return "-3"
    if 3 in proper:
        return "3"
    if 2 in proper:
        return "2/m" if m else "2"
    return "m" if m else ""


def same_direction(a, b):
    return list(a) == list(b) or list(a) == [-x for x in b]


def oriented_symbol(ops, system, rhomb_axes, r_lattice, pg_type):
    if system in ("Triclinic", "Monoclinic"):
        return pg_type
    parts = []
    for group in directions(system, rhomb_axes, r_lattice):
        chars, seen = [], []
        for d in group:
            if any(same_direction(d, e) for e in seen):
                continue
            # Directions the site symmetry maps onto each other carry one symbol.
            orbit = [mat_vec(r, d) for r in ops]
            for e in group:
                if any(same_direction(e, o) for o in orbit):
                    seen.append(e)
            c = element_along(ops, d)
            if c:
                chars.append(c)
        parts.append("".join(chars) if chars else ".")
    sym = "".join(parts)
    if sym.replace(".", "") == "":
        return "-1" if pg_type == "-1" else "1"
    # The short forms of the International Tables for these point groups.
    if pg_type in ("mmm", "4/mmm", "6/mmm", "-3m", "m-3", "m-3m"):
        sym = sym.replace("2/m", "m")
        if pg_type == "m-3m":
            sym = sym.replace("4/m", "m")
    return sym


def crystal_system(number):
    for top, name in ((2, "Triclinic"), (15, "Monoclinic"), (74, "Orthorhombic"), (142, "Tetragonal"),
                      (167, "Trigonal"), (194, "Hexagonal"), (230, "Cubic")):
        if number <= top:
            return name


def site_ops(group, point):
    """Rotation parts of the operators fixing `point` modulo lattice translations."""
    ops = []
    for i in range(group.order_z()):
        op = group(i)
        r = rot_of(op)
        t = [Fraction(x, op.t().den()) for x in op.t().num()]
        img = [sum(r[a][b] * point[b] for b in range(3)) + t[a] for a in range(3)]
        if all((img[a] - point[a]).denominator == 1 for a in range(3)):
            if r not in ops:
                ops.append(r)
    return ops


def through_origin(group, rows, trans):
    """An image of the triplet that passes through the origin, written with
    non-negative leading coefficients, or None when the orbit has none."""
    first_rows, first_trans = simplified(rows, trans)
    if not any(first_trans):
        return first_rows, first_trans
    t0 = [Fraction(x, DEN) for x in trans]
    best = None
    for i in range(group.order_z()):
        op = group(i)
        r = rot_of(op)
        tg = [Fraction(x, op.t().den()) for x in op.t().num()]
        m = [[sum(r[a][k] * rows[k][b] for k in range(3)) for b in range(3)] for a in range(3)]
        t = [sum(r[a][k] * t0[k] for k in range(3)) + tg[a] for a in range(3)]
        # Free parameters absorb the translation of a row that holds only them.
        for j in range(3):
            for a in range(3):
                if m[a][j] != 0 and all(m[a][k] == 0 for k in range(3) if k != j):
                    u = -t[a] / m[a][j]
                    t = [t[b] + m[b][j] * u for b in range(3)]
                    break
        if any(x % 1 != 0 for x in t):
            continue
        for j in range(3):
            lead = next((m[a][j] for a in range(3) if m[a][j] != 0), 0)
            if lead < 0:
                for a in range(3):
                    m[a][j] = -m[a][j]
        # Each parameter on its own coordinate where possible: "x,0,0" before "0,x,0".
        flat = [x for row in m for x in row]
        key = (sum(1 for a in range(3) for b in range(3) if a != b and m[a][b]), sum(abs(x) for x in flat),
               sum(1 for x in flat if x < 0), [-x for x in flat])
        if best is None or key < best[0]:
            best = (key, m)
    return None if best is None else (best[1], [0, 0, 0])


def op_set(group, shift=None):
    """The operators as (rotation, translation mod 1), optionally moved to an origin
    at -shift: x' = x - shift."""
    out = set()
    for i in range(group.order_z()):
        op = group(i)
        r = rot_of(op)
        t = [Fraction(x, op.t().den()) for x in op.t().num()]
        if shift:
            t = [t[a] + sum(r[a][b] * shift[b] for b in range(3)) - shift[a] for a in range(3)]
        out.add((tuple(x for row in r for x in row), tuple(x % 1 for x in t)))
    return out


def simplified(rows, trans):
    """The free parameters absorb what translation they can and lead with a plus
    sign: "x+3/4,-x+1/4,1/2" becomes "x,-x,1/2"."""
    m = [list(r) for r in rows]
    t = [Fraction(x, DEN) for x in trans]
    for j in range(3):
        for a in range(3):
            if m[a][j] != 0 and all(m[a][k] == 0 for k in range(3) if k != j):
                u = -t[a] / m[a][j]
                t = [t[b] + m[b][j] * u for b in range(3)]
                break
        lead = next((m[a][j] for a in range(3) if m[a][j] != 0), 0)
        if lead < 0:
            for a in range(3):
                m[a][j] = -m[a][j]
    if any((x * DEN).denominator != 1 for x in t):
        return rows, trans
    return m, [int(x * DEN) % DEN for x in t]


def moved(rows, trans, shift):
    return rows, [int((Fraction(trans[a], DEN) - shift[a]) * DEN) % DEN for a in range(3)]


def origin_choice_1(s, group, reference):
    """Positions of an origin-choice-1 setting taken from its origin-choice-2 twin.
    The Hall symbols tie the two origins only up to a symmetry of the pattern
    of sites, which may swap letters; the Tables put position a at the origin
    of choice 1, so the shift that does so is kept."""
    relation = reference.basisop.inverse() * s.basisop  # x1 = x2 + t: gemmi's choice first
    base = [-Fraction(x, gemmi.Op.DEN) for x in relation.tran]
    target = op_set(group)
    ref_info = sgtbx.space_group_info("Hall: " + reference.hall.strip())
    ref_group = ref_info.group()
    table = ref_info.wyckoff_table()
    ref_pos = [table.position(i) for i in range(table.size())]
    ref_pos = [(p, parse_triplet(str(p.special_op_simplified()))) for p in ref_pos
               if p.multiplicity() != ref_group.order_z()]
    first = min(ref_pos, key=lambda w: w[0].letter())
    steps = [Fraction(k, 8) for k in range(8)]
    valid = []
    for n in [(a, b, c) for a in steps for b in steps for c in steps]:
        shift = [base[i] + n[i] for i in range(3)]
        if op_set(ref_group, shift) == target:
            valid.append((n, shift))
    assert valid, s.hm
    # Where a is not at the origin of choice 1 in any case, gemmi's shift stands.
    at_origin = [v for v in valid if through_origin(group, *moved(*first[1], v[1])) is not None]
    for n, shift in at_origin or valid[:1]:
        if n != (0, 0, 0):
            print("%s:1 origin moved by %s %s" % (s.hm, "" if at_origin else "(a not at origin)", ",".join(str(x) for x in n)), file=sys.stderr)
        return [(p.multiplicity(), p.letter(), str(p.point_group_type()), *moved(*w, shift)) for p, w in ref_pos]


def main():
    generic = [Fraction(1237, 10007), Fraction(2719, 10009), Fraction(4271, 10037)]
    asu_rows, wyck_rows = [], []
    worst = 0.0
    for row, s in enumerate(gemmi.spacegroup_table()):
        brick = gemmi.find_asu_brick(s)
        size = list(brick.size)
        asu_rows.append((s.hm, size, [bool(x) for x in brick.incl]))
        info = sgtbx.space_group_info("Hall: " + s.hall.strip())
        group = info.group()
        assert group.order_z() == len(s.operations()), s.hm
        worst = max(worst, size[0] * size[1] * size[2] / DEN ** 3 * group.order_z())
        system = crystal_system(s.number)
        rhomb_axes = s.ext == "R"
        r_lattice = s.hm.startswith("R")
        if s.ext == "1":
            twin = next(t for t in gemmi.spacegroup_table() if t.hm == s.hm and t.ext == "2")
            positions = origin_choice_1(s, group, twin)
        else:
            table = info.wyckoff_table()
            positions = [(p.multiplicity(), p.letter(), str(p.point_group_type()),
                          *parse_triplet(str(p.special_op_simplified())))
                         for p in (table.position(i) for i in range(table.size()))
                         if p.multiplicity() != group.order_z()]  # the general position is left out
        special = []
        for mult, letter, pg_type, rows, trans in positions:
            # A position through the origin is written through it, as the Tables do.
            rows, trans = through_origin(group, rows, trans) or simplified(rows, trans)
            point = [sum(rows[a][b] * generic[b] for b in range(3)) + Fraction(trans[a], DEN) for a in range(3)]
            ops = site_ops(group, point)
            assert len(ops) * mult == group.order_z(), (s.hm, letter)
            site = oriented_symbol(ops, system, rhomb_axes, r_lattice, pg_type)
            special.append((mult, letter, site, rows, trans))
        special.sort(key=lambda w: w[1])
        for w in special:
            wyck_rows.append((row,) + w)
    print("worst box volume x multiplicity: %.3f" % worst, file=sys.stderr)

    out = sys.stdout
    out.write("// Asymmetric-unit boxes and special Wyckoff positions of the tabulated settings,\n")
    out.write("// one box per row of sg_setting_rows. Generated by crystal/tools/gen_wyckoff_table.py\n")
    out.write("// from python3-gemmi %s (boxes) and python3-cctbx (Wyckoff positions); the site\n" % gemmi.__version__)
    out.write("// symbols and the choice of representative triplets are the script's own.\n")
    out.write('#include "crystal/sg_wyckoff_table.h"\n\nnamespace hxl {\n\n')
    out.write("const SG_ASU_ROW sg_asu_rows[] = {\n")
    for hm, size, incl in asu_rows:
        out.write('    {"%s", {%d, %d, %d}, {%s}},\n' % (hm, size[0], size[1], size[2],
                                                       ", ".join("true" if x else "false" for x in incl)))
    out.write("};\n\n")
    out.write("const SG_WYCKOFF_ROW sg_wyckoff_rows[] = {\n")
    for row, mult, letter, site, rows, trans in wyck_rows:
        r = ", ".join(str(x) for rr in rows for x in rr)
        out.write("    {%d, %d, '%s', \"%s\", {%s}, {%d, %d, %d}},\n" % (row, mult, letter, site, r, *trans))
    out.write("};\n\n")
    out.write("const int sg_wyckoff_count = %d;\n\n}  // namespace hxl\n" % len(wyck_rows))


main()
