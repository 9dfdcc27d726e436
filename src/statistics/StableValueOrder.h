#pragma once
// The order of a million values for quantile plots and their like: ascending, equal values in
// the order given, as a stable sort would leave them. A least-significant-digit radix sort on
// the values' bit patterns does this in a few linear passes where a comparison sort of
// (value, position) pairs spends most of its time on branch misses.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace rkBase {

class StableValueOrder
{
public:
    // order receives the positions 0 .. n-1 of values, ascending by value, equal values (0.0 and
    // -0.0 among them) by position. NaN sorts after everything, infinities where they belong.
    static void compute(const double* values, std::size_t n, std::vector<std::uint32_t>& order);

    // The same for whole numbers: one counting pass where they span a few million at most.
    static void compute(const std::int32_t* values, std::size_t n, std::vector<std::uint32_t>& order);

    // The bit pattern of v as an unsigned integer that orders as v does (-0.0 as 0.0).
    static std::uint64_t orderedBits(double v)
    {
        if (v == 0.0)
            v = 0.0; // -0.0 and 0.0 compare equal, so they must share a key
        if (v != v)
            return ~std::uint64_t(0); // NaN after everything
        std::uint64_t bits;
        std::memcpy(&bits, &v, sizeof bits);
        // Negative values: all bits flipped, so that larger magnitudes come first; positive ones:
        // the sign bit set, so that they follow every negative.
        return (bits >> 63) != 0 ? ~bits : bits | (std::uint64_t(1) << 63);
    }
};

} // namespace rkBase
