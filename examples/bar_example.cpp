// The bar chart on the sample well, in its three modes, for the gallery:
// - bar_percent.png: the share of each lithology in every 100 rows (50 m) down the well, as
//   percent bars labelled by depth. The lithology code column becomes one 0/1 column per
//   lithology, so the mean of a bar is the fraction of its rows in that lithology.
// - bar_normal.png: mean dip and azimuth of each horizon, bars side by side labelled by name.
// - bar_stacked.png: the same lithology columns stacked over 120 places labelled by the long
//   sample names, which turn upright and are thinned out.
//
//   rk_bar_example OUT_DIR [--data FILE.csv]
#include "GalleryArguments.h"

#include <BarDiagramData.h>
#include <MatrixData.h>
#include <QBarDiagramWidget.h>

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <memory>

using namespace rkBase;

namespace {

bool save(QBarDiagramWidget& chart, const BarDiagramData& data, QBarDiagramWidget::BarMode mode, const QString& title,
          const QString& file)
{
    chart.setData(data);
    chart.setBarMode(mode);
    chart.changeHeaderTitle(title);
    chart.updateChart();
    return chart.chartImage().save(file, "PNG", 0);
}

} // namespace

int main(int argc, char** argv)
{
    GalleryArguments::useOffscreenUnlessSet();
    QApplication app(argc, argv);
    GalleryArguments gallery;
    if (!gallery.parse(app.arguments(), "rk_bar_example", QStringLiteral(RK_SAMPLE_DATA)))
        return 2;
    const QDir& out = gallery.out;
    const QString& file = gallery.data;
    const std::unique_ptr<MatrixData>& sheet = gallery.sheet;
    auto column = [&sheet](const char* name) {
        return sheet ? sheet->getNodeFromName(QLatin1String(name)) : nullptr;
    };
    MatrixData* code = column("Lithology Code");
    MatrixData* depth = column("Measured Depth");
    MatrixData* horizon = column("Horizon");
    MatrixData* names = column("Name");
    MatrixData* dip = column("dip");
    MatrixData* azimuth = column("azimuth");
    if (!code || !depth || !horizon || !names || !dip || !azimuth) {
        std::fprintf(stderr, "rk_bar_example: %s lacks the sample well's columns\n", qPrintable(file));
        return 1;
    }

    // One 0/1 column per lithology.
    const struct {
        int code;
        const char* name;
        QColor colour;
    } lithologies[] = {{1, "Sandstone", QColor(230, 190, 80)},
                       {2, "Shale", QColor(110, 120, 130)},
                       {3, "Limestone", QColor(90, 160, 210)},
                       {4, "Siltstone", QColor(170, 120, 80)}};
    const int rows = code->validValueRowCount();
    QList<MatrixData*> shares;
    for (const auto& l : lithologies) {
        auto* share = new MatrixData(QLatin1String(l.name), rows, 1, QVariant::Double, true);
        share->setColor(l.colour);
        for (int r = 0; r < rows; ++r)
            if (code->isValueValid(r, 0))
                share->setValue(r, 0, code->toInt(r, 0) == l.code ? 1.0 : 0.0);
        sheet->appendChild(share, false);
        shares.append(share);
    }

    QBarDiagramWidget chart;
    chart.resize(900, 480);
    bool ok = save(chart, BarDiagramData::reduce(shares, {}, 100, depth), QBarDiagramWidget::PercentBars,
                   QStringLiteral("lithology down the well, every 50 m"), out.filePath(QStringLiteral("bar_percent.png")));
    ok = save(chart, BarDiagramData::reduce({dip, azimuth}, {}, 600, horizon), QBarDiagramWidget::NormalBars,
              QStringLiteral("mean dip and azimuth of each horizon"), out.filePath(QStringLiteral("bar_normal.png")))
         && ok;
    ok = save(chart, BarDiagramData::reduce(shares, {}, 25, names), QBarDiagramWidget::StackedBars,
              QStringLiteral("lithology in runs of 25 samples"), out.filePath(QStringLiteral("bar_stacked.png")))
         && ok;
    if (!ok) {
        std::fprintf(stderr, "rk_bar_example: could not write into %s\n", qPrintable(out.path()));
        return 1;
    }
    std::printf("rk_bar_example: wrote bar_percent.png, bar_normal.png and bar_stacked.png into %s\n",
                qPrintable(out.path()));
    return 0;
}
