#include "KMdata.h"

#include <algorithm>

KMdata::KMdata(int dim, int maxPts)
    : m_dim(std::max(dim, 1)), m_maxPts(std::max(maxPts, 0)), m_nPts(m_maxPts),
      m_points(static_cast<std::size_t>(m_maxPts) * m_dim, 0.0)
{
}

void KMdata::setNPts(int n)
{
    n = std::clamp(n, 0, m_maxPts);
    if (n != m_nPts)
        m_stale = true;
    m_nPts = n;
}

double* KMdata::operator[](int i)
{
    m_stale = true;
    return &m_points[static_cast<std::size_t>(i) * m_dim];
}

void KMdata::buildKcTree()
{
    m_tree = std::make_unique<KMkcTree>(m_points.data(), m_nPts, m_dim);
    m_stale = false;
}
