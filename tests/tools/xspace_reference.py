#!/usr/bin/python3
# Reference values of the X space conversions, computed with numpy alone:
#   /usr/bin/python3 tests/tools/xspace_reference.py > tests/data/calc/xspace_reference.txt
# Bragg's law d = lambda / (2 sin theta), Q = 4 pi sin(theta) / lambda = 2 pi / d, s = 1 / d;
# TOF (and energy) = dtt1 d + dtt2 d^2, its d the positive root found by numpy.roots
# (eigenvalues of the companion matrix), the smaller one when both are positive.
import numpy as np

print("# angle lambda 2theta d q s")
for lam, tt in [(1.494, 2.948), (1.494, 28.442), (1.494, 90.0), (1.494, 162.898),
                (2.0785, 10.0), (2.0785, 100.0), (1.5406, 179.5), (0.5, 0.5)]:
    th = np.radians(tt) / 2.0
    d = lam / (2.0 * np.sin(th))
    q = 4.0 * np.pi * np.sin(th) / lam
    print("angle %.6f %.6f %.10e %.10e %.10e" % (lam, tt, d, q, 1.0 / d))

print("# time dtt1 dtt2 tof d")
for dtt1, dtt2, tof in [(7476.9, -3.6, 5000.0), (7476.9, -3.6, 30000.0), (5000.0, 0.0, 12000.0),
                        (5000.0, 1e-6, 12000.0), (5000.0, 2.5, 12000.0), (1000.0, 50.0, 80000.0),
                        (20000.0, -1.5, 1000.0), (3000.0, 1e-4, 1e5)]:
    roots = np.roots([dtt2, dtt1, -tof]) if dtt2 != 0.0 else np.array([tof / dtt1])
    pos = sorted(r.real for r in np.atleast_1d(roots) if abs(r.imag) < 1e-9 and r.real > 0)
    print("time %.6f %.6e %.6f %.10e" % (dtt1, dtt2, tof, pos[0]))
