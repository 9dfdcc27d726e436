#include "QCartesianAxisWidget.h"

#include "DisplayUnitManager.h"
#include "UnitManager.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

// The chart treats boundaries closer than this as one value and widens them by kFlatHalfWidth.
constexpr double kEqualEps = 5e-07;
constexpr double kFlatHalfWidth = 10.0;
// Below this share of the values' size a span has no ticks a double can tell apart.
constexpr double kRelativeResolution = 1e-12;
constexpr double kTiny = 1e-300;
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kLadderEps = 1e-9;

double powerOfTen(int e) { return std::pow(10.0, e); }

// A step of the 1-2-5 ladder, m x 10^e, kept in parts so that a multiple of it can be made as the
// double nearest to the decimal number (0.3 is 3 / 10, not 3 x 0.1).
struct Step {
    int m = 1;
    int e = 0;

    double value() const { return e >= 0 ? m * powerOfTen(e) : m / powerOfTen(-e); }
    double times(double k) const { return e >= 0 ? (k * m) * powerOfTen(e) : (k * m) / powerOfTen(-e); }
    Step next() const
    {
        if (m == 1)
            return {2, e};
        if (m == 2)
            return {5, e};
        return {1, e + 1};
    }
    // The smallest ladder step not below x (x > 0 and finite).
    static Step atLeast(double x)
    {
        int e = int(std::floor(std::log10(x)));
        const double norm = x / powerOfTen(e);
        if (norm <= 1.0 + kLadderEps)
            return {1, e};
        if (norm <= 2.0 + kLadderEps)
            return {2, e};
        if (norm <= 5.0 + kLadderEps)
            return {5, e};
        return {1, e + 1};
    }
};

double clampToDouble(double v) { return std::clamp(v, -kLargest, kLargest); }

// Whole ticks at or outside [lo, hi]: the multiple of step that is not above lo, and the one not
// below hi. The nudge keeps an exact multiple whose quotient came out a hair low from costing a
// step; the checks keep the data inside whatever the nudge did.
std::pair<double, double> outerTicks(double lo, double hi, const Step& step)
{
    const double s = step.value();
    double kLo = std::floor(lo / s + kLadderEps);
    if (step.times(kLo) > lo)
        kLo -= 1.0;
    double kHi = std::ceil(hi / s - kLadderEps);
    if (step.times(kHi) < hi)
        kHi += 1.0;
    return {clampToDouble(step.times(kLo)), clampToDouble(step.times(kHi))};
}

QString tickText(double value, const Step& step, bool exponent, int exponentDigits)
{
    if (value == 0.0)
        return QStringLiteral("0");
    if (exponent)
        return QString::number(value, 'e', exponentDigits);
    return QString::number(value, 'f', std::clamp(-step.e, 0, 15));
}

} // namespace

struct QCartesianAxisWidget::Tick {
    double model = 0.0;
    double pos = 0.0;   // along the axis, in layout pixels
    QString label;      // empty when left out
    QRectF box;         // the label's box in layout pixels
};

struct QCartesianAxisWidget::Layout {
    double step = 0.0;
    std::vector<Tick> ticks;
    QString title;
    QRectF titleBox;    // before rotation for a vertical axis: its centre is the title's centre
    QFont font;
    double ascent = 0.0;
    double tickLength = 0.0;
};

QCartesianAxisWidget::QCartesianAxisWidget(QWidget* parent) : QCartesianAxisWidget(AxisLeft, parent) {}

QCartesianAxisWidget::QCartesianAxisWidget(AxisPosition position, QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAxisPosition(position);
}

QCartesianAxisWidget::~QCartesianAxisWidget() = default;

// ---- placement ----

void QCartesianAxisWidget::setAxisPosition(AxisPosition position)
{
    m_position = position;
    if (position == AxisLeftElevation || position == AxisRightElevation)
        m_origin = OriginBottomLeft;
    else if (position == AxisLeftDepth || position == AxisRightDepth)
        m_origin = OriginTopLeft;
    setSizePolicy(isHorizontal() ? QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed)
                                 : QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred));
    updateGeometry();
    relayout();
}

