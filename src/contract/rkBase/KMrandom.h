#pragma once
// The random source of the k-means code: which data points start a run. It is never seeded by
// the library, so a process draws the same sequence unless someone seeds it; a caller that
// wants a run it can repeat seeds it before building the centres. One generator per thread.

#include <cstdint>

class KMrandom
{
public:
    static void seed(std::uint64_t value);
    // Uniform in [0, n); 0 for n < 1.
    static int uniformIndex(int n);
};
