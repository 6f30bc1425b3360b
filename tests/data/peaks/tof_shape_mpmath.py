#!/usr/bin/env python3
"""Reference values of the time-of-flight peak shape: two back-to-back
exponentials convolved with a pseudo-Voigt, worked with mpmath at 30 digits
from the exact erfc and the exponential integral E1 of complex argument; the
derivatives by mpmath's numerical differentiation at the same precision.

Run:  python3 tests/data/peaks/tof_shape_mpmath.py > tests/data/peaks/tof_shape_reference.txt

Columns: dt alpha beta H eta peak omega d/ddt d/dalpha d/dbeta d/dH d/deta,
where peak is the largest omega of that alpha, beta, H, eta (for the
relative test). Grid: dt runs to both cut-off edges, 1.3862944/alpha + 15 H
on the rising side and 1.3862944/beta + 15 H on the falling side.
"""
import mpmath as mp

mp.mp.dps = 30


def omega(dt, a, b, h, e):
    s2 = mp.mpf('0.18033688011112042') * h * h
    n = a * b / (2 * (a + b))
    u = a * (a * s2 + 2 * dt) / 2
    w = b * (b * s2 - 2 * dt) / 2
    y = (a * s2 + dt) / mp.sqrt(2 * s2)
    z = (b * s2 - dt) / mp.sqrt(2 * s2)
    og = n * (mp.exp(u) * mp.erfc(y) + mp.exp(w) * mp.erfc(z))
    p = mp.mpc(a * dt, a * h / 2)
    q = mp.mpc(-b * dt, b * h / 2)
    ol = -2 / mp.pi * n * mp.im(mp.exp(p) * mp.e1(p) + mp.exp(q) * mp.e1(q))
    return (1 - e) * og + e * ol


def main():
    alphas = ['0.05', '0.5', '3']
    betas = ['0.02', '0.2']
    widths = ['1', '8', '40']
    etas = ['0', '0.35', '1']
    print('# dt alpha beta H eta peak omega d/ddt d/dalpha d/dbeta d/dH d/deta')
    for sa in alphas:
        for sb in betas:
            for sh in widths:
                for se in etas:
                    a, b, h, e = mp.mpf(sa), mp.mpf(sb), mp.mpf(sh), mp.mpf(se)
                    left = mp.mpf('1.3862944') / a + 15 * h
                    right = mp.mpf('1.3862944') / b + 15 * h
                    # the largest value, searched on a fine grid near the top
                    peak = max(omega(mp.mpf(k) * h / 40, a, b, h, e) for k in range(-80, 81))
                    dts = [-left, -0.999 * left, -0.5 * left, -0.1 * left, -h, -h / 3, mp.mpf(0), h / 3, h,
                           0.1 * right, 0.5 * right, 0.999 * right, right]
                    for dt in dts:
                        v = omega(dt, a, b, h, e)
                        d = [mp.diff(lambda t: omega(t, a, b, h, e), dt),
                             mp.diff(lambda t: omega(dt, t, b, h, e), a),
                             mp.diff(lambda t: omega(dt, a, t, h, e), b),
                             mp.diff(lambda t: omega(dt, a, b, t, e), h),
                             mp.diff(lambda t: omega(dt, a, b, h, t), e)]
                        vals = [dt, a, b, h, e, peak, v] + d
                        print(' '.join(mp.nstr(x, 17, min_fixed=-1, max_fixed=-1) for x in vals))


if __name__ == '__main__':
    main()
