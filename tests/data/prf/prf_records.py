"""The record writers of the test profile files, shared by the scripts that
write them."""
import math


def heading(length):
    base = " 2Theta\tYobs\tYcal\tYobs-Ycal\tBackg\tPosr\tcode\th\tk\tl\tK\tPh"
    text = (base + "_" * length)[:length - 1] + "_"
    assert len(text.rstrip()) == length
    return text


def profile(n, x0, step, peaks, bg=100.0, noise=5.0):
    rows = []
    for i in range(n):
        x = x0 + i * step
        yc = bg + sum(h * math.exp(-((x - p) / 0.3) ** 2) for p, h in peaks)
        yo = yc + (noise if i % 2 else -noise)
        rows.append((x, yo, yc, yo - yc, bg))
    return rows


def prof_line(r):
    x, yo, yc, d, b = r
    return f"{x:12.4f}" + "".join(f"\t{v:8.1f}" for v in (yo, yc, d, b))


def refl_line(pos, code, hkl, kind, lam):
    return (f"{pos:12.4f}" + " " * 37 + f"{code:8d}" + "\t\t" + "".join(f"{i:3d}" for i in hkl)
            + "\t\t" + f"{kind:3d}{lam:3d}")


def head2(nph, npts, l1, l2, zero, c1, c2, iv=None):
    s = f"{nph:3d}{npts:7d}" + "".join(f"{v:12.5f}" for v in (l1, l2, zero, c1, c2))
    return s + (f"{iv:5d}" if iv is not None else "")


def write(name, lines):
    with open(name, "w") as f:
        f.write("\n".join(lines) + "\n")
