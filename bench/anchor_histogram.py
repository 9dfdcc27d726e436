#!/usr/bin/python3
"""numpy, matplotlib and SciPy on the work of bench_histogram, on this machine, in the same run.

  /usr/bin/python3 bench/anchor_histogram.py

histogram_tab     1,000,000 values: numpy.histogram with the Freedman-Diaconis bins, the cumulative
                  curve, numpy.percentile at 10, 50, 90, and matplotlib's hist drawn on an Agg canvas
                  of 1000 x 700 pixels with the three marks
binned_test       two such samples: both histograms on one set of bins, the cumulative curves read
                  at every bin edge with numpy.interp, the largest gap
ks_2samp          scipy.stats.ks_2samp of the two samples (method='asymp')
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time.
"""
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np
from scipy import stats

from anchor_timing import report

rng = np.random.default_rng(5)
n = 1_000_000
first = 0.2 + 0.05 * rng.standard_normal(n)
second = 0.21 + 0.06 * rng.standard_normal(n)
fig = plt.figure(figsize=(10, 7), dpi=100)


def histogram_tab():
    counts, edges = np.histogram(first, bins="fd")
    cumulative = np.cumsum(counts) * 100.0 / counts.sum()
    p10, p50, p90 = np.percentile(first, [10, 50, 90])
    fig.clf()
    ax = fig.add_subplot(111)
    ax.hist(edges[:-1], edges, weights=counts)
    for p in (p10, p50, p90):
        ax.axvline(p, color="blue")
    fig.canvas.draw()
    return cumulative


def binned_test():
    edges = np.histogram_bin_edges(first, bins="fd")
    a, _ = np.histogram(first, bins=edges)
    b, _ = np.histogram(second, bins=edges)
    ca = np.concatenate(([0.0], np.cumsum(a) * 100.0 / a.sum()))
    cb = np.concatenate(([0.0], np.cumsum(b) * 100.0 / b.sum()))
    x = edges
    return np.max(np.abs(np.interp(x, edges, ca) - np.interp(x, edges, cb)))


report("histogram_tab", histogram_tab, repeats=7)
report("binned_test", binned_test, repeats=7)
report("ks_2samp", lambda: stats.ks_2samp(first, second, method="asymp"), repeats=7)
