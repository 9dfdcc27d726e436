// Cross plots of the sample well. The first shows porosity against depth with the least-squares
// line, its 90 % range and the equation, and the beds of one formation selected (highlighted).
// The second shows dip against depth with a scenario of structural tops (one per formation, with
// its colour band and mean orientation), the third porosity in ten equal depth intervals with
// the mean of each and the number of beds in it, the fourth dip in 50 m intervals with each
// interval's mean plane. Depth grows downwards in all four. The axes are drawn here around the
// plot surface, as the panel around it would.
//
//   rk_crossplot_example OUT_DIR [--data FILE.csv]
// writes OUT_DIR/crossplot_porosity.png, crossplot_dip_tops.png, crossplot_intervals.png and
// crossplot_dip_means.png
// (rendered off screen).
#include "GalleryArguments.h"

#include <DepthLineField.h>
#include <MatrixData.h>
#include <QCrossPlot.h>
#include <QRelationshipItemModel.h>

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <cmath>
#include <cstdio>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kWidth = 1000, kHeight = 800;
const QMargins kMargins(90, 50, 40, 70);

// Round tick steps (1, 2 or 5 times a power of ten) giving about `count` ticks over [lo, hi].
double tickStep(double lo, double hi, int count)
{
    const double raw = (hi - lo) / count;
    const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double m : {1.0, 2.0, 5.0, 10.0})
        if (m * magnitude >= raw)
            return m * magnitude;
    return 10.0 * magnitude;
}

// The plot's picture framed by axes with ticks, tick labels, axis titles and a title.
QImage framed(QCrossPlot& plot, const QString& title, const QString& xTitle, const QString& yTitle)
{
    QImage canvas(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::white);
    const QRect area = QRect(0, 0, kWidth, kHeight).marginsRemoved(kMargins);
    QPainter p(&canvas);
    p.setRenderHint(QPainter::Antialiasing);
    p.drawPixmap(area.topLeft(), plot.grab());
    QFont font = p.font();
    font.setPointSize(10);
    p.setFont(font);
    p.setPen(Qt::black);
    const QPointF min = plot.minPoint(), max = plot.maxPoint();
    // Ticks on x: the plot's pixel of each round value, shifted into the canvas.
    const double xs = tickStep(min.x(), max.x(), 8);
    for (double v = std::ceil(min.x() / xs) * xs; v <= max.x() + xs * 1e-9; v += xs) {
        const double x = area.left() + plot.transformInPixelPoint(QPointF(v, min.y())).x();
        p.drawLine(QPointF(x, area.bottom() + 1), QPointF(x, area.bottom() + 7));
        const QString text = QString::number(v, 'g', 6);
        p.drawText(QRectF(x - 40, area.bottom() + 9, 80, 18), Qt::AlignHCenter | Qt::AlignTop, text);
    }
    const double ys = tickStep(min.y(), max.y(), 10);
    for (double v = std::ceil(min.y() / ys) * ys; v <= max.y() + ys * 1e-9; v += ys) {
        const double y = area.top() + plot.transformInPixelPoint(QPointF(min.x(), v)).y();
        p.drawLine(QPointF(area.left() - 7, y), QPointF(area.left() - 1, y));
        p.drawText(QRectF(area.left() - 70, y - 9, 60, 18), Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(v, 'g', 6));
    }
    font.setPointSize(11);
    p.setFont(font);
    p.drawText(QRectF(area.left(), kHeight - 36, area.width(), 22), Qt::AlignCenter, xTitle);
    p.save();
    p.translate(22, area.center().y());
    p.rotate(-90);
    p.drawText(QRectF(-area.height() / 2.0, -11, area.height(), 22), Qt::AlignCenter, yTitle);
    p.restore();
    font.setBold(true);
    font.setPointSize(13);
    p.setFont(font);
    p.drawText(QRectF(area.left(), 10, area.width(), 30), Qt::AlignCenter, title);
    return canvas;
}

// A plot surface the size of the canvas's plot area, depth downwards, over [min, max].
void setUp(QCrossPlot& plot, QRelationshipItemModel& model, const QPointF& min, const QPointF& max)
{
    plot.setModel(&model);
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.resize(QRect(0, 0, kWidth, kHeight).marginsRemoved(kMargins).size());
    plot.setBoundaries(min, max);
    plot.setShow90PercentRange(false);
}

} // namespace

