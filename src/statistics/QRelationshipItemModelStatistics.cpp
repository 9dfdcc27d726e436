// Orientation statistics of the relationship model: the resultant, the orientation matrix and
// its eigen decomposition, Fisher's dispersion, Woodcock's shape figures and the Mardia
// classification text.
//
// Eigenvalues are raw sums over the points, never divided by their number. A weight (bias or
// triangle area) scales the vector before it enters the matrix, so it counts there squared;
// weightSum takes triangle areas but never bias weights, so with bias correction R / N is no
// plain mean resultant length any more.
#include "QRelationshipItemModel.h"

#include "ColumnReader.h"
#include "OrientationConstants.h"
#include "FastTrig.h"
#include "SymmetricEigenSolver.h"

#include <CellColumn.h>
#include <MatrixData.h>
#include <rkUtils.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <typeinfo>
#include <vector>

namespace rkBase {

using namespace orientation;

namespace {

double flip(double b)
{
    return b <= 180.0 ? b + 180.0 : b - 180.0;
}

// Decomposes the matrix; on failure the eigenvalues keep what the caller put in them.
void decompose(const double m[3][3], double eigenvalues[3], gdfVertex vectors[3])
{
    double q[3][3];
    SymmetricEigenSolver::solve(m, eigenvalues, q);
    for (int i = 0; i < 3; ++i)
        vectors[i] = gdfVertex(q[0][i], q[1][i], q[2][i]);
}

// Rows gathered a block at a time with two angles each (radians), whose sines and cosines are
// then taken in one call per block, four at a time where the processor allows: a walk over a
// million orientations is otherwise bound by them.
class AngleBlocks
{
public:
    // True when the block is full and wants a flush.
    bool add(int row, double first, double second)
    {
        m_angles[2 * m_n] = first;
        m_angles[2 * m_n + 1] = second;
        m_rows[m_n] = row;
        return ++m_n == kRows;
    }

    // Hands each row in order with (sin first, cos first, sin second, cos second), and empties.
    template <class Take>
    void flush(Take&& take)
    {
        FastTrig::sinCosArray(m_angles, m_sines, m_cosines, 2 * m_n);
        for (int j = 0; j < m_n; ++j) {
            const double t[4] = {m_sines[2 * j], m_cosines[2 * j], m_sines[2 * j + 1], m_cosines[2 * j + 1]};
            take(m_rows[j], t);
        }
        m_n = 0;
    }

private:
    static constexpr int kRows = 256;
    double m_angles[2 * kRows];
    double m_sines[2 * kRows];
    double m_cosines[2 * kRows];
    int m_rows[kRows];
    int m_n = 0;
};
} // namespace

// ---- per-point cache ----------------------------------------------------------------------

// Sums of one walk over every valid row, unweighted and unfiltered: the common case of a
// refresh, where the mean, Fisher and section passes would otherwise each walk the list.
struct OrientationTotals {
    double sums[3] = {0.0, 0.0, 0.0};
    double xx = 0.0, yy = 0.0, zz = 0.0, xy = 0.0, xz = 0.0, yz = 0.0;
    int count = 0;

    // The sums and the mirrored orientation matrix, as the callers take them.
    void writeTo(double m[3][3], double out[3]) const
    {
        for (int i = 0; i < 3; ++i)
            out[i] = sums[i];
        m[0][0] = xx;
        m[1][1] = yy;
        m[2][2] = zz;
        m[0][1] = m[1][0] = xy;
        m[0][2] = m[2][0] = xz;
        m[1][2] = m[2][1] = yz;
    }

    void add(double x, double y, double z)
    {
        sums[0] += x;
        sums[1] += y;
        sums[2] += z;
        xx += x * x;
        yy += y * y;
        zz += z * z;
        xy += x * y;
        xz += x * z;
        yz += y * z;
        ++count;
    }
};

struct QRelationshipItemModel::OrientationCache {
    const MatrixData* list = nullptr;
    quint64 revision = 0;
    int rows = 0;
    // sin dip, cos dip, sin azimuth, cos azimuth per row; rows that a pass must skip are 0 in
    // valid.
    std::vector<double> trig;
    std::vector<unsigned char> valid;
    OrientationTotals poles;
    OrientationTotals lines;

