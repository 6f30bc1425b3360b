#!/usr/bin/env python3
"""Writes the profile files of the Quick View tests, from the record layouts the
reader expects: a temperature series of one two-phase refinement, with two
excluded regions, and a file that is no profile file. Run from this folder; the
files are kept in the repository, so the build never runs this script."""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "prf"))
from prf_records import profile, prof_line, refl_line, head2, write, heading  # noqa: E402


refl = [(30.0, 1, (1, 0, 0), 0, 1), (45.0, 1, (1, 1, 0), 0, 1), (60.0, 1, (1, 1, 1), 0, 2),
        (35.0, 2, (2, 0, 0), 0, 1), (70.0, 2, (2, 2, 0), 0, 1)]
# Peak heights change with temperature; the second phase grows on warming.
for name, temp, scale in (("run_010K.prf", 10.0, 1.0), ("run_300K.prf", 300.0, 0.6)):
    rows = profile(161, 10.0, 0.5, [(30.0, 1000.0 * scale), (45.0, 400.0 * scale), (60.0, 700.0 * scale),
                                     (35.0, 500.0 * (1.6 - scale)), (70.0, 900.0 * (1.6 - scale))], noise=8.0)
    write(name, [f"Series run  TEMP: {temp:.1f} Chi2: {2.0 + scale:.2f}",
                 head2(2, 161, 1.54056, 1.54439, 0.0, 0.0, 0.0),
                 "3 2 0 0 2",
                 f"{10.0:14.5f}{12.0:14.5f}", f"{85.0:14.5f}{90.0:14.5f}",
                 heading(46)] + [prof_line(r) for r in rows] + [refl_line(*r) for r in refl])

# Not a profile file: a text with no numbers where the counts belong.
write("notes.prf", ["Notes of the run", "the sample was changed at 14:00", "no profile here"])