void QCartesianAxisWidget::setOriginPosition(OriginPosition origin)
{
    m_origin = origin;
    relayout();
}

// ---- range ----

void QCartesianAxisWidget::setRange(double minimum, double maximum)
{
    m_minimum = minimum;
    m_maximum = maximum;
    relayout();
}

void QCartesianAxisWidget::fitNiceRange()
{
    const NiceRange nice = niceRange(toDisplay(m_minimum), toDisplay(m_maximum));
    setRange(toModel(nice.minimum), toModel(nice.maximum));
}

QCartesianAxisWidget::NiceRange QCartesianAxisWidget::niceRange(double minimum, double maximum)
{
    const bool loFinite = std::isfinite(minimum), hiFinite = std::isfinite(maximum);
    if (!loFinite && !hiFinite)
        return {0.0, 1.0, 0.2};
    double lo = loFinite ? minimum : maximum;
    double hi = hiFinite ? maximum : minimum;
    if (lo > hi)
        std::swap(lo, hi);
    if (std::abs(lo) < kTiny)
        lo = 0.0;
    if (std::abs(hi) < kTiny)
        hi = 0.0;
    const double size = std::max(std::abs(lo), std::abs(hi));
    // Halves: the span of two ends near the largest double is not a double.
    const double halfSpan = hi / 2 - lo / 2;
    if (halfSpan <= size * kRelativeResolution / 2) {
        const double v = lo / 2 + hi / 2;
        const double spread = v == 0.0 ? 1.0 : std::abs(v) / 10;
        lo = clampToDouble(v - spread);
        hi = clampToDouble(v + spread);
    }
    const Step step = Step::atLeast((hi / 2 - lo / 2) / 2.5);
    const auto [niceLo, niceHi] = outerTicks(lo, hi, step);
    return {niceLo, niceHi, step.value()};
}

// ---- following the chart ----

void QCartesianAxisWidget::setZoom(double factor)
{
    m_zoom = std::isfinite(factor) && factor > 0.0 ? std::min(factor, 1000.0) : 1.0;
    m_followsChart = false;
    relayout();
}

void QCartesianAxisWidget::setOffset(int percent)
{
    m_offsetPercent = percent;
    m_followsChart = false;
    relayout();
}

void QCartesianAxisWidget::followChart(const QSize& rasterSize, int xOffsetPixels, int yOffsetPixels)
{
    m_followsChart = true;
    m_chartRaster = rasterSize;
    m_chartXOffset = xOffsetPixels;
    m_chartYOffset = yOffsetPixels;
    relayout();
}

// ---- text ----

void QCartesianAxisWidget::setTitle(const QString& title)
{
    m_title = title;
    updateGeometry();
    update();
}

void QCartesianAxisWidget::setTitleVisible(bool on)
{
    m_titleVisible = on;
    updateGeometry();
    update();
}

void QCartesianAxisWidget::setUnitLabelVisible(bool on)
{
    m_unitLabelVisible = on;
    updateGeometry();
    update();
}

QString QCartesianAxisWidget::titleText() const
{
    const QString tag = m_unitLabelVisible && m_unitManager ? m_unitManager->getDisplayUnitTag() : QString();
    if (tag.isEmpty())
        return m_title;
    return m_title.isEmpty() ? QStringLiteral("[%1]").arg(tag) : QStringLiteral("%1 [%2]").arg(m_title, tag);
}

void QCartesianAxisWidget::setUnitManager(boost::shared_ptr<rkBase::UnitManager> manager)
{
    disconnect(m_unitConnection);
    m_unitManager = std::move(manager);
    if (m_unitManager && m_unitManager->displayUnitManager())
        m_unitConnection = connect(m_unitManager->displayUnitManager(), &rkBase::DisplayUnitManager::displayChanged,
                                   this, &QCartesianAxisWidget::unitsChanged);
    updateGeometry();
    relayout();
}

