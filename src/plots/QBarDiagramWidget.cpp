#include "QBarDiagramWidget.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPaintDevice>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <limits>

namespace rkBase {

namespace {

constexpr double kMargin = 8.0;
constexpr double kTickLength = 5.0;
// Bars take this share of their category's width: room between groups keeps them apart.
constexpr double kGroupShare = 0.8;
constexpr double kStackShare = 0.7;
// Below this width a bar gets no outline: the outline would be all there is of it.
constexpr int kOutlineFrom = 5;

bool finite(double v) { return std::isfinite(v); }

constexpr double kLargest = std::numeric_limits<double>::max();

// Where v lies between lo and hi, 0 to 1. Halving first keeps an axis from -1.7e308 to 1.7e308
// finite, and changes nothing else: halving is exact.
double fraction(double v, double lo, double hi)
{
    const double span = hi / 2 - lo / 2;
    return span > 0.0 ? (v / 2 - lo / 2) / span : 0.0;
}

// The smallest k of 1, 2, 5, 10, 20, ... with pitch * k >= need.
int niceEvery(double pitch, double need)
{
    if (pitch <= 0.0)
        return 1;
    static const int kMantissa[] = {1, 2, 5};
    for (long long decade = 1; decade < 1000000000LL; decade *= 10)
        for (int m : kMantissa)
            if (pitch * static_cast<double>(m * decade) >= need)
                return static_cast<int>(m * decade);
    return 1000000000;
}

QColor fallbackColour(int s)
{
    static const QColor kCycle[] = {QColor(31, 119, 180), QColor(255, 127, 14), QColor(44, 160, 44),
                                    QColor(214, 39, 40),  QColor(148, 103, 189), QColor(140, 86, 75),
                                    QColor(227, 119, 194), QColor(127, 127, 127), QColor(188, 189, 34),
                                    QColor(23, 190, 207)};
    return kCycle[s % 10];
}

QString seriesLabel(const BarDiagramData::Series& s)
{
    return s.unit.isEmpty() ? s.name : QStringLiteral("%1 [%2]").arg(s.name, s.unit);
}

} // namespace

QBarDiagramWidget::QBarDiagramWidget(QWidget* parent)
    : QChartDrawingArea(parent, QCoreApplication::translate("QBarDiagramWidget", "Bar Chart"))
{
    m_gridIsOn = true;
    setMouseTracking(true);
    setMinimumSize(120, 100);
}

void QBarDiagramWidget::setData(const BarDiagramData& data)
{
    m_data = data;
    m_colours.clear();
    for (int s = 0; s < data.seriesCount(); ++s)
        m_colours.push_back(data.series(s).colour);
    // Two series in one colour could not be told apart: the later one takes a colour of the
    // cycle that no series has.
    for (std::size_t s = 0; s < m_colours.size(); ++s) {
        const bool taken = std::find(m_colours.begin(), m_colours.begin() + s, m_colours[s]) != m_colours.begin() + s;
        if (m_colours[s].isValid() && !taken)
            continue;
        for (int k = 0; k < 10; ++k) {
            const QColor candidate = fallbackColour(static_cast<int>(s) + k);
            if (std::find(m_colours.begin(), m_colours.end(), candidate) == m_colours.end()) {
                m_colours[s] = candidate;
                break;
            }
        }
        if (!m_colours[s].isValid())
            m_colours[s] = fallbackColour(static_cast<int>(s));
    }
    m_redrawNeeded = true;
}

QColor QBarDiagramWidget::seriesColour(int s) const
{
    return s >= 0 && s < static_cast<int>(m_colours.size()) ? m_colours[static_cast<std::size_t>(s)] : QColor();
}

// ---- numbers ----

std::vector<QBarDiagramWidget::Segment> QBarDiagramWidget::segments(const BarDiagramData& data, BarMode mode)
{
    std::vector<Segment> out;
    const int series = data.seriesCount();
    for (int c = 0; c < data.categoryCount(); ++c) {
        if (mode == NormalBars) {
            for (int s = 0; s < series; ++s) {
                const double v = data.value(s, c);
                if (finite(v))
                    out.push_back({s, c, 0.0, v});
            }
            continue;
        }
        double total = 0.0;
        for (int s = 0; s < series; ++s) {
            const double v = data.value(s, c);
            if (finite(v))
                total += std::abs(v);
        }
        // Values near the largest double can add up past it: then the shares are taken of the
        // values divided by the largest of them.
        double scale = 1.0;
        if (mode == PercentBars && !finite(total)) {
            scale = 0.0;
            for (int s = 0; s < series; ++s) {
                const double v = data.value(s, c);
                if (finite(v))
                    scale = std::max(scale, std::abs(v));
            }
            total = 0.0;
            for (int s = 0; s < series; ++s) {
                const double v = data.value(s, c);
                if (finite(v))
                    total += std::abs(v) / scale;
            }
        }
        if (mode == PercentBars && !(total > 0.0 && finite(total)))
            continue;
        double up = 0.0, down = 0.0;
        for (int s = 0; s < series; ++s) {
            double v = data.value(s, c);
            if (!finite(v))
                continue;
            if (mode == PercentBars)
                v = 100.0 * (v / scale) / total;
            // A stack taller than the largest double ends there, on the axis's last tick.
            if (v >= 0.0) {
                const double top = std::min(up + v, kLargest);
                out.push_back({s, c, up, top});
                up = top;
            } else {
                const double bottom = std::max(down + v, -kLargest);
                out.push_back({s, c, down, bottom});
                down = bottom;
            }
        }
    }
    return out;
}

std::vector<double> QBarDiagramWidget::niceTicks(double min, double max, int maxTicks, double& step)
{
    step = 0.0;
    if (!finite(min) || !finite(max))
        return {};
    if (min > max)
        std::swap(min, max);
    if (min == max) {
        const double d = min == 0.0 ? 1.0 : std::abs(min) * 0.1;
        min = std::max(min - d, -kLargest);
        max = std::min(max + d, kLargest);
    }
    // Half the range, so that values of either sign up to the largest double still have one.
    const double halfRange = max / 2 - min / 2;
    const double raw = halfRange / std::max(1, maxTicks) * 2;
    const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    const double norm = raw / magnitude;
    step = (norm <= 1.0 ? 1.0 : norm <= 2.0 ? 2.0 : norm <= 5.0 ? 5.0 : 10.0) * magnitude;
    // Tick k is k * step, computed afresh for each k so that no error piles up along the axis.
    const double first = std::floor(min / step + 1e-9);
    const double last = std::ceil(max / step - 1e-9);
    std::vector<double> ticks;
    for (double k = first; k <= last; k += 1.0) {
        // The whole step past a value near the largest double is no longer a number: the axis
        // ends at the largest double instead.
        const double t = std::clamp(k * step, -kLargest, kLargest);
        ticks.push_back(t == 0.0 ? 0.0 : t);
    }
    return ticks;
}

QString QBarDiagramWidget::tickText(double value, double step)
{
    if (!(step > 0.0) || !finite(step))
        return QString::number(value, 'g', 6);
    if (std::abs(value) < step * 1e-6)
        value = 0.0;
    if (step >= 1e7 || step < 1e-6)
        return QString::number(value, 'g', 6);
    const int decimals = std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, 10);
    return QString::number(value, 'f', decimals);
}

