#pragma once
// The scanline of a Terzaghi correction: which planes it corrects and by how much. A plane too
// close to parallel with the scanline is left unweighted.
//
// Two routes compute the angle and they agree only for a horizontal scanline: the angle test
// uses the full scanline vector, while the normalised weight drops the cos(plunge) factor of
// its first term. Both are kept as they are; stored weight attributes depend on them.

#include <gdfVertex.h>

#include <QPointF>

#include <vector>

namespace rkBase {

class QRelationshipItemModel;

class TerzaghiScanline
{
public:
    TerzaghiScanline(double plunge, double azimuth, double minimumAngle);
    // The model's scanline.
    explicit TerzaghiScanline(const QRelationshipItemModel& model);

    // alpha: the acute angle in degrees between the plane's pole and the scanline. False when
    // the plane is within the minimum angle of parallel, or the scanline is unset.
    bool angle(QPointF const& plane, double& alpha) const;
    // angle()'s answer without the angle: the arc cosine is taken only for a plane whose pole
    // lies within a hair of the minimum angle, where it decides.
    bool corrects(QPointF const& plane) const;
    // The signed cosine of the normalised weight; its inverse magnitude is the raw weight.
    double cosine(QPointF const& plane) const;

    // The normalised weight of every model row, in one walk of the list: what
    // biasCorrection(row, count, total) gives after totalBiasWeight, to the last bit. Rows the
    // scanline does not correct, and rows past the list, weigh 1.
    static std::vector<double> weights(const QRelationshipItemModel& model);

private:
    double m_azimuth;
    double m_minimumAngle;
    bool m_defined;
    gdfVertex m_line;
    double m_sinPlunge;
    // sin(minimum angle): a pole passes when its cosine to the scanline reaches it. NaN where the
    // minimum lies outside 0 to 90 degrees and only the angle itself can tell.
    double m_passCosine;
};

} // namespace rkBase
