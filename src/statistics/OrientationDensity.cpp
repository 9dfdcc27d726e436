// Kamb counts look at a cone of a few hundredths of a radian for large n, and the exponential
// weight falls below e^-40 within a few degrees, so the grid form bins the poles on the lower
// hemisphere by (x, y) and visits only the bins about a node (and about its antipode when the node
// lies near the horizontal). A pole inside the chord distance of the node is inside the box in
// (x, y), since dropping z never lengthens a chord.
#include "OrientationDensity.h"

#include <algorithm>
#include <cmath>
#include <thread>

namespace rkBase {

namespace {

constexpr int kFourCornerCells = 20;
constexpr int kMaxThreads = 4;
// Weights below e^-(kTail + ln n) are left out of the exponential sums: all of them together
// stay below e^-kTail, far below the last bit of any density that reaches a contour.
constexpr double kTail = 40.0;

struct Unit {
    double x, y, z;
};

bool toUnit(const gdfVertex& v, Unit& u)
{
    const double l = v.length();
    if (!(l > 0.0) || !std::isfinite(l))
        return false;
    u = {v.x() / l, v.y() / l, v.z() / l};
    return true;
}

std::vector<Unit> unitPoles(const std::vector<gdfVertex>& poles)
{
    std::vector<Unit> out;
    out.reserve(poles.size());
    Unit u;
    for (const gdfVertex& p : poles)
        if (toUnit(p, u))
            out.push_back(u);
    return out;
}

// The sums and scales of one method for n poles.
struct Method {
    DensityMethod kind = DensityMethod::Kamb;
    double n = 0.0;
    double cosCone = 1.0; // Kamb: poles at |cos| >= cosCone count
    double f = 0.0;       // exponential weight
    double scale = 0.0;   // 1 / standard deviation of the sum
    double reach = 0.0;   // chord beyond which a pole adds nothing

    Method(DensityMethod method, std::size_t count, double sigma) : kind(method), n(double(count))
    {
        if (method == DensityMethod::Kamb) {
            const double p = sigma * sigma / (n + sigma * sigma);
            cosCone = 1.0 - p;
            scale = 1.0 / std::sqrt(n * p * (1.0 - p));
            reach = std::sqrt(2.0 * p);
        } else {
            f = 2.0 * (1.0 + n / (sigma * sigma));
            scale = f / std::sqrt(n * (f / 2.0 - 1.0));
            // f (1 - |cos|) <= limit  <=>  chord^2 = 2 (1 - cos) <= 2 limit / f
            reach = std::sqrt(2.0 * (kTail + std::log(n + 1.0)) / f);
        }
        reach = reach * (1.0 + 1e-9) + 1e-12;
    }
    // A sigma so small or so large that its square leaves the doubles gives no density.
    bool valid() const { return std::isfinite(scale) && scale > 0.0 && std::isfinite(reach) && reach > 0.0; }
    double term(double c) const
    {
        const double a = std::abs(c);
        if (kind == DensityMethod::Kamb)
            return a >= cosCone ? 1.0 : 0.0;
        return std::exp(f * (a - 1.0));
    }
};

bool usable(std::size_t n, double sigma)
{
    return n > 0 && sigma > 0.0 && std::isfinite(sigma);
}

// Raster position of the equal-area projection of an axial unit vector on a net of radius 1
// about (0, 0), as the chart places poles: east to the right, north up.
void projectEqualArea(Unit u, double& px, double& py)
{
    if (u.z < 0.0)
        u = {-u.x, -u.y, -u.z};
    const double s = 1.0 / std::sqrt(1.0 + u.z);
    px = u.y * s;
    py = -u.x * s;
}

double fourCorner(const std::vector<Unit>& poles, const Unit& at)
{
    const int nodes = kFourCornerCells + 1;
    const double step = 2.0 / kFourCornerCells;
    std::vector<double> grid(std::size_t(nodes * nodes), 0.0);
    auto cell = [&](double p) {
        for (int i = 0; i + 1 < nodes; ++i)
            if (-1.0 + i * step <= p && p <= -1.0 + (i + 1) * step)
                return i;
        return -1;
    };
    for (const Unit& u : poles) {
        double px, py;
        projectEqualArea(u, px, py);
        const int i = cell(px);
        const int j = cell(py);
        if (i < 0 || j < 0)
            continue;
        for (int k : {i * nodes + j, (i + 1) * nodes + j, (i + 1) * nodes + j + 1, i * nodes + j + 1})
            grid[std::size_t(k)] += 1.0;
    }
    // Rim nodes and their antipodes share their counts, from the counts before the pass.
    const double diagonal = std::sqrt(2.0) * step;
    std::vector<double> wrapped = grid;
    for (int i = 0; i < nodes; ++i)
        for (int j = 0; j < nodes; ++j) {
            const double d = std::hypot(-1.0 + i * step, -1.0 + j * step);
            if (d >= 1.0 - 0.4 * diagonal && d <= 1.0 + 0.4 * diagonal)
                wrapped[std::size_t(i * nodes + j)]
                        = grid[std::size_t(i * nodes + j)] + grid[std::size_t((nodes - 1 - i) * nodes + nodes - 1 - j)];
        }
    double px, py;
    projectEqualArea(at, px, py);
    const int i = std::clamp(int(std::lround((px + 1.0) / step)), 0, nodes - 1);
    const int j = std::clamp(int(std::lround((py + 1.0) / step)), 0, nodes - 1);
    return wrapped[std::size_t(i * nodes + j)] * 100.0 / double(poles.size());
}

double bruteForce(const std::vector<Unit>& poles, const Unit& at, const Method& m)
{
    double sum = 0.0;
    for (const Unit& p : poles)
        sum += m.term(p.x * at.x + p.y * at.y + p.z * at.z);
    return sum * m.scale;
}

// Poles folded to z >= 0 and sorted into square bins over (x, y) in [-1, 1]^2.
class HemisphereBins
{
public:
    HemisphereBins(const std::vector<Unit>& poles, double reach)
        : m_reach(reach), m_side(int(std::clamp(std::ceil(2.0 / reach), 1.0, 1024.0))), m_size(2.0 / m_side)
    {
        std::vector<int> binOf(poles.size());
        m_start.assign(std::size_t(m_side * m_side + 1), 0);
        for (std::size_t k = 0; k < poles.size(); ++k) {
            const Unit u = fold(poles[k]);
            binOf[k] = index(u.x) * m_side + index(u.y);
            ++m_start[std::size_t(binOf[k] + 1)];
        }
        for (std::size_t b = 1; b < m_start.size(); ++b)
            m_start[b] += m_start[b - 1];
        m_poles.resize(poles.size());
        std::vector<int> next(m_start.begin(), m_start.end() - 1);
        for (std::size_t k = 0; k < poles.size(); ++k)
            m_poles[std::size_t(next[std::size_t(binOf[k])]++)] = fold(poles[k]);
    }

