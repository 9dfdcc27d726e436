#include "QRosePlotWidget.h"

#include "CellColumn.h"
#include "MatrixData.h"
#include "QLegendListModel.h"

#include <QHash>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
constexpr double kNoValue = 99999.0;
constexpr double kPi = 3.14159265358979323846;

QPen roundPen(const QColor& colour, double width)
{
    return QPen(QBrush(colour), width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

// The text a class value is known by, as createSymbolIDs names it.
QString classText(const QVariant& v)
{
    if (v.userType() == QMetaType::QString)
        return *static_cast<const QString*>(v.constData());
    return v.toString();
}
} // namespace

QRosePlotWidget::QRosePlotWidget(QWidget* parent, const QString& title) : QPolarPlotWidget(parent, title) {}

QRosePlotWidget::~QRosePlotWidget() { delete m_frequencyNode; }

void QRosePlotWidget::setRoseData(MatrixData* frequency, std::vector<std::vector<QVariant>> values,
                                  QLegendListModel* legendModel, int binSize, double direction, double length,
                                  bool autoColor)
{
    m_classValues = std::move(values);
    m_legendModel = legendModel;
    if (m_frequencyNode != frequency)
        delete m_frequencyNode;
    m_frequencyNode = frequency;
    m_binSize = binSize;
    m_resultantDirection = direction;
    m_resultantLength = length;
    createClassification(autoColor ? -1 : 19);
    m_maxFrequency = 0.0;
    if (m_frequencyNode)
        for (int i = 0; i < m_frequencyNode->rowCount(); ++i) {
            const double f = m_frequencyNode->toDouble(i, 0);
            if (std::isfinite(f))
                m_maxFrequency = std::max(m_maxFrequency, f);
        }
    m_gridCircleDistance = static_cast<int>(m_maxFrequency / 5.0);
    m_redrawNeeded = true;
}

void QRosePlotWidget::setDirectionData(MatrixData* direction, const std::vector<int>& rows)
{
    m_directionNode = direction;
    m_rowUsedCount = direction ? direction->validValueRowCount() : 0;
    m_rowUsed.reset(new bool[static_cast<std::size_t>(std::max(m_rowUsedCount, 1))]);
    std::fill_n(m_rowUsed.get(), std::max(m_rowUsedCount, 1), rows.empty());
    for (int r : rows)
        if (r >= 0 && r < m_rowUsedCount)
            m_rowUsed[static_cast<std::size_t>(r)] = true;
    m_redrawNeeded = true;
}

// ---- classes ----

void QRosePlotWidget::createClassification(int classCount)
{
    m_classification.clear();
    const bool anyValue = std::any_of(m_classValues.begin(), m_classValues.end(),
                                      [](const std::vector<QVariant>& bin) { return !bin.empty(); });
    MatrixData* node = m_legendModel ? m_legendModel->symbolNode() : nullptr;
    if (!anyValue || !node)
        return;
    if (node->cellType() == QVariant::Color || node->cellType() == QVariant::String)
        createSymbolClassification();
    else
        createColorMapClassification(classCount);
}

void QRosePlotWidget::setClassification(std::vector<std::vector<int>> counts, const QMap<int, QVariant>& legendValues,
                                        const QMap<int, QColor>& legendColours)
{
    m_classValues.clear();
    m_classification = std::move(counts);
    if (m_legendModel)
        m_legendModel->setClasses(legendValues, legendColours);
    m_redrawNeeded = true;
}

void QRosePlotWidget::createSymbolClassification()
{
    m_classification.clear();
    MatrixData* node = m_legendModel ? m_legendModel->symbolNode() : nullptr;
    if (!node)
        return;
    QMap<int, QString> names;
    QMap<int, QColor> colours;
    node->createSymbolIDs(names, colours);
    const int classes = names.size();
    if (classes == 0)
        return;
    // Class k is the k-th id in order; values find it by colour, by number or by text.
    const bool colour = node->cellType() == QVariant::Color;
    QHash<QRgb, int> byColour;
    QHash<int, int> byNumber;
    QHash<QString, int> byText;
    QMap<int, QVariant> legendValues;
    QMap<int, QColor> legendColours;
    int k = 0;
    for (auto it = names.cbegin(); it != names.cend(); ++it, ++k) {
        if (colour)
            byColour.insert(QColor(it.value()).rgb() & 0xffffff, k);
        byNumber.insert(it.key(), k);
        byText.insert(it.value(), k);
        legendValues.insert(k + 1, it.value());
        legendColours.insert(k + 1, colours.value(it.key()));
    }
    legendValues.insert(0, names.first());
    const bool numbered = node->cellType() != QVariant::String && !colour;
    // A few colours are found faster by a look along them than by hashing.
    std::vector<QRgb> colourKeys;
    if (colour && classes <= 16) {
        colourKeys.resize(static_cast<std::size_t>(classes));
        for (auto it = byColour.cbegin(); it != byColour.cend(); ++it)
            colourKeys[static_cast<std::size_t>(it.value())] = it.key();
    }
    m_classification.assign(m_classValues.size(), std::vector<int>(static_cast<std::size_t>(classes), 0));
    for (std::size_t b = 0; b < m_classValues.size(); ++b) {
        std::vector<int>& counts = m_classification[b];
        for (const QVariant& v : m_classValues[b]) {
            if (const_cast<QVariant&>(v).data_ptr().type == QVariant::Invalid)
                continue;
            int found = -1;
            if (colour) {
                // The number straight from the variant: a million calls into QVariant add up.
                const QVariant::Private& p = const_cast<QVariant&>(v).data_ptr();
                const QRgb rgb = p.type == QVariant::UInt ? p.data.u : v.value<QColor>().rgb();
                const QRgb key = rgb & 0xffffff;
                if (!colourKeys.empty()) {
                    const auto at = std::find(colourKeys.begin(), colourKeys.end(), key);
                    found = at == colourKeys.end() ? -1 : static_cast<int>(at - colourKeys.begin());
                } else {
                    found = byColour.value(key, -1);
                }
            } else if (numbered) {
                bool ok = false;
                const int id = v.toInt(&ok);
                found = ok ? byNumber.value(id, -1) : byText.value(classText(v), -1);
            } else {
                found = byText.value(classText(v), -1);
            }
            if (found >= 0)
                ++counts[static_cast<std::size_t>(found)];
        }
    }
    m_legendModel->setClasses(legendValues, legendColours);
}

void QRosePlotWidget::createColorMapClassification(int classCount)
{
    m_classification.clear();
    MatrixData* node = m_legendModel ? m_legendModel->symbolNode() : nullptr;
    if (!node)
        return;
    const double ownStep = node->colorMapStepSize();
    auto classify = [&](QMap<int, QString>& names, QMap<int, QColor>& colours) {
        names.clear();
        colours.clear();
        node->createColorMapSymbolIDs(names, colours);
        const int classes = names.isEmpty() ? 0 : names.lastKey() + 1;
        m_classification.assign(m_classValues.size(), std::vector<int>(static_cast<std::size_t>(classes), 0));
        if (classes == 0)
            return 0;
        int busiest = 0;
        for (std::size_t b = 0; b < m_classValues.size(); ++b) {
            std::vector<int>& counts = m_classification[b];
            for (const QVariant& v : m_classValues[b]) {
                if (!v.isValid())
                    continue;
                const double d = v.userType() == QMetaType::Double ? *static_cast<const double*>(v.constData())
                                                                   : v.toDouble();
                const int id = node->colorMapSymbolIDOfValue(d);
                if (id >= 0 && id < classes)
                    ++counts[static_cast<std::size_t>(id)];
            }
            busiest = std::max(busiest, static_cast<int>(std::count_if(counts.begin(), counts.end(),
                                                                       [](int c) { return c > 0; })));
        }
        return busiest;
    };
    QMap<int, QString> names;
    QMap<int, QColor> colours;
    const int busiest = classify(names, colours);
    if (classCount != -1 && busiest >= 1 && busiest < classCount) {
        // As many classes over the range as the busiest bin holds: the bins use every colour.
        double mn = 0, mx = 0, mean = 0;
        if (node->getMinMax(mn, mx, mean, boost::dynamic_bitset<>()) && mx > mn) {
            node->setColorMapStepSize((mx - mn) / busiest * (1.0 + 1e-12));
            classify(names, colours);
            node->setColorMapStepSize(ownStep);
        }
    }
    QMap<int, QVariant> legendValues;
    QMap<int, QColor> legendColours;
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        legendValues.insert(it.key() + 1, it.value());
        legendColours.insert(it.key() + 1, colours.value(it.key()));
    }
    if (!names.isEmpty())
        legendValues.insert(0, names.first());
    m_legendModel->setClasses(legendValues, legendColours);
}

