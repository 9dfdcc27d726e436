#!/usr/bin/python3
"""numpy on the work of bench_rose, on this machine, for comparison in the same run.

  /usr/bin/python3 bench/anchor_rose.py

hist_100      numpy.histogram of 1,000,000 normal values into 100 bins
rose_classes  1,000,000 azimuths into 36 bins of 10 degrees with a count per bin and colour class
              (np.floor + np.bincount over bin * classes + class), the classes given as small integers
rose_tab      rose_classes, the resultant, and the stacked classes drawn as a polar bar chart by
              matplotlib on an Agg canvas of 1000 x 700 pixels (the rose tab to its first paint)
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np

from anchor_timing import report

rng = np.random.default_rng(11)
n = 1_000_000
values = 0.2 + 0.05 * rng.standard_normal(n)
second = rng.integers(0, 3, n) == 0
azimuth = np.mod(np.where(second, 130.0, 330.0) + 25.0 * (rng.random(n) - 0.5) * 2 + 360.0, 360.0)
classes = np.where(second, 1 + rng.integers(0, 2, n), 0)


def rose():
    b = np.minimum(np.floor(azimuth / 10.0).astype(np.int64), 35)
    return np.bincount(b * 3 + classes, minlength=36 * 3).reshape(36, 3)


fig = plt.figure(figsize=(10, 7), dpi=100)
theta = np.deg2rad(np.arange(36) * 10.0)
colours = ["#28a03c", "#c81e1e", "#1e1ec8"]


def rose_tab():
    counts = rose()
    rad = np.deg2rad(azimuth)
    direction = np.degrees(np.arctan2(np.sin(rad).sum(), np.cos(rad).sum())) % 360.0
    fig.clf()
    ax = fig.add_subplot(111, projection="polar")
    ax.set_theta_zero_location("N")
    ax.set_theta_direction(-1)
    bottom = np.zeros(36)
    for k in range(3):
        ax.bar(theta, counts[:, k], width=np.deg2rad(10.0), bottom=bottom, color=colours[k], align="edge")
        bottom += counts[:, k]
    ax.annotate("", xy=(np.deg2rad(direction), bottom.max()), xytext=(0, 0), arrowprops={"arrowstyle": "->"})
    fig.canvas.draw()


for name, f in (("hist_100", lambda: np.histogram(values, bins=100)), ("rose_classes", rose), ("rose_tab", rose_tab)):
    report(name, f)
