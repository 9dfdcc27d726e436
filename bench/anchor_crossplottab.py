#!/usr/bin/python3
"""matplotlib on the work of bench_crossplottab, on this machine, for comparison in the same run.

  /usr/bin/python3 bench/anchor_crossplottab.py

open_tab    a 1000 x 800 pixel Agg figure of 1,000,000 points (depth 1000..2500 against porosity
            0..0.3, uniform, seed 5) as '+' markers, every other point highlighted in yellow, axes
            with titles and a grid: the figure built, the points handed over and drawn once
lasso_half  a lasso round the left half of the depth range: Path.contains_points over the points,
            the highlight colours replaced from the result, and the figure drawn again
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import numpy as np  # noqa: E402
from matplotlib.path import Path  # noqa: E402

from anchor_timing import report  # noqa: E402

N = 1_000_000
rng = np.random.default_rng(5)
depth = 1000.0 + 1500.0 * rng.random(N)
porosity = 0.3 * rng.random(N)
points = np.column_stack((depth, porosity))
selected = np.zeros(N, dtype=bool)
selected[::2] = True
BLUE = np.array([0.0, 0.0, 1.0, 1.0])
YELLOW = np.array([1.0, 1.0, 0.0, 1.0])


def colours(mask):
    c = np.empty((N, 4))
    c[:] = BLUE
    c[mask] = YELLOW
    return c


def build():
    fig = plt.figure(figsize=(10, 8), dpi=100)
    ax = fig.add_axes([0, 0, 1, 1])
    ax.set_xlim(1000, 2500)
    ax.set_ylim(0, 0.3)
    ax.grid(True)
    ax.set_xlabel("Measured Depth [m]")
    ax.set_ylabel("Porosity")
    sc = ax.scatter(depth, porosity, s=4, marker="+", c=colours(selected), linewidths=0.8)
    return fig, sc


def open_tab():
    fig, _ = build()
    fig.canvas.draw()
    plt.close(fig)


fig, sc = build()
fig.canvas.draw()
lasso = np.array([[1000.0, -1.0], [1750.0, -1.0], [1750.0, 1.0], [1000.0, 1.0]])


def lasso_half():
    inside = Path(lasso, closed=False).contains_points(points)
    sc.set_facecolors(colours(inside))
    sc.set_edgecolors(colours(inside))
    fig.canvas.draw()
    return inside


print(f"lasso_half inside: {int(lasso_half().sum())}")
report("open_tab", open_tab, repeats=5)
report("lasso_half", lasso_half, repeats=5)