QColor QRosePlotWidget::classColour(int k) const
{
    return m_legendModel ? m_legendModel->classColors().value(k + 1, m_pointFillColor) : m_pointFillColor;
}

// ---- geometry ----

double QRosePlotWidget::frequencyRadius(double count) const
{
    const double z = m_zeroCircleSize / 100.0 * m_radius;
    const double f = m_maxFrequency > 0.0 ? std::max(count, 0.0) / m_maxFrequency : 0.0;
    return m_equalArea ? (m_radius - z) * std::sqrt(f) + z : (m_radius - z) * f + z;
}

std::vector<double> QRosePlotWidget::gridFractions() const
{
    std::vector<double> fractions;
    const double s = m_maxFrequency > 0.0 ? m_gridCircleDistance / m_maxFrequency : 0.0;
    if (!(s > 0.0) || !std::isfinite(s) || 1.0 / s - 1.0 > m_radius / 2.0)
        return fractions;
    for (int k = 1; k * s < 1.0 - 1e-9; ++k)
        fractions.push_back(k * s);
    return fractions;
}

// ---- drawing ----

void QRosePlotWidget::redraw()
{
    QPolarPlotWidget::redraw();
    if (palette().color(QPalette::Window) != m_backgroundColor) {
        QPalette p = palette();
        p.setColor(QPalette::Window, m_backgroundColor);
        setPalette(p);
    }
    QPainter painter;
    beginRasterPainter(painter, m_chartPixmap);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    drawPlot(&painter, false);
}

