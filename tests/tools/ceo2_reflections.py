#!/usr/bin/python3
# Expected reflection positions of the CeO2 standard (Fm-3m, a = 5.411 A) for
# the synchrotron pattern tests/data/patterns/CeO2_Pilatus1M.xy (0.4066 A):
# the d spacings and absences from gemmi, 2theta from Bragg's law.
# Run: /usr/bin/python3 tests/tools/ceo2_reflections.py > tests/data/peaks/ceo2_reflections.txt
import math
import gemmi

wavelength = 0.4066
cell = gemmi.UnitCell(5.411, 5.411, 5.411, 90, 90, 90)
ops = gemmi.SpaceGroup('F m -3 m').operations()
seen = {}
for h in range(0, 12):
    for k in range(0, h + 1):
        for l in range(0, k + 1):
            if (h, k, l) == (0, 0, 0) or ops.is_systematically_absent([h, k, l]):
                continue
            d = cell.calculate_d([h, k, l])
            s = wavelength / (2 * d)
            if s >= 1:
                continue
            tth = 2 * math.degrees(math.asin(s))
            key = round(d, 6)
            seen.setdefault(key, (tth, []))[1].append(f"{h}{k}{l}")
print(f"# CeO2 Fm-3m a=5.411 A, wavelength {wavelength} A, gemmi {gemmi.__version__}")
print("# 2theta_deg d_A hkl")
for d, (tth, hkls) in sorted(seen.items(), key=lambda t: -t[0]):
    if tth <= 31.0:
        print(f"{tth:.4f} {d:.5f} {'/'.join(hkls)}")