// ---- layout ----

QString QBarDiagramWidget::headerText() const
{
    return m_headerTitle.isEmpty() ? m_baseTitle : m_headerTitle;
}

QBarDiagramWidget::Layout QBarDiagramWidget::layout(const QSize& size, const QFont& font, QPaintDevice* device) const
{
    Layout l;
    const QFontMetricsF fm = device ? QFontMetricsF(font, device) : QFontMetricsF(font);
    const double h = fm.height();
    const double W = size.width();
    const double H = size.height();
    double y = kMargin;

    const QString header = headerText();
    if (!header.isEmpty()) {
        l.title = QRectF(kMargin, y, std::max(0.0, W - 2 * kMargin), h * 1.3);
        y = l.title.bottom() + 4.0;
    }

    if (m_showLegend && m_data.seriesCount() > 0) {
        const double swatch = std::round(h * 0.7);
        const double rowHeight = h + 2.0;
        const double left = kMargin;
        const double right = W - kMargin;
        double x = left;
        double row = y;
        // Legend names may run longer than category labels: they are few and stand alone.
        const double longest = std::max(kMaxLabelPixels, std::min(2.0 * kMaxLabelPixels, (right - left) / 3.0));
        for (int s = 0; s < m_data.seriesCount(); ++s) {
            const QString text = fm.elidedText(seriesLabel(m_data.series(s)), Qt::ElideRight, longest);
            const double width = swatch + 4.0 + fm.horizontalAdvance(text);
            if (x > left && x + width > right) {
                x = left;
                row += rowHeight;
            }
            l.legendSwatches.emplace_back(x, row + (rowHeight - swatch) / 2.0, swatch, swatch);
            l.legendTexts.emplace_back(x + swatch + 4.0, row, fm.horizontalAdvance(text) + 1.0, rowHeight);
            l.legendLabels.push_back(text);
            x += width + 14.0;
        }
        l.legend = QRectF(left, y, right - left, row + rowHeight - y);
        y = l.legend.bottom() + 6.0;
    }

    // The value range: the bars and always 0.
    double lo = 0.0, hi = 0.0;
    for (const Segment& seg : segments(m_data, m_barMode)) {
        lo = std::min({lo, seg.base, seg.top});
        hi = std::max({hi, seg.base, seg.top});
    }
    if (lo == hi)
        hi = m_barMode == PercentBars ? 100.0 : 1.0;

    const int n = m_data.categoryCount();
    std::vector<QString> full(static_cast<std::size_t>(n));
    double widestFull = 0.0;
    for (int c = 0; c < n; ++c) {
        full[c] = fm.elidedText(m_data.categoryLabel(c), Qt::ElideRight, kMaxLabelPixels);
        widestFull = std::max(widestFull, fm.horizontalAdvance(full[c]));
    }
    std::vector<QString> texts = full;
    double widest = widestFull;

    const double top = y + h / 2.0; // half a tick label sticks out above the top tick
    // What the category labels may take below the plot: never so much that the bars have no
    // room. A chart too small for one line of labels shows none.
    const double below = kTickLength + 2.0 + 4.0 + h + kMargin;
    const double labelRoom = H - top - below - std::max(20.0, 0.3 * (H - top));
    const bool withLabels = n > 0 && labelRoom >= h;
    double plotHeight = std::max(1.0, H - top - 3.0 * h - kMargin);
    double left = 0.0, right = 0.0, bottom = 0.0;
    // Two passes: the tick labels' width sets the plot's width, which sets the category labels,
    // whose extent sets the plot's height, which sets the ticks.
    for (int pass = 0; pass < 2; ++pass) {
        l.ticks = niceTicks(lo, hi, std::max(2, static_cast<int>(plotHeight / (h * 2.2))), l.tickStep);
        if (l.ticks.empty()) {
            l.ticks = {0.0, 1.0};
            l.tickStep = 1.0;
        }
        l.valueMin = l.ticks.front();
        l.valueMax = l.ticks.back();
        l.tickLabels.clear();
        double tickWidth = 0.0;
        for (double t : l.ticks) {
            l.tickLabels.push_back(tickText(t, l.tickStep));
            tickWidth = std::max(tickWidth, fm.horizontalAdvance(l.tickLabels.back()));
        }
        left = kMargin + h + 6.0 + tickWidth + kTickLength + 2.0;
        right = W - kMargin;
        // Across, a label centred under the first or last place must not leave the chart.
        const double leftAcross = std::max(left, kMargin + widestFull / 2.0);
        const double rightAcross = std::min(right, W - kMargin - widestFull / 2.0);
        const double pitchAcross = n > 0 ? std::max(1.0, rightAcross - leftAcross) / n : 0.0;
        const double pitchUpright = n > 0 ? std::max(1.0, right - left) / n : 0.0;
        const int everyAcross = niceEvery(pitchAcross, widestFull + std::max(6.0, h * 0.6));
        l.labelsUpright = withLabels && !m_data.numericLabels() && everyAcross > 1;
        if (l.labelsUpright) {
            l.pitch = pitchUpright;
            l.labelEvery = niceEvery(l.pitch, h + 2.0);
            texts = full;
            widest = widestFull;
            if (widest > labelRoom) {
                widest = 0.0;
                for (QString& t : texts) {
                    t = fm.elidedText(t, Qt::ElideRight, labelRoom);
                    widest = std::max(widest, fm.horizontalAdvance(t));
                }
            }
        } else if (withLabels) {
            left = leftAcross;
            right = rightAcross;
            l.pitch = pitchAcross;
            l.labelEvery = everyAcross;
        } else {
            l.pitch = pitchUpright;
            l.labelEvery = 1;
        }
        const double labelExtent = !withLabels ? 0.0 : (l.labelsUpright ? widest : h);
        bottom = H - kMargin - h - 4.0 - labelExtent - kTickLength - 2.0;
        plotHeight = std::max(1.0, bottom - top);
    }
    l.plot = QRectF(QPointF(left, top), QPointF(std::max(left + 1.0, right), std::max(top + 1.0, bottom)));

    const double labelTop = l.plot.bottom() + kTickLength + 2.0;
    for (int c = 0; withLabels && c < n; c += l.labelEvery) {
        const double cx = l.plot.left() + (c + 0.5) * l.pitch;
        const double w = fm.horizontalAdvance(texts[c]) + 1.0;
        l.labelCategories.push_back(c);
        l.labelTexts.push_back(texts[c]);
        l.labelBoxes.push_back(l.labelsUpright ? QRectF(cx - h / 2.0, labelTop, h, w)
                                               : QRectF(cx - w / 2.0, labelTop, w, h));
    }
    const double labelBottom = labelTop + (!withLabels ? 0.0 : (l.labelsUpright ? widest : h));
    l.categoryTitle = QRectF(l.plot.left(), labelBottom + 4.0, l.plot.width(), h);
    l.valueTitle = QRectF(kMargin, l.plot.top(), h, l.plot.height());
    // On a plot lower than its tick labels, labels that would touch the one below are left out.
    std::vector<QString> shownTickLabels;
    for (std::size_t i = 0; i < l.ticks.size(); ++i) {
        const double ty = l.plot.bottom() - fraction(l.ticks[i], l.valueMin, l.valueMax) * l.plot.height();
        const double w = fm.horizontalAdvance(l.tickLabels[i]) + 1.0;
        const QRectF box(l.plot.left() - kTickLength - 3.0 - w, ty - h / 2.0, w, h);
        if (!l.tickLabelBoxes.empty() && box.bottom() > l.tickLabelBoxes.back().top())
            continue;
        l.tickLabelBoxes.push_back(box);
        shownTickLabels.push_back(l.tickLabels[i]);
    }
    l.tickLabels = shownTickLabels;
    return l;
}

