#!/usr/bin/python3
"""matplotlib on the work of BM_ScrollStepZoom20 (bench_stereo), on this machine, for comparison in
the same run.

  /usr/bin/python3 bench/anchor_scroll.py

scroll_zoom20  100,000 poles as crosses on an equal-area net with its 10-degree circles, 1000 x 800,
               zoomed 20 times about the centre (the axes show a twentieth of the net's width),
               each repeat one scroll step (the view moves by one percent of the scrollable
               width) followed by a full canvas draw: what a user waits for on every scroll step.
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time.
"""
import numpy as np
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt

from anchor_timing import report

rng = np.random.default_rng(7)
n = 100_000
dip = rng.uniform(0, 90, n)
dd = rng.uniform(0, 360, n)
pl = np.radians(90 - dip)
tr = np.radians((dd + 180) % 360)
r = np.sqrt(2) * np.sin((np.pi / 2 - pl) / 2)
x = r * np.sin(tr)
y = r * np.cos(tr)

fig = plt.figure(figsize=(10, 8), dpi=100)
ax = fig.add_axes([0, 0, 1, 1])
ax.set_aspect("equal")
ax.axis("off")
t = np.linspace(0, 2 * np.pi, 361)
ax.plot(np.cos(t), np.sin(t), "k-", lw=1)
for d in range(10, 90, 10):
    a = np.radians(d)
    pitch = np.radians(np.arange(0, 181, 5))
    for side in (1, -1):
        plunge = np.arcsin(np.sin(a) * np.sin(pitch))
        trend = np.arctan2(np.cos(pitch), side * np.cos(a) * np.sin(pitch))
        rr = np.sqrt(2) * np.sin((np.pi / 2 - plunge) / 2)
        ax.plot(rr * np.sin(np.pi / 2 - trend), rr * np.cos(np.pi / 2 - trend), color="0.7", lw=0.8)
ax.plot(x, y, "+", ms=4, mew=1, color="darkblue")

# The unzoomed view spans 2.5 x 2.0; zoomed 20 times it spans 0.125 x 0.1, and one percent of the
# scrollable width is (2.5 - 0.125) / 100.
half_w, half_h = 2.5 / 40, 2.0 / 40
step = (2.5 - 2 * half_w) / 100
state = {"k": 0}


def scroll_and_draw():
    cx = (state["k"] & 1) * step
    state["k"] += 1
    ax.set_xlim(cx - half_w, cx + half_w)
    ax.set_ylim(-half_h, half_h)
    fig.canvas.draw()


scroll_and_draw()
report("scroll_zoom20", scroll_and_draw, repeats=9)