int main(int argc, char** argv)
{
    GalleryArguments::useOffscreenUnlessSet();
    QApplication app(argc, argv);
    GalleryArguments gallery;
    if (!gallery.parse(app.arguments(), "rk_crossplot_example", QStringLiteral(RK_SAMPLE_DATA)))
        return 2;
    const QDir& out = gallery.out;
    const QString& data = gallery.data;
    const std::unique_ptr<MatrixData>& sheet = gallery.sheet;
    auto column = [&](const char* name) {
        return sheet ? sheet->getNodeFromName(QString::fromLatin1(name)) : nullptr;
    };
    MatrixData* depth = column("Measured Depth");
    MatrixData* porosity = column("Porosity");
    MatrixData* dip = column("dip");
    MatrixData* azimuth = column("azimuth");
    MatrixData* horizon = column("Horizon");
    if (!depth || !porosity || !dip || !azimuth || !horizon) {
        std::fprintf(stderr, "rk_crossplot_example: %s lacks a depth, porosity, dip, azimuth or horizon column\n",
                     qPrintable(data));
        return 1;
    }

    // ---- porosity against depth, with the regression and a selected formation ----
    QRelationshipItemModel poro;
    poro.takeNewDataSet(porosity, depth, QRelationshipItemModel::HighlightSelected);
    poro.setPointStyle(QRelationshipItemModel::Cross);
    poro.setPointPixelSize(3);
    const int rows = poro.rowCount();
    for (int row = 0; row < rows; ++row)
        if (horizon->value(row, 0).toString() == QLatin1String("Top Gamma"))
            poro.setSelected(row, true);
    poro.setPartSelection(true);
    double slope = 0.0, intercept = 0.0, coefficient = 0.0;
    poro.calculateRegressionLine(slope, intercept, coefficient);
    QCrossPlot porosityPlot(nullptr, nullptr);
    const QPointF pMin = poro.minValue(), pMax = poro.maxValue();
    setUp(porosityPlot, poro, QPointF(0.0, pMin.y() - 50.0), QPointF(0.35, pMax.y() + 50.0));
    porosityPlot.setTrendLine(slope, intercept, coefficient);
    porosityPlot.setShowRegressionLine(true);
    porosityPlot.setShow90PercentRange(true);
    porosityPlot.setShowRegressionEquation(true);
    porosityPlot.setClusterPoleCentroidsOn(false);
    bool ok = framed(porosityPlot, QStringLiteral("Porosity against depth (Top Gamma selected)"),
                     QStringLiteral("Porosity (fraction)"), QStringLiteral("Measured depth (m)"))
                  .save(out.filePath(QStringLiteral("crossplot_porosity.png")));

    // ---- dip against depth, with the tops of a scenario and ten intervals ----
    QRelationshipItemModel dips;
    dips.takeNewDataSet(dip, depth, QRelationshipItemModel::ShowAll);
    dips.setPointStyle(QRelationshipItemModel::Circle);
    dips.setPointPixelSize(2);
    dips.addStructuralTopsSenario(QStringLiteral("Formations"));
    DepthLineField* tops = dips.structuralTops();
    const QColor colours[] = {QColor(40, 160, 60), QColor(200, 30, 30), QColor(30, 30, 200), QColor(200, 150, 0),
                              QColor(120, 40, 160)};
    QString previous;
    int formation = 0;
    double sumDip = 0.0, sumAzimuth = 0.0;
    int count = 0;
    auto closeFormation = [&] {
        if (count > 0 && !tops->lineDepths().empty()) {
            std::vector<int> last{int(tops->lineDepths().size()) - 1};
            tops->setSelected(last);
            tops->changePickedOrientation(QPointF(sumDip / count, sumAzimuth / count));
            tops->deselectAll();
        }
        sumDip = sumAzimuth = 0.0;
        count = 0;
    };
    for (int row = 0; row < rows; ++row) {
        const QString name = horizon->value(row, 0).toString();
        if (name != previous) {
            closeFormation();
            tops->insertHorizontalLine(0.0, depth->value(row, 0).toDouble(), name, colours[formation++ % 5],
                                       DepthLineField::Top, 1e-6, QPointF(-1.0, -1.0), row);
            previous = name;
        }
        sumDip += dip->value(row, 0).toDouble();
        sumAzimuth += azimuth->value(row, 0).toDouble();
        ++count;
    }
    closeFormation();
    tops->setDomainType(DepthLineField::Stratigraphy);
    tops->setDomainTransparency(45);
    tops->setShowAverageOrientationLabels(false);
    const QPointF dMin = dips.minValue(), dMax = dips.maxValue();
    QCrossPlot dipPlot(nullptr, nullptr);
    setUp(dipPlot, dips, QPointF(0.0, dMin.y() - 50.0), QPointF(std::ceil(dMax.x() / 10.0) * 10.0 + 10.0, dMax.y() + 50.0));
    dipPlot.setPointFillColor(QColor(90, 90, 90));
    dipPlot.setClusterPoleCentroidsOn(false);
    ok = framed(dipPlot, QStringLiteral("Dip against depth with the formation tops"), QStringLiteral("Dip (degrees)"),
                QStringLiteral("Measured depth (m)"))
             .save(out.filePath(QStringLiteral("crossplot_dip_tops.png")))
         && ok;

    // ---- porosity in ten equal depth intervals: the mean of each and its count ----
    QRelationshipItemModel binned;
    binned.takeNewDataSet(porosity, depth, QRelationshipItemModel::ShowAll);
    binned.setPointStyle(QRelationshipItemModel::Dot);
    binned.setPointPixelSize(2);
    // Equal sizes from the top: the last boundary reaches past the deepest bed, so every bed counts.
    binned.generateAquidistantIntervalFilter(std::ceil((pMax.y() - pMin.y()) / 10.0), pMin.y(), pMax.y());
    binned.generateDataDecimation();
    QCrossPlot binPlot(nullptr, nullptr);
    setUp(binPlot, binned, QPointF(-0.05, pMin.y() - 50.0), QPointF(0.35, pMax.y() + 50.0));
    binPlot.setPointFillColor(QColor(150, 150, 150));
    binPlot.setIntervalBoundaries(true);
    binPlot.setBinAverages(true);
    binPlot.setNumbOfDataPerBin(true);
    binPlot.setPointConnectionLine(false);
    binPlot.setClusterPoleCentroidsOn(false);
    ok = framed(binPlot, QStringLiteral("Porosity in ten depth intervals: means and counts"),
                QStringLiteral("Porosity (fraction)"), QStringLiteral("Measured depth (m)"))
             .save(out.filePath(QStringLiteral("crossplot_intervals.png")))
         && ok;
    // ---- dip in 50 m intervals: each interval's mean plane, its dip as x and its azimuth as the tail ----
    QRelationshipItemModel meanDips;
    meanDips.takeNewDataSet(dip, depth, QRelationshipItemModel::ShowAll);
    // The mean planes take their azimuths from the sheet's "azimuth" column.
    meanDips.setDataRoot(sheet.get());
    meanDips.setPointStyle(QRelationshipItemModel::Dot);
    meanDips.setPointPixelSize(2);
    meanDips.generateAquidistantIntervalFilter(50.0, dMin.y(), dMax.y());
    meanDips.generateDataDecimation();
    QCrossPlot meanPlot(nullptr, nullptr);
    setUp(meanPlot, meanDips, QPointF(0.0, dMin.y() - 50.0), QPointF(std::ceil(dMax.x() / 10.0) * 10.0 + 10.0, dMax.y() + 50.0));
    meanPlot.setPointFillColor(QColor(150, 150, 150));
    meanPlot.setIntervalBoundaries(true);
    meanPlot.setBinAverages(true);
    meanPlot.setPointConnectionLine(false);
    meanPlot.setClusterPoleCentroidsOn(false);
    ok = framed(meanPlot, QStringLiteral("Dip in 50 m intervals: mean plane of each (tail towards its azimuth)"),
                QStringLiteral("Dip (degrees)"), QStringLiteral("Measured depth (m)"))
             .save(out.filePath(QStringLiteral("crossplot_dip_means.png")))
         && ok;
    if (!ok) {
        std::fprintf(stderr, "rk_crossplot_example: could not write into %s\n", qPrintable(out.path()));
        return 1;
    }
    std::printf("rk_crossplot_example: wrote crossplot_porosity.png, crossplot_dip_tops.png, "
                "crossplot_intervals.png and crossplot_dip_means.png into %s (%d points, depth = %.4f * porosity + %.2f, R %.3f; %zu tops, "
                "%d intervals)\n",
                qPrintable(out.path()), rows, slope, intercept, coefficient, tops->lineDepths().size(),
                binned.decimationData() ? binned.decimationData()->rowCount() : 0);
    return 0;
}
