#!/usr/bin/python3
"""numpy on the work of the derived-attribute calls, on this machine, for comparison in the same
run as bench_derived_attributes.

  /usr/bin/python3 bench/anchor_derived_attributes.py

1,000,000 rows (dip uniform in 0..90, azimuth in 0..360, depth 1000 + 0.01 r; seed 11). A column
is a float64 array with a validity byte array beside it, as the sheet stores it; "new" makes both,
"reused" writes into a copy of an existing pair (the copy standing for the undo snapshot).

rotated    two columns from the model's points at their table rows, with min, max and mean
random     2,000,000 draws of the 32-bit generator (state * 69069 mod 2^32, u = (state - 1) /
           (2^32 - 1)), dip = acos(1 - u1), azimuth = u2 * 2 pi, both in degrees, into two columns
cluster    a blanked column, then the cluster number of every row that has one
bias       the Terzaghi weight count / (|cos| total) of every pole against a 10/090 scanline with
           a minimum bias angle of 5 degrees, into one blanked column
decimation 200 interval averages of the dips by depth, written at the row nearest each interval's
           mean depth, and the "$V" column cleared and set on those rows
undo       a reused column's values and validity put back from the snapshot
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import numpy as np

from anchor_timing import report

N = 1_000_000
rng = np.random.default_rng(11)
dip = rng.uniform(0.0, 90.0, N)
azimuth = rng.uniform(0.0, 360.0, N)
depth = 1000.0 + 0.01 * np.arange(N)
table_rows = np.arange(N)
clusters = rng.integers(-1, 3, N)
SCALE = 1.0 / 4294967295.0


def new_column():
    return np.zeros(N), np.zeros(N, dtype=np.uint8)


def summary(values, valid):
    v = values[valid != 0]
    return (v.min(), v.max(), v.mean()) if v.size else None


def write(column, rows, values):
    column[0][rows] = values
    column[1][rows] = 1
    return summary(*column)


def rotated(reused):
    out = []
    for src in (dip, azimuth):
        column = (reused[0].copy(), reused[1].copy()) if reused else new_column()
        write(column, table_rows, src)
        out.append(column)
    return out


def draws(n):
    state = np.cumprod(np.full(n, 69069, dtype=np.uint32), dtype=np.uint32)
    return (state.astype(np.float64) - 1.0) * SCALE


def random_orientations():
    u = draws(2 * N)
    u1, u2 = u[0::2], u[1::2]
    d = np.degrees(np.arccos(np.clip(1.0 - u1, -1.0, 1.0)))
    a = np.degrees(u2 * 2.0 * np.pi)
    return write(new_column(), table_rows, d), write(new_column(), table_rows, a)


def cluster():
    column = new_column()
    has = clusters >= 0
    return write(column, table_rows[has], clusters[has].astype(np.float64))


def bias():
    d, a = np.radians(dip), np.radians(azimuth)
    pole = np.stack([-np.sin(d) * np.cos(a), -np.sin(d) * np.sin(a), np.cos(d)], axis=1)
    sp, sa = np.radians(10.0), np.radians(90.0)
    scan = np.array([np.cos(sa) * np.cos(sp), np.sin(sa) * np.cos(sp), np.sin(sp)])
    alpha = np.degrees(np.arccos(np.clip(np.abs(pole @ scan), -1.0, 1.0)))
    ok = 5.0 <= 90.0 - alpha
    c = np.abs(pole @ scan)
    c[c == 0.0] = 1.0
    total = (1.0 / c[ok]).sum()
    weight = np.where(ok, ok.sum() / (c * total), 1.0)
    return write(new_column(), table_rows, weight)


def decimation():
    edges = np.linspace(1000.0, 1000.0 + 0.01 * N, 201)
    interval = np.clip(np.searchsorted(edges, depth, side="left") - 1, 0, 199)
    count = np.bincount(interval, minlength=200)
    mean_dip = np.bincount(interval, dip, 200) / count
    mean_depth = np.bincount(interval, depth, 200) / count
    nearest = np.searchsorted(depth, mean_depth).clip(0, N - 1)
    column = new_column()
    write(column, nearest, mean_dip)
    visible = np.zeros(N, dtype=bool)
    visible[nearest] = True
    return visible


def undo(snapshot, column):
    np.copyto(column[0], snapshot[0])
    np.copyto(column[1], snapshot[1])


if __name__ == "__main__":
    first = draws(6)
    print("first draws: dip %.15g %.15g, azimuth %.15g %.15g" % (
        np.degrees(np.arccos(1.0 - first[0])), np.degrees(np.arccos(1.0 - first[2])),
        np.degrees(first[1] * 2.0 * np.pi), np.degrees(first[3] * 2.0 * np.pi)))
    existing = (np.full(N, 5.0), np.ones(N, dtype=np.uint8))
    report("rotated, new", lambda: rotated(None))
    report("rotated, reused", lambda: rotated(existing))
    report("random orientations (2,000,000 draws)", random_orientations)
    report("cluster", cluster)
    report("bias weight", bias)
    report("decimation", decimation)
    target = new_column()
    report("undo of one reused column", lambda: undo(existing, target))