void QCartesianAxisWidget::unitsChanged(const QString& category)
{
    if (m_unitManager && category == QString::fromStdString(m_unitManager->category())) {
        updateGeometry();
        relayout();
    }
}

void QCartesianAxisWidget::setFontPointSize(double points)
{
    if (!(points > 0.0) || !std::isfinite(points))
        return;
    QFont f = font();
    f.setPointSizeF(std::min(points, 500.0));
    setFont(f); // the FontChange event lays the ticks out again
}

double QCartesianAxisWidget::fontPointSize() const { return font().pointSizeF(); }

double QCartesianAxisWidget::toDisplay(double modelValue) const
{
    return m_unitManager ? m_unitManager->convertModelToDisplay(modelValue) : modelValue;
}

double QCartesianAxisWidget::toModel(double displayValue) const
{
    return m_unitManager ? m_unitManager->convertDisplayToModel(displayValue) : displayValue;
}

// ---- the pixels ----

// Where values land along an axis of a given length, as the chart maps them: the raster's first
// to last pixel spans the range, the origin side holds the minimum, and the window shown starts
// offset pixels into the raster (counted from the raster's top or left, as the chart counts).
struct QCartesianAxisWidget::AxisMap {
    double lo = 0.0, hi = 1.0;  // range after the chart's widening of a flat range
    double last = 0.0;          // raster extent - 1
    double offset = 0.0;
    bool fromBottom = false;    // the minimum at the far end of the raster (bottom)
    bool usable = false;

    double pos(double v) const
    {
        const double raster = fromBottom ? (v - hi) / (lo - hi) * last : (v - lo) / (hi - lo) * last;
        return raster - offset;
    }
    double value(double pos) const
    {
        const double f = (pos + offset) / last;
        return fromBottom ? hi + f * (lo - hi) : lo + f * (hi - lo);
    }
};

QCartesianAxisWidget::AxisMap QCartesianAxisWidget::mapFor(int length) const
{
    const bool horizontal = isHorizontal();
    AxisMap map;
    map.lo = m_minimum;
    map.hi = m_maximum;
    if (std::abs(map.hi - map.lo) < kEqualEps) {
        map.lo = map.hi - kFlatHalfWidth;
        map.hi += kFlatHalfWidth;
    }
    double raster = 0.0;
    if (m_followsChart) {
        // A rectangle of another size than the widget (a metafile) scales the chart's raster.
        const int widgetLength = horizontal ? width() : height();
        const double scale = widgetLength > 0 ? double(length) / widgetLength : 1.0;
        raster = (horizontal ? m_chartRaster.width() : m_chartRaster.height()) * scale;
        map.offset = (horizontal ? m_chartXOffset : m_chartYOffset) * scale;
    } else {
        // As QSize * qreal and QChartDrawingArea::scrollOffset() work them out.
        raster = std::max(1.0, std::floor(length * m_zoom + 0.5));
        const double fromTop = !horizontal && m_origin == OriginBottomLeft ? 100.0 - m_offsetPercent : m_offsetPercent;
        map.offset = m_zoom == 1.0 ? 0.0 : std::trunc(fromTop / 100.0 * (raster - length));
    }
    map.last = raster - 1.0;
    map.fromBottom = !horizontal && m_origin == OriginBottomLeft;
    map.usable = std::isfinite(map.hi - map.lo) && map.hi != map.lo && map.last > 0.0 && length > 0
                 && std::isfinite(map.offset);
    return map;
}

