#include "TerzaghiScanline.h"

#include "OrientationConstants.h"
#include "OrientationWalk.h"
#include "QRelationshipItemModel.h"

#include <rkUtils.h>

#include <cmath>
#include <limits>

namespace rkBase {

using namespace orientation;

TerzaghiScanline::TerzaghiScanline(double plunge, double azimuth, double minimumAngle)
    : m_azimuth(azimuth), m_minimumAngle(minimumAngle),
      // An unset (NaN) scanline would normalise to the zero vector and pass at 90 degrees.
      m_defined(std::isfinite(plunge) && std::isfinite(azimuth)),
      m_line(m_defined ? lineUnitVector(plunge, azimuth).normalize() : gdfVertex()),
      m_sinPlunge(std::sin(plunge * kDegToRad)),
      m_passCosine(minimumAngle >= 0.0 && minimumAngle <= 90.0 ? std::sin(minimumAngle * kDegToRad)
                                                                : std::numeric_limits<double>::quiet_NaN())
{
}

TerzaghiScanline::TerzaghiScanline(const QRelationshipItemModel& model)
    : TerzaghiScanline(model.scanlinePlunge(), model.scanlineAzimuth(), model.scanlineMinimumBiasAngle())
{
}

bool TerzaghiScanline::angle(QPointF const& plane, double& alpha) const
{
    if (!m_defined)
        return false;
    gdfVertex pole;
    QRelationshipItemModel::poleInCartesianCoord(plane.x(), plane.y(), pole.x(), pole.y(), pole.z());
    pole = pole.normalize();
    alpha = rkUtils::acos(m_line * pole) * kRadToDeg;
    if (alpha > 90.0)
        alpha = 180.0 - alpha;
    // A NaN minimum angle fails here as well.
    return m_minimumAngle <= 90.0 - alpha;
}

bool TerzaghiScanline::corrects(QPointF const& plane) const
{
    if (!m_defined)
        return false;
    gdfVertex pole;
    QRelationshipItemModel::poleInCartesianCoord(plane.x(), plane.y(), pole.x(), pole.y(), pole.z());
    const double c = std::abs(m_line * pole.normalize());
    // A cosine 1e-9 away is an angle at least 5e-8 degrees away, far beyond the rounding of
    // the arc cosine, so the answer is the same as angle()'s.
    constexpr double kMargin = 1e-9;
    if (c > m_passCosine + kMargin)
        return true;
    if (c < m_passCosine - kMargin)
        return false;
    double alpha;
    return angle(plane, alpha);
}

double TerzaghiScanline::cosine(QPointF const& plane) const
{
    const QPointF p = QRelationshipItemModel::poleToPlane(plane, true);
    return std::cos((p.y() - m_azimuth) * kDegToRad) * std::cos(p.x() * kDegToRad)
        + m_sinPlunge * std::sin(p.x() * kDegToRad);
}

std::vector<double> TerzaghiScanline::weights(const QRelationshipItemModel& model)
{
    const MatrixData* data = model.data();
    const int modelRows = model.rowCount();
    std::vector<double> out(std::size_t(std::max(modelRows, 0)), 1.0);
    if (!data)
        return out;
    const int listRows = data->validValueRowCount();
    const int rows = std::max(modelRows, listRows);
    // |cosine| of each corrected row, NaN for the others: the one costly walk, shared by the
    // total and the weights.
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> cosines(std::size_t(std::max(rows, 0)), kNone);
    const TerzaghiScanline scanline(model);
    forEachOrientation(data, rows, &readOrientationCell, [&](int row, QPointF const& p, int) {
        if (scanline.corrects(p))
            cosines[std::size_t(row)] = std::abs(scanline.cosine(p));
    });
    // The sum runs in row order so that it rounds as a row-by-row total does.
    double total = 0.0;
    int count = 0;
    for (int row = 0; row < listRows; ++row) {
        const double c = cosines[std::size_t(row)];
        if (std::isnan(c) || !model.passesRowFilter(row))
            continue;
        total += 1.0 / (c == 0.0 ? 1.0 : c);
        ++count;
    }
    if (!(total > 0.0))
        return out;
    for (int row = 0; row < modelRows; ++row) {
        const double c = cosines[std::size_t(row)];
        if (!std::isnan(c) && c != 0.0)
            out[std::size_t(row)] = count / (c * total);
    }
    return out;
}

} // namespace rkBase
