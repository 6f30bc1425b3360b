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

# Where the round values of a second axis lie on the X of the frame: a value v of the
# unit (Q, d or 2theta) turned into the frame's space by Bragg's law (or the TOF relation).
print("# tick frame unit lambda_or_dtt1 dtt2 value x")
lam = 1.494
for k in range(1, 171):                     # Q, multiples of 0.05, on a 2theta frame
    q = 0.05 * k
    a = q * lam / (4.0 * np.pi)
    if a < 1.0:
        print("tick 2theta q-space %.6f 0 %.4f %.10e" % (lam, q, 2.0 * np.degrees(np.arcsin(a))))
for k in range(75, 3001):                   # d, multiples of 0.01, on a 2theta frame
    d = 0.01 * k
    print("tick 2theta d-space %.6f 0 %.4f %.10e" % (lam, d, 2.0 * np.degrees(np.arcsin(lam / (2.0 * d)))))
for k in range(1, 360):                     # 2theta, multiples of 0.5, on a d frame
    tt = 0.5 * k
    print("tick d-space 2theta %.6f 0 %.4f %.10e" % (lam, tt, lam / (2.0 * np.sin(np.radians(tt) / 2.0))))
for k in range(1, 171):                     # Q on a d frame
    q = 0.05 * k
    print("tick d-space q-space %.6f 0 %.4f %.10e" % (lam, q, 2.0 * np.pi / q))
for k in range(1, 121):                     # d on a TOF frame
    d = 0.05 * k
    print("tick TOF d-space 7476.9 -3.6 %.4f %.10e" % (d, 7476.9 * d - 3.6 * d * d))