QCartesianAxisWidget::Layout QCartesianAxisWidget::layoutFor(const QSize& size, const QPaintDevice* device) const
{
    Layout out;
    out.font = device ? QFont(font(), device) : font();
    const QFontMetricsF fm(out.font, device ? device : this);
    const double h = fm.height();
    out.ascent = fm.ascent();
    out.tickLength = std::max(4.0, std::round(h / 3));
    const bool horizontal = isHorizontal();
    const int length = horizontal ? size.width() : size.height();
    const int thickness = horizontal ? size.height() : size.width();

    // The title first: it does not depend on the ticks.
    const QString title = m_titleVisible ? titleText() : QString();
    if (!title.isEmpty() && length > 0) {
        out.title = fm.elidedText(title, Qt::ElideRight, length);
        const double w = fm.horizontalAdvance(out.title);
        const bool farSide = m_position == AxisTop || m_position == AxisLeft || m_position == AxisLeftElevation
                             || m_position == AxisLeftDepth;
        // Horizontal: the title's own box. Vertical: a box of the same size centred where the
        // rotated title goes.
        if (horizontal)
            out.titleBox = QRectF((length - w) / 2, farSide ? 1.0 : thickness - 1.0 - h, w, h);
        else
            out.titleBox = QRectF((farSide ? 1.0 + h / 2 : thickness - 1.0 - h / 2) - w / 2, length / 2.0 - h / 2, w, h);
    }

    const AxisMap map = mapFor(length);
    if (!map.usable)
        return out;

    // Ticks are chosen in display units.
    const double dLo = std::min(toDisplay(map.lo), toDisplay(map.hi));
    const double dHi = std::max(toDisplay(map.lo), toDisplay(map.hi));
    const double pixelsPerUnit = map.last / (dHi - dLo);
    if (!std::isfinite(pixelsPerUnit) || !(pixelsPerUnit > 0.0))
        return out;
    double wLo = toDisplay(map.value(-0.5)), wHi = toDisplay(map.value(length - 0.5));
    if (wLo > wHi)
        std::swap(wLo, wHi);
    wLo = std::max(wLo, dLo);
    wHi = std::min(wHi, dHi);
    const double magnitude = std::max(std::abs(dLo), std::abs(dHi));

    // Labels need their own extent plus a gap; short labels still keep the ticks apart.
    const double minSpacing = 2.5 * h;
    double smallest = minSpacing / pixelsPerUnit;
    if (magnitude > 0.0)
        smallest = std::max(smallest, magnitude * kRelativeResolution);
    if (!std::isfinite(smallest) || !(smallest > 0.0))
        return out;
    std::vector<Tick> ticks;
    // The finest step whose labels fit; a few rungs of the ladder at most, as the first rung
    // already keeps the minimum spacing.
    for (Step step = Step::atLeast(smallest); step.e <= 308; step = step.next()) {
        ticks.clear();
        out.step = step.value();
        // Long rows of digits read badly: large values and fine steps go as mantissa and exponent.
        const bool exponent = magnitude >= 1e7 || step.e < -5;
        const double s = out.step;
        const double kFrom = std::ceil(wLo / s - kLadderEps), kTo = std::floor(wHi / s + kLadderEps);
        if (!(kTo - kFrom < 10000.0))
            continue;
        const int digits = exponent ? std::clamp(int(std::floor(std::log10(magnitude))) - step.e, 0, 15) : 0;
        double widest = 0.0;
        for (double k = kFrom; k <= kTo; k += 1.0) {
            Tick t;
            const double d = step.times(k);
            t.model = toModel(d);
            t.pos = map.pos(t.model);
            if (!(t.pos > -0.5 && t.pos < length - 0.5))
                continue;
            t.label = tickText(d, step, exponent, digits);
            widest = std::max(widest, fm.horizontalAdvance(t.label));
            ticks.push_back(t);
        }
        // One text height between neighbours reads as separate values; more left a narrow depth
        // track's azimuth axis (-180 to 180 on two hundred pixels) with its zero alone.
        const double need = horizontal ? widest + h : minSpacing;
        if (s * pixelsPerUnit >= need)
            break;
    }

    // Label boxes beside the ticks, pushed inside the widget along and across the axis.
    const double gap = 3.0;
    for (Tick& t : ticks) {
        const double w = fm.horizontalAdvance(t.label);
        if (horizontal) {
            const double x = std::clamp(t.pos - w / 2, 0.0, std::max(0.0, length - w));
            const double y = m_position == AxisTop ? thickness - 1.0 - out.tickLength - gap - h
                                                   : out.tickLength + gap;
            t.box = QRectF(x, std::clamp(y, 0.0, std::max(0.0, thickness - h)), w, h);
        } else {
            const double y = std::clamp(t.pos - h / 2, 0.0, std::max(0.0, length - h));
            const bool left = m_position == AxisLeft || m_position == AxisLeftElevation || m_position == AxisLeftDepth;
            const double x = left ? thickness - 1.0 - out.tickLength - gap - w : out.tickLength + gap;
            t.box = QRectF(std::clamp(x, 0.0, std::max(0.0, thickness - w)), y, w, h);
        }
    }
    // Pushed labels may now touch a neighbour: leave those out, walking along the axis.
    std::vector<Tick*> order;
    for (Tick& t : ticks)
        order.push_back(&t);
    std::sort(order.begin(), order.end(), [](const Tick* a, const Tick* b) { return a->pos < b->pos; });
    double end = -std::numeric_limits<double>::infinity();
    const double labelGap = std::max(2.0, h / 4);
    for (Tick* t : order) {
        const double from = horizontal ? t->box.left() : t->box.top();
        // A label wider than the axis is deep would be cut whatever its place.
        const bool fits = horizontal ? t->box.height() <= thickness : t->box.width() <= thickness;
        if (!fits || from < end + labelGap) {
            t->label.clear();
            continue;
        }
        end = horizontal ? t->box.right() : t->box.bottom();
    }
    // The values come first: a title that would run into them is not drawn.
    if (!out.title.isEmpty()) {
        const QRectF& b = out.titleBox;
        const QRectF drawn = horizontal ? b : QRectF(b.center().x() - b.height() / 2, b.center().y() - b.width() / 2,
                                                     b.height(), b.width());
        for (const Tick& t : ticks)
            if (!t.label.isEmpty() && t.box.intersects(drawn))
                out.title.clear();
    }
    out.ticks = std::move(ticks);
    return out;
}

