// Binary streaming of nodes (drag and drop, clipboard) and the text forms: HTML and CSV.
//
// Binary layout, all big-endian through QDataStream (Qt 5.15 format):
//   quint32 magic "RKMD", quint16 layout version, quint8 flags, QByteArray payload,
//   quint64 FNV-1a hash of the payload.
// The payload holds one node and, when flagged, its subtree. Reading parses the payload into a
// scratch node first and only then takes it over, so a bad stream leaves the node untouched.
#include "MatrixData.h"

#include "CellColumn.h"
#include "UnitManager.h"
#include "UnitRegistry.h"

#include <QDataStream>
#include <QFile>
#include <QMimeData>
#include <QSaveFile>
#include <QTextStream>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace rkBase {

namespace {
constexpr quint32 kMagic = 0x524B4D44; // "RKMD"
constexpr quint16 kVersion = 1;
constexpr quint8 kFlagChildren = 0x01;
constexpr quint8 kFlagSingleRow = 0x02;
constexpr int kMaxDepth = 64;
constexpr int kMaxColumnsPerNode = 4096;

quint64 fnv1a(const QByteArray& bytes)
{
    quint64 h = 1469598103934665603ULL;
    for (char c : bytes) {
        h ^= static_cast<unsigned char>(c);
        h *= 1099511628211ULL;
    }
    return h;
}

// A closed set of value kinds, so that reading never hands Qt's generic QVariant loader bytes
// it could be made to allocate or decode without bound.
enum ValueTag : quint8 { TagInvalid = 0, TagBool, TagInt, TagLongLong, TagDouble, TagString, TagPointF, TagColor };

void writeValue(QDataStream& s, const QVariant& v)
{
    switch (v.type()) {
    case QVariant::Bool: s << quint8(TagBool) << v.toBool(); break;
    case QVariant::Int: s << quint8(TagInt) << qint32(v.toInt()); break;
    case QVariant::LongLong:
    case QVariant::UInt:
    case QVariant::ULongLong: s << quint8(TagLongLong) << qint64(v.toLongLong()); break;
    case QVariant::Double: s << quint8(TagDouble) << v.toDouble(); break;
    case QVariant::PointF:
    case QVariant::Point: s << quint8(TagPointF) << v.toPointF().x() << v.toPointF().y(); break;
    case QVariant::Color: s << quint8(TagColor) << quint32(v.value<QColor>().rgba()) << v.value<QColor>().isValid(); break;
    default:
        if (v.isValid() && v.canConvert<QString>())
            s << quint8(TagString) << v.toString();
        else
            s << quint8(TagInvalid);
    }
}

bool readValue(QDataStream& s, QVariant& v)
{
    quint8 tag = 0;
    s >> tag;
    switch (tag) {
    case TagInvalid: v = QVariant(); break;
    case TagBool: { bool b = false; s >> b; v = b; break; }
    case TagInt: { qint32 i = 0; s >> i; v = int(i); break; }
    case TagLongLong: { qint64 i = 0; s >> i; v = qlonglong(i); break; }
    case TagDouble: { double d = 0; s >> d; v = d; break; }
    case TagString: { QString t; s >> t; v = t; break; }
    case TagPointF: { double x = 0, y = 0; s >> x >> y; v = QPointF(x, y); break; }
    case TagColor: {
        quint32 rgba = 0;
        bool valid = false;
        s >> rgba >> valid;
        v = valid ? QColor::fromRgba(rgba) : QColor();
        break;
    }
    default: return false;
    }
    return s.status() == QDataStream::Ok;
}

quint16 packFlags(const std::initializer_list<bool>& flags)
{
    quint16 bits = 0, bit = 1;
    for (bool f : flags) {
        if (f)
            bits |= bit;
        bit <<= 1;
    }
    return bits;
}

bool knownCellType(qint32 t)
{
    switch (t) {
    case QVariant::Bool: case QVariant::Int: case QVariant::Double: case QVariant::String:
    case QVariant::PointF: case QVariant::Color: case QVariant::Icon: case QVariant::KeySequence:
        return true;
    default:
        return false;
    }
}
} // namespace

void MatrixData::putDataOnStream(QDataStream& stream, bool withChildren) const
{
    QByteArray payload;
    {
        QDataStream p(&payload, QIODevice::WriteOnly);
        p.setVersion(QDataStream::Qt_5_15);
        writeNode(p, withChildren, -1);
    }
    stream << kMagic << kVersion << quint8(withChildren ? kFlagChildren : 0) << payload << fnv1a(payload);
}

