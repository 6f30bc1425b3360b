#!/usr/bin/python3
"""Reference values of the axial-divergence folded pseudo-Voigt.

The folded profile at x of a peak at P (degrees 2theta) is

    A(x) = int W(d) pV(x - d) / (h(d) |cos d|) dd  /  int W(d) / (h(d) |cos d|) dd

over d from the angle Pmin where the weight starts up to P, with
h(d) = sqrt(cos^2 d / cos^2 P - 1), W = S + D - h where h >= |D - S| and
W = 2 min(S, D) elsewhere, cos Pmin = cos P sqrt((S + D)^2 + 1) (Finger, Cox
and Jephcoat). pV is the area-normalised pseudo-Voigt of FWHM H and mixing
eta, its Gaussian part cut beyond |x - d| > 6 H. Within 0.4 degree of 90 the
plain pV is listed. Integrals by mpmath tanh-sinh quadrature at 30 digits,
split at the kink of W, at the cut of the Gaussian and at x.

Run: /usr/bin/python3 tests/tools/axial_divergence_reference.py > tests/data/peaks/axial_divergence.tsv
"""
import mpmath as mp

mp.mp.dps = 30


def pv(d, H, eta):
    lor = 2 / (mp.pi * H) / (1 + (2 * d / H) ** 2)
    gau = 0
    if abs(d) / H <= 6:
        gau = 2 * mp.sqrt(mp.log(2) / mp.pi) / H * mp.exp(-4 * mp.log(2) * (d / H) ** 2)
    return eta * lor + (1 - eta) * gau


def folded(x, P, S, D, H, eta):
    if abs(P - 90) < 0.4:
        return pv(x - P, H, eta)
    rad = mp.pi / 180
    c0 = mp.cos(P * rad)

    def edge(spread):
        c = c0 * mp.sqrt(spread ** 2 + 1)
        c = max(mp.mpf(-1), min(mp.mpf(1), c))
        return mp.acos(c) / rad

    pmin, pinfl = edge(S + D), edge(abs(D - S))

    def h(d):
        return mp.sqrt(max(mp.mpf(0), mp.cos(d * rad) ** 2 / c0 ** 2 - 1))

    def weight(d):
        hh = h(d)
        if hh == 0:
            return mp.mpf(0)
        w = S + D - hh if hh >= abs(D - S) else 2 * min(S, D)
        return w / (hh * abs(mp.cos(d * rad)))

    lo, hi = min(pmin, P), max(pmin, P)
    cuts = sorted({lo, hi, min(max(pinfl, lo), hi)} |
                  {c for c in (x, x - 6 * H, x + 6 * H) if lo < c < hi})
    num = sum(mp.quad(lambda d: weight(d) * pv(x - d, H, eta), [a, b]) for a, b in zip(cuts, cuts[1:]))
    den = sum(mp.quad(weight, [a, b]) for a, b in zip(cuts, cuts[1:]))
    return num / den


CASES = [
    # P, S_L, D_L, H, eta, offsets of x from P
    (30.0, 0.02, 0.03, 0.10, 0.5, (-0.6, -0.3, -0.15, -0.05, 0.0, 0.05, 0.2)),
    (10.0, 0.04, 0.04, 0.08, 0.3, (-0.3, -0.1, -0.03, 0.0, 0.04, 0.15)),
    (150.0, 0.03, 0.01, 0.15, 0.7, (-0.2, 0.0, 0.1, 0.25, 0.5, 1.0)),
    (90.5, 0.05, 0.05, 0.12, 0.4, (-0.2, 0.0, 0.05, 0.2)),
    (89.7, 0.05, 0.05, 0.12, 0.4, (-0.2, 0.0, 0.05, 0.2)),
]

print("# P\tS_L\tD_L\tH\teta\tx\tvalue")
for P, S, D, H, eta, offs in CASES:
    for o in offs:
        x = P + o
        v = folded(mp.mpf(x), mp.mpf(P), mp.mpf(S), mp.mpf(D), mp.mpf(H), mp.mpf(eta))
        print(f"{P}\t{S}\t{D}\t{H}\t{eta}\t{x:.6f}\t{mp.nstr(v, 12)}")
