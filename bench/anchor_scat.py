#!/usr/bin/python3
"""numpy and matplotlib on the work of bench_scat, on this machine, for comparison in the same run.

  /usr/bin/python3 bench/anchor_scat.py

set_data_set  the two apparent-dip columns of 1,000,000 rows computed with numpy
              (arctan(cos(T - azimuth) * tan(dip))), then a 1400 x 900 pixel Agg figure of four
              depth tracks sharing one inverted depth axis (azimuth, dip, transverse and
              longitudinal dip, 1,000,000 '+' markers each) built and drawn once
new_t         the transverse column recomputed for a new T and its one track drawn again
scroll_step   zoomed in four times (a quarter of the depth range shown), the view moved by a
              twentieth of the range and the four tracks drawn again
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import numpy as np  # noqa: E402

from anchor_timing import report  # noqa: E402

N = 1_000_000
rng = np.random.default_rng(11)
z = 1000.0 + 1500.0 * np.arange(N) / N
phase = (z - 1000.0) / 300.0 * 2.0 * np.pi
dip = np.clip(30.0 + 20.0 * np.sin(phase) + rng.random(N) * 8.0 - 4.0, 0.0, 90.0)
azimuth = np.fmod(90.0 + 45.0 * np.cos(phase) + rng.random(N) * 20.0 + 350.0, 360.0)


def apparent(direction):
    return np.degrees(np.arctan(np.cos(np.radians(direction - azimuth)) * np.tan(np.radians(dip))))


def build():
    t, l = apparent(135.0), apparent(45.0)
    fig, axes = plt.subplots(1, 4, sharey=True, figsize=(14, 9), dpi=100)
    shown = np.where(azimuth > 180.0, azimuth - 360.0, azimuth)
    ranges = [(-180, 180), (0, 90), (-90, 90), (-90, 90)]
    lines = []
    for ax, x, r, title in zip(axes, (shown, dip, t, l), ranges,
                               ("Azimuth", "Dip", "Transverse Dip", "Longitudinal Dip")):
        (line,) = ax.plot(x, z, "+", markersize=2, color="blue")
        lines.append(line)
        ax.set_xlim(*r)
        ax.set_title(title)
        ax.grid(True)
    axes[0].set_ylim(2500, 1000)
    axes[0].set_ylabel("Measured Depth")
    return fig, axes, lines


def set_data_set():
    fig, _, _ = build()
    fig.canvas.draw()
    plt.close(fig)


fig, axes, lines = build()
fig.canvas.draw()
turn = [0]


def new_t():
    turn[0] += 1
    lines[2].set_xdata(apparent(120.0 if turn[0] % 2 else 135.0))
    axes[2].draw(fig.canvas.get_renderer())


axes[0].set_ylim(1375, 1000)
fig.canvas.draw()
offset = [0.0]


def scroll_step():
    offset[0] = (offset[0] + 75.0) % 1125.0
    axes[0].set_ylim(1375 + offset[0], 1000 + offset[0])
    fig.canvas.draw()


report("set_data_set", set_data_set, repeats=3)
report("new_t", new_t, repeats=5)
report("scroll_step", scroll_step, repeats=5)
