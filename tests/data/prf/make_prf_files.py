#!/usr/bin/env python3
"""Writes the profile and resolution files of the tests, from the record
layouts the reader expects. Run from this folder; the files are kept in the
repository, so the build never runs this script."""
from prf_records import heading, profile, prof_line, refl_line, head2, write


# Two phases, constant wavelength with a zero shift, two excluded regions
# (the second holds the strongest peak), old layout of 46 characters.
rows = profile(200, 10.0, 0.5, [(30.0, 1000.0), (45.0, 400.0), (100.0, 5000.0)])
refl = [(30.0, 1, (1, 0, 0), 0, 1), (45.0, 1, (1, 1, 0), 0, 1), (60.0, 1, (1, 1, 1), 0, 2),
        (35.0, 2, (2, 0, 0), 0, 1), (100.0, 2, (2, 2, 0), 0, 1)]
write("two_phase_46.prf",
      ["Title: Two phase test  TEMP: 295.5 Chi2: 3.25",
       head2(2, 200, 1.54056, 1.54439, 0.05, 0.01, 0.02),
       "3 2 0 0 2",
       f"{10.0:14.5f}{12.0:14.5f}", f"{98.0:14.5f}{102.0:14.5f}",
       heading(46)] + [prof_line(r) for r in rows] + [refl_line(*r) for r in refl])

# A reflection list cut short after the first line is no failure.
write("short_list_46.prf",
      ["Short list", head2(1, 20, 1.5, 1.5, 0.0, 0.0, 0.0), "3 0 0", heading(46)]
      + [prof_line(r) for r in profile(20, 10.0, 1.0, [(15.0, 100.0)])]
      + [refl_line(15.0, 1, (1, 0, 0), 0, 1), "garbage line"])

# The joined layout of 52 characters: one line holds a point and a reflection.
rows = profile(30, 5.0, 1.0, [(10.0, 300.0), (20.0, 200.0)])
refl = [(10.0, 1, (1, 0, 0), 2, 1), (20.0, 1, (0, 0, 2), 3, 1), (25.0, 1, (1, 0, 2), 1, 1)]
lines = []
for i, r in enumerate(rows):
    s = prof_line(r)
    if i < len(refl):
        pos, code, hkl, kind, lam = refl[i]
        s += f"\t{pos:12.4f}\t{code:8d}\t\t" + "".join(f"{v:3d}" for v in hkl) + f"\t\t{kind:3d}{lam:3d}"
    else:
        s += f"\t{0.0:12.4f}"
    lines.append(s)
write("joined_52.prf", ["Joined layout", head2(1, 30, 1.2, 1.2, 0.0, 0.0, 0.0), "3 0 0", heading(52)] + lines)

# Superspace phases with 1 and 3 extra indices beside a normal phase, with ":" markers.
rows = profile(40, 10.0, 1.0, [(20.0, 500.0)])
lines = ["Superspace test", head2(3, 40, 0.7, 0.7, 0.0, 0.0, 0.0), "1 2 2 0 1 3 0",
         f"{0.1:10.5f}{0.0:10.5f}{0.0:10.5f}superspace",
         f"{0.1:10.5f}{0.2:10.5f}{0.0:10.5f}superspace",
         f"{0.0:10.5f}{0.3:10.5f}{0.0:10.5f}  superspace",
         f"{0.0:10.5f}{0.0:10.5f}{0.4:10.5f}superspace", heading(53)]
lines += [prof_line(r) for r in rows]
lines.append(refl_line(20.0, 1, (1, 0, 0), 0, 1) + ":  1")
lines.append(f"{21.0:12.4f}{2:10d}\t" + "".join(f"{v:4d}" for v in (1, 1, 0, 1)) + f"\t{2:4d}{1:4d}:{2:3d}")
lines.append(f"{22.0:12.4f}{2:10d}\t" + "".join(f"{v:4d}" for v in (1, 1, 1, -1)) + f"\t{1:4d}{1:4d}:{2:3d}")
lines.append(f"{23.0:12.4f}{3:10d}\t" + "".join(f"{v:4d}" for v in (2, 0, 0, 1, -1, 1)) + f"\t{3:4d}{2:4d}:{3:3d}")
lines.append(f"{24.0:12.4f}{3:10d}\t" + "".join(f"{v:4d}" for v in (0, 2, 0, 0, 0, 1)) + f"\t{1:4d}{1:4d}:{3:3d}")
write("superspace_53.prf", lines)

