#pragma once
// Density of axial orientations (poles, lineations) on the sphere, for the stereonet's contours.
//
// FourCorner is the chart's own count: the poles projected on the lower-hemisphere equal-area
// net, each adding 1 to the four nodes of its cell of a square grid of 20 x 20 cells over the
// net, antipodal rim nodes summed, and the node nearest the projection of `at` read in percent
// of the poles. It depends on the grid, so it is offered for comparison only.
//
// Kamb and ExponentialKamb give the density in multiples of the standard deviation sigma of a
// count under a uniform distribution, so that a value reads directly as how far the data stand
// above random. With n poles, the fraction of the sphere counted is, for an axial cone of half
// angle theta (both of its nappes), p = 1 - cos(theta).
//
// Kamb (Kamb, W. B., 1959, Ice petrofabric observations from Blue Glacier, Washington, in
// relation to theory and experiment. J. Geophys. Res. 64, 1891-1909): the cone is chosen so
// that the expected uniform count n p lies `sigma` standard deviations of a binomial count
// above zero, n p = sigma sqrt(n p (1 - p)), hence
//     p = sigma^2 / (n + sigma^2),   cos(theta) = 1 - p.
// The density is the number of poles with |cos(angle to at)| >= cos(theta), divided by the
// count's standard deviation sqrt(n p (1 - p)). A uniform sample thus reads `sigma` on average.
//
// Exponential Kamb (Vollmer, F. W., 1995, C program for automatic contouring of spherical
// orientation data using a modified Kamb method. Computers & Geosciences 21, 31-49): the cone's
// hard edge is replaced by the weight exp(f (|cos| - 1)) with
//     f = 2 (1 + n / sigma^2),
// and the sum of weights is divided by its standard deviation under a uniform distribution,
//     sqrt(n (f / 2 - 1) / f^2).
// Contours come out smoother than the cone's, and again a uniform sample reads about `sigma`.
//
// Poles need not be of unit length: each is normalised, and zero or non-finite vectors are left
// out (and not counted in n). No pole, a non-finite `at`, or a sigma not above 0 gives 0.

#include <gdfVertex.h>

#include <vector>

namespace rkBase {

enum class DensityMethod { FourCorner, Kamb, ExponentialKamb };

double orientationDensity(const std::vector<gdfVertex>& poles, const gdfVertex& at, DensityMethod method,
                          double sigma = 3.0);

// orientationDensity at every one of `nodes`, as the single-point form gives it (to rounding of
// the exponential sums). Kamb and ExponentialKamb only look at poles near each node (binned on
// the hemisphere) and split the nodes over up to four threads; FourCorner goes node by node.
std::vector<double> orientationDensityGrid(const std::vector<gdfVertex>& poles, const std::vector<gdfVertex>& nodes,
                                           DensityMethod method, double sigma = 3.0);

} // namespace rkBase