double QBarDiagramWidget::valueToY(const Layout& l, double v) const
{
    return l.plot.bottom() - fraction(v, l.valueMin, l.valueMax) * l.plot.height();
}

int QBarDiagramWidget::categoryAt(const QPointF& pixel) const
{
    const Layout& l = m_layout;
    if (l.pitch <= 0.0 || pixel.x() < l.plot.left() || pixel.x() >= l.plot.right() || pixel.y() < l.plot.top()
        || pixel.y() > l.plot.bottom())
        return -1;
    const int c = static_cast<int>((pixel.x() - l.plot.left()) / l.pitch);
    return c < m_data.categoryCount() ? c : -1;
}

QPointF QBarDiagramWidget::transformInPixelPoint(const QPointF& data)
{
    return QPointF(m_layout.plot.left() + (data.x() + 0.5) * m_layout.pitch, valueToY(m_layout, data.y()));
}

// ---- drawing ----

QSize QBarDiagramWidget::deviceSize(QPainter& painter) const
{
    // The raster window stands for the whole zoomed raster; any other device is its own size.
    const QPaintDevice* device = painter.device();
    if (device == &m_chartPixmap)
        return m_rasterSize;
    return device ? QSize(device->width(), device->height()) : size();
}

QBarDiagramWidget::Layout QBarDiagramWidget::layoutOf(QPainter& painter) const
{
    QPaintDevice* device = painter.device();
    return layout(deviceSize(painter), painter.font(), device);
}

