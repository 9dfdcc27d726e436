#pragma once
// Constants shared by the orientation geometry.

namespace rke {
namespace rkUtils {
namespace rkMath {

template <class T> struct MathConstants
{
    static constexpr T PI = T(3.14159265358979323846264338327950288);
    // Below this a length or a determinant counts as zero.
    static constexpr T ZERO_TOLERANCE = T(1e-06);
    static constexpr T DEG_TO_RAD = PI / T(180);
    static constexpr T RAD_TO_DEG = T(180) / PI;
};

typedef MathConstants<double> MathConstantsDouble;

} // namespace rkMath
} // namespace rkUtils
} // namespace rke

namespace rkMath = rke::rkUtils::rkMath;
