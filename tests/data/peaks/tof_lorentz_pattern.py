#!/usr/bin/env python3
"""A time-of-flight pattern of three peaks with a Lorentzian share, worked
with mpmath (exact erfc and E1 of complex argument), for the fit's recovery
test: two back-to-back exponentials convolved with a pseudo-Voigt, each peak
summed only within 1.3862944/alpha + 15 H on its rising side and
1.3862944/beta + 15 H on its falling side, a straight background, and
Gaussian noise of sigma sqrt(y) from Python's random with seed 18.

Run:  python3 tests/data/peaks/tof_lorentz_pattern.py > tests/data/peaks/tof_lorentz_3pk.xy

Columns: TOF, counts, sigma. Truth (also in the head lines): dtt 10000,
alpha 0.2, beta 0.05, Sig-2 0, Sig-1 30, Sig-0 9, eta 0.4, peaks at
20000, 20400, 21000 us of intensities 30000, 15000, 50000, background
200 - 0.01 (TOF - 19700).
"""
import random

import mpmath as mp

from tof_shape_mpmath import omega  # the shape, from the reference table's script

DTT, ALPHA, BETA, SIG1, SIG0, ETA = 10000, 0.2, 0.05, 30.0, 9.0, 0.4
PEAKS = [(20000.0, 30000.0), (20400.0, 15000.0), (21000.0, 50000.0)]


def main():
    rnd = random.Random(18)
    print('# TOF pattern, three peaks with eta 0.4: see tof_lorentz_pattern.py for the truth')
    print('# dtt 10000 alpha 0.2 beta 0.05 sig1 30 sig0 9 eta 0.4')
    for i in range(451):
        x = 19700.0 + 4.0 * i
        yv = mp.mpf(200) - mp.mpf('0.01') * (x - 19700)
        for t, inten in PEAKS:
            d = t / DTT
            h = mp.mpf('2.35482') * mp.sqrt(SIG1 * d * d + SIG0)
            dt = x - t
            left = mp.mpf('1.3862944') / ALPHA + 15 * h
            right = mp.mpf('1.3862944') / BETA + 15 * h
            if (dt <= 0 and -dt > left) or (dt > 0 and dt > right):
                continue
            yv += inten * omega(mp.mpf(dt), mp.mpf(ALPHA), mp.mpf(BETA), h, mp.mpf(ETA))
        yf = float(yv)
        print('%10.2f %14.4f %10.4f' % (x, yf + rnd.gauss(0.0, 1.0) * yf ** 0.5, yf ** 0.5))


main()
