#!/usr/bin/python3
# Prints the isotope rows of crystal/scattering.cpp: bound coherent scattering lengths (fm,
# real part) from python3-periodictable (Debian), whose neutron table is Sears, Neutron News
# 3(3) 1992 with the later evaluations of the Atominstitut compilation (2003).
# Run: /usr/bin/python3 tools/isotope_lengths.py
import periodictable as pt

ROWS = [("H", 1), ("H", 2), ("H", 3), ("He", 3), ("He", 4), ("Li", 6), ("Li", 7), ("B", 10), ("B", 11),
        ("C", 12), ("C", 13), ("N", 14), ("N", 15), ("O", 16), ("O", 17), ("O", 18), ("Si", 28), ("Si", 29),
        ("Si", 30), ("Cl", 35), ("Cl", 37), ("Ar", 36), ("Ti", 48), ("Fe", 54), ("Fe", 56), ("Fe", 57),
        ("Ni", 58), ("Ni", 60), ("Ni", 61), ("Ni", 62), ("Ni", 64), ("Cu", 63), ("Cu", 65)]

print("// python3-periodictable %s" % pt.__version__)
cells = ['{"%s", %d, %s}' % (s, m, repr(getattr(pt, s)[m].neutron.b_c)) for s, m in ROWS]
for i in range(0, len(cells), 5):
    print("    " + ", ".join(cells[i:i + 5]) + ",")