QVector<double> QCartesianAxisWidget::tickValues() const
{
    QVector<double> out;
    for (const Tick& t : layoutFor(size()).ticks)
        out << t.model;
    return out;
}

QList<int> QCartesianAxisWidget::tickPixels() const
{
    QList<int> out;
    for (const Tick& t : layoutFor(size()).ticks)
        out << qRound(t.pos);
    return out;
}

QStringList QCartesianAxisWidget::tickLabels() const
{
    QStringList out;
    for (const Tick& t : layoutFor(size()).ticks)
        out << t.label;
    return out;
}

QList<int> QCartesianAxisWidget::gridLines() const
{
    QList<int> out = tickPixels();
    // The chart draws a horizontal line at y = height() - v: its lines count from the bottom.
    if (!isHorizontal())
        for (int& v : out)
            v = height() - v;
    return out;
}

double QCartesianAxisWidget::tickStep() const { return layoutFor(size()).step; }

double QCartesianAxisWidget::valueToPixel(double modelValue) const
{
    const AxisMap map = mapFor(isHorizontal() ? width() : height());
    return map.usable ? map.pos(modelValue) : std::nan("");
}

double QCartesianAxisWidget::pixelToValue(double pixel) const
{
    const AxisMap map = mapFor(isHorizontal() ? width() : height());
    return map.usable ? map.value(pixel) : std::nan("");
}

// ---- painting ----

