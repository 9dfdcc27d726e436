#!/usr/bin/python3
"""numpy on the work of bench_rose, on this machine, for comparison in the same run.

  /usr/bin/python3 bench/anchor_rose.py

hist_100      numpy.histogram of 1,000,000 normal values into 100 bins
rose_classes  1,000,000 azimuths into 36 bins of 10 degrees with a count per bin and colour class
              (np.floor + np.bincount over bin * classes + class), the classes given as small integers
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
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


for name, f in (("hist_100", lambda: np.histogram(values, bins=100)), ("rose_classes", rose)):
    report(name, f)