void MatrixData::putDataOnStream(int row, QDataStream& stream, bool withChildren) const
{
    QByteArray payload;
    {
        QDataStream p(&payload, QIODevice::WriteOnly);
        p.setVersion(QDataStream::Qt_5_15);
        writeNode(p, withChildren, row);
    }
    stream << kMagic << kVersion << quint8((withChildren ? kFlagChildren : 0) | kFlagSingleRow) << payload
           << fnv1a(payload);
}

void MatrixData::writeNode(QDataStream& s, bool withChildren, int onlyRow) const
{
    s << m_name << m_interfaceName << qint32(m_cellType) << m_group << m_growOnWrite;
    const bool single = onlyRow >= 0;
    s << qint32(single ? 1 : m_validRows) << qint32(m_startRows);
    s << quint32(m_color.rgba()) << m_color.isValid();
    s << (m_unitManager ? QString::fromStdString(m_unitManager->category()) : QString()) << qint32(m_nodeUnitKey);
    s << packFlags({m_selected, m_computed, m_editable, m_renamable, m_canBeBlank, m_visibleToUser, m_vertex,
                    m_checkStateActive, m_checkStateExclusive, m_hasRange, m_flipColorMap});
    writeValue(s, m_default1);
    s << m_default2;
    writeValue(s, m_minValue);
    writeValue(s, m_maxValue);
    writeValue(s, m_meanValue);
    s << m_minName << m_maxName << m_meanName << m_rangeMin << m_rangeMax << m_colorMapStep
      << qint32(m_defaultFilterStep);
    s << qint32(m_lookup.size());
    for (auto it = m_lookup.cbegin(); it != m_lookup.cend(); ++it) {
        s << it.key();
        writeValue(s, it.value());
    }
    s << qint32(m_columns.size());
    for (const auto& c : m_columns) {
        const int first = single ? onlyRow : 0;
        const int rows = single ? 1 : c->size();
        s << qint32(c->type()) << qint32(rows);
        for (int r = first; r < first + rows; ++r) {
            const bool valid = c->isValid(r);
            s << quint8(valid ? 1 : 0);
            if (!valid)
                continue;
            switch (c->type()) {
            case QVariant::Double: s << c->toDouble(r); break;
            case QVariant::Int: case QVariant::Bool: case QVariant::Icon: s << qint32(c->toInt(r)); break;
            case QVariant::Color: s << quint32(c->get(r).value<QColor>().rgba()); break;
            case QVariant::PointF: { const QPointF p = c->get(r).toPointF(); s << p.x() << p.y(); break; }
            default: writeValue(s, c->get(r));
            }
        }
    }
    s << qint32(withChildren ? m_children.size() : 0);
    if (withChildren)
        for (const MatrixData* c : m_children)
            c->writeNode(s, true, onlyRow);
}

