// k-means clusters of the relationship model: plane points (with an optional third dimension)
// and orientations as unit vectors, with their centres tables and the cluster ID of each row.
//
// Both runs walk the rows twice, once to hand the points to the search and once to hand the
// assignments back; the two walks apply the same tests in the same order, so the n-th point
// stored is the n-th row given an ID.
#include "QRelationshipItemModel.h"

#include "OrientationConstants.h"

#include <KMdata.h>
#include <KMfilterCenters.h>
#include <KMlocalLloyds.h>
#include <KMterm.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace rkBase {

using namespace orientation;

namespace {

// The one set of k-means terms of the library: a budget of 100 stages, runs ending below a 10 %
// distortion loss per stage.
const KMterm kClusterTerms(100.0, 0, 0, 0, 0.10, 0.10, 3, 0.50, 10, 0.95);

// Runs the search on the stored points and returns the best centres, distortions valid.
KMfilterCenters runKMeans(KMdata& points, int k)
{
    points.buildKcTree();
    KMfilterCenters centres(k, points, 1.0);
    KMlocalLloyds search(centres, kClusterTerms);
    centres = search.execute();
    if (!centres.isValid())
        centres.computeDistortion();
    return centres;
}

} // namespace

bool QRelationshipItemModel::buildClusters_KML(const QString& name, int k)
{
    const int n = m_data ? m_data->validValueRowCount() : 0;
    if (!(k > 1 && n > 1 && k <= n))
        return false;

    const bool third = m_thirdDimAttribute != nullptr;
    // The row test of both walks; the third value is 0 without a third dimension.
    auto take = [&](int row, QPointF& point, double& z) {
        if (!passesRowFilter(row))
            return false;
        z = 0.0;
        if (third && (!getThirdDimAttributeValue(row, z) || !std::isfinite(z)))
            return false;
        return readOrientation(m_data, row, point);
    };

    KMdata points(3, n);
    int stored = 0;
    for (int row = 0; row < n; ++row) {
        QPointF p;
        double z;
        if (!take(row, p, z))
            continue;
        double* q = points[stored++];
        q[0] = p.x();
        q[1] = p.y();
        q[2] = z;
    }
    if (stored == 0)
        return false;
    points.setNPts(stored);
    // More centres than points taken keeps some centres empty; the search copes.
    const KMfilterCenters centres = runKMeans(points, k);

    MatrixDataArray* table = findClusterCentroids(name);
    table->reserve(k, third ? 3 : 2);
    for (int i = 0; i < k; ++i) {
        const double* c = centres[i];
        table->setValue(i, 0, QPointF(c[0], c[1]));
        table->setValue(i, 1, QPointF(centres.getDists()[static_cast<std::size_t>(i)], 0.0));
        if (third)
            table->setValue(i, 2, QPointF(c[2], 0.0));
    }
    m_clusterCentroidSets.push_back(table);

    std::vector<int> assignment;
    centres.getAssignments(assignment);
    delete[] m_clusterIDs;
    m_clusterIDs = new int[static_cast<std::size_t>(n)];
    m_clusterIDCount = n;
    int next = 0;
    for (int row = 0; row < n; ++row) {
        m_clusterIDs[row] = -1;
        QPointF p;
        double z;
        if (take(row, p, z) && next < stored)
            m_clusterIDs[row] = assignment[static_cast<std::size_t>(next++)];
    }
    return true;
}

void QRelationshipItemModel::clearClusterIDs()
{
    delete[] m_clusterIDs;
    m_clusterIDs = nullptr;
    m_clusterIDCount = 0;
}

bool QRelationshipItemModel::buildClusters_KML_ForStereoProjection(const QString& name, int k)
{
    const int n = m_data ? m_data->validValueRowCount() : 0;
    if (n == 0)
        return false;
    clearClusterIDs();

    auto take = [&](int row, QPointF& point) { return passesRowFilter(row) && readOrientation(m_data, row, point); };
    KMdata points(3, n);
    int stored = 0;
    for (int row = 0; row < n; ++row) {
        QPointF p;
        if (!take(row, p))
            continue;
        double* q = points[stored++];
        const double d = p.x() * kDegToRad;
        const double a = p.y() * kDegToRad;
        q[0] = -(std::cos(a) * std::sin(d));
        q[1] = -(std::sin(a) * std::sin(d));
        q[2] = std::cos(d);
    }
    // Strictly fewer centres than vectors, and nothing more: a k below 1 still runs, with no
    // centres, an empty table and every row unassigned.
    if (!(k < stored))
        return false;
    points.setNPts(stored);
    const KMfilterCenters centres = runKMeans(points, k);

    MatrixDataArray* table = findClusterCentroids(name);
    table->reserve(std::max(k, 0), 2);
    for (int i = 0; i < k; ++i) {
        const double* c = centres[i];
        double dip = 0.0;
        double azimuth = 0.0;
        cartesianCoordInPolar(c[0], c[1], c[2], dip, azimuth);
        azimuth = azimuth <= 180.0 ? azimuth + 180.0 : azimuth - 180.0;
        table->setValue(i, 0, QPointF(dip, azimuth));
        table->setValue(i, 1, QPointF(centres.getDists()[static_cast<std::size_t>(i)], 0.0));
    }
    m_clusterCentroidSets.push_back(table);

    std::vector<int> assignment;
    centres.getAssignments(assignment);
    m_clusterIDs = new int[static_cast<std::size_t>(n)];
    m_clusterIDCount = n;
    int next = 0;
    for (int row = 0; row < n; ++row) {
        m_clusterIDs[row] = -1;
        QPointF p;
        if (take(row, p) && next < stored)
            m_clusterIDs[row] = assignment[static_cast<std::size_t>(next++)];
    }
    return true;
}

} // namespace rkBase
