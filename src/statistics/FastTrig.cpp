#include "FastTrig.h"

namespace rkBase {

#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && defined(__linux__)
__attribute__((target_clones("avx2", "default")))
#endif
void FastTrig::sinCosArray(const double* x, double* s, double* c, int n)
{
    for (int i = 0; i < n; ++i)
        reduced(x[i], s[i], c[i]);
    // The rare arguments the reduction cannot take are redone by the library afterwards, which
    // keeps the loop above free of branches.
    for (int i = 0; i < n; ++i) {
        if (!(std::abs(x[i]) <= 1e5)) {
            s[i] = std::sin(x[i]);
            c[i] = std::cos(x[i]);
        }
    }
}

} // namespace rkBase
