// Orientation geometry of the relationship model: orientation pairs to unit vectors and back,
// the projected-plane read-back, and the rotations the stereo panel applies to a data set.
//
// The three inverse conversions differ on purpose (azimuth origin, quadrant rules, fold), and
// charts depend on which one they call; none of them may be "tidied" into another.
#include "QRelationshipItemModel.h"

#include "FastTrig.h"
#include "OrientationConstants.h"
#include "OrientationWalk.h"
#include "PointColumnWriter.h"

#include <CellColumn.h>
#include <MatrixDataArray.h>
#include <rkUtils.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <thread>
#include <vector>
#include <typeinfo>

namespace rkBase {

using namespace orientation;

namespace {

inline gdfVertex rotate(gdfVertex const& v, gdfVertex const& axis, double cosTheta, double sinTheta)
{
    // Rodrigues' formula with the cross product taken as v ^ axis.
    const gdfVertex c = v ^ axis;
    return v * cosTheta + axis * ((v * axis) * (1.0 - cosTheta)) + c * sinTheta;
}
} // namespace

gdfVertex QRelationshipItemModel::lineVector(double plunge, double azimuth)
{
    return lineUnitVector(plunge, azimuth);
}

gdfVertex QRelationshipItemModel::rotateVector(gdfVertex const& v, gdfVertex const& axis, double cosTheta,
                                               double sinTheta)
{
    return rotate(v, axis, cosTheta, sinTheta);
}

bool QRelationshipItemModel::readOrientation(const MatrixData* data, int row, QPointF& point)
{
    return readOrientationCell(data, row, point);
}

void QRelationshipItemModel::poleInCartesianCoord(double dip, double dipDirection, double& x, double& y, double& z)
{
    const double a = dip * kDegToRad;
    const double b = dipDirection * kDegToRad;
    x = -(std::cos(b) * std::sin(a));
    y = -(std::sin(b) * std::sin(a));
    z = std::cos(a);
}

void QRelationshipItemModel::cartesianCoordInPolar(double x, double y, double z, double& dip, double& azimuth)
{
    // Dip vector of the plane whose pole is (x, y, z).
    double d1 = x * z;
    double d2 = y * z;
    double d3 = -(x * x + y * y);
    if (d3 > 0.0) {
        d1 = -d1;
        d2 = -d2;
        d3 = -d3;
    }

    auto fromAngle = [](double angle) {
        double a = 90.0 - angle * kRadToDeg;
        if (a < 0.0)
            a += 360.0;
        else if (a >= 360.0)
            a -= 360.0;
        return a;
    };
    if (d2 != 0.0 && d1 == 0.0) {
        azimuth = d2 < 0.0 ? 270.0 : 90.0;
    } else if (d2 == 0.0 && d1 != 0.0) {
        azimuth = d1 < 0.0 ? 180.0 : 0.0;
    } else if (d2 == 0.0 && d1 == 0.0) {
        // Vertical pole or horizontal one: the azimuth comes from the vector itself.
        double angle;
        if (y == 0.0)
            angle = x < 0.0 ? -kPi / 2.0 : kPi / 2.0;
        else if (x == 0.0)
            angle = y < 0.0 ? kPi : 0.0;
        else
            angle = std::atan2(x, y);
        azimuth = fromAngle(angle);
    } else {
        azimuth = fromAngle(std::atan2(d1, d2));
    }

    if (d3 == 0.0)
        dip = 0.0;
    else if (d1 == 0.0 && d2 == 0.0)
        dip = d3 > 0.0 ? -90.0 : 90.0;
    else
        dip = std::atan2(std::sqrt(d1 * d1 + d2 * d2), d3) * kRadToDeg - 90.0;
}

void QRelationshipItemModel::cartesianCoordInPolar2(double x, double y, double z, double& colatitude, double& longitude)
{
    colatitude = rkUtils::acos(z) * kRadToDeg;
    if (colatitude > 90.0) {
        x = -x;
        y = -y;
        colatitude = 180.0 - colatitude;
    }
    longitude = 0.0;
    if (x != 0.0)
        longitude = std::atan(y / x) * kRadToDeg;
    // Longitude counts from a different origin than the azimuths: x of 0 or y of 0 stay at 0.
    if (x > 0.0 && y != 0.0)
        longitude += 90.0;
    else if (x < 0.0 && y != 0.0)
        longitude += 270.0;
}

namespace {
// The body of cartesianCoordInPolar3, inlined into the column rotation.
inline void polar3(double x, double y, double z, bool fold, double& plunge, double& azimuth)
{
    if (z > 1.0)
        z = 1.0;
    plunge = rkUtils::asin(z) * kRadToDeg;
    if (std::abs(plunge) < kZeroTolerance)
        plunge = 0.0;
    if (fold && plunge < 0.0) {
        x = -x;
        y = -y;
        plunge = -plunge;
    }
    if (plunge > 90.0) {
        x = -x;
        y = -y;
        plunge = 180.0 - plunge;
    }
    azimuth = 0.0;
    if (x != 0.0)
        azimuth = std::atan(y / x) * kRadToDeg;
    // x of 0 keeps 0 for positive y and gives 360 for negative y: charts rely on it.
    if (x >= 0.0) {
        if (y < 0.0)
            azimuth += 360.0;
    } else {
        azimuth += 180.0;
    }
}
} // namespace

void QRelationshipItemModel::cartesianCoordInPolar3(double x, double y, double z, double& plunge, double& azimuth) const
{
    polar3(x, y, z, m_foldToLowerHemisphere, plunge, azimuth);
}

double QRelationshipItemModel::tilt(double x, double y, double z)
{
    const double h2 = x * x + y * y;
    if (h2 == 0.0 && z == 0.0)
        return 0.0;
    return std::atan2(std::sqrt(h2), z);
}

double QRelationshipItemModel::rotation(double x, double y)
{
    if (x == 0.0)
        return y >= 0.0 ? kPi / 2.0 : -kPi / 2.0;
    if (y == 0.0)
        return x >= 0.0 ? 0.0 : kPi;
    return std::atan2(y, x);
}

QPointF QRelationshipItemModel::poleToPlane(QPointF const& point, bool equalArea)
{
    const double x = point.x();
    const double y = point.y();
    if (90.0 - x >= kZeroTolerance) {
        const double half = kPi / 4.0 - x * kDegToRad / 2.0;
        const double r = equalArea ? std::sin(half) * std::sqrt(2.0) : std::tan(half);
        const double theta = (y - 180.0) * kDegToRad;
        const double px = r * std::cos(theta);
        const double py = -(r * std::sin(theta));
        const double length = std::sqrt(px * px + py * py);
        // The radius cancels here, so both projections read back the same angle.
        const double ax = py / length;
        const double ay = px / length;
        // Measured against (cos(pi/2), sin(pi/2)) so that the read-back is the opposite
        // azimuth (the pole of a plane, the plane of a pole) like the vertical case below; the
        // normalised Terzaghi weights rely on it to match the vector test for a horizontal
        // scanline. cos(pi/2) is 6e-17, not 0: it decides the side for azimuths 0 and 180.
        const double bx = std::cos(kPi / 2.0);
        const double by = std::sin(kPi / 2.0);
        const double norm = std::sqrt(ax * ax + ay * ay) * std::sqrt(bx * bx + by * by);
        double angle = rkUtils::acos((ax * bx + ay * by) / norm) * kRadToDeg;
        if (bx < ax)
            angle = 360.0 - angle;
        if (angle > 360.0)
            angle -= 360.0;
        return QPointF(90.0 - x, angle);
    }
    double azimuth;
    if (y == 0.0)
        azimuth = 0.0;
    else if (y > 180.0)
        azimuth = y - 180.0;
    else
        azimuth = y + 180.0;
    return QPointF(0.0, azimuth);
}

QPointF QRelationshipItemModel::rotateDataAboutRotationAxis(QPointF const& point, gdfVertex const& axis,
                                                            double const& angle, bool isPole) const
{
    const double theta = (360.0 - angle) * kDegToRad;
    gdfVertex v;
    if (isPole)
        poleInCartesianCoord(point.x(), point.y(), v.x(), v.y(), v.z());
    else
        v = lineVector(point.x(), point.y());
    const gdfVertex r = rotateVector(v, axis, std::cos(theta), std::sin(theta));
    double p;
    double a;
    cartesianCoordInPolar3(r.x(), r.y(), r.z(), p, a);
    if (isPole) {
        p = 90.0 - p;
        a = a < 180.0 ? a + 180.0 : a - 180.0;
    }
    return QPointF(p, a);
}

QPointF QRelationshipItemModel::rotateDataAboutRotationAxis(QPointF const& point, QPointF const& axis,
                                                            double const& angle, bool isPole) const
{
    gdfVertex u = lineVector(axis.x(), axis.y());
    u = u * (1.0 / u.length());
    // Snap components that are rounding noise, so a horizontal or vertical axis stays exact.
    for (double* c : {&u.x(), &u.y(), &u.z()}) {
        if (std::abs(*c) < kZeroTolerance)
            *c = 0.0;
    }
    return rotateDataAboutRotationAxis(point, u, angle, isPole);
}

void QRelationshipItemModel::rotateDataAboutRotationAxis(MatrixData* data, QPointF const& axis, double const& angle,
                                                         bool isPole)
{
    if (!data)
        data = m_data;
    if (!data)
        return;
    gdfVertex u = lineVector(axis.x(), axis.y());
    u = u * (1.0 / u.length());
    const double theta = (360.0 - angle) * kDegToRad;
    const double cosTheta = std::cos(theta);
    const double sinTheta = std::sin(theta);

    const bool ownData = data == m_data;
    // The model's own list: sines and cosines from the per-point cache when it is current,
    // otherwise straight from the typed cells (the rotation invalidates the cache anyway).
    const bool cached = ownData && orientationCacheIsFresh();
    const bool filtered = m_partSelection && m_displayType == HighlightSelected;
    const int rows = data->validValueRowCount();
    for (int row = 0; row < rows; ++row) {
        if (filtered && !passesRowFilter(row))
            continue;
        gdfVertex v;
        if (cached) {
            if (!cachedOrientationVector(row, isPole, v))
                continue;
        } else {
            QPointF point;
            if (!readOrientation(data, row, point))
                continue;
            double sa, ca, sb, cb;
            FastTrig::sinCos(point.x() * kDegToRad, sa, ca);
            FastTrig::sinCos(point.y() * kDegToRad, sb, cb);
            v = orientationVector(sa, ca, sb, cb, isPole);
        }
        const gdfVertex r = rotate(v, u, cosTheta, sinTheta);
        double p;
        double a;
        polar3(r.x(), r.y(), r.z(), m_foldToLowerHemisphere, p, a);
        if (isPole) {
            p = 90.0 - p;
            // Unlike the single-point form, 180 goes to 360 here.
            a = a <= 180.0 ? a + 180.0 : a - 180.0;
        }
        data->setPointValue(row, QPointF(p, a));
    }
    if (ownData)
        touchData();
}

void QRelationshipItemModel::rotateDataToMeanPole(QPointF const& mean, bool isPole, MatrixData* data)
{
    const double q = 90.0 - mean.y();
    const QPointF axis = q < 0.0 ? QPointF(0.0, -q) : QPointF(0.0, 360.0 - q);
    rotateDataAboutRotationAxis(data ? data : m_data, axis, 360.0 - mean.x(), isPole);
}

namespace {
// The spherical triangle shared by the mean-pole and Q-Q rotations. c depends on the mean only,
// so its sine and cosine are taken once per walk; a and b once per point.
struct MeanPoleTriangle {
    double sinC, cosC, meanY;
    explicit MeanPoleTriangle(QPointF const& mean) : meanY(mean.y())
    {
        const double c = (180.0 - mean.x()) * kDegToRad;
        sinC = std::sin(c);
        cosC = std::cos(c);
    }
    void terms(QPointF const& p, double& sinA, double& cosA, double& sinB, double& cosB) const
    {
        FastTrig::sinCos((180.0 - p.x()) * kDegToRad, sinA, cosA);
        FastTrig::sinCos((p.y() - meanY) * kDegToRad, sinB, cosB);
    }
};

} // namespace

void QRelationshipItemModel::rotateDataToMeanPole2(QPointF const& mean)
{
    delete m_rotatedData;
    if (!m_data) {
        m_rotatedData = new MatrixDataArray(QString(), 0, 1, QVariant::PointF);
        return;
    }
    m_rotatedData = new MatrixDataArray(m_data->name(), m_data->rowCount(), 1, QVariant::PointF);
    m_rotatedData->setInterfaceName(m_data->interfaceName());
    const int rows = m_data->validValueRowCount();
    const MeanPoleTriangle triangle(mean);
    PointColumnWriter out(m_rotatedData);
    forEachOrientation(m_data, rows, &readOrientation, [&triangle, &out](int row, QPointF const& p, int) {
        double sinA, cosA, sinB, cosB;
        triangle.terms(p, sinA, cosA, sinB, cosB);
        double X = sinA * triangle.cosC * cosB - cosA * triangle.sinC;
        double Y = sinB * sinA;
        double colatitude = rkUtils::acos(triangle.sinC * sinA * cosB + cosA * triangle.cosC) * kRadToDeg;
        if (colatitude > 90.0) {
            colatitude = 180.0 - colatitude;
            X = -X;
            Y = -Y;
        }
        double longitude = 0.0;
        if (X != 0.0)
            longitude = std::atan(Y / X) * kRadToDeg;
        if (X > 0.0 && Y != 0.0)
            longitude += 90.0;
        else if (X < 0.0 && Y != 0.0)
            longitude += 270.0;
        out.set(row, QPointF(colatitude, longitude));
    });
    m_rotatedData->setValidValueRowCount(rows);
}

void QRelationshipItemModel::rotateDataToForNormalQQPlot(QPointF const& mean)
{
    if (!m_data || !m_rotatedData)
        return;
    // A range per walker, joined afterwards.
    double minX[kMaxOrientationWalkers], minY[kMaxOrientationWalkers], maxX[kMaxOrientationWalkers], maxY[kMaxOrientationWalkers];
    std::fill(std::begin(minX), std::end(minX), kSearchStart);
    std::fill(std::begin(minY), std::end(minY), kSearchStart);
    std::fill(std::begin(maxX), std::end(maxX), -kSearchStart);
    std::fill(std::begin(maxY), std::end(maxY), -kSearchStart);
    const int rows = std::min(m_data->validValueRowCount(), m_rotatedData->rowCount());
    const MeanPoleTriangle triangle(mean);
    PointColumnWriter out(m_rotatedData);
    forEachOrientation(m_data, rows, &readOrientation, [&](int row, QPointF const& p, int walker) {
        double sinA, cosA, sinB, cosB;
        triangle.terms(p, sinA, cosA, sinB, cosB);
        const double colatitude = rkUtils::acos(triangle.cosC * sinA * cosB - cosA * triangle.sinC) * kRadToDeg;
        // No fold and no quadrant correction: the Q-Q plot wants the signed angle.
        const double longitude =
            std::atan(-(sinB * sinA) / (sinA * triangle.sinC * cosB + cosA * triangle.cosC)) * kRadToDeg;
        minX[walker] = std::min(minX[walker], colatitude);
        maxX[walker] = std::max(maxX[walker], colatitude);
        minY[walker] = std::min(minY[walker], longitude);
        maxY[walker] = std::max(maxY[walker], longitude);
        out.set(row, QPointF(colatitude, longitude));
    });
    for (int w = 1; w < kMaxOrientationWalkers; ++w) {
        minX[0] = std::min(minX[0], minX[w]);
        maxX[0] = std::max(maxX[0], maxX[w]);
        minY[0] = std::min(minY[0], minY[w]);
        maxY[0] = std::max(maxY[0], maxY[w]);
    }
    // The range goes on the point list, not on the rotated copy: the Q-Q axes read it there.
    setMinMaxRanges(minX[0], minY[0], maxX[0], maxY[0]);
}

QVariant QRelationshipItemModel::rotatedData(int row) const
{
    return m_rotatedData ? m_rotatedData->value(row, 0) : QVariant();
}

} // namespace rkBase