void QRosePlotWidget::drawChart(QPainter& painter) { drawPlot(&painter, true); }

void QRosePlotWidget::drawPlot(QPainter* painter, bool gridWithPetalsOnly)
{
    drawFrame(painter, 1);
    const bool petals = m_directionAsRosePlot && m_frequencyNode;
    if (m_gridCirclesOn && (petals || !gridWithPetalsOnly))
        drawGridCircles(painter);
    if (petals) {
        if (m_classification.empty())
            drawRoseData(painter);
        else
            drawClassifiedRoseData(painter);
    }
    if (!m_directionAsRosePlot && m_directionNode)
        drawUnitVectors(painter);
    if (m_tickMarksOn)
        drawTickMarks(painter);
    if (m_resultantDirection != kNoValue && std::isfinite(m_resultantDirection) && m_showResultantMeanDirection) {
        painter->setPen(roundPen(m_directionAsRosePlot ? m_labelColor : QColor(Qt::blue), 2.0));
        painter->setBrush(Qt::NoBrush);
        drawVector(painter, m_resultantDirection, 25);
    }
    const double z = m_zeroCircleSize / 100.0 * m_radius;
    if (m_directionAsRosePlot && z > 0.0) {
        painter->setPen(roundPen(m_labelColor, 1.0));
        painter->setBrush(m_backgroundColor);
        painter->drawEllipse(QPointF(m_centre), z, z);
    }
    painter->setBrush(Qt::NoBrush);
}

void QRosePlotWidget::drawBin(QPainter* painter, double azimuth, double r)
{
    painter->drawPie(QRectF(m_centre.x() - r, m_centre.y() - r, 2.0 * r, 2.0 * r),
                     static_cast<int>((450.0 - azimuth - m_binSize) * 16.0), m_binSize * 16);
}

