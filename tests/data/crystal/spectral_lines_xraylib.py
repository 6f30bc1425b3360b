# Wavelengths (A) of the anode lines from xraylib's line energies.
# Run: /usr/bin/python3 tests/data/crystal/spectral_lines_xraylib.py > tests/data/crystal/spectral_lines_xraylib.txt
import xraylib as x
hc = 12.39841984
print("# element K-alpha1 K-alpha2 K-beta L-alpha1 (xraylib %s, lambda = hc/E)" % x.__version__)
for el in ["Cr", "Fe", "Co", "Ni", "Cu", "Mo", "Ag", "W"]:
    z = x.SymbolToAtomicNumber(el)
    w = [hc / x.LineEnergy(z, line) for line in (x.KL3_LINE, x.KL2_LINE, x.KM3_LINE, x.L3M5_LINE)]
    print(el, " ".join("%.6f" % v for v in w))
