#!/usr/bin/python3
"""numpy on the work of fitting a Fisher distribution to the stereonet's poles (the three
probability plots of the statistics tab), on this machine, for comparison in the same run.

  /usr/bin/python3 bench/anchor_fisherfit.py

The 1,000,000 planes of anchor_orientations.py (seed 11), as poles:

rotate       the orientation matrix and np.linalg.eigh for the mean principal pole, then every pole
             in a frame whose third axis is that pole: colatitude and longitude
colatitude   1 - cos(colatitude), sorted, against the exponential quantiles ln(n / (n - i + 0.5))
longitude    the longitude rounded to whole degrees over 360, sorted, against the uniform
             quantiles (i - 0.5) / n
normal       sqrt(sin(colatitude)) x longitude (radians, -pi..pi), sorted, against the standard
             normal quantiles of (i - 0.5) / n: scipy.stats.norm.ppf where scipy is installed,
             else Acklam's rational approximation in numpy (numpy has no erfinv)
slopes       the three regression lines through the quantile pairs (np.polyfit of degree 1)
total        all of the above in a row, as one refresh of the fit
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import numpy as np

from anchor_orientations import cosines, orientations, plunge_azimuth
from anchor_timing import report

try:
    from scipy.stats import norm

    normal_quantile = norm.ppf
    QUANTILES = "scipy.stats.norm.ppf"
except ImportError:  # Acklam's approximation, break points 0.02425 and 0.97575
    A = (-3.969683028665376e01, 2.209460984245205e02, -2.759285104469687e02, 1.383577518672690e02,
         -3.066479806614716e01, 2.506628277459239e00)
    B = (-5.447609879822406e01, 1.615858368580409e02, -1.556989798598866e02, 6.680131188771972e01,
         -1.328068155288572e01)
    C = (-7.784894002430293e-03, -3.223964580411365e-01, -2.400758277161838e00, -2.549732539343734e00,
         4.374664141464968e00, 2.938163982698783e00)
    D = (7.784695709041462e-03, 3.224671290700398e-01, 2.445134137142996e00, 3.754408661907416e00)

    def normal_quantile(p):
        p = np.asarray(p, dtype=float)
        out = np.empty_like(p)
        low, high = p < 0.02425, p > 0.97575
        mid = ~(low | high)
        q = p[mid] - 0.5
        r = q * q
        out[mid] = ((((((A[0] * r + A[1]) * r + A[2]) * r + A[3]) * r + A[4]) * r + A[5]) * q
                    / (((((B[0] * r + B[1]) * r + B[2]) * r + B[3]) * r + B[4]) * r + 1.0))
        for mask, sign, tail in ((low, 1.0, p[low]), (high, -1.0, 1.0 - p[high])):
            q = np.sqrt(-2.0 * np.log(tail))
            out[mask] = sign * ((((((C[0] * q + C[1]) * q + C[2]) * q + C[3]) * q + C[4]) * q + C[5])
                                / ((((D[0] * q + D[1]) * q + D[2]) * q + D[3]) * q + 1.0))
        return out

    QUANTILES = "Acklam's approximation"

dip, azimuth = orientations()
poles, _ = cosines(dip, azimuth)
n = poles.shape[0]
rank = np.arange(1, n + 1, dtype=float)


def rotate():
    _, v = np.linalg.eigh(poles.T @ poles)
    mean = v[:, 2] if v[2, 2] >= 0.0 else -v[:, 2]
    # A frame whose third axis is the mean pole; its first axis is horizontal.
    first = np.cross((0.0, 0.0, 1.0), mean)
    norm_first = np.linalg.norm(first)
    first = first / norm_first if norm_first > 1e-12 else np.array([1.0, 0.0, 0.0])
    second = np.cross(mean, first)
    local = poles @ np.column_stack((first, second, mean))
    # Poles are axes: each is taken on the mean's side.
    local[local[:, 2] < 0.0] *= -1.0
    colatitude = np.arccos(np.clip(local[:, 2], -1.0, 1.0))
    longitude = np.arctan2(local[:, 1], local[:, 0])
    return plunge_azimuth(mean), colatitude, longitude


def colatitude_quantiles(colatitude):
    return np.log(n / (n - rank + 0.5)), np.sort(1.0 - np.cos(colatitude))


def longitude_quantiles(longitude):
    degrees = np.rint(np.degrees(longitude) % 360.0)
    return (rank - 0.5) / n, np.sort(degrees / 360.0)


def normal_quantiles(colatitude, longitude):
    return normal_quantile((rank - 0.5) / n), np.sort(np.sqrt(np.sin(colatitude)) * longitude)


def slopes(*pairs):
    return [np.polyfit(reference, sample, 1)[0] for reference, sample in pairs]


def total():
    _, colatitude, longitude = rotate()
    pairs = (colatitude_quantiles(colatitude), longitude_quantiles(longitude),
             normal_quantiles(colatitude, longitude))
    return slopes(*pairs)


mean, colatitude, longitude = rotate()
pairs = (colatitude_quantiles(colatitude), longitude_quantiles(longitude), normal_quantiles(colatitude, longitude))
a, b, c = slopes(*pairs)
print(f"mean pole {mean[0]:.2f}/{mean[1]:.2f}; slopes {a:.5f} {b:.5f} {c:.5f}; kappa from colatitude "
      f"{1.0 / a if a > 0 else 0.0:.3f}, from two variables {1.0 / c ** 2 if c > 0 else 0.0:.3f}; quantiles: {QUANTILES}")
report("rotate", rotate, repeats=7)
report("colatitude", lambda: colatitude_quantiles(colatitude), repeats=7)
report("longitude", lambda: longitude_quantiles(longitude), repeats=7)
report("normal", lambda: normal_quantiles(colatitude, longitude), repeats=7)
report("slopes", lambda: slopes(*pairs), repeats=7)
report("total", total, repeats=5)