void QRosePlotWidget::drawRoseData(QPainter* painter)
{
    if (!m_frequencyNode || !(m_maxFrequency > 0.0))
        return;
    painter->setPen(roundPen(m_petalOutlineColor, m_petalOutlineWidth));
    painter->setBrush(m_frequencyNode->color());
    for (int i = 0; i < m_frequencyNode->rowCount(); ++i) {
        const double f = m_frequencyNode->toDouble(i, 0);
        if (f > 0.0 && std::isfinite(f))
            drawBin(painter, static_cast<double>(m_binSize) * i, frequencyRadius(f));
    }
    painter->setBrush(Qt::NoBrush);
}

void QRosePlotWidget::drawClassifiedRoseData(QPainter* painter)
{
    if (!m_frequencyNode || !(m_maxFrequency > 0.0))
        return;
    painter->setPen(roundPen(m_petalOutlineColor, m_petalOutlineWidth));
    const int bins = std::min(m_frequencyNode->rowCount(), static_cast<int>(m_classification.size()));
    for (int i = 0; i < bins; ++i) {
        const double value = m_frequencyNode->toDouble(i, 0);
        if (!(value > 0.0) || !std::isfinite(value))
            continue;
        const double azimuth = static_cast<double>(m_binSize) * i;
        const std::vector<int>& counts = m_classification[static_cast<std::size_t>(i)];
        // Counts are turned into the table's unit (a count, or a percent) by the bin's share;
        // counts given by setClassification are in the table's unit already.
        const std::size_t n =
            static_cast<std::size_t>(i) < m_classValues.size() ? m_classValues[static_cast<std::size_t>(i)].size() : 0;
        const double scale = n > 0 ? value / static_cast<double>(n) : 1.0;
        double classified = 0.0;
        for (int c : counts)
            classified += c * scale;
        double inner = 0.0; // what has been stacked outside, in the table's unit
        if (classified < value * (1.0 - 1e-12)) {
            painter->setBrush(m_frequencyNode->color());
            drawBin(painter, azimuth, frequencyRadius(value));
            inner = value - classified;
        }
        for (int k = static_cast<int>(counts.size()) - 1; k >= 0; --k) {
            if (counts[static_cast<std::size_t>(k)] == 0)
                continue;
            painter->setBrush(classColour(k));
            drawBin(painter, azimuth, frequencyRadius(value - inner));
            inner += counts[static_cast<std::size_t>(k)] * scale;
        }
    }
    painter->setBrush(Qt::NoBrush);
}

void QRosePlotWidget::setGridPen(QPainter* painter)
{
    painter->setBrush(Qt::NoBrush);
    painter->setPen(roundPen(m_gridColor, 1.5));
    painter->setOpacity(0.3);
}

void QRosePlotWidget::drawSpokes(QPainter* painter)
{
    if (m_tickMarkInterval <= 0)
        return;
    for (int a = 0; a < 360; a += m_tickMarkInterval)
        drawLine(painter, a, 5);
}

void QRosePlotWidget::drawLinearCircles(QPainter* painter)
{
    const double z = m_zeroCircleSize / 100.0 * m_radius;
    for (double f : gridFractions()) {
        const double r = (m_radius - z) * f + z;
        painter->drawEllipse(QPointF(m_centre), r, r);
    }
}

void QRosePlotWidget::drawEqualAreaCircles(QPainter* painter)
{
    const double z = m_zeroCircleSize / 100.0 * m_radius;
    for (double f : gridFractions()) {
        const double r = (m_radius - z) * std::sqrt(f) + z;
        painter->drawEllipse(QPointF(m_centre), r, r);
    }
}

void QRosePlotWidget::drawGridCircles(QPainter* painter)
{
    if (!(m_maxFrequency > 0.0))
        return;
    setGridPen(painter);
    if (m_equalArea)
        drawEqualAreaCircles(painter);
    else
        drawLinearCircles(painter);
    drawSpokes(painter);
    painter->setOpacity(1.0);
}

