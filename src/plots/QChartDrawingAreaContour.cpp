// The drawing area's contouring: the grid outline, the filled bands and iso-lines of a density
// or stress grid cut into triangles, their labels, and the OpenGL overlay of a stress grid.
#include "QChartDrawingArea.h"

#include "ChartPen.h"
#include "MatrixDataArray.h"
#include "OpenGLScene.h"
#include "RKColormap.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <vector>

namespace rkBase {

namespace {

constexpr double kNoValue = 99999.0;

// Grid cells are cut into four triangles around their centre; the level walk of each triangle
// starts at the first band it can touch.
struct ContourBand {
    double low;
    double high;
    QColor colour;
};

// The band polygons or iso-line pieces of one band, kept one by one for painters that draw them
// so (see drawContour).
struct ContourPieces {
    std::vector<QPointF> points;
    std::vector<int> sizes;
    void add(const double* x, const double* y, int count)
    {
        for (int c = 0; c < count; ++c)
            points.emplace_back(x[c], y[c]);
        sizes.push_back(count);
    }
};

// The painter's clip pulled in by half a pixel about its middle: a polygon cut to it lies within
// the clip itself, rounding and all, so a painter that drops shapes its clip does not hold whole
// keeps the cut pieces. An empty path when the painter does not clip.
QPainterPath clipPulledIn(const QPainter* painter)
{
    if (!painter->hasClipping())
        return QPainterPath();
    const QPainterPath clip = painter->clipPath();
    const QRectF r = clip.boundingRect();
    const double extent = std::max(r.width(), r.height());
    if (!(extent > 2.0))
        return clip;
    const double f = 1.0 - 1.0 / extent;
    QTransform t;
    t.translate(r.center().x(), r.center().y());
    t.scale(f, f);
    t.translate(-r.center().x(), -r.center().y());
    return t.map(clip);
}

// What a contour label covers: its box, top left at the anchor, and the cross round the anchor.
QRectF contourLabelArea(const QPointF& anchor, const QSizeF& box)
{
    return QRectF(anchor, box).united(QRectF(anchor - QPointF(4, 4), QSizeF(8, 8)));
}

} // namespace

// ---- grid and contours ----

void QChartDrawingArea::drawGrid(QPainter* painter)
{
    if (!m_model)
        return;
    MatrixDataArray* grid = m_model->contourGridPoles();
    if (!grid || grid->rowCount() == 0 || grid->columnCount() == 0)
        return;
    painter->setPen(makePen(m_gridColor, 1.0, Qt::SquareCap, Qt::BevelJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(m_gridRect);
    const int nx = grid->rowCount();
    const int ny = grid->columnCount();
    for (int i = 0; i < nx; ++i) {
        const double x = m_gridRect.left() + i * m_gridRect.width() / nx;
        painter->drawLine(QPointF(x, m_gridRect.top()), QPointF(x, m_gridRect.bottom()));
    }
    for (int j = 0; j < ny; ++j) {
        const double y = m_gridRect.top() + j * m_gridRect.height() / ny;
        painter->drawLine(QPointF(m_gridRect.left(), y), QPointF(m_gridRect.right(), y));
    }
}

void QChartDrawingArea::setTriangle(int k, const double* cornerX, const double* cornerY, const double* cornerValues,
                                    double* x, double* y, double* values)
{
    const int a = (k - 1) & 3;
    const int b = k & 3;
    x[0] = cornerX[a];
    x[1] = cornerX[b];
    y[0] = cornerY[a];
    y[1] = cornerY[b];
    values[0] = cornerValues[a];
    values[1] = cornerValues[b];
}

void QChartDrawingArea::drawContour(QPainter* painter)
{
    m_contourLabelPositions.clear();
    m_contourLabelTexts.clear();
    if (!m_model)
        return;
    const bool percent = m_densityMethod == DensityMethod::FourCorner;
    if (m_contourPolesOn)
        drawContour(painter, m_model->contourGridPoles(), m_contourMin, m_contourMax, percent, 2.0);
    if (m_contourDipDirOn)
        drawContour(painter, m_model->contourGridDipDir(), m_contourMin, m_contourMax, percent, 2.0);
}

void QChartDrawingArea::drawContour(QPainter* painter, MatrixDataArray* grid, double min, double max, bool percent,
                                    double lineWidth)
{
    if (m_model && m_model->showStressState() && !m_paintingToWEMF) {
        drawOpenGLContour(painter, grid, min, max);
        return;
    }
    if (!grid || grid->rowCount() < 2 || grid->columnCount() < 2)
        return;
    painter->setPen(makePen(m_labelColor, lineWidth, Qt::SquareCap, Qt::BevelJoin));

    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    const int selected = m_model ? m_model->numberOfSelectedPoints() : 0;
    if (percent && selected == 0)
        return;
    const double scale = percent ? 100.0 / selected : 1.0;
    min *= scale;
    max *= scale;
    double step = grid->colorMapStepSize();
    if (step == kNoValue || step == 0.0) {
        step = (max - min) / 19.0;
        if (step == 0.0)
            return;
    }
    map.fill_spectrum_color_list(min, max, step, grid->flipColorMap());
    const auto& levels = map.colorMap();
    if (levels.empty())
        return;
    std::vector<ContourBand> bands;
    std::vector<double> levelValues;
    for (auto it = levels.begin(); it != levels.end(); ++it)
        levelValues.push_back(it->first);
    for (std::size_t k = 0; k + 1 < levelValues.size(); ++k)
        bands.push_back({levelValues[k], levelValues[k + 1], map.value_to_color(levelValues[k])});

    const int n = grid->rowCount();
    const double d = m_gridRect.width() / (n - 1);
    if (!(d > 0.0) || !std::isfinite(d))
        return;
    const int cellsX = n - 1;
    const int cellsY = std::min(grid->columnCount() - 1, static_cast<int>(m_gridRect.height() / d + 1) - 1);
    const bool wantLines = m_contourPolesOn || m_contourDipDirOn;
    // Kamb densities are multiples of sigma; grid counts and the stress overlay keep their percent.
    const bool sigmaLevels = !percent && m_model
        && (grid == m_model->contourGridPoles() || grid == m_model->contourGridDipDir());
    const bool drawLines = !m_contourFillOn || m_contourLinesOn
        || ((percent || sigmaLevels) && !(m_model && m_model->showStressState()));

    // On the raster, one path per band: the triangles of a band are filled together, so the
    // shared edges of neighbouring triangles leave no antialiasing seams and a band is one
    // drawing operation. An image's painter clips such a path exactly; other painters need not
    // (the metafile's leaves out a path its clip does not hold whole, which took every band
    // that touches a stereonet's rim out of the pasted chart). They get each triangle's band
    // polygon and iso-line piece on its own, which loses at most the triangles the clip cuts.
    const bool bandPaths = !m_paintingToWEMF && painter->device() && painter->device()->devType() == QInternal::Image;
    std::vector<QPainterPath> fills(bandPaths ? bands.size() : 0);
    std::vector<QPainterPath> lines(bandPaths ? bands.size() : 0);
    for (auto& p : fills)
        p.setFillRule(Qt::WindingFill);
    std::vector<ContourPieces> fillPieces(bandPaths ? 0 : bands.size());
    std::vector<ContourPieces> linePieces(bandPaths ? 0 : bands.size());

    // A label is taken where what it covers, with a small margin, stays clear of every label
    // already placed (those of an earlier grid too) and inside the grid's rectangle. Its box is
    // measured as drawContourLabels draws it; the text depends only on the level, so each band's
    // is measured once.
    constexpr double kLabelMargin = 2.0;
    std::vector<QRectF> labelAreas;
    const QString levelUnit = sigmaLevels ? QString(QChar(0x03C3)) : QStringLiteral("%");
    std::vector<QSizeF> labelBoxes(bands.size());
    auto labelBox = [&](const QString& text) {
        return painter->boundingRect(QRectF(rect()), Qt::AlignLeft, QLatin1Char(' ') + text + QLatin1Char(' ')).size();
    };
    if (m_contourLabelsOn)
        for (std::size_t l = 0; l < std::min(m_contourLabelPositions.size(), m_contourLabelTexts.size()); ++l)
            labelAreas.push_back(contourLabelArea(m_contourLabelPositions[l], labelBox(m_contourLabelTexts[l])));
    double outX[8], outY[8];
    // A cell whose values all lie strictly inside one band is that band's colour throughout and
    // crosses no level: on the raster, runs of such cells along a row go in as one rectangle,
    // which keeps the band paths small and their spans long for the rasteriser, and only cells
    // that a level crosses are cut into triangles. The cells are walked with the first index
    // outermost (which iso-line gets a label depends on the labels placed before it), so each row
    // keeps its own open run.
    struct Run {
        int band = -1;
        double left = 0.0, right = 0.0;
    };
    std::vector<Run> runs(static_cast<std::size_t>(std::max(cellsY, 0)));
    int j = 0;
    auto flushRun = [&]() {
        Run& run = runs[static_cast<std::size_t>(j)];
        if (run.band >= 0 && m_contourFillOn) {
            const double top = m_gridRect.top() + j * d;
            fills[static_cast<std::size_t>(run.band)].addRect(QRectF(QPointF(run.left, top), QPointF(run.right, top + d)));
        }
        run.band = -1;
    };
    for (int i = 0; i < cellsX; ++i) {
        for (j = 0; j < cellsY; ++j) {
            const double x0 = m_gridRect.left() + i * d, y0 = m_gridRect.top() + j * d;
            const double cx[4] = {x0, x0 + d, x0 + d, x0};
            const double cy[4] = {y0, y0, y0 + d, y0 + d};
            double cv[4] = {grid->toDouble(i, j), grid->toDouble(i + 1, j), grid->toDouble(i + 1, j + 1),
                            grid->toDouble(i, j + 1)};
            for (double& v : cv)
                v *= scale;
            const double centre = (cv[0] + cv[1] + cv[2] + cv[3]) / 4.0;
            if (!std::isfinite(centre)) {
                flushRun();
                continue;
            }
            const double cellMin = std::min({cv[0], cv[1], cv[2], cv[3]});
            const double cellMax = std::max({cv[0], cv[1], cv[2], cv[3]});
            auto inside = std::lower_bound(bands.begin(), bands.end(), cellMin,
                                           [](const ContourBand& b, double v) { return b.high <= v; });
            if (bandPaths && inside != bands.end() && inside->low < cellMin && cellMax < inside->high) {
                const int band = static_cast<int>(inside - bands.begin());
                Run& run = runs[static_cast<std::size_t>(j)];
                if (band == run.band && run.right == x0) {
                    run.right = x0 + d;
                } else {
                    flushRun();
                    run.band = band;
                    run.left = x0;
                    run.right = x0 + d;
                }
                continue;
            }
            if (cellMax < bands.front().low || cellMin > bands.back().high) {
                flushRun();
                continue;
            }
            flushRun();
            for (int k = 1; k <= 4; ++k) {
                double tx[3], ty[3], tv[3];
                setTriangle(k, cx, cy, cv, tx, ty, tv);
                tx[2] = x0 + d / 2.0;
                ty[2] = y0 + d / 2.0;
                tv[2] = centre;
                const double vmin = std::min({tv[0], tv[1], tv[2]});
                const double vmax = std::max({tv[0], tv[1], tv[2]});
                // Bands wholly below or above the triangle give nothing: start at the first band
                // whose top reaches the triangle's lowest value.
                auto first = std::lower_bound(bands.begin(), bands.end(), vmin,
                                              [](const ContourBand& b, double v) { return b.high < v; });
                for (auto b = first; b != bands.end() && b->low <= vmax; ++b) {
                    const std::size_t bi = static_cast<std::size_t>(b - bands.begin());
                    int count = 0;
                    if (m_contourFillOn) {
                        MatrixData::calculatePolygon(tx, ty, tv, b->low, b->high, outX, outY, count);
                        if (count >= 2 && !bandPaths) {
                            fillPieces[bi].add(outX, outY, count);
                        } else if (count >= 2) {
                            fills[bi].moveTo(outX[0], outY[0]);
                            for (int c = 1; c < count; ++c)
                                fills[bi].lineTo(outX[c], outY[c]);
                            fills[bi].closeSubpath();
                        }
                    }
                    if (!wantLines || !drawLines)
                        continue;
                    MatrixData::calculateIsoline(tx, ty, tv, b->low, outX, outY, count);
                    if (count < 2)
                        continue;
                    if (m_contourLabelsOn) {
                        const QPointF anchor(outX[0], outY[0]);
                        // Multiples of sigma read as whole numbers ("4σ"); percentages keep two decimals.
                        const QString text = (sigmaLevels ? QString::number(b->low, 'g', 3)
                                                          : QString::number(b->low, 'f', 2))
                                             + levelUnit;
                        if (labelBoxes[bi].isEmpty())
                            labelBoxes[bi] = labelBox(text);
                        const QRectF area = contourLabelArea(anchor, labelBoxes[bi]);
                        const QRectF padded = area.adjusted(-kLabelMargin, -kLabelMargin, kLabelMargin, kLabelMargin);
                        if (m_gridRect.contains(area)
                            && std::none_of(labelAreas.begin(), labelAreas.end(),
                                            [&](const QRectF& other) { return other.intersects(padded); })) {
                            labelAreas.push_back(area);
                            m_contourLabelPositions.push_back(anchor);
                            m_contourLabelTexts.push_back(text);
                        }
                    }
                    if (!bandPaths) {
                        linePieces[bi].add(outX, outY, count);
                        continue;
                    }
                    lines[bi].moveTo(outX[0], outY[0]);
                    for (int c = 1; c < count; ++c)
                        lines[bi].lineTo(outX[c], outY[c]);
                }
            }
        }
    }
    for (j = 0; j < cellsY; ++j)
        flushRun();
    // Where iso-lines are drawn they cover every band edge, and an aliased fill is several
    // times cheaper than an antialiased one of the same path.
    const bool antialiased = painter->testRenderHint(QPainter::Antialiasing);
    const bool linesCoverEdges = wantLines && drawLines;
    const QPainterPath clip = bandPaths ? QPainterPath() : clipPulledIn(painter);
    if (linesCoverEdges)
        painter->setRenderHint(QPainter::Antialiasing, false);
    for (std::size_t bi = 0; bi < bands.size(); ++bi) {
        if (bandPaths && !fills[bi].isEmpty()) {
            // No outline: the band is one path, so its inner edges leave no seams to cover.
            painter->setPen(Qt::NoPen);
            painter->setBrush(bands[bi].colour);
            painter->drawPath(fills[bi]);
        } else if (!bandPaths && !fillPieces[bi].sizes.empty()) {
            // Outlined in the band's colour: that covers the seams between the pieces, and a
            // metafile outlines every shape with a solid pen anyway (no pen there is a black one).
            // A piece the clip cuts is cut here, to a clip pulled in a little: left to the painter
            // it would be lost whole, and the bands would stop a cell short of a stereonet's rim.
            painter->setPen(makePen(bands[bi].colour, 0.0));
            painter->setBrush(bands[bi].colour);
            const QPointF* piece = fillPieces[bi].points.data();
            for (const int size : fillPieces[bi].sizes) {
                const QPolygonF polygon(QVector<QPointF>(piece, piece + size));
                piece += size;
                if (clip.isEmpty() || std::all_of(polygon.cbegin(), polygon.cend(),
                                                  [&](const QPointF& p) { return clip.contains(p); })) {
                    painter->drawPolygon(polygon, Qt::OddEvenFill);
                    continue;
                }
                QPainterPath cut;
                cut.addPolygon(polygon);
                for (const QPolygonF& inside : cut.intersected(clip).toFillPolygons())
                    painter->drawPolygon(inside, Qt::OddEvenFill);
            }
        }
    }
    painter->setRenderHint(QPainter::Antialiasing, antialiased);
    painter->setBrush(Qt::NoBrush);
    for (std::size_t bi = 0; bi < bands.size(); ++bi) {
        if (bandPaths ? lines[bi].isEmpty() : linePieces[bi].sizes.empty())
            continue;
        const QColor colour = !m_contourFillOn ? bands[bi].colour : m_contourLinesOn ? m_labelColor : bands[bi].colour;
        painter->setPen(makePen(colour, 0.0));
        if (bandPaths) {
            painter->drawPath(lines[bi]);
            continue;
        }
        const QPointF* piece = linePieces[bi].points.data();
        for (const int size : linePieces[bi].sizes) {
            painter->drawPolyline(piece, size);
            piece += size;
        }
    }
}

void QChartDrawingArea::drawOpenGLContour(QPainter* painter, MatrixDataArray* grid, double min, double max)
{
    if (!grid || grid->rowCount() < 1 || m_gridRect.width() == 0.0 || !m_openGLScene)
        return;
    m_openGLScene->setMeshData(grid, min, max, m_gridRect);
    const QImage image = m_openGLScene->renderToImage();
    if (image.isNull())
        return;
    painter->drawImage(m_gridRect, image, QRectF(image.rect()));
}

} // namespace rkBase
