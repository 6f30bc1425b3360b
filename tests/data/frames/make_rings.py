#!/usr/bin/python3
"""Synthetic flat-panel image with Debye-Scherrer rings at known 2theta, and its
azimuthal integration worked independently by brute-force sub-pixel sampling.

Made by:  /usr/bin/python3 tests/data/frames/make_rings.py tests/data/frames
Writes rings.edf (the image, EDF FloatValue), rings_geometry.json, and
rings_reference.txt (per ring: 2theta centroid and integrated area of the
1D pattern numpy makes from the image)."""
import json
import sys

import numpy as np

out = sys.argv[1] if len(sys.argv) > 1 else "."
NX, NY = 200, 180               # columns, rows
PIX = 0.2                       # mm
DIST = 45.0                     # mm, sample to where the beam meets the panel
BX, BY = 96.3, 71.8             # beam centre, pixels (pixel i spans i-1..i)
TILT, PLANE = 3.0, 30.0         # degrees
LAM = 1.0
BIN = 0.02
RINGS = [(9.0, 1000.0), (15.0, 700.0), (21.5, 500.0), (27.0, 400.0)]
WIDTH = 0.12                    # Gaussian sigma of every ring, degrees
BACK = 20.0
SUB = 8                         # sub-pixels a side


def lab(px, py):
    """Detector point (pixels) to laboratory mm: Rodrigues turn of the panel
    about the in-plane axis at PLANE degrees from x; the beam along z."""
    u = (px - BX) * PIX
    v = (py - BY) * PIX
    w = np.stack([u, v, np.zeros_like(u)], -1)
    a = np.array([np.cos(np.radians(PLANE)), np.sin(np.radians(PLANE)), 0.0])
    t = np.radians(TILT)
    rot = w * np.cos(t) + np.cross(a, w) * np.sin(t) + np.outer((w @ a), a).reshape(w.shape) * (1 - np.cos(t))
    rot[..., 2] += DIST
    return rot


def tth(r):
    return np.degrees(np.arctan2(np.hypot(r[..., 0], r[..., 1]), r[..., 2]))


def profile(t):
    y = np.full_like(t, BACK)
    for c, a in RINGS:
        y += a * np.exp(-0.5 * ((t - c) / WIDTH) ** 2)
    return y


# Detector normal and the sample's distance from the plane.
r0, r1, r2 = lab(np.array([BX]), np.array([BY])), lab(np.array([BX + 1]), np.array([BY])), lab(np.array([BX]), np.array([BY + 1]))
n = np.cross(r1[0] - r0[0], r2[0] - r0[0])
n /= np.linalg.norm(n)
h = abs(n @ np.array([0, 0, DIST]))

# Sub-pixel centres of every pixel.
off = (np.arange(SUB) + 0.5) / SUB
jj, ii = np.meshgrid(np.arange(NY), np.arange(NX), indexing="ij")
sx = ii[..., None, None] + off[None, None, None, :]
sy = jj[..., None, None] + off[None, None, :, None]
sx, sy = np.broadcast_arrays(sx, sy)
rs = lab(sx, sy)
ts = tth(rs)
# The pixel's counts: the ring profile times the solid angle it subtends,
# averaged over its area.
dist = np.linalg.norm(rs, axis=-1)
omega = (h / dist) ** 3
image = (profile(ts) * omega).mean(axis=(2, 3)).astype(np.float32)

# Reference integration: every sub-pixel takes 1/SUB^2 of the pixel's counts
# and of its solid angle (taken at the pixel centre), binned by its own 2theta.
rc = lab(ii + 0.5, jj + 0.5)
corr = (h / np.linalg.norm(rc, axis=-1)) ** 3
lo = np.floor(ts.min() / BIN) * BIN
edges = np.arange(lo, ts.max() + BIN, BIN)
w_counts = np.repeat(image[..., None, None], SUB, 2).repeat(SUB, 3) / SUB ** 2
w_corr = np.repeat(corr[..., None, None], SUB, 2).repeat(SUB, 3) / SUB ** 2
s, _ = np.histogram(ts.ravel(), edges, weights=w_counts.ravel())
nrm, _ = np.histogram(ts.ravel(), edges, weights=w_corr.ravel())
x = 0.5 * (edges[1:] + edges[:-1])
ok = nrm > 0
x, y = x[ok], s[ok] / nrm[ok]

hdr = {"HeaderID": "EH:000001:000000:000000", "Image": "1", "ByteOrder": "LowByteFirst",
       "DataType": "FloatValue", "Dim_1": str(NX), "Dim_2": str(NY), "Size": str(NX * NY * 4),
       "Title": "synthetic rings", "Wavelength": str(LAM)}
text = "{\n" + "".join(f"{k} = {v} ;\n" for k, v in hdr.items())
text += " " * (512 - (len(text) + 2) % 512) + "}\n"
with open(f"{out}/rings.edf", "wb") as f:
    f.write(text.encode("ascii"))
    f.write(image.astype("<f4").tobytes())
json.dump({"distance_mm": DIST, "beam_x_px": BX, "beam_y_px": BY, "pixel_mm": PIX, "tilt_deg": TILT,
           "tilt_plane_deg": PLANE, "wavelength": LAM, "bin_deg": BIN, "solid_angle": True},
          open(f"{out}/rings_geometry.json", "w"), indent=1)
with open(f"{out}/rings_reference.txt", "w") as f:
    f.write("# ring  2theta_true  2theta_centroid  area  (window +-0.6 deg, background %.1f removed)\n" % BACK)
    for k, (c, a) in enumerate(RINGS):
        m = np.abs(x - c) < 0.6
        yy = y[m] - BACK
        f.write("%d %.4f %.5f %.5f\n" % (k + 1, c, (x[m] * yy).sum() / yy.sum(), yy.sum() * BIN))
