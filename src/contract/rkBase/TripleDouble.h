#pragma once
// Three doubles, as eigenvalue triples are passed around.

#include "Triple.h"

namespace rke {
namespace rkUtils {
namespace rkMath {

typedef Triple<double> TripleDouble;

} // namespace rkMath
} // namespace rkUtils
} // namespace rke
