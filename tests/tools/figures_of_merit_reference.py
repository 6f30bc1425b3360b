#!/usr/bin/python3
# Reference figures of merit and cell refinements, from the published
# definitions, with gemmi for the reflections (absences, d) and scipy for the
# least squares:
#   M(20) = Q20 / (2 <|Qobs - Qcalc|> N20), Q = 1/d^2 (de Wolff, J. Appl. Cryst. 1, 108 (1968))
#   F(N)  = N / (<|2th_obs - 2th_calc|> N_poss)     (Smith & Snyder, J. Appl. Cryst. 12, 60 (1979))
# Qcalc / 2th_calc: the nearest calculated line in 2theta; N20, N_poss: the
# distinct calculated Q (absences left out) up to the 20th / N-th observed line.
# Run: /usr/bin/python3 tests/tools/figures_of_merit_reference.py > tests/data/peaks/figures_of_merit_reference.txt
import math
import numpy as np
import gemmi
from scipy.optimize import least_squares


def lines(cell, sgname, qmax):
    ops = gemmi.SpaceGroup(sgname).operations()
    n = [int(math.ceil(math.sqrt(qmax) * x)) + 1 for x in (cell.a, cell.b, cell.c)]
    qs = set()
    for h in range(-n[0], n[0] + 1):
        for k in range(-n[1], n[1] + 1):
            for l in range(-n[2], n[2] + 1):
                if (h, k, l) == (0, 0, 0) or ops.is_systematically_absent([h, k, l]):
                    continue
                q = cell.calculate_1_d2([h, k, l])
                if q <= qmax:
                    qs.add(round(q, 10))
    return np.array(sorted(qs))


def tth(q, lam):
    return 2 * np.degrees(np.arcsin(lam * np.sqrt(q) / 2))


def q_of(t, lam):
    return (2 * np.sin(np.radians(t) / 2) / lam) ** 2


def figures(obs, cell, sgname, lam, tol=0.05):
    obs = np.sort(np.asarray(obs))
    qo = q_of(obs, lam)
    qc = lines(cell, sgname, qo[-1] * 1.05)
    tc = tth(qc, lam)
    near = np.array([np.argmin(np.abs(tc - t)) for t in obs])
    dx = np.abs(obs - tc[near])
    dq = np.abs(qo - qc[near])
    out = {}
    n = len(obs)
    out["n"] = n
    out["unexplained"] = int(np.sum(dx > tol))
    if n >= 20:
        n20 = int(np.sum(qc <= qo[19] * (1 + 1e-9)))
        out["m20"] = qo[19] / (2 * dq[:20].mean() * n20)
        out["n20"] = n20
    nposs = int(np.sum(qc <= qo[n - 1] * (1 + 1e-9)))
    out["fn"] = n / (dx.mean() * nposs)
    out["fn_delta"] = dx.mean()
    out["n_poss"] = nposs
    return out


def refine(tag, obs, m, a0, lam):
    """The cubic edge from the lines of h^2+k^2+l^2 = m, without and with a zero shift."""
    for zero in (False, True):
        def res(p):
            return obs - (tth(m / p[0] ** 2, lam) + (p[1] if zero else 0))
        p0 = [a0, 0.0] if zero else [a0]
        r = least_squares(res, p0, xtol=1e-15, ftol=1e-15, gtol=1e-15)
        j = r.jac
        chi2 = np.sum(r.fun ** 2) / (len(obs) - len(p0))
        cov = np.linalg.inv(j.T @ j) * chi2
        extra = f" zero={r.x[1]:.7f} zero_std={math.sqrt(cov[1, 1]):.7f}" if zero else ""
        print(f"{tag}_refine zero={int(zero)} a={r.x[0]:.7f} a_std={math.sqrt(cov[0, 0]):.7f}{extra} chi2={chi2:.6e}")


print(f"# figures of merit and refinements, gemmi {gemmi.__version__}, numpy {np.__version__}")

# 1. CeO2 (Fm-3m), the peaks the automatic search finds in
# tests/data/patterns/CeO2_Pilatus1M.xy (tests/data/peaks/ceo2_pilatus_peaks.aps), 0.4066 A.
lam = 0.4066
obs = np.array([float(l.split()[0]) for l in open("tests/data/peaks/ceo2_pilatus_peaks.aps") if not l.startswith("!")])
f = figures(obs, gemmi.UnitCell(5.411, 5.411, 5.411, 90, 90, 90), "F m -3 m", lam)
print(f"ceo2_figures a=5.411 N={f['n']} F={f['fn']:.4f} delta={f['fn_delta']:.6f} N_poss={f['n_poss']} unexplained={f['unexplained']}")
# Each peak with the nearest allowed hkl (h^2+k^2+l^2 of Fm-3m) at a = 5.411.
allowed = sorted({h * h + k * k + l * l for h in range(12) for k in range(12) for l in range(12)
                  if (h % 2 == k % 2 == l % 2) and (h, k, l) != (0, 0, 0)})
m = []
for t in obs:
    m.append(min(allowed, key=lambda s: abs(tth(s / 5.411 ** 2, lam) - t)))
refine("ceo2", obs, np.array(m, float), 5.411, lam)

# 2. An orthorhombic trial: PbSO4 (P n m a, a = 8.482, b = 5.398, c = 6.958 A) at 1.5406 A,
# its 25 first distinct lines moved by fixed errors of up to 0.012 degree.
lam = 1.5406
cell = gemmi.UnitCell(8.482, 5.398, 6.958, 90, 90, 90)
qc = lines(cell, "P n m a", q_of(60.0, lam))
obs = np.round(tth(qc[:25], lam) + 0.012 * np.sin(1.7 * np.arange(1, 26)), 5)
print("pbso4_peaks " + " ".join(f"{t:.5f}" for t in obs))
f = figures(obs, cell, "P n m a", lam)
print(f"pbso4_figures N={f['n']} M20={f['m20']:.4f} N20={f['n20']} F={f['fn']:.4f} delta={f['fn_delta']:.6f} N_poss={f['n_poss']} unexplained={f['unexplained']}")

# 3. LaB6 (P m -3 m), the 24 peaks the automatic search with the Cu doublet filter finds between
# 15 and 150 degrees in tests/data/patterns/LaB6_d500_si_psd.xye
# (tests/data/peaks/lab6_d500_peaks.aps), Cu K-alpha1 1.540593 A: a real standard with M(20).
lam = 1.540593
obs = np.array([float(l.split()[0]) for l in open("tests/data/peaks/lab6_d500_peaks.aps") if not l.startswith("!")])
f = figures(obs, gemmi.UnitCell(4.1569, 4.1569, 4.1569, 90, 90, 90), "P m -3 m", lam)
print(f"lab6_figures a=4.1569 N={f['n']} M20={f['m20']:.4f} N20={f['n20']} F={f['fn']:.4f} delta={f['fn_delta']:.6f} N_poss={f['n_poss']} unexplained={f['unexplained']}")
m = np.array([min(range(1, 30), key=lambda s: abs(tth(s / 4.1569 ** 2, lam) - t)) for t in obs], float)
refine("lab6", obs, m, 4.1569, lam)