    double density(const Unit& node, const Method& m) const
    {
        const Unit q = fold(node);
        double sum = visit(q, m, 1.0);
        // Only a pole within reach of -q, below it in z by at least q.z, can be near the antipode.
        if (q.z <= m_reach)
            sum += visit(q, m, -1.0);
        return sum * m.scale;
    }

private:
    static Unit fold(const Unit& u) { return u.z < 0.0 ? Unit{-u.x, -u.y, -u.z} : u; }
    int index(double c) const { return std::clamp(int((c + 1.0) / m_size), 0, m_side - 1); }

    // Sum over the poles on the side `sign` of q (the antipode for -1) whose cosine to it is
    // positive; the two sides cannot share a pole, as a cone or tail never reaches 90 degrees.
    double visit(const Unit& q, const Method& m, double sign) const
    {
        const double cx = sign * q.x;
        const double cy = sign * q.y;
        const int i0 = index(cx - m_reach), i1 = index(cx + m_reach);
        const int j0 = index(cy - m_reach), j1 = index(cy + m_reach);
        const double limit = 2.0 - m_reach * m_reach; // 2 cos at the reach, in the dot's units
        double sum = 0.0;
        for (int i = i0; i <= i1; ++i) {
            const Unit* first = m_poles.data() + m_start[std::size_t(i * m_side + j0)];
            const Unit* last = m_poles.data() + m_start[std::size_t(i * m_side + j1 + 1)];
            for (const Unit* p = first; p != last; ++p) {
                const double c = p->x * q.x + p->y * q.y + p->z * q.z;
                if (2.0 * sign * c >= limit)
                    sum += m.term(c);
            }
        }
        return sum;
    }

    double m_reach;
    int m_side;
    double m_size;
    std::vector<int> m_start;
    std::vector<Unit> m_poles;
};

} // namespace

double orientationDensity(const std::vector<gdfVertex>& poles, const gdfVertex& at, DensityMethod method,
                          double sigma)
{
    const std::vector<Unit> units = unitPoles(poles);
    Unit u;
    if (!toUnit(at, u) || !usable(units.size(), sigma))
        return 0.0;
    if (method == DensityMethod::FourCorner)
        return fourCorner(units, u);
    const Method m(method, units.size(), sigma);
    return m.valid() ? bruteForce(units, u, m) : 0.0;
}

std::vector<double> orientationDensityGrid(const std::vector<gdfVertex>& poles, const std::vector<gdfVertex>& nodes,
                                           DensityMethod method, double sigma)
{
    std::vector<double> out(nodes.size(), 0.0);
    const std::vector<Unit> units = unitPoles(poles);
    if (!usable(units.size(), sigma) || nodes.empty())
        return out;
    if (method == DensityMethod::FourCorner) {
        for (std::size_t k = 0; k < nodes.size(); ++k)
            out[k] = orientationDensity(poles, nodes[k], method, sigma);
        return out;
    }
    const Method m(method, units.size(), sigma);
    if (!m.valid())
        return out;
    // A reach near a right angle gains nothing from bins (and the two sides could meet).
    const bool binned = m.reach < 0.5;
    const HemisphereBins bins(binned ? units : std::vector<Unit>(), m.reach);
    auto walk = [&](std::size_t first, std::size_t last) {
        Unit u;
        for (std::size_t k = first; k < last; ++k)
            if (toUnit(nodes[k], u))
                out[k] = binned ? bins.density(u, m) : bruteForce(units, u, m);
    };
    const double work = double(units.size()) * double(nodes.size());
    const int cores = std::clamp(int(std::thread::hardware_concurrency()), 1, kMaxThreads);
    const std::size_t threads = work >= 1e6 ? std::size_t(std::min<std::size_t>(cores, nodes.size())) : 1;
    const std::size_t share = (nodes.size() + threads - 1) / threads;
    std::vector<std::thread> helpers;
    for (std::size_t t = 1; t < threads; ++t)
        helpers.emplace_back(walk, std::min(nodes.size(), t * share), std::min(nodes.size(), (t + 1) * share));
    walk(0, std::min(nodes.size(), share));
    for (std::thread& t : helpers)
        t.join();
    return out;
}

} // namespace rkBase
