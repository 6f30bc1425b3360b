#!/usr/bin/python3
# Writes graphics/viridis_table.inc: the 256 colours of the viridis map as 0xRRGGBB,
# taken from matplotlib (Debian python3-matplotlib 3.6.3).
#   /usr/bin/python3 tools/gen_viridis_table.py > graphics/viridis_table.inc
from matplotlib import cm

lut = cm.get_cmap("viridis", 256)
print("// Written by tools/gen_viridis_table.py with matplotlib's viridis; do not edit.")
rows = []
for i in range(256):
    r, g, b, _ = lut(i)
    rows.append("0x%02X%02X%02Xu" % (round(r * 255), round(g * 255), round(b * 255)))
for k in range(0, 256, 8):
    print("    " + ", ".join(rows[k:k + 8]) + ",")
