// Terzaghi weights of the relationship model: planes sampled along a scanline are weighted by
// the inverse cosine of the angle between their pole and the scanline, and planes too close to
// parallel with it are left unweighted.
#include "QRelationshipItemModel.h"

#include "OrientationConstants.h"
#include "TerzaghiScanline.h"

#include <rkUtils.h>

#include <cmath>

namespace rkBase {

using namespace orientation;

void QRelationshipItemModel::setScanline(double plunge, double azimuth, double minimumBiasAngle)
{
    m_scanline[0] = plunge;
    m_scanline[1] = azimuth;
    m_scanline[2] = minimumBiasAngle;
}

double QRelationshipItemModel::scanlinePlunge() const
{
    return m_scanline[0];
}

double QRelationshipItemModel::scanlineAzimuth() const
{
    return m_scanline[1];
}

double QRelationshipItemModel::scanlineMinimumBiasAngle() const
{
    return m_scanline[2];
}

void QRelationshipItemModel::setBiasAttributeName(const QString& name)
{
    m_biasAttributeName = name;
}

QString QRelationshipItemModel::biasAttributeName() const
{
    return m_biasAttributeName;
}

bool QRelationshipItemModel::biasAngle(QPointF const& point, double& alpha) const
{
    return TerzaghiScanline(*this).angle(point, alpha);
}

double QRelationshipItemModel::terzaghiCosine(QPointF const& point) const
{
    return TerzaghiScanline(*this).cosine(point);
}

bool QRelationshipItemModel::canBeBiasCorrected(int row) const
{
    QPointF point;
    double alpha;
    return m_data && readOrientation(m_data, row, point) && biasAngle(point, alpha);
}

double QRelationshipItemModel::biasCorrection(int row) const
{
    QPointF point;
    double alpha;
    if (!m_data || !readOrientation(m_data, row, point) || !biasAngle(point, alpha))
        return 1.0;
    const double v = std::sin((90.0 - alpha) * kDegToRad);
    return std::abs(v) >= kZeroTolerance ? 1.0 / v : 1.0;
}

int QRelationshipItemModel::totalBiasWeight(double& total) const
{
    total = 0.0;
    int count = 0;
    if (!m_data)
        return 0;
    const bool filtered = m_partSelection && m_displayType == HighlightSelected;
    const int rows = m_data->validValueRowCount();
    for (int row = 0; row < rows; ++row) {
        if (filtered && !passesRowFilter(row))
            continue;
        QPointF point;
        double alpha;
        if (!readOrientation(m_data, row, point) || !biasAngle(point, alpha))
            continue;
        double w = std::abs(terzaghiCosine(point));
        if (w == 0.0)
            w = 1.0;
        total += 1.0 / w;
        ++count;
    }
    return count;
}

double QRelationshipItemModel::biasCorrection(int const& row, int const& count, double const& total) const
{
    QPointF point;
    double alpha;
    if (!m_data || !readOrientation(m_data, row, point) || !biasAngle(point, alpha))
        return 1.0;
    const double c = std::abs(terzaghiCosine(point));
    // Without any correctable point under the row filter there is nothing to normalise by.
    if (c == 0.0 || !(total > 0.0))
        return 1.0;
    return count / (c * total);
}

} // namespace rkBase
