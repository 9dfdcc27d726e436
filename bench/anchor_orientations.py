"""The orientations the stereo anchors share: 1,000,000 planes (dip, dip azimuth in degrees), a
seeded mix of two clusters and uniform noise, and the direction cosines of their poles and dip
directions (x north, y east, z down)."""
import numpy as np

N = 1_000_000


def orientations(n=N, seed=11):
    rng = np.random.default_rng(seed)
    # 45 % about 30/120, 35 % about 65/290, 20 % anywhere on the lower hemisphere.
    k1, k2 = int(0.45 * n), int(0.35 * n)
    k3 = n - k1 - k2
    dip = np.concatenate((
        np.abs(rng.normal(30.0, 7.0, k1)),
        np.abs(rng.normal(65.0, 9.0, k2)),
        np.degrees(np.arccos(rng.random(k3))),
    ))
    azimuth = np.concatenate((
        rng.normal(120.0, 12.0, k1),
        rng.normal(290.0, 15.0, k2),
        rng.uniform(0.0, 360.0, k3),
    ))
    dip = np.minimum(dip, 90.0)
    azimuth = np.mod(azimuth, 360.0)
    order = rng.permutation(n)
    return dip[order], azimuth[order]


def cosines(dip, azimuth):
    """Unit poles and unit dip directions, each an (n, 3) array."""
    d, a = np.radians(dip), np.radians(azimuth)
    sd, cd, sa, ca = np.sin(d), np.cos(d), np.sin(a), np.cos(a)
    poles = np.column_stack((-ca * sd, -sa * sd, cd))
    lines = np.column_stack((ca * cd, sa * cd, sd))
    return poles, lines


def plunge_azimuth(v):
    """(plunge, azimuth) in degrees of a unit vector, turned into the lower hemisphere."""
    if v[2] < 0:
        v = -v
    return np.degrees(np.arcsin(min(1.0, v[2]))), np.degrees(np.arctan2(v[1], v[0])) % 360.0
