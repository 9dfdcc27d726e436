#pragma once
// Inverse sine and cosine that forgive rounding: a dot product of unit vectors may come out as
// 1.0000000000000002, and the plain functions would answer NaN for it.

namespace rke {
namespace rkUtils {

double asin(double value);
double acos(double value);

} // namespace rkUtils
} // namespace rke

namespace rkUtils = rke::rkUtils;