void QRosePlotWidget::drawTicksAtGrid(QPainter* painter, bool equalArea)
{
    if (m_tickMarkInterval <= 0)
        return;
    const double z = m_zeroCircleSize / 100.0 * m_radius;
    std::vector<QLineF> ticks;
    for (double f : gridFractions()) {
        const double r = (m_radius - z) * (equalArea ? std::sqrt(f) : f) + z;
        for (int a = 0; a < 360; a += m_tickMarkInterval) {
            const QPointF p = polarPoint(a, r);
            const double t = a * kPi / 180.0; // across the spoke: along the azimuth a + 90
            const QPointF across(3.0 * std::cos(t), 3.0 * std::sin(t));
            ticks.emplace_back(p - across, p + across);
        }
    }
    painter->drawLines(ticks.data(), static_cast<int>(ticks.size()));
}

void QRosePlotWidget::drawLinearTickMarks(QPainter* painter) { drawTicksAtGrid(painter, false); }

void QRosePlotWidget::drawEqualAreaTickMarks(QPainter* painter) { drawTicksAtGrid(painter, true); }

void QRosePlotWidget::drawTickMarks(QPainter* painter)
{
    if (!(m_maxFrequency > 0.0))
        return;
    setGridPen(painter);
    if (m_equalArea)
        drawEqualAreaTickMarks(painter);
    else
        drawLinearTickMarks(painter);
    painter->setPen(roundPen(m_gridColor, 1.0));
    drawSpokes(painter);
    painter->setOpacity(1.0);
}

void QRosePlotWidget::drawBinBoundaryCircles(QPainter* painter)
{
    if (!m_frequencyNode)
        return;
    for (int i = 0; i < m_frequencyNode->rowCount(); ++i) {
        const double f = m_frequencyNode->toDouble(i, 0);
        if (f > 0.0 && std::isfinite(f)) {
            const double r = frequencyRadius(f);
            painter->drawEllipse(QPointF(m_centre), r, r);
        }
    }
}

void QRosePlotWidget::drawVector(QPainter* painter, double azimuth, int length)
{
    double reach = m_radius + length;
    if (m_showResultantMeanLength && length != 0)
        reach = m_radius * m_resultantLength;
    const QPointF tip = polarPoint(azimuth, reach);
    painter->drawLine(QLineF(QPointF(m_centre), tip));
    if (length != 0)
        drawArrow(painter, tip);
}

void QRosePlotWidget::drawUnitVectors(QPainter* painter)
{
    if (!m_directionNode || m_radius <= 0)
        return;
    painter->setPen(roundPen(m_labelColor, 1.0));
    // One direction per step of the rim's pixels: each end is drawn once.
    const int steps = 8 * m_radius;
    std::vector<bool> used(static_cast<std::size_t>(steps), false);
    const double perDegree = steps / 360.0;
    auto mark = [&](double a) {
        double k = a * perDegree + 0.5;
        if (!(k >= 0.0 && k < steps)) {
            k = std::fmod(std::floor(k), static_cast<double>(steps));
            if (k < 0)
                k += steps;
        }
        used[static_cast<std::size_t>(k) % used.size()] = true;
    };
    const CellColumn* cells = m_directionNode->cellColumn(0);
    const int rows = std::min({m_rowUsedCount, m_directionNode->validValueRowCount(), cells ? cells->size() : 0});
    const double* d = cells ? cells->doubleData() : nullptr;
    const std::uint8_t* valid = cells ? cells->validData() : nullptr;
    for (int r = 0; r < rows; ++r) {
        if (!m_rowUsed[static_cast<std::size_t>(r)] || !valid[r])
            continue;
        const double a = d ? d[r] : cells->toDouble(r);
        if (!std::isfinite(a) || a == kNoValue)
            continue;
        mark(a);
        if (!m_unidirectional)
            mark(a + 180.0);
    }
    std::vector<QLineF> lines;
    for (int k = 0; k < steps; ++k)
        if (used[static_cast<std::size_t>(k)])
            lines.emplace_back(QPointF(m_centre), polarPoint(k * 360.0 / steps, m_radius));
    painter->drawLines(lines.data(), static_cast<int>(lines.size()));
}

} // namespace rkBase
