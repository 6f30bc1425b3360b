#!/usr/bin/python3
"""Independent reference for the two filters of the Smoothing menu.

The five-point weights come from scipy.signal.savgol_coeffs (quadratic, five
points); the Fourier filter is written anew on numpy.fft: mirror padding of n/4
points, zero fill to the first power of two not below 2*len + 2*window, the
window max(0, 1 - k^2 (window/m)^2) on every frequency, and the end points of
the padded array repeating their neighbours. Run from the top of the tree:

    /usr/bin/python3 tests/tools/smoothing_reference.py > tests/data/calc/smoothing_reference.txt
    /usr/bin/python3 tests/tools/smoothing_reference.py constant > tests/data/calc/fourier_constant_reference.txt

The second table is the Fourier filter of a constant 1 of 1000 points for several
windows: the mirrored quarters end in the zero fill of the transform, and a wide
window reaches that edge, so the constant dips near the ends of the pattern.
"""
import sys
import numpy as np
from scipy.signal import savgol_coeffs

SOURCE = "tests/data/patterns/210520step1_30min.xy"


def poly(y):
    w = savgol_coeffs(5, 2)  # symmetric, so convolution order does not matter
    out = y.copy()
    for i in range(2, len(y) - 2):
        out[i] = np.dot(w, y[i - 2:i + 3])
    return out


def fourier_kernel(y, window):
    n = len(y)
    m = 2
    while m < 2 * n + int(2 * window):
        m *= 2
    t = np.zeros(m)
    t[:n] = y
    f = np.fft.rfft(t)
    k = np.arange(len(f))
    f *= np.maximum(0.0, 1.0 - k * k * (window / m) ** 2)
    back = np.fft.irfft(f, m)
    out = y.copy()
    out[1:n - 1] = back[1:n - 1]
    out[0] = out[1]
    out[n - 1] = out[n - 2]
    return out


def fourier(y, window):
    n = len(y)
    q = n // 4
    left = y[1:q][::-1]            # w(q-k) = y(1+k), k = 1..q-1
    right = y[n - q - 2:n - 1][::-1]  # w(q+n-1+j) = y(n-j), j = 1..q+1
    w = np.concatenate([left, y, right])
    assert len(w) == n + 2 * q
    return fourier_kernel(w, window)[q - 1:q - 1 + n]


def main():
    y = np.loadtxt(SOURCE)[:, 1]
    n = len(y)
    p = poly(y)
    f5 = fourier(y, 5.0)
    f40 = fourier(y, 40.0)
    print("# made by: /usr/bin/python3 tests/tools/smoothing_reference.py")
    print("# from %s (%d points); savgol_coeffs(5, 2) = %s" % (SOURCE, n, " ".join("%.9f" % c for c in savgol_coeffs(5, 2))))
    print("# i  y  five_point  fourier_fw5  fourier_fw40")
    rows = sorted(set(range(1, 7)) | set(range(1, n + 1, 4)) | set(range(n - 5, n + 1)))
    for i in rows:
        print("%d %.6f %.6f %.6f %.6f" % (i, y[i - 1], p[i - 1], f5[i - 1], f40[i - 1]))


def constant():
    n = 1000
    windows = [5.0, 20.0, 50.0, 100.0, 250.0, 500.0]
    cols = [fourier(np.ones(n), w) for w in windows]
    print("# made by: /usr/bin/python3 tests/tools/smoothing_reference.py constant")
    print("# Fourier filter of y = 1 on %d points; columns: i, then the windows %s" % (n, " ".join("%g" % w for w in windows)))
    for i in range(1, n + 1):
        print("%d %s" % (i, " ".join("%.8f" % c[i - 1] for c in cols)))


if len(sys.argv) > 1 and sys.argv[1] == "constant":
    constant()
else:
    main()
