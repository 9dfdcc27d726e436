#pragma once
// Where a stereonet puts an orientation, for the code that counts or tests points in the net's
// pixels without holding the chart: the rectangle the density grids span, the net's circle,
// its kind and the chart's zoom offsets. The stereonet chart fills one from its own geometry.
//
// Placing an orientation (x dip or plunge, y azimuth, degrees) turns a radial offset about the
// centre by y + 270 degrees, the rotation of a QTransform:
// - a pole lies at centre + (-r sin y, r cos y), with r = sqrt(2) R sin(x / 2) on the equal
//   area net and R tan(x / 2) on the equal angle net: raster coordinates, so azimuth 0 puts a
//   pole below the centre;
// - a dip direction lies at centre + (r sin y, -r cos y) - offset, with r = sqrt(2) R
//   sin(45 - x / 2) or R tan(45 - x / 2): widget coordinates, so it moves with the zoom.
//
// Density grids laid over gridRect have the first index along x and the second along y, as the
// chart's contour drawing and OpenGLScene::setMeshData read them: node (i, j) of a rows x
// columns grid sits at gridRect.topLeft() + (i * width / (rows - 1), j * height / (columns - 1)).

#include "gdfVertex.h"

#include <QPointF>
#include <QRectF>

#include <cmath>

namespace rkBase {

class StereoNetGeometry
{
public:
    QRectF gridRect;
    QPointF centre;
    double radius = 0.0;
    bool equalArea = true;
    QPointF offset;

    // Distance from the centre of the pole of a plane dipping dip degrees.
    double poleRadius(double dip) const
    {
        const double h = dip * (kPi / 180.0) / 2.0;
        return equalArea ? std::sin(h) * std::sqrt(2.0) * radius : std::tan(h) * radius;
    }
    // Distance from the centre of a line plunging plunge degrees.
    double lineRadius(double plunge) const
    {
        const double h = kPi / 4.0 - plunge * (kPi / 180.0) / 2.0;
        return equalArea ? std::sin(h) * std::sqrt(2.0) * radius : std::tan(h) * radius;
    }
    QPointF poleInPixel(QPointF const& orientation) const
    {
        const double r = poleRadius(orientation.x());
        double s, c;
        sinCosDegrees(orientation.y(), s, c);
        return QPointF(centre.x() - r * s, centre.y() + r * c);
    }
    QPointF dipDirectionInPixel(QPointF const& orientation) const
    {
        const double r = lineRadius(orientation.x());
        double s, c;
        sinCosDegrees(orientation.y(), s, c);
        return QPointF(centre.x() + r * s, centre.y() - r * c) - offset;
    }
    // The axis (unit vector, x north, y east, z down, on the lower hemisphere) that a pixel of
    // the net shows: the inverse of poleInPixel for poles (the plane's normal) or of
    // dipDirectionInPixel otherwise. A pixel off the net is taken to the rim along its ray.
    gdfVertex axisAt(QPointF const& pixel, bool poles) const
    {
        const QPointF shift = poles ? QPointF() : offset;
        double east = (pixel.x() + shift.x() - centre.x()) / radius;
        double north = -(pixel.y() + shift.y() - centre.y()) / radius;
        double rho2 = east * east + north * north;
        if (rho2 > 1.0) {
            const double rho = std::sqrt(rho2);
            east /= rho;
            north /= rho;
            rho2 = 1.0;
        }
        if (equalArea) {
            const double k = std::sqrt(2.0 - rho2);
            return gdfVertex(north * k, east * k, 1.0 - rho2);
        }
        const double d = 1.0 + rho2;
        return gdfVertex(2.0 * north / d, 2.0 * east / d, (1.0 - rho2) / d);
    }
    // Sine and cosine of an azimuth, exactly 0 and 1 at the compass points (as a QTransform
    // rotation has them), so that an east or west point lies exactly on the centre's row.
    static void sinCosDegrees(double degrees, double& s, double& c)
    {
        const double a = degrees * (kPi / 180.0);
        s = std::sin(a);
        c = std::cos(a);
        snapQuadrant(s, c);
    }
    static void snapQuadrant(double& s, double& c)
    {
        if (std::abs(s) < 1e-15)
            s = 0.0;
        if (std::abs(c) < 1e-15)
            c = 0.0;
    }

private:
    static constexpr double kPi = 3.14159265358979323846;
};

} // namespace rkBase