    // The two vector forms; the totals and every pass use exactly these expressions, so a
    // total equals the sum a walk would make.
    static gdfVertex pole(const double* t) { return QRelationshipItemModel::orientationVector(t[0], t[1], t[2], t[3], true); }
    static gdfVertex line(const double* t) { return QRelationshipItemModel::orientationVector(t[0], t[1], t[2], t[3], false); }
    gdfVertex pole(int row) const { return pole(&trig[4 * static_cast<std::size_t>(row)]); }
    gdfVertex line(int row) const { return line(&trig[4 * static_cast<std::size_t>(row)]); }
};

bool QRelationshipItemModel::orientationCacheIsFresh() const
{
    const OrientationCache* c = m_orientationCache.get();
    return m_data && c && c->list == m_data && c->revision == dataRevision() && c->rows == m_data->validValueRowCount();
}

bool QRelationshipItemModel::refreshOrientationCache()
{
    if (!m_data)
        return false;
    if (orientationCacheIsFresh())
        return true;
    const CellColumn* column = m_data->cellColumn(0);
    const int rows = column ? std::min(m_data->validValueRowCount(), column->size()) : 0;
    if (!m_orientationCache)
        m_orientationCache = std::make_shared<OrientationCache>();
    OrientationCache& c = *m_orientationCache;
    c.list = m_data;
    c.revision = dataRevision();
    c.rows = rows;
    // Every row's validity is written below and trig is read only where valid: no fill needed.
    c.trig.resize(4 * static_cast<std::size_t>(rows));
    c.valid.resize(static_cast<std::size_t>(rows));
    c.poles = OrientationTotals();
    c.lines = OrientationTotals();
    AngleBlocks blocks;
    const auto store = [&c](int row, const double* trig) {
        double* t = &c.trig[4 * static_cast<std::size_t>(row)];
        std::copy(trig, trig + 4, t);
        const gdfVertex pole = OrientationCache::pole(t);
        const gdfVertex line = OrientationCache::line(t);
        c.poles.add(pole.x(), pole.y(), pole.z());
        c.lines.add(line.x(), line.y(), line.z());
    };
    for (int row = 0; row < rows; ++row) {
        c.valid[static_cast<std::size_t>(row)] = 0;
        QPointF p;
        if (!readOrientation(m_data, row, p))
            continue;
        // 2 marks a dip within [-90, 90], where the density count may use closed forms.
        c.valid[static_cast<std::size_t>(row)] = std::abs(p.x()) <= 90.0 ? 2 : 1;
        if (blocks.add(row, p.x() * kDegToRad, p.y() * kDegToRad))
            blocks.flush(store);
    }
    blocks.flush(store);
    return true;
}

bool QRelationshipItemModel::orientationCacheArrays(const double*& trig, const unsigned char*& flags, int& rows)
{
    if (!refreshOrientationCache())
        return false;
    const OrientationCache& c = *m_orientationCache;
    trig = c.trig.data();
    flags = c.valid.data();
    rows = c.rows;
    return true;
}

bool QRelationshipItemModel::cachedOrientationVector(int row, bool isPole, gdfVertex& v) const
{
    const OrientationCache* c = m_orientationCache.get();
    if (!c || row < 0 || row >= c->rows || !c->valid[static_cast<std::size_t>(row)])
        return false;
    v = isPole ? c->pole(row) : c->line(row);
    return true;
}

// ---- accumulation -------------------------------------------------------------------------

void QRelationshipItemModel::accumulateOrientationMatrix(MatrixData* data, bool isPole, double m[3][3],
                                                         double sums[3], int& count, double& weightSum,
                                                         bool biasCorrect, int* subsetIds, int subsetId)
{
    for (int i = 0; i < 3; ++i) {
        sums[i] = 0.0;
        for (int j = 0; j < 3; ++j)
            m[i][j] = 0.0;
    }
    count = 0;
    weightSum = 0.0;

    double biasTotal = 0.0;
    const int biasCount = biasCorrect ? totalBiasWeight(biasTotal) : 0;
    MatrixData* azimuthNode = m_dataRoot ? m_dataRoot->getNodeFromName(QStringLiteral("azimuth")) : nullptr;
    if (!data)
        data = m_data;
    if (!data)
        return;

    // The cache serves the model's own list walked with its own azimuths.
    const bool cached = data == m_data && !subsetIds && refreshOrientationCache();
    const bool filtered = !subsetIds && m_partSelection && m_displayType == HighlightSelected;
    if (cached && !filtered && !biasCorrect && !m_triangleAreaData) {
        const OrientationTotals& t = isPole ? m_orientationCache->poles : m_orientationCache->lines;
        t.writeTo(m, sums);
        count = t.count;
        weightSum = t.count;
        return;
    }
    const bool tableRows = m_tableRow != nullptr;
    OrientationTotals totals;
    for (int row = 0; row < data->validValueRowCount(); ++row) {
        if (subsetIds) {
            if (subsetIds[row] != subsetId)
                continue;
        } else if (filtered && !passesRowFilter(row)) {
            continue;
        }

        gdfVertex v;
        if (cached) {
            if (!cachedOrientationVector(row, isPole, v))
                continue;
        } else {
            QPointF point;
            if (!readOrientation(data, row, point))
                continue;
            double azimuthValue = point.y();
            if (subsetIds) {
                azimuthValue = (row < m_numberOfTableRows) ? azimuth(row, azimuthNode) : kNoValue;
                if (azimuthValue == kNoValue)
                    continue;
            }
            if (isPole)
                poleInCartesianCoord(point.x(), azimuthValue, v.x(), v.y(), v.z());
            else
                v = lineVector(point.x(), azimuthValue);
        }

        if (biasCorrect)
            v = v * biasCorrection(row, biasCount, biasTotal);

        double weight = 1.0;
        if (m_triangleAreaData && tableRows && row < m_numberOfTableRows) {
            const int tableRow = m_tableRow[row];
            const QVariant area = tableRow >= 0 ? m_triangleAreaData->value(tableRow, 0) : QVariant();
            bool ok = false;
            const double a = area.isValid() && !area.isNull() ? area.toDouble(&ok) : 0.0;
            // A non-finite area would poison every sum: it counts as no area.
            if (ok && std::isfinite(a)) {
                v = v * a;
                weight = a;
            }
        }

        totals.add(v.x(), v.y(), v.z());
        weightSum += weight;
    }
    totals.writeTo(m, sums);
    count = totals.count;
}

double** QRelationshipItemModel::initialiseCharacteristicMatrix(MatrixData* data, bool isPole, double& sumX,
                                                                double& sumY, double& sumZ, int& count,
                                                                double& weightSum, bool biasCorrect, int* subsetIds,
                                                                int subsetId)
{
    double m[3][3];
    double sums[3];
    accumulateOrientationMatrix(data, isPole, m, sums, count, weightSum, biasCorrect, subsetIds, subsetId);
    sumX = sums[0];
    sumY = sums[1];
    sumZ = sums[2];
    auto** matrix = new double*[3];
    for (int i = 0; i < 3; ++i) {
        matrix[i] = new double[3];
        for (int j = 0; j < 3; ++j)
            matrix[i][j] = m[i][j];
    }
    return matrix;
}

void QRelationshipItemModel::freeCharacteristicMatrix(double** matrix)
{
    if (!matrix)
        return;
    for (int i = 0; i < 3; ++i)
        delete[] matrix[i];
    delete[] matrix;
}

// ---- results --------------------------------------------------------------------------------

void QRelationshipItemModel::calculateMeanDirection(bool isPole, bool biasCorrect, int* subsetIds, int subsetId)
{
    double m[3][3];
    double s[3];
    int count = 0;
    double weightSum = 0.0;
    accumulateOrientationMatrix(m_data, isPole, m, s, count, weightSum, biasCorrect, subsetIds, subsetId);
    if (count == 0)
        return;
    storeMeanDirection(isPole, m, s);
}

void QRelationshipItemModel::calculateMeanDirectionsBySubset(bool isPole, const int* subsetIds, int subsets,
                                                             std::vector<QPointF>& meanPrincipalPlanes)
{
    // One walk for every subset, where calling calculateMeanDirection per subset walks the whole
    // list each time. Each subset then takes its results in order, as those calls would: a subset
    // without points leaves the results of the one before it.
    meanPrincipalPlanes.assign(std::size_t(std::max(subsets, 0)), QPointF());
    if (!subsetIds || subsets <= 0 || !m_data)
        return;
    std::vector<OrientationTotals> totals(static_cast<std::size_t>(subsets));
    // A million rows in 100 intervals: the points straight from their cells, the azimuths from
    // the typed column where it has one, and the fast sine and cosine.
    const ColumnReader azimuths(m_dataRoot ? m_dataRoot->getNodeFromName(QStringLiteral("azimuth")) : nullptr);
    const CellColumn* cells = m_data->cellColumn(0);
    const bool plain = cells && cells->type() == QVariant::PointF
                       && (typeid(*m_data) == typeid(MatrixData) || typeid(*m_data) == typeid(MatrixDataArray));
    const QPointF* points = plain ? cells->pointData() : nullptr;
    const std::uint8_t* valid = plain ? cells->validData() : nullptr;
    const int stored = plain ? cells->size() : 0;
    const bool tableRows = m_tableRow != nullptr;
    AngleBlocks blocks;
    const auto add = [&](int row, const double* t) {
        gdfVertex v = orientationVector(t[0], t[1], t[2], t[3], isPole);
        if (m_triangleAreaData && tableRows) {
            const int tableRow = m_tableRow[row];
            const QVariant area = tableRow >= 0 ? m_triangleAreaData->value(tableRow, 0) : QVariant();
            bool ok = false;
            const double a = area.isValid() && !area.isNull() ? area.toDouble(&ok) : 0.0;
            if (ok && std::isfinite(a))
                v = v * a;
        }
        totals[std::size_t(subsetIds[row])].add(v.x(), v.y(), v.z());
    };
    // Without an azimuth column no row counts, and every subset keeps the results as they were.
    for (int row = 0; !azimuths.isNull() && row < m_data->validValueRowCount(); ++row) {
        const int subset = subsetIds[row];
        if (subset < 0 || subset >= subsets || row >= m_numberOfTableRows)
            continue;
        QPointF point;
        if (points) {
            if (row >= stored || !valid[row])
                continue;
            point = points[row];
            if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
                continue;
        } else if (!readOrientation(m_data, row, point)) {
            continue;
        }
        double azimuthValue = 0.0;
        if (!azimuths.read(tableRow(row), azimuthValue) || azimuthValue == kNoValue)
            continue;
        if (blocks.add(row, point.x() * kDegToRad, azimuthValue * kDegToRad))
            blocks.flush(add);
    }
    blocks.flush(add);
    for (int i = 0; i < subsets; ++i) {
        const OrientationTotals& t = totals[std::size_t(i)];
        if (t.count > 0) {
            double m[3][3];
            double s[3];
            t.writeTo(m, s);
            storeMeanDirection(isPole, m, s);
        }
        meanPrincipalPlanes[std::size_t(i)] = m_meanPrincipalPlane;
    }
}

void QRelationshipItemModel::storeMeanDirection(bool isPole, double m[3][3], const double s[3])
{
    const double r = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
    const double plunge = rkUtils::asin(s[2] / r) * kRadToDeg;
    double azimuth = rkUtils::acos((s[0] / r) / std::cos(plunge * kDegToRad)) * kRadToDeg;
    if (s[1] / r < 0.0)
        azimuth = 360.0 - azimuth;

    double eigenvalues[3] = {0.0, 0.0, 0.0};
    gdfVertex v[3];
    decompose(m, eigenvalues, v);
    double a[3];
    double b[3];
    for (int i = 0; i < 3; ++i)
        cartesianCoordInPolar(v[i].x(), v[i].y(), v[i].z(), a[i], b[i]);

    if (isPole) {
        m_meanResultantPole = QPointF(90.0 - plunge, flip(azimuth));
        m_meanPrincipalPlane = QPointF(a[2], flip(b[2]));
        m_TdirectionPlane = QPointF(a[1], flip(b[1]));
        m_LdirectionPlane = QPointF(a[0], flip(b[0]));
    } else {
        m_meanResultantDipDirection = QPointF(plunge, azimuth);
        m_meanPrincipalDipDirection = QPointF(90.0 - a[2], b[2]);
        m_TdirectionDipDirection = QPointF(90.0 - a[1], b[1]);
        m_LdirectionDipDirection = QPointF(90.0 - a[0], b[0]);
    }
}

void QRelationshipItemModel::calculateFisherStatistics(double& meanResultantLength, double& variance, double& kappa,
                                                       double& e1, double& e2, double& e3,
                                                       double& normalizedResultant, double& K, double& C,
                                                       double& lnE3E2, double& lnE2E1, double& confidenceRadius,
                                                       bool& unimodal, QString& classification, bool isPole,
                                                       bool biasCorrect)
{
    double m[3][3];
    double s[3];
    int count = 0;
    double n = 0.0;
    accumulateOrientationMatrix(m_data, isPole, m, s, count, n, biasCorrect, nullptr, -1);
    // No test for an empty set: N and R are 0 and the ratios come out as NaN, which the panel
    // shows as "-----".
    const double r = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
    kappa = kNoValue;
    if (std::abs(n - r) > 0.0005)
        kappa = (n - 1.0) / (n - r);
    meanResultantLength = r / n;
    normalizedResultant = r / n;
    variance = 1.0 - r / n;
    // 20 = 1 / 0.05: the 95 percent cone.
    confidenceRadius = rkUtils::acos(1.0 - (std::pow(20.0, 1.0 / (n - 1.0)) - 1.0) * (n - r) / r);

    double eigenvalues[3] = {e1, e2, e3};
    gdfVertex v[3];
    decompose(m, eigenvalues, v);
    e1 = eigenvalues[0];
    e2 = eigenvalues[1];
    e3 = eigenvalues[2];
    woodcockParameters(e1, e2, e3, K, C, lnE3E2, lnE2E1);
    classification = mardiaClassification(e1, e2, e3, r / n, unimodal);
}

void QRelationshipItemModel::woodcockParameters(double const& e1, double const& e2, double e3, double& K, double& C,
                                                double& lnE3E2, double& lnE2E1) const
{
    K = 0.0;
    C = 0.0;
    lnE3E2 = 0.0;
    lnE2E1 = 0.0;
    if (std::abs(e2) > kZeroTolerance)
        lnE3E2 = std::log(e3 / e2);
    if (std::abs(e1) > kZeroTolerance)
        lnE2E1 = std::log(e2 / e1);
    if (std::abs(lnE2E1) > kZeroTolerance)
        K = lnE3E2 / lnE2E1;
    if (std::abs(e1) > kZeroTolerance)
        C = std::log(e3 / e1);
}

void QRelationshipItemModel::calculateWoodcockParameterForOneSubSet(bool isPole, bool biasCorrect, double& lnE3E2,
                                                                    double& lnE2E1)
{
    lnE3E2 = 0.0;
    lnE2E1 = 0.0;
    double m[3][3];
    double s[3];
    int count = 0;
    double weightSum = 0.0;
    accumulateOrientationMatrix(m_data, isPole, m, s, count, weightSum, biasCorrect, nullptr, -1);
    double e[3] = {0.0, 0.0, 0.0};
    gdfVertex v[3];
    decompose(m, e, v);
    if (std::abs(e[1]) > kZeroTolerance)
        lnE3E2 = std::log(e[2] / e[1]);
    if (std::abs(e[0]) > kZeroTolerance)
        lnE2E1 = std::log(e[1] / e[0]);
}

QString QRelationshipItemModel::mardiaClassification(double const& e1, double const& e2, double const& e3,
                                                     double const& normalizedResultant, bool& unimodal) const
{
    auto text = [](const char* source) {
        return QCoreApplication::translate("QRelationshipItemModel", source);
    };
    unimodal = false;
    QString classification;
    const double t = e1 + e2 + e3;
    if (e1 > 0.005 && e2 > 0.005 && std::abs(1.0 - e2 / e1) < 0.05 && std::abs(1.0 - e3 / e2) < 0.05) {
        classification = text("is uniform distributed");
    } else {
        const double n1 = e1 / t;
        const double n2 = e2 / t;
        const double n3 = e3 / t;
        if (n1 < 0.2 && n2 < 0.2 && n3 > 0.6) {
            if (normalizedResultant >= 0.9) {
                classification = text("1. clustered unimodal\n");
                unimodal = true;
            } else if (std::abs(n1 - n2) < 0.005) {
                classification = text("1. clustered bipolar\n");
            } else {
                classification = text("1. clustered bimodal\n");
            }
        } else if (n1 < 0.1 && n2 > 0.3 && n3 > 0.3) {
            if (normalizedResultant >= 0.9) {
                classification = text("1. clustered unimodal\n");
                unimodal = true;
            } else {
                classification = text("1. clustered multi modal\n");
            }
            // A symmetrical girdle replaces the first line; unimodal stays as set.
            if (std::abs(n2 - n3) < 0.005)
                classification = text("2. symmetrical girdle patter");
            else
                classification += text("2. girdle pattern");
        }
    }
    if (classification.isEmpty())
        classification = text("Orientation classification indeterminate");
    return classification;
}

void QRelationshipItemModel::calculateSuggestedSectionOrientation(bool biasCorrect, MatrixData* data)
{
    double m[3][3];
    double s[3];
    int count = 0;
    double weightSum = 0.0;
    // Always as poles: the section is normal to the axis of least spread of the planes.
    accumulateOrientationMatrix(data ? data : m_data, true, m, s, count, weightSum, biasCorrect, nullptr, -1);
    if (count == 0)
        return;
    double e[3] = {0.0, 0.0, 0.0};
    gdfVertex v[3];
    decompose(m, e, v);
    double dip;
    double b;
    cartesianCoordInPolar(v[0].x(), v[0].y(), v[0].z(), dip, b);
    double azimuth = flip(b) + 180.0;
    if (azimuth > 360.0)
        azimuth -= 360.0;
    m_suggestedSectionPlane = QPointF(90.0, azimuth);
}

double QRelationshipItemModel::calculateNewTdirection(double direction)
{
    const QPointF p = poleToPlane(m_LdirectionPlane, true);
    double plunge;
    double azimuth;
    MatrixData::plungeAndAzimuth(plunge, azimuth, 90.0 - p.x(), direction + 180.0, 0.0);
    return azimuth;
}

} // namespace rkBase
