#!/usr/bin/python3
"""matplotlib on the work of bench_lasso, on this machine, for comparison in the same run.

  /usr/bin/python3 bench/anchor_lasso.py

lasso_2000  matplotlib.path.Path(lasso).contains_points of 1,000,000 points against a closed
            lasso of 2,000 vertices (the R2 sequence over a 1000 x 800 raster, a wobbly loop
            round its centre: the same points and outline as bench_lasso)
lasso_20    the same points against a 20-vertex lasso
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column), and the points found inside.
"""
import numpy as np
from matplotlib.path import Path

from anchor_timing import report


def outline(n):
    a = 2 * np.pi * np.arange(n) / n
    r = 300 + 60 * np.sin(7 * a) + 25 * np.cos(23 * a)
    return np.column_stack((500 + r * np.cos(a), 400 + 0.8 * r * np.sin(a)))


i = np.arange(1_000_000, dtype=np.float64)
u = 0.5 + 0.7548776662466927 * i
v = 0.5 + 0.5698402909980532 * i
points = np.column_stack((1000.0 * (u - np.floor(u)), 800.0 * (v - np.floor(v))))

for n in (2000, 20):
    def run(n=n):
        # A chart builds its lasso afresh on every release: the path is part of the work.
        return Path(outline(n), closed=False).contains_points(points)
    print(f"lasso_{n} inside: {int(run().sum())}")
    report(f"lasso_{n}", run, repeats=7)
