#!/usr/bin/python3
"""Writes ks_2samp_reference.csv: fixed pairs of samples with SciPy's two-sample
Kolmogorov-Smirnov results, the expected numbers of tst_kolmogorovsmirnov.

  /usr/bin/python3 tests/statistics/data/ks_2samp_reference.py

One line per pair, ';'-separated: name; first sample; second sample (values separated by
spaces, written exactly); D and n1, n2 from scipy.stats.ks_2samp; the asymptotic p-value
kstwobign.sf(sqrt(n1 n2 / (n1 + n2)) D) of the Kolmogorov distribution; and ks_2samp's own
p-value with method='asymp', which SciPy takes from the finite-n distribution kstwo at
round(n1 n2 / (n1 + n2)) and which therefore differs a little for small samples.
"""
import os

import numpy as np
from scipy import stats

rng = np.random.default_rng(21)
pairs = [
    ("same normal", rng.normal(0.2, 0.05, 200), rng.normal(0.2, 0.05, 300)),
    ("shifted normal", rng.normal(0.0, 1.0, 250), rng.normal(0.4, 1.0, 180)),
    ("ties", np.round(rng.normal(10.0, 3.0, 150)), np.round(rng.normal(11.0, 3.0, 150))),
    ("disjoint", rng.random(40), 2.0 + rng.random(60)),
    ("identical", np.linspace(1.0, 2.0, 100), np.linspace(1.0, 2.0, 100)),
    ("wider spread", rng.normal(0.0, 1.0, 2000), rng.normal(0.0, 1.3, 1500)),
    ("one value each", np.array([1.0]), np.array([2.0])),
]
out = os.path.join(os.path.dirname(os.path.abspath(__file__)), "ks_2samp_reference.csv")
with open(out, "w") as f:
    for name, a, b in pairs:
        r = stats.ks_2samp(a, b, method="asymp")
        n1, n2 = len(a), len(b)
        limit = stats.kstwobign.sf(np.sqrt(n1 * n2 / (n1 + n2)) * r.statistic)
        f.write(";".join([name, " ".join(repr(float(v)) for v in a), " ".join(repr(float(v)) for v in b),
                          repr(float(r.statistic)), str(n1), str(n2), repr(float(limit)), repr(float(r.pvalue))]) + "\n")
        print(f"{name:15s} D={r.statistic:.6f} n1={n1} n2={n2} p_limit={limit:.6g} p_scipy_asymp={r.pvalue:.6g}")
