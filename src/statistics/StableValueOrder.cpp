#include "StableValueOrder.h"

#include <algorithm>
#include <array>
#include <memory>

namespace rkBase {

namespace {
// The radix passes sort on the upper 32 bits of the ordered bit patterns only, in eight-byte
// entries: a quarter of the memory traffic of sorting whole keys. Values that share those bits
// (equal values, or ones within about a millionth of each other) end up side by side in the
// order given and are put right afterwards, a run at a time.
constexpr int kDigitBits = 11;
constexpr int kBuckets = 1 << kDigitBits;
constexpr int kDigits = (32 + kDigitBits - 1) / kDigitBits;
constexpr std::size_t kInsertionRun = 32;

struct Entry {
    std::uint32_t high;
    std::uint32_t position;
};

inline std::uint32_t digit(std::uint32_t key, int d)
{
    return (key >> (d * kDigitBits)) & (kBuckets - 1);
}

// Orders entries [first, last), which share their upper bits and are in position order, by
// value; equal values keep position order.
void settleRun(Entry* first, Entry* last, const double* values)
{
    auto before = [values](const Entry& l, const Entry& r) { return values[l.position] < values[r.position]; };
    if (std::is_sorted(first, last, before))
        return; // equal values, the usual run
    if (std::size_t(last - first) <= kInsertionRun) {
        for (Entry* i = first + 1; i < last; ++i) {
            const Entry e = *i;
            Entry* j = i;
            for (; j > first && before(e, *(j - 1)); --j)
                *j = *(j - 1);
            *j = e;
        }
        return;
    }
    std::stable_sort(first, last, before);
}

inline std::uint32_t highBits(double v)
{
    return std::uint32_t(StableValueOrder::orderedBits(v) >> 32);
}
} // namespace

void StableValueOrder::compute(const std::int32_t* values, std::size_t n, std::vector<std::uint32_t>& order)
{
    order.resize(n);
    if (n == 0)
        return;
    const auto [low, high] = std::minmax_element(values, values + n);
    const std::int64_t span = std::int64_t(*high) - std::int64_t(*low) + 1;
    if (span > std::int64_t(4) << 20) {
        std::vector<double> asDoubles(values, values + n);
        compute(asDoubles.data(), n, order);
        return;
    }
    std::vector<std::uint32_t> start(std::size_t(span) + 1, 0);
    const std::int32_t base = *low;
    for (std::size_t i = 0; i < n; ++i)
        ++start[std::size_t(std::int64_t(values[i]) - base) + 1];
    for (std::size_t k = 1; k < start.size(); ++k)
        start[k] += start[k - 1];
    for (std::size_t i = 0; i < n; ++i)
        order[start[std::size_t(std::int64_t(values[i]) - base)]++] = std::uint32_t(i);
}

void StableValueOrder::compute(const double* values, std::size_t n, std::vector<std::uint32_t>& order)
{
    order.resize(n);
    if (n == 0)
        return;
    std::array<std::array<std::uint32_t, kBuckets>, kDigits> counts{};
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint32_t high = highBits(values[i]);
        for (int d = 0; d < kDigits; ++d)
            ++counts[std::size_t(d)][digit(high, d)];
    }
    // Left uninitialised: every entry is written by the first pass before it is read, and a
    // million zeroed entries would cost as much as a pass.
    std::unique_ptr<Entry[]> a(new Entry[n]);
    std::unique_ptr<Entry[]> b(new Entry[n]);
    Entry* from = nullptr; // null while the entries are still the values in position order
    Entry* to = a.get();
    const std::uint32_t firstHigh = highBits(values[0]);
    for (int d = 0; d < kDigits; ++d) {
        auto& count = counts[std::size_t(d)];
        // A digit that every key shares moves nothing: skip its pass (the top digit of values of
        // one sign and a narrow range).
        if (count[digit(firstHigh, d)] == n)
            continue;
        std::uint32_t sum = 0;
        for (std::uint32_t& c : count) {
            const std::uint32_t here = c;
            c = sum;
            sum += here;
        }
        if (!from) {
            for (std::size_t i = 0; i < n; ++i) {
                const std::uint32_t high = highBits(values[i]);
                to[count[digit(high, d)]++] = {high, std::uint32_t(i)};
            }
        } else {
            for (std::size_t i = 0; i < n; ++i)
                to[count[digit(from[i].high, d)]++] = from[i];
        }
        from = to;
        to = to == a.get() ? b.get() : a.get();
    }
    if (!from) {
        // One run of shared upper bits: the values decide alone.
        for (std::size_t i = 0; i < n; ++i)
            a[i] = {firstHigh, std::uint32_t(i)};
        from = a.get();
    }
    for (std::size_t i = 0; i < n;) {
        std::size_t j = i + 1;
        while (j < n && from[j].high == from[i].high)
            ++j;
        if (j - i > 1)
            settleRun(from + i, from + j, values);
        i = j;
    }
    for (std::size_t i = 0; i < n; ++i)
        order[i] = from[i].position;
}

} // namespace rkBase