void QBarDiagramWidget::redraw()
{
    QChartDrawingArea::redraw();
    QPainter painter;
    beginRasterPainter(painter, m_chartPixmap);
    drawChart(painter);
}

void QBarDiagramWidget::drawChart(QPainter& painter)
{
    painter.save();
    painter.setFont(font());
    const Layout l = layoutOf(painter);
    // The raster's layout answers the mouse; a copy to another device leaves it alone.
    if (painter.device() == &m_chartPixmap)
        m_layout = l;
    if (painter.device())
        painter.fillRect(QRectF(QPointF(0, 0), deviceSize(painter)), m_backgroundColor);
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (m_gridIsOn)
        drawGridWith(painter, l);
    drawBars(painter, l);
    drawAxisWith(painter, l);
    drawLegend(painter, l);
    painter.restore();
}

void QBarDiagramWidget::drawGrid(QPainter* painter)
{
    drawGridWith(*painter, layoutOf(*painter));
}

void QBarDiagramWidget::drawGridWith(QPainter& painter, const Layout& l) const
{
    painter.setPen(QPen(m_gridColor, 0.0, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    std::vector<QLineF> lines;
    for (double t : l.ticks) {
        const double y = std::round(valueToY(l, t));
        if (t != 0.0 && y > l.plot.top() - 0.5 && y < l.plot.bottom() + 0.5)
            lines.emplace_back(l.plot.left(), y, l.plot.right(), y);
    }
    if (!lines.empty())
        painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void QBarDiagramWidget::drawBars(QPainter& painter, const Layout& l) const
{
    const int series = m_data.seriesCount();
    if (series == 0 || l.pitch <= 0.0)
        return;
    std::vector<std::vector<QRectF>> rects(static_cast<std::size_t>(series));
    const bool side = m_barMode == NormalBars;
    const double barWidth = side ? l.pitch * kGroupShare / series : l.pitch * kStackShare;
    for (const Segment& seg : segments(m_data, m_barMode)) {
        double x = l.plot.left() + seg.category * l.pitch + l.pitch * (1.0 - (side ? kGroupShare : kStackShare)) / 2.0;
        if (side)
            x += seg.series * barWidth;
        const double x0 = std::round(x);
        const double x1 = std::max(x0 + 1.0, std::round(x + barWidth));
        const double yA = valueToY(l, std::max(seg.base, seg.top));
        const double yB = valueToY(l, std::min(seg.base, seg.top));
        double y0 = std::round(yA), y1 = std::round(yB);
        if (y1 <= y0) {
            if (seg.top == seg.base)
                continue;
            // A value too small for a pixel still shows, as a line on the right side of 0.
            if (seg.top > seg.base)
                y0 = y1 - 1.0;
            else
                y1 = y0 + 1.0;
        }
        rects[static_cast<std::size_t>(seg.series)].emplace_back(x0, y0, x1 - x0, y1 - y0);
    }
    const bool outline = barWidth >= kOutlineFrom;
    for (int s = 0; s < series; ++s) {
        auto& r = rects[static_cast<std::size_t>(s)];
        if (r.empty())
            continue;
        const QColor colour = seriesColour(s);
        if (outline) {
            // The outline is drawn inside the bar, so bars side by side stay their own width.
            for (QRectF& rect : r)
                rect.adjust(0.0, 0.0, -1.0, -1.0);
            painter.setPen(QPen(colour.darker(150), 0.0));
        } else {
            painter.setPen(Qt::NoPen);
        }
        painter.setBrush(colour);
        painter.drawRects(r.data(), static_cast<int>(r.size()));
    }
}

void QBarDiagramWidget::drawAxis(QPainter& painter, QRect rect)
{
    drawAxisWith(painter, layout(rect.size(), painter.font(), painter.device()));
}

void QBarDiagramWidget::drawAxisWith(QPainter& painter, const Layout& l) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(m_labelColor, 0.0));
    const QFontMetricsF fm(painter.font(), painter.device());

    // Frame lines: the value axis, the category axis at the bottom, and 0 when it lies inside.
    const double zero = std::round(valueToY(l, 0.0));
    std::vector<QLineF> lines{QLineF(l.plot.left(), l.plot.top(), l.plot.left(), l.plot.bottom()),
                              QLineF(l.plot.left(), l.plot.bottom(), l.plot.right(), l.plot.bottom())};
    if (zero < l.plot.bottom() - 0.5)
        lines.emplace_back(l.plot.left(), zero, l.plot.right(), zero);
    for (double t : l.ticks) {
        const double y = std::round(valueToY(l, t));
        lines.emplace_back(l.plot.left() - kTickLength, y, l.plot.left(), y);
    }
    for (int c : l.labelCategories) {
        const double x = std::round(l.plot.left() + (c + 0.5) * l.pitch);
        lines.emplace_back(x, l.plot.bottom(), x, l.plot.bottom() + kTickLength);
    }
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));

    for (std::size_t i = 0; i < l.tickLabelBoxes.size(); ++i)
        painter.drawText(l.tickLabelBoxes[i], Qt::AlignRight | Qt::AlignVCenter, l.tickLabels[i]);
    for (std::size_t i = 0; i < l.labelBoxes.size(); ++i) {
        const QRectF& box = l.labelBoxes[i];
        if (!l.labelsUpright) {
            painter.drawText(box, Qt::AlignCenter, l.labelTexts[i]);
            continue;
        }
        // Upright labels read from the bottom up and end at the axis.
        painter.save();
        painter.translate(box.center());
        painter.rotate(-90.0);
        painter.drawText(QRectF(-box.height() / 2.0, -box.width() / 2.0, box.height(), box.width()),
                         Qt::AlignRight | Qt::AlignVCenter, l.labelTexts[i]);
        painter.restore();
    }

    // Axis titles.
    const int step = m_data.step();
    QString categoryTitle = m_data.labelTitle().isEmpty()
                                ? QCoreApplication::translate("QBarDiagramWidget", "Row")
                                : m_data.labelTitle();
    if (step > 1)
        categoryTitle += QCoreApplication::translate("QBarDiagramWidget", " (first of %1 rows per bar)").arg(step);
    painter.drawText(l.categoryTitle, Qt::AlignCenter,
                     fm.elidedText(categoryTitle, Qt::ElideRight, l.categoryTitle.width()));
    QString valueTitle;
    if (m_barMode == PercentBars)
        valueTitle = QCoreApplication::translate("QBarDiagramWidget", "Percent of Bar Total");
    else if (step > 1)
        valueTitle = QCoreApplication::translate("QBarDiagramWidget", "Mean Value");
    else
        valueTitle = QCoreApplication::translate("QBarDiagramWidget", "Value");
    if (m_barMode != PercentBars && m_data.seriesCount() == 1 && !m_data.series(0).unit.isEmpty())
        valueTitle += QStringLiteral(" [%1]").arg(m_data.series(0).unit);
    painter.save();
    painter.translate(l.valueTitle.center());
    painter.rotate(-90.0);
    painter.drawText(QRectF(-l.valueTitle.height() / 2.0, -l.valueTitle.width() / 2.0, l.valueTitle.height(),
                            l.valueTitle.width()),
                     Qt::AlignCenter, fm.elidedText(valueTitle, Qt::ElideRight, l.valueTitle.height()));
    painter.restore();

    if (!l.title.isEmpty()) {
        QFont bold = painter.font();
        bold.setBold(true);
        painter.setFont(bold);
        const QFontMetricsF bfm(bold, painter.device());
        painter.drawText(l.title, Qt::AlignCenter, bfm.elidedText(headerText(), Qt::ElideRight, l.title.width()));
    }
    painter.restore();
}

