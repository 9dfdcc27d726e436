#!/usr/bin/python3
"""Anchor for bench_emf: matplotlib writing the same picture as vectors. 10,000 poles as crosses
on an equal-area net with a 10-degree net of great and small circles, 1000 x 800, saved to an
in-memory SVG and PDF. Prints 'mpl_svg_ms=', 'mpl_pdf_ms=' (best of 5) and the sizes in bytes."""
import io, math, time
import numpy as np
import matplotlib
matplotlib.use("Agg")
import matplotlib.pyplot as plt

rng = np.random.default_rng(7)
n = 10_000
dip = rng.uniform(0, 90, n); dd = rng.uniform(0, 360, n)
pl = np.radians(90 - dip); tr = np.radians((dd + 180) % 360)
r = np.sqrt(2) * np.sin((np.pi / 2 - pl) / 2)
x = r * np.sin(tr); y = r * np.cos(tr)
fig = plt.figure(figsize=(10, 8), dpi=100)
ax = fig.add_axes([0, 0, 1, 1]); ax.set_aspect("equal"); ax.set_xlim(-1.25, 1.25); ax.set_ylim(-1.0, 1.0); ax.axis("off")
t = np.linspace(0, 2 * np.pi, 361)
ax.plot(np.cos(t), np.sin(t), "k-", lw=1)
pitch = np.radians(np.arange(0, 181, 5))
for d in range(10, 90, 10):
    a = np.radians(d)
    for side in (1, -1):
        plunge = np.arcsin(np.sin(a) * np.sin(pitch)); trend = np.arctan2(np.cos(pitch), side * np.cos(a) * np.sin(pitch))
        rr = np.sqrt(2) * np.sin((np.pi / 2 - plunge) / 2)
        ax.plot(rr * np.sin(np.pi/2 - trend), rr * np.cos(np.pi/2 - trend), color="0.7", lw=0.8)
        north = side * np.cos(a) * np.ones_like(pitch); east = np.sin(a) * np.cos(pitch); down = np.sin(a) * np.sin(pitch)
        rs = np.sqrt(2) * np.sin(np.arccos(down) / 2); h = np.hypot(north, east)
        ax.plot(rs * east / h, rs * north / h, color="0.7", lw=0.8)
ax.plot(x, y, "+", ms=4, mew=1, color="darkblue")
for fmt in ("svg", "pdf"):
    best, size = 1e30, 0
    for _ in range(5):
        buf = io.BytesIO()
        t0 = time.perf_counter(); fig.savefig(buf, format=fmt); best = min(best, time.perf_counter() - t0)
        size = buf.tell()
    print(f"mpl_{fmt}_ms={best*1000:.1f} mpl_{fmt}_bytes={size}")
