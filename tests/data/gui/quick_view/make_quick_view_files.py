#!/usr/bin/env python3
"""Writes the profile files of the Quick View tests, from the record layouts the
reader expects: a temperature series of one two-phase refinement, with two
excluded regions, and a file that is no profile file. Run from this folder; the
files are kept in the repository, so the build never runs this script."""
import math


def heading(length):
    base = " 2Theta\tYobs\tYcal\tYobs-Ycal\tBackg\tPosr\tcode\th\tk\tl\tK\tPh"
    text = (base + "_" * length)[:length - 1] + "_"
    return text


def profile(n, x0, step, peaks, bg=100.0):
    rows = []
    for i in range(n):
        x = x0 + i * step
        yc = bg + sum(h * math.exp(-((x - p) / 0.3) ** 2) for p, h in peaks)
        yo = yc + (8.0 if i % 2 else -8.0)
        rows.append((x, yo, yc, yo - yc, bg))
    return rows


def prof_line(r):
    x, yo, yc, d, b = r
    return f"{x:12.4f}" + "".join(f"\t{v:8.1f}" for v in (yo, yc, d, b))


def refl_line(pos, code, hkl, kind, lam):
    return (f"{pos:12.4f}" + " " * 37 + f"{code:8d}" + "\t\t" + "".join(f"{i:3d}" for i in hkl)
            + "\t\t" + f"{kind:3d}{lam:3d}")


def head2(nph, npts, l1, l2, zero, c1, c2):
    return f"{nph:3d}{npts:7d}" + "".join(f"{v:12.5f}" for v in (l1, l2, zero, c1, c2))


def write(name, lines):
    with open(name, "w") as f:
        f.write("\n".join(lines) + "\n")


refl = [(30.0, 1, (1, 0, 0), 0, 1), (45.0, 1, (1, 1, 0), 0, 1), (60.0, 1, (1, 1, 1), 0, 2),
        (35.0, 2, (2, 0, 0), 0, 1), (70.0, 2, (2, 2, 0), 0, 1)]
# Peak heights change with temperature; the second phase grows on warming.
for name, temp, scale in (("run_010K.prf", 10.0, 1.0), ("run_300K.prf", 300.0, 0.6)):
    rows = profile(161, 10.0, 0.5, [(30.0, 1000.0 * scale), (45.0, 400.0 * scale), (60.0, 700.0 * scale),
                                     (35.0, 500.0 * (1.6 - scale)), (70.0, 900.0 * (1.6 - scale))])
    write(name, [f"Series run  TEMP: {temp:.1f} Chi2: {2.0 + scale:.2f}",
                 head2(2, 161, 1.54056, 1.54439, 0.0, 0.0, 0.0),
                 "3 2 0 0 2",
                 f"{10.0:14.5f}{12.0:14.5f}", f"{85.0:14.5f}{90.0:14.5f}",
                 heading(46)] + [prof_line(r) for r in rows] + [refl_line(*r) for r in refl])

# Not a profile file: a text with no numbers where the counts belong.
write("notes.prf", ["Notes of the run", "the sample was changed at 14:00", "no profile here"])
