// The tangent plot of a cylindrical fold: 400 beds folded about an axis plunging 25 towards 060,
// their poles spread along a girdle in two limbs and a hinge, drawn as the lines of steepest
// dip. On the tangent plot those lines fall on one straight line, drawn in red from the axis.
// Both nets are on, so that the blanked centre shows.
//
//   rk_tangent_example OUT_DIR
// writes OUT_DIR/tangent.png (rendered off screen). The beds are drawn from a fixed seed.
#include "GalleryArguments.h"

#include <MatrixData.h>
#include <QRelationshipItemModel.h>
#include <QTangentPlotWidget.h>

#include <QApplication>
#include <QDir>

#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>

using namespace rkBase;

namespace {

constexpr double kDeg = 3.14159265358979323846 / 180.0;
using Vector = std::array<double, 3>; // north, east, down

Vector lineVector(double plunge, double azimuth)
{
    return {std::cos(azimuth * kDeg) * std::cos(plunge * kDeg), std::sin(azimuth * kDeg) * std::cos(plunge * kDeg),
            std::sin(plunge * kDeg)};
}

Vector cross(const Vector& a, const Vector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector unit(const Vector& v)
{
    const double n = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    return {v[0] / n, v[1] / n, v[2] / n};
}

// The bed (dip, dip azimuth) whose normal is n.
void bedOfNormal(Vector n, double& dip, double& dipAzimuth)
{
    if (n[2] < 0.0)
        n = {-n[0], -n[1], -n[2]};
    dip = std::acos(std::min(1.0, n[2])) / kDeg;
    // The pole points down and away from the dip direction.
    dipAzimuth = std::atan2(-n[1], -n[0]) / kDeg;
    if (dipAzimuth < 0.0)
        dipAzimuth += 360.0;
}

} // namespace

int main(int argc, char** argv)
{
    GalleryArguments::useOffscreenUnlessSet();
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: rk_tangent_example OUT_DIR\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    if (!out.exists() && !QDir().mkpath(out.path())) {
        std::fprintf(stderr, "rk_tangent_example: cannot make %s\n", argv[1]);
        return 1;
    }

    const double axisPlunge = 25.0, axisAzimuth = 60.0;
    const Vector axis = lineVector(axisPlunge, axisAzimuth);
    // Two directions at right angles to the axis: the normals of the folded beds turn in their plane.
    const Vector first = unit(cross(axis, {0.0, 0.0, 1.0}));
    const Vector second = cross(axis, first);

    std::mt19937 random(20240611u);
    std::normal_distribution<double> limb(0.0, 1.0);
    std::uniform_int_distribution<int> which(0, 2);
    std::normal_distribution<double> scatter(0.0, 2.5 * kDeg);
    const int rows = 400;
    auto dip = std::make_unique<MatrixData>(QStringLiteral("dip"), rows, 1, QVariant::Double, true);
    auto azimuth = std::make_unique<MatrixData>(QStringLiteral("azimuth"), rows, 1, QVariant::Double, true);
    // Limbs at -35 and +40 degrees of turn from the hinge, and the hinge itself.
    const double centres[3] = {-35.0, 5.0, 40.0};
    const double spreads[3] = {7.0, 12.0, 6.0};
    for (int r = 0; r < rows; ++r) {
        const int k = which(random);
        const double turn = (centres[k] + spreads[k] * limb(random)) * kDeg;
        Vector n;
        for (int i = 0; i < 3; ++i)
            n[i] = std::cos(turn) * first[i] + std::sin(turn) * second[i] + scatter(random) * axis[i];
        double d, a;
        bedOfNormal(unit(n), d, a);
        dip->setValue(r, 0, d);
        azimuth->setValue(r, 0, a);
    }

    QRelationshipItemModel beds;
    beds.takeNewDataSet(dip.get(), azimuth.get(), QRelationshipItemModel::ShowAll);
    beds.setPointStyle(QRelationshipItemModel::Circle);
    beds.setPointPixelSize(2);

    QTangentPlotWidget plot(nullptr, QStringLiteral("Tangent Plot"));
    plot.setModel(&beds);
    plot.changeHeaderTitle(QStringLiteral("folded beds, lines of steepest dip"));
    plot.setShowPoles(false);
    plot.setShowDipDirections(true);
    plot.setDipDirectionColor(QColor(30, 60, 170));
    plot.setShow10DegreeNet(true);
    plot.setShow2DegreeNet(true);
    plot.setFoldAxis(QPointF(axisPlunge, axisAzimuth));
    plot.setShowFoldAxis(true);
    plot.resize(800, 800);
    plot.updateChart();
    const QString file = out.filePath(QStringLiteral("tangent.png"));
    if (!plot.chartImage().save(file)) {
        std::fprintf(stderr, "rk_tangent_example: cannot write %s\n", qPrintable(file));
        return 1;
    }
    std::printf("%s\n", qPrintable(file));
    return 0;
}
