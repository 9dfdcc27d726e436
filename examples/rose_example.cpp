// The circular charts on the sample well: a rose of the dip azimuths in 10-degree bins,
// classified by the points' colour attribute, with its resultant; and the polar frame on its own
// with the bedding planes drawn as equal-angle great circles through drawSector, and the mean dip
// direction as an arrow.
//
//   rk_rose_example OUT_DIR [--data FILE.csv]
// writes OUT_DIR/rose.png and OUT_DIR/polar.png (rendered off screen).
#include "GalleryArguments.h"

#include <MatrixData.h>
#include <QLegendListModel.h>
#include <QPolarPlotWidget.h>
#include <QRosePlotWidget.h>

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <cmath>
#include <cstdio>
#include <memory>

using namespace rkBase;

namespace {

// Bedding planes as great circles on an equal-angle net, and the mean dip direction.
class PlaneTraces : public QPolarPlotWidget
{
public:
    PlaneTraces() : QPolarPlotWidget(nullptr, QStringLiteral("Polar Frame")) {}
    std::vector<std::pair<double, double>> planes; // dip, dip direction
    double meanDirection = 99999.0;

    void redraw() override
    {
        QPolarPlotWidget::redraw();
        QPainter painter;
        beginRasterPainter(painter, m_chartPixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        drawChart(painter);
    }
    void drawChart(QPainter& painter) override
    {
        drawFrame(&painter, 1);
        painter.setClipRegion(clipRegion());
        painter.setPen(QPen(QColor(40, 90, 170, 140), 1.0));
        painter.setBrush(Qt::NoBrush);
        const double pi = 3.14159265358979323846;
        for (const auto& [dip, direction] : planes) {
            const QPointF from = polarPoint(direction - 90.0, radius());
            const QPointF to = polarPoint(direction + 90.0, radius());
            const QPointF mid = polarPoint(direction, radius() * std::tan(pi / 4.0 - dip * pi / 360.0));
            if (dip > 89.99) {
                // A vertical plane is a diameter: the tool draws the north-south one, turned here.
                rotation(&painter, direction + 90.0);
                drawSector(mid, from, to, &painter, false);
                painter.resetTransform();
            } else {
                drawSector(mid, from, to, &painter, false);
            }
        }
        painter.setClipping(false);
        if (meanDirection != 99999.0) {
            painter.setPen(QPen(QColor(200, 30, 30), 2.0));
            drawLine(&painter, meanDirection, 20);
            drawArrow(&painter, polarPoint(meanDirection, radius() + 20));
        }
    }
};

} // namespace

int main(int argc, char** argv)
{
    GalleryArguments::useOffscreenUnlessSet();
    QApplication app(argc, argv);
    GalleryArguments gallery;
    if (!gallery.parse(app.arguments(), "rk_rose_example", QStringLiteral(RK_SAMPLE_DATA)))
        return 2;
    const QDir& out = gallery.out;
    const QString& data = gallery.data;
    const std::unique_ptr<MatrixData>& sheet = gallery.sheet;
    MatrixData* azimuth = sheet ? sheet->getNodeFromName(QStringLiteral("azimuth")) : nullptr;
    MatrixData* dip = sheet ? sheet->getNodeFromName(QStringLiteral("dip")) : nullptr;
    MatrixData* colour = sheet ? sheet->getNodeFromName(QStringLiteral("Vertex_colour")) : nullptr;
    if (!azimuth || !dip || !colour) {
        std::fprintf(stderr, "rk_rose_example: %s has no dip, azimuth and Vertex_colour columns\n", qPrintable(data));
        return 1;
    }
    azimuth->setColor(QColor(150, 150, 150));

    // The rose as its panel builds it: bins with their class values, the resultant, the legend.
    const int interval = 10;
    const std::vector<int> rows;
    std::vector<std::vector<QVariant>> values;
    MatrixData* bins = MatrixData::newFrequencyData(interval, 360 / interval, 0, MatrixData::Frequency, rows, azimuth,
                                                    colour, values, true);
    double length = 0.0;
    const double direction = azimuth->resultantMeanDirection(length, rows);
    QRosePlotWidget rose(nullptr, QStringLiteral("Rose Chart"));
    QLegendListModel legend(nullptr, &rose, QLegendListModel::ColorLegend);
    legend.setSymbolNode(colour);
    rose.setDirectionData(azimuth, rows);
    rose.setRoseData(bins, std::move(values), &legend, interval, direction, length, false);
    rose.setAnnotationLabelAsAngle(true);
    rose.showResultantMeanLength(true);
    rose.setZeroCircleSize(6.0);
    rose.changeHeaderTitle(QStringLiteral("azimuth"));
    rose.resize(640, 640);

    PlaneTraces polar;
    for (int r = 0; r < dip->validValueRowCount(); r += 60)
        polar.planes.emplace_back(dip->toDouble(r, 0), azimuth->toDouble(r, 0));
    polar.meanDirection = direction;
    polar.setAnnotationLabelAsAngle(false);
    polar.setAnnotationLabelAsDirectionOn(true);
    polar.setTopRightInfo(QStringLiteral("planes = %1").arg(polar.planes.size()));
    polar.changeHeaderTitle(QStringLiteral("bedding"));
    polar.resize(600, 600);

    bool ok = rose.grab().save(out.filePath(QStringLiteral("rose.png")));
    ok = polar.grab().save(out.filePath(QStringLiteral("polar.png"))) && ok;
    if (!ok) {
        std::fprintf(stderr, "rk_rose_example: could not write into %s\n", qPrintable(out.path()));
        return 1;
    }
    std::printf("rk_rose_example: wrote rose.png and polar.png into %s (resultant %.1f, length %.2f)\n",
                qPrintable(out.path()), direction, length);
    return 0;
}
