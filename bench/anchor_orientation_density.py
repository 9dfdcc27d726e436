#!/usr/bin/python3
"""numpy's vectorised Kamb and exponential Kamb densities on the grid of
bench_orientationdensity.cpp, for comparison in the same run.

  /usr/bin/python3 bench/anchor_orientation_density.py

100,000 poles (two clusters of 40 % and 20 %, 15 and 25 degrees wide, over 40 % uniform noise,
from the R2 low-discrepancy sequence as the benchmark builds them) and the 101 x 101 nodes of a
grid over the equal-area net, nodes off the net taken to its rim; sigma 3.

kamb         |nodes @ poles.T| >= cos(theta) counted per node, in blocks of nodes, divided by
             the count's standard deviation (the plain vectorised sum: every pole at every node)
exponential  exp(f (|cos| - 1)) summed per node the same way, over its standard deviation
Prints the best and median of the repeats in milliseconds, wall and CPU (numpy's BLAS may use
more than one thread for the products: compare CPU with the benchmark's CPU column), and the
grid sums, which the benchmark prints as grid_sum.
"""
import numpy as np

from anchor_timing import report

N = 100000
NODES = 101
SIGMA = 3.0


def poles():
    k = np.arange(N, dtype=np.float64)
    u = k * 0.7548776662466927
    u -= np.floor(u)
    v = k * 0.5698402909980532
    v -= np.floor(v)
    kind = np.arange(N) % 5
    out = np.empty((N, 3))
    z = 2.0 * u - 1.0
    s = np.sqrt(1.0 - z * z)
    uniform = np.stack([s * np.cos(2 * np.pi * v), s * np.sin(2 * np.pi * v), z], axis=1)
    out[:] = uniform
    for c, width, mask in (((0.3, 0.4, 0.866), 15.0, kind < 2), ((-0.7, 0.7, 0.1), 25.0, kind == 2)):
        c = np.array(c) / np.linalg.norm(c)
        e1 = np.cross(c, [0.0, 0.0, 1.0])
        e1 /= np.linalg.norm(e1)
        e2 = np.cross(c, e1)
        d = np.radians(width) * np.sqrt(u[mask])
        phi = 2 * np.pi * v[mask]
        out[mask] = (np.outer(np.cos(d), c) + np.outer(np.sin(d) * np.cos(phi), e1)
                     + np.outer(np.sin(d) * np.sin(phi), e2))
    return out


def nodes():
    i, j = np.meshgrid(np.arange(NODES), np.arange(NODES), indexing="ij")
    east = -1.0 + 2.0 * i.ravel() / (NODES - 1)
    north = 1.0 - 2.0 * j.ravel() / (NODES - 1)
    rho2 = east * east + north * north
    out = rho2 > 1.0
    east[out] /= np.sqrt(rho2[out])
    north[out] /= np.sqrt(rho2[out])
    rho2[out] = 1.0
    k = np.sqrt(2.0 - rho2)
    return np.stack([north * k, east * k, 1.0 - rho2], axis=1)


P = poles()
G = nodes()
n = P.shape[0]
BLOCK = 64


def kamb():
    p = SIGMA * SIGMA / (n + SIGMA * SIGMA)
    cone = 1.0 - p
    out = np.empty(G.shape[0])
    for b in range(0, G.shape[0], BLOCK):
        out[b:b + BLOCK] = (np.abs(G[b:b + BLOCK] @ P.T) >= cone).sum(axis=1)
    return out / np.sqrt(n * p * (1.0 - p))


def exponential():
    f = 2.0 * (1.0 + n / (SIGMA * SIGMA))
    out = np.empty(G.shape[0])
    for b in range(0, G.shape[0], BLOCK):
        out[b:b + BLOCK] = np.exp(f * (np.abs(G[b:b + BLOCK] @ P.T) - 1.0)).sum(axis=1)
    return out * f / np.sqrt(n * (f / 2.0 - 1.0))


print(f"kamb grid_sum {kamb().sum():.6f}, exponential grid_sum {exponential().sum():.6f}")
report("kamb", kamb, repeats=3)
report("exponential", exponential, repeats=3)
