#include "rkUtils.h"

#include <algorithm>
#include <cmath>

namespace rke {
namespace rkUtils {

double asin(double value)
{
    if (std::isnan(value))
        return value;
    return std::asin(std::clamp(value, -1.0, 1.0));
}

double acos(double value)
{
    if (std::isnan(value))
        return value;
    return std::acos(std::clamp(value, -1.0, 1.0));
}

} // namespace rkUtils
} // namespace rke