void QCartesianAxisWidget::paintLayout(QPainter& painter, const Layout& layout, const QRect& rect) const
{
    painter.save();
    painter.fillRect(rect, palette().color(backgroundRole()));
    painter.setFont(layout.font);
    painter.setPen(QPen(palette().color(foregroundRole()), 0.0));
    painter.setBrush(Qt::NoBrush);

    // Layout pixels are the rectangle's own; the painter keeps whatever transformation it has.
    const double x0 = rect.left(), y0 = rect.top();
    const double w = rect.width(), h = rect.height();
    const double tick = layout.tickLength;
    auto line = [&](double x1, double y1, double x2, double y2) {
        painter.drawLine(QLineF(x0 + x1, y0 + y1, x0 + x2, y0 + y2));
    };
    // The edge against the chart, and a tick mark reaching from it.
    switch (m_position) {
    case AxisTop:
        line(0.0, h - 1, w - 1, h - 1);
        for (const Tick& t : layout.ticks)
            line(std::round(t.pos), h - 1 - tick, std::round(t.pos), h - 1);
        break;
    case AxisBottom:
        line(0.0, 0.0, w - 1, 0.0);
        for (const Tick& t : layout.ticks)
            line(std::round(t.pos), 0.0, std::round(t.pos), tick);
        break;
    case AxisLeft:
    case AxisLeftElevation:
    case AxisLeftDepth:
        line(w - 1, 0.0, w - 1, h - 1);
        for (const Tick& t : layout.ticks)
            line(w - 1 - tick, std::round(t.pos), w - 1, std::round(t.pos));
        break;
    default:
        line(0.0, 0.0, 0.0, h - 1);
        for (const Tick& t : layout.ticks)
            line(0.0, std::round(t.pos), tick, std::round(t.pos));
        break;
    }
    // Text from its baseline, so that what is drawn is exactly the measured box.
    for (const Tick& t : layout.ticks)
        if (!t.label.isEmpty())
            painter.drawText(QPointF(x0 + t.box.left(), y0 + t.box.top() + layout.ascent), t.label);
    if (!layout.title.isEmpty()) {
        const QRectF& b = layout.titleBox;
        if (isHorizontal()) {
            painter.drawText(QPointF(x0 + b.left(), y0 + b.top() + layout.ascent), layout.title);
        } else {
            // Reads upwards, on either side.
            painter.translate(x0 + b.center().x(), y0 + b.center().y());
            painter.rotate(-90.0);
            painter.drawText(QPointF(-b.width() / 2, -b.height() / 2 + layout.ascent), layout.title);
        }
    }
    painter.restore();
}

void QCartesianAxisWidget::draw(QPainter* painter, const QRect& rect) const
{
    if (!painter || !painter->isActive() || rect.isEmpty())
        return;
    paintLayout(*painter, layoutFor(rect.size(), painter->device()), rect);
}

void QCartesianAxisWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintLayout(painter, layoutFor(size()), rect());
}

QSize QCartesianAxisWidget::sizeHint() const
{
    const QFontMetricsF fm(font());
    const double h = fm.height();
    const double tick = std::max(4.0, std::round(h / 3));
    const bool hasTitle = m_titleVisible && !titleText().isEmpty();
    const double titleRoom = hasTitle ? h + 4.0 : 0.0;
    if (isHorizontal())
        return QSize(200, int(std::ceil(1.0 + tick + 3.0 + h + titleRoom + 2.0)));
    double widest = fm.horizontalAdvance(QStringLiteral("-0000"));
    for (const Tick& t : layoutFor(size()).ticks)
        widest = std::max(widest, fm.horizontalAdvance(t.label));
    return QSize(int(std::ceil(1.0 + tick + 3.0 + widest + titleRoom + 2.0)), 200);
}

QSize QCartesianAxisWidget::minimumSizeHint() const
{
    const QSize hint = sizeHint();
    return isHorizontal() ? QSize(20, hint.height()) : QSize(hint.width(), 20);
}

// ---- keeping the chart told ----

void QCartesianAxisWidget::redraw() { relayout(true); }

void QCartesianAxisWidget::relayout(bool forceSignal)
{
    update();
    const QList<int> grid = gridLines();
    if (!forceSignal && m_gridSent && grid == m_lastGrid)
        return;
    m_lastGrid = grid;
    m_gridSent = true;
    emit gridLinesChanged(grid);
}

void QCartesianAxisWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    relayout();
}

void QCartesianAxisWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        relayout();
    } else if (event->type() == QEvent::PaletteChange) {
        update();
    }
}
