#pragma once
// Angles and sentinels shared by the orientation geometry, the bias weights and the statistics.

namespace rkBase {
namespace orientation {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegToRad = kPi / 180.0;
constexpr double kRadToDeg = 180.0 / kPi;
// Below this an angle in degrees, a vector component or an eigenvalue counts as zero.
constexpr double kZeroTolerance = 5e-09;
// No value: a blank azimuth cell, a dispersion too large to compute.
constexpr double kNoValue = 99999.0;
// Where every minimum search starts (and, negated, every maximum search).
constexpr double kSearchStart = 1e27;

} // namespace orientation
} // namespace rkBase