bool MatrixData::readNode(QDataStream& s, int depth)
{
    if (depth > kMaxDepth)
        return false;
    qint32 type = 0, validRows = 0, startRows = 0, unitKey = -1, filterStep = -1, lookupSize = 0, columns = 0;
    quint32 rgba = 0;
    bool colorValid = false;
    quint16 flags = 0;
    QString category;
    s >> m_name >> m_interfaceName >> type >> m_group >> m_growOnWrite >> validRows >> startRows >> rgba
      >> colorValid >> category >> unitKey >> flags;
    if (s.status() != QDataStream::Ok || !(knownCellType(type) || (m_group && type == QVariant::String)))
        return false;
    m_cellType = static_cast<QVariant::Type>(type);
    m_color = colorValid ? QColor::fromRgba(rgba) : QColor();
    m_nodeUnitKey = unitKey;
    auto flag = [flags](int bit) { return (flags & (1u << bit)) != 0; };
    m_selected = flag(0), m_computed = flag(1), m_editable = flag(2), m_renamable = flag(3);
    m_canBeBlank = flag(4), m_visibleToUser = flag(5), m_vertex = flag(6), m_checkStateActive = flag(7);
    m_checkStateExclusive = flag(8), m_hasRange = flag(9), m_flipColorMap = flag(10);
    if (!readValue(s, m_default1))
        return false;
    s >> m_default2;
    if (!readValue(s, m_minValue) || !readValue(s, m_maxValue) || !readValue(s, m_meanValue))
        return false;
    s >> m_minName >> m_maxName >> m_meanName >> m_rangeMin >> m_rangeMax >> m_colorMapStep >> filterStep >> lookupSize;
    if (s.status() != QDataStream::Ok || lookupSize < 0)
        return false;
    m_defaultFilterStep = filterStep;
    m_lookup.clear();
    for (qint32 i = 0; i < lookupSize; ++i) {
        QString key;
        QVariant v;
        s >> key;
        if (!readValue(s, v))
            return false;
        m_lookup.insert(key, v);
    }
    s >> columns;
    if (s.status() != QDataStream::Ok || columns < 0 || columns > kMaxColumnsPerNode || (m_group && columns != 0))
        return false;
    m_columns.clear();
    const qint64 available = s.device() ? s.device()->bytesAvailable() : 0;
    for (qint32 col = 0; col < columns; ++col) {
        qint32 ctype = 0, rows = 0;
        s >> ctype >> rows;
        // Every row takes at least one byte, so a count larger than what is left is a lie.
        if (s.status() != QDataStream::Ok || !knownCellType(ctype) || rows < 0 || rows > available)
            return false;
        auto c = std::make_unique<CellColumn>(static_cast<QVariant::Type>(ctype), rows);
        for (qint32 r = 0; r < rows; ++r) {
            quint8 valid = 0;
            s >> valid;
            if (valid > 1)
                return false;
            if (!valid)
                continue;
            switch (ctype) {
            case QVariant::Double: { double d = 0; s >> d; c->setDouble(r, d); break; }
            case QVariant::Int: case QVariant::Bool: case QVariant::Icon: {
                qint32 i = 0;
                s >> i;
                c->set(r, ctype == QVariant::Bool ? QVariant(i != 0) : QVariant(int(i)));
                break;
            }
            case QVariant::Color: { quint32 v = 0; s >> v; c->set(r, QColor::fromRgba(v)); break; }
            case QVariant::PointF: { double x = 0, y = 0; s >> x >> y; c->set(r, QPointF(x, y)); break; }
            default: {
                QVariant v;
                if (!readValue(s, v))
                    return false;
                if (v.isValid() && !c->set(r, v))
                    return false;
            }
            }
            if (s.status() != QDataStream::Ok)
                return false;
        }
        m_columns.push_back(std::move(c));
    }
    if (!m_group && m_columns.empty())
        return false;
    const int allocated = m_columns.empty() ? 0 : m_columns.front()->size();
    for (const auto& c : m_columns)
        if (c->size() != allocated)
            return false;
    if (validRows < 0 || startRows < 0 || (!m_group && validRows > allocated))
        return false;
    m_validRows = m_group ? 0 : validRows;
    m_startRows = startRows;
    m_unitManager.reset();
    if (!category.isEmpty())
        setUnitManager(category);

    qint32 childCount = 0;
    s >> childCount;
    if (s.status() != QDataStream::Ok || childCount < 0)
        return false;
    for (qint32 i = 0; i < childCount; ++i) {
        auto child = std::make_unique<MatrixData>(QString(), -1, -1, QVariant::String, true);
        child->m_parent = this; // so that unit managers resolve through our registry
        if (!child->readNode(s, depth + 1))
            return false;
        m_children.append(child.release());
    }
    return s.status() == QDataStream::Ok;
}

bool MatrixData::getDataFromStream(QDataStream& stream)
{
    quint32 magic = 0;
    quint16 version = 0;
    quint8 flags = 0;
    stream >> magic;
    if (stream.status() != QDataStream::Ok || magic != kMagic)
        return false;
    stream >> version >> flags;
    if (stream.status() != QDataStream::Ok || version != kVersion || (flags & ~(kFlagChildren | kFlagSingleRow)))
        return false;
    QByteArray payload;
    quint64 hash = 0;
    stream >> payload >> hash;
    if (stream.status() != QDataStream::Ok || hash != fnv1a(payload))
        return false;

    QDataStream p(payload);
    p.setVersion(QDataStream::Qt_5_15);
    MatrixData scratch(QString(), -1, -1, QVariant::String, true);
    scratch.m_parent = m_parent;
    scratch.m_registry = m_registry;
    if (!scratch.readNode(p, 0) || !p.atEnd())
        return false;
    // A column never turns into a group or back: that would orphan cells or children.
    if (scratch.isGroup() != isGroup())
        return false;
    scratch.m_parent = nullptr;

    // Take it over: settings and cells always, the subtree only when the stream carried one.
    const bool withChildren = (flags & kFlagChildren) != 0;
    QList<MatrixData*> newChildren;
    if (withChildren) {
        newChildren = scratch.m_children;
        scratch.m_children.clear();
    }
    UnitRegistry* ownRegistry = m_registry;
    copySettingsFrom(scratch);
    m_registry = ownRegistry;
    if (withChildren) {
        qDeleteAll(m_children);
        m_children = newChildren;
        for (MatrixData* c : m_children)
            c->m_parent = this;
    }
    return true;
}