# One superspace phase with 2 extra indices and no ":" markers (phase 1 then).
lines = ["Superspace two", head2(1, 40, 0.7, 0.7, 0.0, 0.0, 0.0), "1 2 0",
         f"{0.1:10.5f}{0.0:10.5f}{0.0:10.5f}superspace", f"{0.0:10.5f}{0.2:10.5f}{0.0:10.5f}superspace",
         heading(53)] + [prof_line(r) for r in rows]
lines.append(f"{20.0:12.4f}{1:10d}\t" + "".join(f"{v:4d}" for v in (1, 0, 0, 1, -1)) + f"\t{2:4d}{1:4d}")
write("superspace2_53.prf", lines)

# Nine phases: the counts come in two reads.
rows = profile(20, 10.0, 1.0, [(15.0, 100.0)])
lines = ["Nine phases", head2(9, 20, 1.5, 1.5, 0.0, 0.0, 0.0),
         "1 1 1 1 1 1 1 1  0 0 0 0 0 0 0 0", "1  0  0", heading(46)]
lines += [prof_line(r) for r in rows]
lines += [refl_line(10.0 + p, p, (p, 0, 0), 0, 1) for p in range(1, 10)]
write("nine_phases_46.prf", lines)

# Time of flight: Dtt1 above 10 in a line of seven words, and a zero shift.
rows = profile(50, 5000.0, 10.0, [(5200.0, 800.0)])
write("tof_dtt.prf", ["TOF test", head2(1, 50, 0.0, 0.0, 3.0, 6000.0, -1.5), "1 0 1",
                      f"{5100.0:14.5f}{5150.0:14.5f}", heading(46)]
      + [prof_line(r) for r in rows] + [refl_line(5203.0, 1, (1, 1, 1), 0, 1)])

# Energy: eight words with the variable code 2.
rows = profile(20, 10.0, 1.0, [(15.0, 100.0)])
write("energy_iv2.prf", ["Energy test", head2(1, 20, 0.0, 0.0, 0.5, 12.0, 0.1, iv=2), "0 0 0", heading(46)]
      + [prof_line(r) for r in rows])

# Constant wavelength at exactly c1 = 10.0.
write("c1_ten.prf", ["c1 ten", head2(1, 20, 1.5, 1.5, 0.0, 10.0, 0.0), "0 0 0", heading(46)]
      + [prof_line(r) for r in rows])

# A magnetic phase with two propagation vectors beside a nuclear one.
rows = profile(30, 10.0, 1.0, [(20.0, 300.0)])
lines = ["Magnetic", head2(2, 30, 2.4, 2.4, 0.0, 0.0, 0.0), "1 3 0 2 0",
         f"{0.5:10.5f}{0.0:10.5f}{0.0:10.5f}", f"{0.0:10.5f}{0.5:10.5f}{0.25:10.5f}", heading(46)]
lines += [prof_line(r) for r in rows]
lines += [refl_line(15.0, 1, (1, 1, 0), 1, 1), refl_line(18.0, 2, (1, 0, 0), 2, 1),
          refl_line(19.0, 3, (0, 1, 0), 2, 1), refl_line(25.0, 3, (1, 1, 1), 3, 2)]
write("magnetic_k.prf", lines)

# Reciprocal lattice units force the layout of 46 characters.
write("rlu_log.prf", ["RLU", head2(0, 20, 1.5, 1.5, 0.0, 0.0, 0.0), "0",
                      " H (r.l.u.)\tLog(Iobs)\tLog(Ical)\tDiff\tBack"] + [prof_line(r) for r in rows])
write("heading47.prf", ["Bad heading", head2(0, 20, 1.5, 1.5, 0.0, 0.0, 0.0), "0", heading(47)]
      + [prof_line(r) for r in rows])
write("igor.prf", ["IGOR text wave", "whatever"])

# The older fixed layout, 9 phases, a code of -134217728 for the ninth.
npts = 16
yo = [100.0 + 10 * i for i in range(npts)]
yo[12] = 9000.0  # inside the excluded region
yc = [v - 1.0 for v in yo]
codes = [134217728 * p for p in range(1, 9)] + [-134217728]
pos = [10.0 + p for p in range(9)]
lines = ["Old layout", "3111 old", f"{17.5:8.3f}{10.0:8.3f}{0.5:8.5f}{3:8d}",
         f"{9:3d}{npts:7d}" + "".join(f"{v:10.5f}" for v in (1.54, 1.54, 0.1, 0.0, 0.0)),
         "".join(f"{1:5d}" for _ in range(8)) + "".join(f"{0:3d}" for _ in range(8)),
         f"{1:5d}{0:5d}{1:5d}"]