void QBarDiagramWidget::drawLegend(QPainter& painter, const Layout& l) const
{
    if (l.legendSwatches.empty())
        return;
    painter.save();
    for (std::size_t s = 0; s < l.legendSwatches.size(); ++s) {
        const QColor colour = seriesColour(static_cast<int>(s));
        painter.setPen(QPen(colour.darker(150), 0.0));
        painter.setBrush(colour);
        painter.drawRect(l.legendSwatches[s].adjusted(0, 0, -1, -1));
        painter.setPen(QPen(m_labelColor, 0.0));
        painter.drawText(l.legendTexts[s], Qt::AlignLeft | Qt::AlignVCenter, l.legendLabels[s]);
    }
    painter.restore();
}

// ---- mouse ----

void QBarDiagramWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF pixel = QPointF(event->pos()) + QPointF(m_xOffsetPixels, m_yOffsetPixels);
    const int c = categoryAt(pixel);
    if (c < 0) {
        QToolTip::hideText();
        QChartDrawingArea::mouseMoveEvent(event);
        return;
    }
    const int first = m_data.firstRow(c) + 1;
    const int last = m_data.lastRow(c) + 1;
    QString text = first == last ? QCoreApplication::translate("QBarDiagramWidget", "Row %1").arg(first)
                                 : QCoreApplication::translate("QBarDiagramWidget", "Rows %1 to %2").arg(first).arg(last);
    for (int s = 0; s < m_data.seriesCount(); ++s) {
        const double v = m_data.value(s, c);
        text += QStringLiteral("\n%1: %2").arg(seriesLabel(m_data.series(s)),
                                               finite(v) ? QString::number(v, 'g', 6) : QStringLiteral("-----"));
    }
    QToolTip::showText(event->globalPos(), text, this);
    QChartDrawingArea::mouseMoveEvent(event);
}

} // namespace rkBase
