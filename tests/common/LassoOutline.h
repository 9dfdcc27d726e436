#pragma once
// The lasso the lasso test and bench_lasso share (and bench/anchor_lasso.py draws): a closed
// wobbly loop of n vertices round (500, 400) in a 1000 x 800 raster, with edges at every slope.

#include <QPointF>

#include <algorithm>
#include <cmath>
#include <vector>

inline std::vector<QPointF> lassoOutline(int n)
{
    std::vector<QPointF> outline;
    outline.reserve(static_cast<std::size_t>(std::max(n, 0)));
    for (int i = 0; i < n; ++i) {
        const double a = 2 * M_PI * i / n;
        const double r = 300 + 60 * std::sin(7 * a) + 25 * std::cos(23 * a);
        outline.emplace_back(500 + r * std::cos(a), 400 + 0.8 * r * std::sin(a));
    }
    return outline;
}
