#!/usr/bin/python3
"""numpy on the work of bench_regression, on this machine, for comparison in the same run.

  /usr/bin/python3 bench/anchor_regression.py

regression          numpy.polyfit of degree 1 through 1,000,000 points
decimation          the mean x and y of 1,000,000 points in 100 depth intervals
                    (np.searchsorted + np.bincount with weights)
decimation_oriented the same intervals with each one's mean plane: pole vectors from dip and
                    azimuth, the nine sums of the orientation matrix by np.bincount, and the
                    eigenvector of the smallest eigenvalue per interval (np.linalg.eigh)
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import numpy as np

from anchor_timing import report

rng = np.random.default_rng(7)
n = 1_000_000
depth = 1000.0 + np.arange(n) * 0.002
dip = np.abs(30.0 + 0.01 * (depth - 1000.0) + rng.normal(0.0, 5.0, n))
azimuth = 120.0 + rng.uniform(-20.0, 20.0, n)
bounds = np.linspace(1000.0, 1000.0 + n * 0.002, 101)


def intervals():
    return np.clip(np.searchsorted(bounds, depth, side="left") - 1, 0, 99)


def decimation():
    i = intervals()
    count = np.bincount(i, minlength=100)
    return np.bincount(i, dip, 100) / count, np.bincount(i, depth, 100) / count


def decimation_oriented():
    i = intervals()
    d, a = np.radians(dip), np.radians(azimuth)
    v = np.stack((-np.cos(a) * np.sin(d), -np.sin(a) * np.sin(d), np.cos(d)))
    m = np.empty((100, 3, 3))
    for r in range(3):
        for c in range(r, 3):
            m[:, r, c] = m[:, c, r] = np.bincount(i, v[r] * v[c], 100)
    return np.linalg.eigh(m)[1][:, :, 0], np.bincount(i, depth, 100)


for name, f in (("regression", lambda: np.polyfit(dip, depth, 1)), ("decimation", decimation),
                ("decimation_oriented", decimation_oriented)):
    report(name, f)
