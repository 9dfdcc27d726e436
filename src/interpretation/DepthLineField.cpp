#include "DepthLineField.h"

#include "MatrixData.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>

#include <cmath>

namespace rkBase {

namespace {

const char* const kBanner = "Rookvale, Structural SCAT Interpretation 4DRook2008 v1.0\n";
const int kFieldWidth = 30;

template <typename T>
void eraseIndex(std::vector<T>& v, std::size_t index)
{
    if (index < v.size())
        v.erase(v.begin() + static_cast<std::ptrdiff_t>(index));
}

template <typename T>
void insertIndex(std::vector<T>& v, std::size_t index, const T& value)
{
    v.insert(v.begin() + static_cast<std::ptrdiff_t>(std::min(index, v.size())), value);
}

// The file's colour text: the same upper-case #RRGGBB the data tree writes for its nodes.
QString colourText(const QColor& colour)
{
    return colour.name(QColor::HexRgb).toUpper();
}

} // namespace

DepthLineField::DepthLineField(const QString& name)
    : m_name(name)
{
}

DepthLineField::~DepthLineField() = default;

QString DepthLineField::type(const DataType& type)
{
    switch (type) {
    case CrestalPlane:
        return QStringLiteral("Crestal_Plane");
    case AxialPlane:
        return QStringLiteral("Axial_Plane");
    case InflectionPlane:
        return QStringLiteral("Inflection_Plane");
    case Fault:
        return QStringLiteral("Fault");
    case Top:
        return QStringLiteral("Top");
    default:
        return QStringLiteral("Horizon");
    }
}

DepthLineField::DataType DepthLineField::type(const QString& text)
{
    if (text == QLatin1String("Crestal_Plane"))
        return CrestalPlane;
    if (text == QLatin1String("Axial_Plane"))
        return AxialPlane;
    if (text == QLatin1String("Inflection_Plane"))
        return InflectionPlane;
    if (text == QLatin1String("Fault"))
        return Fault;
    if (text == QLatin1String("Top"))
        return Top;
    return Horizon;
}

bool DepthLineField::isStructuralType(const QString& text)
{
    return text == QLatin1String("Crestal_Plane") || text == QLatin1String("Axial_Plane")
           || text == QLatin1String("Inflection_Plane") || text == QLatin1String("Top");
}

// ---------------------------------------------------------------------------------------------
// Lines

void DepthLineField::addLine(const double& x, const double& depth, const QString& name, const QColor& color,
                             const DataType& type, const QPointF& orientation, const int& originalRow)
{
    m_linesX.push_back(x);
    m_lineDepths.push_back(depth);
    m_lineNames.push_back(name);
    m_lineColors.push_back(color);
    m_lineTypes.push_back(type);
    m_selected.push_back(false);
    m_lineOrientations.push_back(orientation);
    m_originalRowPos.push_back(originalRow);
    m_originalDepthChanged.push_back(false);
    m_modified = true;
}

void DepthLineField::insertHorizontalLine(const double& x, const double& depth, const QString& name,
                                          const QColor& color, const DataType& type, const double& eps,
                                          const QPointF& orientation, const int& originalRow)
{
    // A line without a finite depth has no place in the order.
    if (!std::isfinite(depth))
        return;
    if (m_lineDepths.empty()) {
        addLine(x, depth, name, color, type, orientation, originalRow);
        return;
    }
    for (std::size_t i = 0; i < m_lineDepths.size(); ++i) {
        if (std::fabs(m_lineDepths[i] - depth) < eps)
            return;
        if (!(m_lineDepths[i] < depth)) {
            insertIndex(m_linesX, i, x);
            insertIndex(m_lineDepths, i, depth);
            insertIndex(m_lineNames, i, name);
            insertIndex(m_lineColors, i, color);
            insertIndex(m_lineTypes, i, type);
            insertIndex(m_selected, i, false);
            insertIndex(m_lineOrientations, i, orientation);
            insertIndex(m_originalRowPos, i, originalRow);
            insertIndex(m_originalDepthChanged, i, false);
            return;
        }
    }
    addLine(x, depth, name, color, type, orientation, originalRow);
}

std::vector<int> DepthLineField::pickHorizontalLines(const QPointF& p, const double& eps)
{
    std::vector<int> hits;
    for (std::size_t i = 0; i < m_lineDepths.size(); ++i) {
        const DataType t = i < m_lineTypes.size() ? m_lineTypes[i] : Horizon;
        if (t == Horizon && !m_showHorizons)
            continue;
        if (t < Horizon && !m_showStructuralPlanes)
            continue;
        if (t == Fault && !m_showFaults)
            continue;
        if (std::fabs(m_lineDepths[i] - p.y()) < eps) {
            if (i < m_selected.size())
                m_selected[i] = true;
            hits.push_back(static_cast<int>(i));
        }
    }
    return hits;
}

bool DepthLineField::eraseHorizontalLines(const QPointF& p, const double& eps)
{
    bool erased = false;
    bool again = true;
    while (again) {
        again = false;
        for (std::size_t i = 0; i < m_lineDepths.size(); ++i) {
            if (std::fabs(m_lineDepths[i] - p.y()) < eps) {
                eraseIndex(m_lineDepths, i);
                eraseIndex(m_lineNames, i);
                eraseIndex(m_lineColors, i);
                m_modified = true;
                erased = true;
                again = true;
                break;
            }
        }
    }
    return erased;
}

void DepthLineField::eraseAt(std::size_t i)
{
    eraseIndex(m_linesX, i);
    eraseIndex(m_lineDepths, i);
    eraseIndex(m_lineNames, i);
    eraseIndex(m_lineColors, i);
    eraseIndex(m_lineTypes, i);
    eraseIndex(m_selected, i);
    eraseIndex(m_lineOrientations, i);
    eraseIndex(m_originalRowPos, i);
    eraseIndex(m_originalDepthChanged, i);
}

void DepthLineField::erasePickedLine()
{
    for (std::size_t i = 0; i < m_selected.size(); ++i) {
        if (!m_selected[i])
            continue;
        m_modified = true;
        m_deletedOriginalRowPos.push_back(i < m_originalRowPos.size() ? m_originalRowPos[i] : -1);
        eraseAt(i);
        break;
    }
    deselectAll();
}

void DepthLineField::moveSelectedLines(const QPointF& delta)
{
    for (std::size_t i = 0; i < m_selected.size(); ++i) {
        if (!m_selected[i])
            continue;
        if (i < m_linesX.size())
            m_linesX[i] += delta.x();
        if (i < m_lineDepths.size())
            m_lineDepths[i] += delta.y();
        if (i < m_originalDepthChanged.size())
            m_originalDepthChanged[i] = true;
    }
}

void DepthLineField::updatePickedHorizon(int index, const double& depth)
{
    if (index >= 0 && static_cast<std::size_t>(index) < m_lineDepths.size())
        m_lineDepths[static_cast<std::size_t>(index)] = depth;
}

void DepthLineField::changePickedLineColor(const QColor& color)
{
    for (std::size_t i = 0; i < m_selected.size() && i < m_lineColors.size(); ++i)
        if (m_selected[i])
            m_lineColors[i] = color;
    deselectAll();
}

void DepthLineField::changePickedLineName(const QString& name)
{
    for (std::size_t i = 0; i < m_selected.size() && i < m_lineNames.size(); ++i)
        if (m_selected[i])
            m_lineNames[i] = name;
    deselectAll();
}

void DepthLineField::changePickedOrientation(const QPointF& orientation)
{
    for (std::size_t i = 0; i < m_selected.size() && i < m_lineOrientations.size(); ++i)
        if (m_selected[i])
            m_lineOrientations[i] = orientation;
}

QColor DepthLineField::getColourOfSelectedLine() const
{
    for (std::size_t i = 0; i < m_selected.size() && i < m_lineColors.size(); ++i)
        if (m_selected[i])
            return m_lineColors[i];
    return QColor();
}

QString DepthLineField::getNameOfSelectedLine() const
{
    for (std::size_t i = 0; i < m_selected.size() && i < m_lineNames.size(); ++i)
        if (m_selected[i])
            return m_lineNames[i];
    return QString();
}

bool DepthLineField::isSelected(int index) const
{
    return index >= 0 && static_cast<std::size_t>(index) < m_selected.size() && m_selected[std::size_t(index)];
}

bool DepthLineField::isSomethingSelected() const
{
    for (bool s : m_selected)
        if (s)
            return true;
    return false;
}

void DepthLineField::setSelected(const std::vector<int>& indices)
{
    for (int i : indices)
        if (i >= 0 && static_cast<std::size_t>(i) < m_selected.size())
            m_selected[static_cast<std::size_t>(i)] = true;
}

void DepthLineField::deselectAll()
{
    std::fill(m_selected.begin(), m_selected.end(), false);
}

void DepthLineField::clearAll()
{
    m_linesX.clear();
    m_lineDepths.clear();
    m_lineNames.clear();
    m_lineColors.clear();
    m_lineTypes.clear();
    m_selected.clear();
    m_lineOrientations.clear();
    m_originalRowPos.clear();
    m_deletedOriginalRowPos.clear();
    m_originalDepthChanged.clear();
    m_modified = false;
}

void DepthLineField::clearOriginalRowPos()
{
    std::fill(m_originalRowPos.begin(), m_originalRowPos.end(), -1);
    std::fill(m_originalDepthChanged.begin(), m_originalDepthChanged.end(), false);
    m_deletedOriginalRowPos.clear();
}

// ---------------------------------------------------------------------------------------------
// Interval filters

void DepthLineField::generateAquidistantIntervalFilter(const double& size, const double& min, const double& max)
{
    clearAll();
    const QString name = QStringLiteral("Name");
    const QPointF orientation(-1.0, 0.0);
    double d = min;
    // A step that cannot advance would never leave the loop: such a filter keeps its first line.
    // So does a step so small against the range (a bin size typed in the wrong unit) that the
    // loop would exhaust memory long before it ends.
    const double kMostBoundaries = 1e6;
    if (!(size > 0.0) || !std::isfinite(size) || !std::isfinite(min) || !std::isfinite(max)
        || (max - min) / size > kMostBoundaries) {
        addLine(0.0, d, name, Qt::red, IntervalBoundary, orientation, -1);
        return;
    }
    while (d < max) {
        const double next = d + size;
        addLine(0.0, d, name, Qt::red, IntervalBoundary, orientation, -1);
        if (!(next > d)) // size lost against the magnitude of d
            return;
        d = next;
    }
    addLine(0.0, d, name, Qt::red, IntervalBoundary, orientation, -1);
}

void DepthLineField::generateNumberOfIntervalFilter(const int& count, const double& min, const double& max)
{
    clearAll();
    const QString name = QStringLiteral("Name");
    const QPointF orientation(-1.0, 0.0);
    // No step is taken for a count below 1; the division is left out there.
    const double step = count > 0 ? (max - min) / count : 0.0;
    double d = min;
    for (int i = 0; i < count; ++i) {
        addLine(0.0, d, name, Qt::red, IntervalBoundary, orientation, -1);
        d += step;
    }
    addLine(0.0, d, name, Qt::red, IntervalBoundary, orientation, -1);
}

// ---------------------------------------------------------------------------------------------
// The scenario file

QString DepthLineField::writeToText() const
{
    QString text;
    QTextStream out(&text);
    out << kBanner;
    out.setFieldWidth(kFieldWidth);
    out << "X" << "Depth" << "Types" << "Colors" << "Dip" << "Azimuth" << "Names" << "\n";
    for (std::size_t i = 0; i < m_lineDepths.size(); ++i) {
        const double x = i < m_linesX.size() ? m_linesX[i] : 0.0;
        const int t = i < m_lineTypes.size() ? int(m_lineTypes[i]) : int(Horizon);
        const QColor c = i < m_lineColors.size() ? m_lineColors[i] : QColor();
        const QPointF o = i < m_lineOrientations.size() ? m_lineOrientations[i] : QPointF();
        QString name = i < m_lineNames.size() ? m_lineNames[i] : QString();
        // Any white space would split the name on reading, not only the blank.
        for (QChar& ch : name)
            if (ch.isSpace())
                ch = QLatin1Char('_');
        out << x << m_lineDepths[i] << t << colourText(c) << o.x() << o.y();
        // A name that fills its column would run into the azimuth: keep one blank between.
        if (name.size() >= kFieldWidth)
            name.prepend(QLatin1Char(' '));
        out << name << "\n";
    }
    out.flush();
    return text;
}

void DepthLineField::write(QString path)
{
    if (QFile::exists(path))
        QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return;
    QTextStream out(&file);
    out.setCodec("UTF-8");
    out << writeToText();
}

void DepthLineField::readFromText(const QString& text)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::KeepEmptyParts);
    for (int l = 2; l < lines.size(); ++l) {
        const QString& line = lines[l];
        if (line.isEmpty())
            break;
        const QStringList tokens = line.split(blanks, Qt::KeepEmptyParts);
        if (tokens.size() < 8)
            continue;
        // A number that does not parse reads as 0: the line is kept, whatever it holds.
        const double x = tokens[1].toDouble();
        const double depth = tokens[2].toDouble();
        const DataType t = static_cast<DataType>(tokens[3].toInt(nullptr, 10));
        const QColor colour = MatrixData::colorFromHexaString(tokens[4]);
        const QPointF orientation(tokens[5].toDouble(), tokens[6].toDouble());
        addLine(x, depth, tokens[7], colour, t, orientation, -1);
    }
}

void DepthLineField::read(QString path)
{
    QFile file(path);
    if (!file.exists() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    QTextStream in(&file);
    in.setCodec("UTF-8");
    readFromText(in.readAll());
}

} // namespace rkBase
