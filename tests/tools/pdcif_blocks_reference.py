#!/usr/bin/python3
"""Blocks of a powder CIF as gemmi reads them: for each data block with an
intensity loop, its name, point count, first and last 2theta, first and last
intensity (python3-gemmi, Debian). Made tests/data/patterns/multi_one_blocks.txt with:
  tests/tools/pdcif_blocks_reference.py tests/data/patterns/multi_one.cif"""
import sys
import gemmi

doc = gemmi.cif.read_file(sys.argv[1])
for block in doc:
    for ycol in ("_pd_proc_intensity_total", "_pd_meas_intensity_total"):
        y = block.find_values(ycol)
        if len(y):
            break
    else:
        continue
    x = block.find_values("_pd_meas_2theta_scan")
    if not len(x):
        x = block.find_values("_pd_proc_2theta_corrected")
    num = lambda v: float(v.split("(")[0])
    print(block.name, len(y), num(x[0]), num(x[len(x) - 1]), num(y[0]), num(y[len(y) - 1]))