for blk in (yo, yc):
    for i in range(0, npts, 8):
        lines.append("".join(f"{v:7.0f} " for v in blk[i:i + 8]))
for i in range(0, 9, 8):
    lines.append("".join(f"{v:10d}" for v in codes[i:i + 8]))
for i in range(0, 9, 10):
    lines.append("".join(f"{v:8.3f}" for v in pos[i:i + 10]))
lines += [f"{1:8d}", f"{15.85:8.2f}{16.35:8.2f}"]
write("old_3111.prf", lines)

# Single-crystal lists.
lines = ["Single crystal list", " Sin(theta)/lambda  Fobs  Fcalc  Sigma  Sc  h k l"]
for i in range(8):
    lines.append(f"{0.1 + 0.05 * i:10.5f} {100.0 - 5 * i:10.3f} {98.0 - 5 * i:10.3f} {2.0:8.3f} {1.0:6.2f}"
                 f" {i:3d} {1:3d} {0:3d}")
write("sin_list.prf", lines)
lines = ["Modulated  superspace 1", "   0.1 0.0 0.3", " Sin(theta)/lambda  Fobs  Fcalc  Sigma  Sc  h k l m"]
for i in range(7):
    lines.append(f"{0.2 + 0.1 * i:10.5f} {50.0 + i:10.3f} {51.0 + i:10.3f} {1.5:8.3f} {1.0:6.2f}"
                 f" {i:3d} {0:3d} {1:3d} {1:3d}  Code_mag_nuc: {1 + i % 3}")
write("sin_superspace.prf", lines)
lines = ["Twin list", " sx_multiphase 2", " Sin(theta)/lambda  Fobs  Fcalc  Sigma  Sc  label"]
for i in range(7):
    lines.append(f"{0.1 * (i + 1):12.5f}{20.0 + i:12.2f}{21.0 + i:12.2f}{0.5:12.2f}{1.0:12.2f}  ( {i} 0 0) twin 1")
write("sin_sx.prf", lines)

# Pair distribution output with one companion file of two phases.
lines = ["PDF fit", "# R  pair distribution", "  Phase file: pairs_phases.lst", " Number of Pairs:  6",
         " skipped 1", " skipped 2"]
for i in range(6):
    lines.append(f"  {1.0 + 0.5 * i:8.4f} {0.2 * i:8.4f} {0.01:8.4f} {0.21 * i:8.4f}")
write("pairs.prf", lines)
write("pairs_phases.lst", ["Companion", " Number of phases: 2", " counts", f"{2:8d}", f"{1:8d}",
                           "Fe - O", "  1.9850  6", "Fe - Fe", "  2.9500  4", "Si - O", "  1.6100  4"])

# Output of the peak fit.
lines = ["Fit of two peaks", "any second line", " Scattering Variable: 2theta",
         " Lambdas: 1.54056 1.54439", " Number of points: 12", " Number of peaks: 2", " x y ycalc ..."]
for i in range(12):
    x = 20.0 + 0.5 * i
    if i < 2:
        lines.append(f" {x:8.3f} {100 + i:8.1f} {99 + i:8.1f} {1.0:6.2f} {10.0:6.2f} {21.0 + i:8.3f} 0"
                     f" {1500.0 + i:9.1f} {0.12:7.4f} {0.4:6.3f}  ( 1 0 {i})")
    else:
        lines.append(f" {x:8.3f} {100 + i:8.1f} {99 + i:8.1f} {1.0:6.2f} {10.0:6.2f}")
write("peaks_fit.xrf", lines)

# Resolution files.
write("tof_keywords.irf", ["! Resolution of a TOF bank", "! ireso: 5", "jobt  neutrons",
                           "TWOTH 145.0", "d2tof 6000.5 -1.25 3.0", "SIGMA 1.0 20.5 0.0",
                           "gamma 0.0 2.5 0.0", "ALFBE 0.1 0.03 0.9 0.0", "UNKNW 1 2 3",
                           "GEOM trmf", "WAVE 1.5 1.5 0.5", "tofrg 1000 5 20000"])
write("old_ireso1.irf", ["! Old resolution file", "IRESO 1", "! U V W X Y",
                         "  0.0100 -0.0200 0.0300 0.0010 0.0500"])
