#!/usr/bin/python3
"""numpy and matplotlib on the work of opening the stereonet tab, on this machine, for comparison
in the same run.

  /usr/bin/python3 bench/anchor_stereotab.py

1,000,000 planes (dip, dip azimuth; seed 11: 45 % about 30/120, 35 % about 65/290, 20 % uniform
noise, anchor_orientations.py):

cosines    direction cosines of the poles and of the dip directions
tensor     the orientation matrix of the poles (raw sums) and np.linalg.eigh: the mean principal
           pole and Woodcock's ln(e3/e2), ln(e2/e1), K and C (e3 the largest eigenvalue)
fisher     the resultant of the poles, R / N, Fisher's kappa (N - 1) / (N - R) and the 95 %
           confidence cone acos(1 - (20^(1 / (N - 1)) - 1) (N - R) / R)
density    equal-area projection of the poles and of the dip directions, each counted into a
           21 x 21 grid over the net (np.histogram2d)
draw       a 1000 x 800 pixel Agg figure: the net's circle with its 10-degree great and small
           circles, the 1,000,000 projected poles as '+' markers, saved as PNG into a buffer
total      all of the above in a row, as one opening of the tab
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import io

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import numpy as np  # noqa: E402

from anchor_orientations import cosines, orientations, plunge_azimuth  # noqa: E402
from anchor_timing import report  # noqa: E402

dip, azimuth = orientations()
N = dip.size
GRID = 21


def tensor(poles):
    m = poles.T @ poles
    e, v = np.linalg.eigh(m)  # ascending: e[2] is the largest
    ln32, ln21 = np.log(e[2] / e[1]), np.log(e[1] / e[0])
    return {"principal": plunge_azimuth(v[:, 2]), "lnE3E2": ln32, "lnE2E1": ln21, "K": ln32 / ln21,
            "C": np.log(e[2] / e[0])}


def fisher(poles):
    resultant = poles.sum(axis=0)
    r = float(np.sqrt(resultant @ resultant))
    kappa = (N - 1) / (N - r)
    cone = np.degrees(np.arccos(1.0 - np.expm1(np.log(20.0) / (N - 1)) * (N - r) / r))
    return {"resultant": plunge_azimuth(resultant / r), "R/N": r / N, "kappa": kappa, "cone95": cone}


def equal_area(v):
    """Lower-hemisphere equal-area (x east, y north) of unit vectors, radius 1 at the rim."""
    v = np.where(v[:, 2:3] < 0.0, -v, v)
    r = np.sqrt(np.maximum(0.0, 1.0 - v[:, 2]))  # sqrt(2) sin(half the angle from the vertical)
    h = np.hypot(v[:, 0], v[:, 1])
    h[h == 0.0] = 1.0
    return r * v[:, 1] / h, r * v[:, 0] / h


def density(poles, lines):
    grids, points = [], []
    for v in (poles, lines):
        x, y = equal_area(v)
        grids.append(np.histogram2d(x, y, bins=GRID, range=((-1.0, 1.0), (-1.0, 1.0)))[0])
        points.append((x, y))
    return grids, points[0]


def net_lines():
    rim = np.linspace(0, 2 * np.pi, 361)
    lines = [(np.cos(rim), np.sin(rim))]
    pitch = np.radians(np.arange(0, 181, 5))
    for d in range(10, 90, 10):
        a = np.radians(d)
        for side in (1, -1):
            # Great circles dipping east and west, and small circles about the north-south axis.
            plunge = np.arcsin(np.sin(a) * np.sin(pitch))
            trend = np.arctan2(np.cos(pitch), side * np.cos(a) * np.sin(pitch))
            r = np.sqrt(2) * np.sin((np.pi / 2 - plunge) / 2)
            lines.append((r * np.sin(np.pi / 2 - trend), r * np.cos(np.pi / 2 - trend)))
            v = np.column_stack((side * np.cos(a) * np.ones_like(pitch), np.sin(a) * np.cos(pitch),
                                 np.sin(a) * np.sin(pitch)))
            lines.append(equal_area(v))
    return lines


def draw(points):
    fig = plt.figure(figsize=(10, 8), dpi=100)
    ax = fig.add_axes([0, 0, 1, 1])
    ax.set_aspect("equal")
    ax.axis("off")
    ax.set_xlim(-1.25, 1.25)
    ax.set_ylim(-1.0, 1.0)
    for i, (x, y) in enumerate(net_lines()):
        ax.plot(x, y, color="k" if i == 0 else "0.75", lw=1.0 if i == 0 else 0.8)
    ax.plot(points[0], points[1], "+", ms=4, mew=1, color="black")
    buffer = io.BytesIO()
    fig.savefig(buffer, format="png")
    plt.close(fig)
    return buffer.getbuffer().nbytes


poles, lines = cosines(dip, azimuth)
_, projected = density(poles, lines)


def total():
    p, l = cosines(dip, azimuth)
    tensor(p)
    fisher(p)
    _, points = density(p, l)
    return draw(points)


t, f = tensor(poles), fisher(poles)
print(f"mean principal pole {t['principal'][0]:.2f}/{t['principal'][1]:.2f}; ln(e3/e2) {t['lnE3E2']:.4f}, "
      f"ln(e2/e1) {t['lnE2E1']:.4f}, K {t['K']:.4f}, C {t['C']:.4f}")
print(f"mean resultant {f['resultant'][0]:.2f}/{f['resultant'][1]:.2f}; R/N {f['R/N']:.4f}, kappa {f['kappa']:.3f}, "
      f"cone95 {f['cone95']:.4f} deg")
print(f"png bytes: {draw(projected)}")
report("cosines", lambda: cosines(dip, azimuth), repeats=7)
report("tensor", lambda: tensor(poles), repeats=7)
report("fisher", lambda: fisher(poles), repeats=7)
report("density", lambda: density(poles, lines), repeats=7)
report("draw", lambda: draw(projected), repeats=5)
report("total", total, repeats=5)
