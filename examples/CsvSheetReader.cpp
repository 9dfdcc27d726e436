#include "CsvSheetReader.h"

#include <MatrixData.h>

#include <QColor>
#include <QFile>
#include <QTextCodec>

#include <memory>

using rkBase::MatrixData;

QList<QStringList> CsvSheetReader::parse(const QString& text, QStringList* problems)
{
    QList<QStringList> records;
    QStringList record;
    QString field;
    bool quoted = false, fieldStarted = false;
    int line = 1;
    const int n = text.size();
    auto endField = [&] {
        record << field;
        field.clear();
        fieldStarted = false;
    };
    auto endRecord = [&] {
        endField();
        if (!(record.size() == 1 && record.first().isEmpty()))
            records << record;
        record.clear();
    };
    for (int i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (quoted) {
            if (c == QLatin1Char('"')) {
                if (i + 1 < n && text.at(i + 1) == QLatin1Char('"')) {
                    field += c;
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                if (c == QLatin1Char('\n'))
                    ++line;
                field += c;
            }
            continue;
        }
        if (c == QLatin1Char('"') && !fieldStarted) {
            quoted = fieldStarted = true;
        } else if (c == QLatin1Char(',')) {
            endField();
        } else if (c == QLatin1Char('\r')) {
            // CRLF or a lone CR both end a record.
            if (i + 1 < n && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            endRecord();
            ++line;
        } else if (c == QLatin1Char('\n')) {
            endRecord();
            ++line;
        } else {
            field += c;
            fieldStarted = true;
        }
    }
    if (quoted && problems)
        *problems << QStringLiteral("Line %1: a quoted field is not closed; it was read to the end of the file.").arg(line);
    if (!field.isEmpty() || !record.isEmpty())
        endRecord();
    return records;
}

MatrixData* CsvSheetReader::read(const QString& fileName, const QString& sheetName)
{
    m_problems.clear();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_problems << QStringLiteral("Cannot open %1: %2").arg(fileName, file.errorString());
        return nullptr;
    }
    QByteArray bytes = file.readAll();
    // NUL bytes are no part of any text, and Qt's Latin-1 conversion would stop at the first.
    const int nuls = bytes.count('\0');
    if (nuls > 0) {
        bytes.replace(QByteArray(1, '\0'), QByteArray());
        m_problems << QStringLiteral("The file holds %1 NUL byte(s); they were dropped.").arg(nuls);
    }
    // UTF-8 unless it does not decode; then Latin-1, which never fails, and say so.
    QTextCodec::ConverterState state;
    QTextCodec* utf8 = QTextCodec::codecForName("UTF-8");
    QString text = utf8->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0) {
        text = QString::fromLatin1(bytes.constData(), bytes.size());
        m_problems << QStringLiteral("The file is not UTF-8; it was read as Latin-1.");
    }
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    const QStringList before = m_problems;
    MatrixData* sheet = readText(text, sheetName);
    m_problems = before + m_problems;
    return sheet;
}

namespace {
enum class Kind { Empty, Int, Double, Bool, Color, Text };

Kind kindOf(const QString& cell)
{
    const QString t = cell.trimmed();
    if (t.isEmpty())
        return Kind::Empty;
    bool ok = false;
    t.toInt(&ok);
    if (ok)
        return Kind::Int;
    t.toDouble(&ok);
    if (ok)
        return Kind::Double;
    const QString lower = t.toLower();
    if (lower == QLatin1String("true") || lower == QLatin1String("false"))
        return Kind::Bool;
    if (t.size() == 7 && t.startsWith(QLatin1Char('#')) && QColor(t).isValid())
        return Kind::Color;
    return Kind::Text;
}

// Int and Double mix to Double; any other mixture is text.
Kind merge(Kind a, Kind b)
{
    if (a == Kind::Empty)
        return b;
    if (b == Kind::Empty || a == b)
        return a;
    if ((a == Kind::Int && b == Kind::Double) || (a == Kind::Double && b == Kind::Int))
        return Kind::Double;
    return Kind::Text;
}

QVariant::Type typeOf(Kind k)
{
    switch (k) {
    case Kind::Int: return QVariant::Int;
    case Kind::Double: return QVariant::Double;
    case Kind::Bool: return QVariant::Bool;
    case Kind::Color: return QVariant::Color;
    default: return QVariant::String;
    }
}
} // namespace

MatrixData* CsvSheetReader::readText(const QString& text, const QString& sheetName)
{
    m_problems.clear();
    const QList<QStringList> records = parse(text, &m_problems);
    if (records.isEmpty()) {
        m_problems << QStringLiteral("The file holds no records.");
        return nullptr;
    }
    QStringList header = records.first();
    const int columns = header.size();
    const int rows = records.size() - 1;
    // Most cells of a column decide its type; a few stray words in numbers are reported and
    // left blank rather than turning the column into text.
    QVector<Kind> kinds(columns, Kind::Empty);
    QVector<int> numeric(columns, 0), other(columns, 0);
    int ragged = 0;
    for (int r = 1; r <= rows; ++r) {
        const QStringList& rec = records[r];
        if (rec.size() != columns)
            ++ragged;
        for (int c = 0; c < columns && c < rec.size(); ++c) {
            const Kind k = kindOf(rec[c]);
            if (k == Kind::Int || k == Kind::Double)
                ++numeric[c];
            else if (k != Kind::Empty)
                ++other[c];
            kinds[c] = merge(kinds[c], k);
        }
    }
    if (ragged)
        m_problems << QStringLiteral("%1 record(s) do not have %2 fields; missing fields are blank and extra fields were dropped.")
                          .arg(ragged)
                          .arg(columns);
    auto sheet = std::make_unique<MatrixData>(sheetName, -1, -1, QVariant::String, true);
    for (int c = 0; c < columns; ++c) {
        Kind k = kinds[c];
        if (k == Kind::Text && numeric[c] > 0 && other[c] * 20 < numeric[c])
            k = Kind::Double;
        QString name = header[c].trimmed();
        if (name.isEmpty())
            name = QStringLiteral("Column %1").arg(c + 1);
        sheet->createUniqueName(name);
        auto* column = new MatrixData(name, rows, 1, typeOf(k), true);
        column->setColor(MatrixData::getDefaultColor(c == 0));
        int refused = 0;
        for (int r = 0; r < rows; ++r) {
            const QStringList& rec = records[r + 1];
            if (c >= rec.size() || rec[c].trimmed().isEmpty())
                continue;
            if (!column->setValue(r, 0, QVariant(rec[c].trimmed())))
                ++refused;
        }
        if (refused)
            m_problems << QStringLiteral("Column \"%1\": %2 cell(s) are not numbers and were left blank.").arg(name).arg(refused);
        column->setMinMax(0, boost::dynamic_bitset<>());
        // The well path's coordinates are what every other column hangs on: mark them.
        if (name == QLatin1String("X(East)") || name == QLatin1String("Y(North)") || name == QLatin1String("Z"))
            column->setVertex(true);
        sheet->appendChild(column, false);
    }
    return sheet.release();
}
