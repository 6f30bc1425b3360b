#!/usr/bin/python3
# f0 of ions and neutral atoms at a few sin(theta)/lambda, from python3-periodictable's own
# Waasmaier-Kirfel evaluation (periodictable.cromermann.fxrayatstol).
# Run: /usr/bin/python3 tests/data/crystal/ion_f0_reference.py > tests/data/crystal/ion_f0_reference.txt
import periodictable as pt
from periodictable.cromermann import fxrayatstol

print("# type stol f0   (python3-periodictable %s)" % pt.__version__)
for t in ["O2-", "Fe2+", "Fe3+", "Li1+", "Cl1-", "Ce4+", "U6+", "Na1+", "Ca2+", "Ti4+"]:
    for s in [0.0, 0.1, 0.3, 0.6, 1.0, 1.5]:
        print("%s %.2f %.6f" % (t, s, float(fxrayatstol(t, s))))
