// The drawing area on its own, before the real charts stand on it: the sample well's porosity
// against depth through the point walkers, a density grid of the same points as filled contours
// with lines, a highlighted selection, a result point with its label, the tooltip
// balloon, and a sheet of the sixteen symbols.
//
//   rk_chart_example OUT_DIR [--data FILE.csv] [--emf FILE.emf]
// writes OUT_DIR/drawing_area.png and OUT_DIR/symbols.png (rendered off screen), and with --emf
// the drawing area as an enhanced metafile, as its metafile copy paints it.
#include "GalleryArguments.h"

#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QChartDrawingArea.h>
#include <QRelationshipItemModel.h>

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

using namespace rkBase;

namespace {

// Porosity (x) against depth (y, down the page) in a framed plot area.
class DepthScatterChart : public QChartDrawingArea
{
public:
    DepthScatterChart() : QChartDrawingArea(nullptr, QStringLiteral("Porosity")) {}
    QRectF area() const { return QRectF(70, 40, width() - 100, height() - 80); }
    void setRanges(double x0, double x1, double y0, double y1)
    {
        m_x0 = x0, m_x1 = x1, m_y0 = y0, m_y1 = y1;
    }
    QPointF transformInPixelPoint(const QPointF& data) override
    {
        const QRectF a = area();
        return QPointF(a.left() + (data.x() - m_x0) / (m_x1 - m_x0) * a.width(),
                       a.top() + (data.y() - m_y0) / (m_y1 - m_y0) * a.height());
    }
    void redraw() override
    {
        QChartDrawingArea::redraw();
        QPainter painter;
        beginRasterPainter(painter, m_chartPixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        drawChart(painter);
        drawAxis(painter, rect());
    }
    void drawChart(QPainter& painter) override
    {
        drawContour(&painter);
        setPointPen(&painter);
        drawPoints(&painter);
        if (m_model)
            drawResultPoint(&painter, m_mean, QColor(220, 40, 40), QStringLiteral("mean"), -1.0, false);
        QPixmap tip(120, 20);
        tip.fill(Qt::transparent);
        {
            QPainter t(&tip);
            t.drawText(tip.rect(), Qt::AlignCenter, QStringLiteral("porosity 0.21"));
        }
        drawTooltip(&painter, transformInPixelPoint(m_mean) + QPointF(40, -30), m_labelColor, tip, QRectF());
    }
    void drawAxis(QPainter& painter, QRect) override
    {
        const QRectF a = area();
        painter.setPen(QPen(m_labelColor, 1.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(a);
        painter.drawText(QRectF(0, 4, width(), 24), Qt::AlignCenter, m_headerTitle.isEmpty() ? m_baseTitle : m_headerTitle);
        for (int k = 0; k <= 5; ++k) {
            const double vx = m_x0 + k * (m_x1 - m_x0) / 5, vy = m_y0 + k * (m_y1 - m_y0) / 5;
            const QPointF px = transformInPixelPoint(QPointF(vx, m_y1));
            const QPointF py = transformInPixelPoint(QPointF(m_x0, vy));
            painter.drawLine(px, px + QPointF(0, 5));
            painter.drawText(QRectF(px.x() - 30, px.y() + 6, 60, 16), Qt::AlignCenter, QString::number(vx, 'f', 2));
            painter.drawLine(py, py - QPointF(5, 0));
            painter.drawText(QRectF(2, py.y() - 8, 60, 16), Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(vy, 'f', 0));
        }
    }
    void setMean(const QPointF& mean) { m_mean = mean; }

private:
    double m_x0 = 0, m_x1 = 1, m_y0 = 0, m_y1 = 1;
    QPointF m_mean;
};

// A sheet of the symbols, each with its combo text.
class SymbolSheet : public QChartDrawingArea
{
public:
    SymbolSheet() : QChartDrawingArea(nullptr, QStringLiteral("Symbols")) {}
    void redraw() override
    {
        QChartDrawingArea::redraw();
        QPainter painter;
        beginRasterPainter(painter, m_chartPixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        static const char* names[] = {"Circle", "Cross", "Square", "Triangle1", "Triangle2", "Diamond",
                                      "BigCross1", "BigCross2", "Square1", "Triangle3", "Triangle4", "Diamond1",
                                      "Ring", "(dot)", "BigCross3", "BigCross4"};
        for (int style = 0; style < 16; ++style) {
            const QPointF pos(40 + (style % 4) * 150, 40 + (style / 4) * 60);
            painter.setPen(QPen(QColor(20, 60, 160), 2.0));
            painter.setBrush(QColor(183, 200, 255));
            drawOneSymbol(pos, style, QColor(40, 140, 70), 6, &painter);
            painter.setPen(Qt::black);
            painter.drawText(QRectF(pos.x() + 18, pos.y() - 10, 120, 20), Qt::AlignLeft | Qt::AlignVCenter,
                             QStringLiteral("%1 %2").arg(style).arg(QString::fromLatin1(names[style])));
        }
    }
};

} // namespace

int main(int argc, char** argv)
{
    GalleryArguments::useOffscreenUnlessSet();
    QApplication app(argc, argv);
    GalleryArguments gallery;
    if (!gallery.parse(app.arguments(), "rk_chart_example", QStringLiteral(RK_SAMPLE_DATA)))
        return 2;
    const QDir& out = gallery.out;
    const QString& data = gallery.data;
    const std::unique_ptr<MatrixData>& sheet = gallery.sheet;
    MatrixData* porosity = sheet ? sheet->getNodeFromName(QStringLiteral("Porosity")) : nullptr;
    MatrixData* depth = sheet ? sheet->getNodeFromName(QStringLiteral("Measured Depth")) : nullptr;
    if (!porosity || !depth) {
        std::fprintf(stderr, "rk_chart_example: %s has no Porosity and Measured Depth columns\n", qPrintable(data));
        return 1;
    }
    // Every third row of a stretch is selected, as a lasso elsewhere would leave it.
    std::vector<int> selected;
    for (int r = 150; r < 450; r += 2)
        selected.push_back(r);
    QRelationshipItemModel model;
    model.takeNewDataSet(1, QRelationshipItemModel::HighlightSelected, porosity, depth, selected);
    model.setPointStyle(QRelationshipItemModel::Cross);
    model.setPointPixelSize(2);

    double x0 = 1e27, x1 = -1e27, y0 = 1e27, y1 = -1e27, sx = 0, sy = 0;
    const int n = model.rowCount();
    for (int r = 0; r < n; ++r) {
        const QPointF p = model.data(model.index(r, 0)).toPointF();
        x0 = std::min(x0, p.x()), x1 = std::max(x1, p.x()), y0 = std::min(y0, p.y()), y1 = std::max(y1, p.y());
        sx += p.x(), sy += p.y();
    }
    DepthScatterChart chart;
    chart.setModel(&model);
    chart.setRanges(x0, x1, y0, y1);
    chart.setMean(QPointF(sx / std::max(n, 1), sy / std::max(n, 1)));
    chart.resize(720, 560);
    chart.changeHeaderTitle(QStringLiteral("against Measured Depth"));

    // Density of the points on a square grid over the plot area, as percent of the points.
    const QRectF area = chart.area();
    const int cells = 30;
    const double d = area.width() / cells;
    const int rowsY = int(area.height() / d + 1);
    MatrixDataArray* grid = model.contourGridPoles();
    grid->reserve(cells + 1, rowsY + 1);
    for (int r = 0; r < n; ++r) {
        const QPointF px = chart.transformInPixelPoint(model.data(model.index(r, 0)).toPointF()) - area.topLeft();
        for (int i = 0; i <= cells; ++i)
            for (int j = 0; j <= rowsY; ++j) {
                const double dist2 = (px.x() - i * d) * (px.x() - i * d) + (px.y() - j * d) * (px.y() - j * d);
                grid->addValue(i, j, std::exp(-dist2 / (2 * d * d)));
            }
    }
    double gmax = 0;
    for (int i = 0; i <= cells; ++i)
        for (int j = 0; j <= rowsY; ++j)
            gmax = std::max(gmax, grid->toDouble(i, j));
    // Contours are read in percent of the selected points: scale so that the densest cell reads
    // 100 % and draw the bands from 10 % up.
    const double selectedPoints = model.numberOfSelectedPoints();
    for (int i = 0; i <= cells; ++i)
        for (int j = 0; j <= rowsY; ++j)
            grid->setValue(i, j, grid->toDouble(i, j) / gmax * selectedPoints);
    chart.setGridRect(QRectF(area.topLeft(), QSizeF(cells * d, area.height())));
    chart.setContourPolesOn(true);
    chart.setContourLinesOn(true);
    // Labels stay off here: at one label per 50 pixels a dense picture is mostly boxes.
    chart.setContourRange(0.1 * selectedPoints, selectedPoints);
    grid->setColorMapStepSize(15.0);

    bool ok = chart.grab().save(out.filePath(QStringLiteral("drawing_area.png")));
    const QStringList args = app.arguments();
    const int emfArg = args.indexOf(QStringLiteral("--emf"));
    if (emfArg > 0 && emfArg + 1 < args.size()) {
        const bool written = !chart.toEnhancedMetafile(args.at(emfArg + 1)).isEmpty();
        if (!written)
            std::fprintf(stderr, "rk_chart_example: could not write %s\n", qPrintable(args.at(emfArg + 1)));
        ok = written && ok;
    }
    SymbolSheet symbols;
    symbols.resize(620, 250);
    ok = symbols.grab().save(out.filePath(QStringLiteral("symbols.png"))) && ok;
    if (!ok) {
        std::fprintf(stderr, "rk_chart_example: could not write into %s\n", qPrintable(out.path()));
        return 1;
    }
    std::printf("rk_chart_example: wrote drawing_area.png and symbols.png into %s\n", qPrintable(out.path()));
    return 0;
}
