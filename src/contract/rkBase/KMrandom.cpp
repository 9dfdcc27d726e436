#include "KMrandom.h"

#include <random>

namespace {
std::mt19937_64& generator()
{
    thread_local std::mt19937_64 g; // default seed: repeatable until someone seeds it
    return g;
}
} // namespace

void KMrandom::seed(std::uint64_t value)
{
    generator().seed(value);
}

int KMrandom::uniformIndex(int n)
{
    if (n < 1)
        return 0;
    std::uniform_int_distribution<int> pick(0, n - 1);
    return pick(generator());
}