// ---------------------------------------------------------------------------------------------
// Text forms

namespace {
QString shortestNumber(double v)
{
    if (std::isnan(v))
        return QStringLiteral("nan");
    if (std::isinf(v))
        return v > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof(buf), v);
    return QString::fromLatin1(buf, static_cast<int>(res.ptr - buf));
}

// The text of one cell as a person reads it: display units for numbers unless field data is
// wanted as stored, lookup text for coded cells.
QString cellText(const MatrixData* node, int row, bool asStored)
{
    const QVariant v = node->value(row, 0);
    if (!v.isValid())
        return QString();
    switch (node->cellType()) {
    case QVariant::Double: {
        const double d = v.toDouble();
        return shortestNumber(asStored || node->nodeUnitKey() != -1 ? d : node->convertModelToDisplay(d));
    }
    case QVariant::Bool: return v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QVariant::Color: return v.value<QColor>().name(QColor::HexRgb).toUpper();
    case QVariant::PointF: return shortestNumber(v.toPointF().x()) + QLatin1Char(';') + shortestNumber(v.toPointF().y());
    case QVariant::Icon:
    case QVariant::KeySequence: return node->rawValue(row).toString();
    default: return v.toString();
    }
}

QString csvField(const QString& text)
{
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) && !text.contains(QLatin1Char('\n'))
        && !text.contains(QLatin1Char('\r')))
        return text;
    QString quoted = text;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}
} // namespace

void MatrixData::setHTML_MimeData(QMimeData* data, const std::vector<MatrixData*>& columns, const std::vector<int>& rows)
{
    if (!data)
        return;
    std::vector<const MatrixData*> shown;
    int longest = 0;
    for (const MatrixData* c : columns)
        if (c && !c->isGroup()) {
            shown.push_back(c);
            longest = std::max(longest, c->validValueRowCount());
        }
    QString html;
    QTextStream out(&html);
    out << "<html><head><meta charset=\"utf-8\"></head><body><table border=\"1\" cellspacing=\"0\">\n<tr>";
    for (const MatrixData* c : shown) {
        QString header = c->name();
        const QString tag = c->displayUnitTag();
        if (!tag.isEmpty())
            header += QLatin1String(" [") + tag + QLatin1Char(']');
        out << "<th>" << header.toHtmlEscaped() << "</th>";
    }
    out << "</tr>\n";
    auto writeRow = [&](int r) {
        out << "<tr>";
        for (const MatrixData* c : shown) {
            if (c->cellType() == QVariant::Color && c->isValueValid(r, 0))
                out << "<td bgcolor=\"" << cellText(c, r, false) << "\">" << cellText(c, r, false) << "</td>";
            else
                out << "<td>" << cellText(c, r, false).toHtmlEscaped() << "</td>";
        }
        out << "</tr>\n";
    };
    if (rows.empty()) {
        for (int r = 0; r < longest; ++r)
            writeRow(r);
    } else {
        for (int r : rows)
            if (r >= 0)
                writeRow(r);
    }
    out << "</table></body></html>\n";
    out.flush();
    data->setHtml(html);
}

bool MatrixData::writeCSV(const QString& fileName, bool* rowMask, bool withFieldData, bool withUnitTags, bool allColumns,
                          bool withHeader, QWidget* /*parent*/) const
{
    QList<MatrixData*> columns;
    if (allColumns) {
        for (MatrixData* leaf : leafs())
            if (leaf->visibleToUser())
                columns.append(leaf);
    } else {
        columns = shownLeafs();
    }
    int rows = 0;
    for (const MatrixData* c : columns)
        rows = std::max(rows, c->validValueRowCount());

    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream out(&file);
    out.setCodec("UTF-8");
    if (withHeader) {
        QStringList names;
        for (const MatrixData* c : columns) {
            QString name = c->name();
            const QString tag = withFieldData ? c->nodeUnitTag() : c->displayUnitTag();
            if (withUnitTags && !tag.isEmpty())
                name += QLatin1String(" [") + tag + QLatin1Char(']');
            names << csvField(name);
        }
        out << names.join(QLatin1Char(',')) << "\r\n";
    }
    QStringList fields;
    for (int r = 0; r < rows; ++r) {
        if (rowMask && !rowMask[r])
            continue;
        fields.clear();
        for (const MatrixData* c : columns)
            fields << csvField(cellText(c, r, withFieldData));
        out << fields.join(QLatin1Char(',')) << "\r\n";
    }
    out.flush();
    if (out.status() != QTextStream::Ok)
        return false;
    return file.commit();
}

} // namespace rkBase
