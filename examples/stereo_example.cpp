// The stereonet of the sample well: the bedding poles (dots) of a plunging fold on the equal area net
// with its 10-degree grid, the great circles of every 100th bed, the mean principal pole, the
// girdle the poles lie on (the best fit plane) and its pole, the fold axis (L pole), density
// contours of the poles (filled from the lowest level up, so that the net shows around them) and the centres of three k-means
// clusters. A second picture shows the same data on the equal angle net.
//
//   rk_stereo_example OUT_DIR [--data FILE.csv]
// writes OUT_DIR/stereonet.png and OUT_DIR/stereonet_wulff.png (rendered off screen).
#include "GalleryArguments.h"

#include <KMrandom.h>
#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QRelationshipItemModel.h>
#include <QStereoPlotWidget.h>

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <memory>

using namespace rkBase;

namespace {

// A stereonet that draws the traces of a second, sparser point set over the chart: a host shows
// every pole but only a few planes, which would otherwise hide the poles.
class GalleryStereonet : public QStereoPlotWidget
{
public:
    GalleryStereonet() : QStereoPlotWidget(nullptr, QStringLiteral("Stereonet")) {}
    QRelationshipItemModel* traceModel = nullptr;

    void redraw() override
    {
        QStereoPlotWidget::redraw();
        if (!traceModel)
            return;
        QPainter painter;
        beginRasterPainter(painter, m_chartPixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRegion(clipRegion());
        QRelationshipItemModel* const keep = m_model;
        m_model = traceModel;
        drawCyclographicTraces(&painter, traceWidth());
        m_model = keep;
        // The results again, so that no trace covers them.
        painter.setClipping(false);
        drawMeanOrientation(&painter);
    }
};

void configure(GalleryStereonet& net, QRelationshipItemModel& poles, QRelationshipItemModel& traces, bool equalArea)
{
    net.setModel(&poles);
    net.traceModel = &traces;
    net.setEqualAreaScaling(equalArea);
    net.changeHeaderTitle(equalArea ? QStringLiteral("bedding, equal area") : QStringLiteral("bedding, equal angle"));
    net.setPoleColor(QColor(20, 20, 20, 150));
    net.setPlaneColor(QColor(40, 90, 200, 170));
    net.setShowTraces(false);
    net.setShowMeanPrincipalPole(true);
    net.setMeanPrincipalPoleColor(QColor(230, 90, 20));
    net.setShowLPole(true);
    net.setLPoleColor(QColor(170, 0, 0));
    net.setShowBestFitPlane(true);
    net.setBestFitPlaneColor(QColor(170, 0, 0));
    net.setBestFitPlaneWidth(2);
    net.resize(800, 800);
    // Density of the poles on a 40 x 40 grid in this net's own pixels.
    net.redraw();
    net.countingOutProjections(41, 41, true, false);
    MatrixDataArray* grid = poles.contourGridPoles();
    double lowest = 1e27, highest = -1e27;
    for (int i = 0; i < grid->rowCount(); ++i)
        for (int j = 0; j < grid->columnCount(); ++j) {
            lowest = std::min(lowest, grid->toDouble(i, j));
            highest = std::max(highest, grid->toDouble(i, j));
        }
    // Seven bands; the lowest starts above an empty cell, so that the net stays visible where
    // there are no poles. The levels are counts; the chart shows them as percent of the poles.
    const double low = std::max(lowest, highest / 8.0);
    net.setContourRange(low, highest);
    grid->setColorMapStepSize((highest - low) / 7.0 * 100.0 / poles.numberOfSelectedPoints());
    net.setContourPolesOn(true);
    net.setContourFillOn(true);
    net.setContourLinesOn(true);
    net.setClusterPoleCentroidsOn(true);
}

} // namespace

int main(int argc, char** argv)
{
    GalleryArguments::useOffscreenUnlessSet();
    QApplication app(argc, argv);
    GalleryArguments gallery;
    if (!gallery.parse(app.arguments(), "rk_stereo_example", QStringLiteral(RK_SAMPLE_DATA)))
        return 2;
    const QDir& out = gallery.out;
    const QString& data = gallery.data;
    const std::unique_ptr<MatrixData>& sheet = gallery.sheet;
    MatrixData* dip = sheet ? sheet->getNodeFromName(QStringLiteral("dip")) : nullptr;
    MatrixData* azimuth = sheet ? sheet->getNodeFromName(QStringLiteral("azimuth")) : nullptr;
    if (!dip || !azimuth) {
        std::fprintf(stderr, "rk_stereo_example: %s has no dip and azimuth columns\n", qPrintable(data));
        return 1;
    }

    QRelationshipItemModel poles;
    poles.takeNewDataSet(dip, azimuth, QRelationshipItemModel::ShowAll);
    poles.setPointStyle(QRelationshipItemModel::Dot);
    poles.setPointPixelSize(2);
    poles.calculateMeanDirection(true, false, nullptr, -1);
    KMrandom::seed(7);
    const QString clusters = QStringLiteral("StereoPlot_dip_azimuth");
    if (!poles.buildClusters_KML_ForStereoProjection(clusters, 3))
        std::fprintf(stderr, "rk_stereo_example: no clusters\n");
    poles.setClusterAttributeName(clusters);
    QRelationshipItemModel traces;
    traces.takeNewDataSet(100, QRelationshipItemModel::ShowAll, dip, azimuth, {});

    // Both nets share the model, whose density grid holds one net's pixels at a time: each is
    // counted and rendered in turn.
    GalleryStereonet schmidt;
    configure(schmidt, poles, traces, true);
    bool ok = schmidt.grab().save(out.filePath(QStringLiteral("stereonet.png")));
    GalleryStereonet wulff;
    configure(wulff, poles, traces, false);
    ok = wulff.grab().save(out.filePath(QStringLiteral("stereonet_wulff.png"))) && ok;
    if (!ok) {
        std::fprintf(stderr, "rk_stereo_example: could not write into %s\n", qPrintable(out.path()));
        return 1;
    }
    const QPointF axis = poles.LdirectionPlane();
    const MatrixDataArray* centres = poles.clusterCentroids();
    std::printf("rk_stereo_example: wrote stereonet.png and stereonet_wulff.png into %s (%d poles, %d traces, "
                "girdle pole %.1f/%.1f, %d cluster centres)\n",
                qPrintable(out.path()), poles.rowCount(), traces.rowCount(), axis.x(), axis.y(),
                centres ? centres->rowCount() : 0);
    return 0;
}
