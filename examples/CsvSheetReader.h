#pragma once
// Loads a CSV file into one sheet (a group of columns) of the data tree, as the demo host's
// File > Open does. Column types are inferred from the cells: numbers, integers, true/false,
// "#RRGGBB" colours, else text. Whatever cannot be read is collected into problems(), so that
// the host can tell the user once, and the rest of the file still loads.

#include <QString>
#include <QStringList>

namespace rkBase {
class MatrixData;
}

class CsvSheetReader
{
public:
    // Returns the new group (owned by the caller), or null when nothing could be read.
    rkBase::MatrixData* read(const QString& fileName, const QString& sheetName);
    rkBase::MatrixData* readText(const QString& text, const QString& sheetName);
    const QStringList& problems() const { return m_problems; }

    // Splits CSV text into records: RFC 4180 quoting, CRLF or LF, quoted line breaks.
    static QList<QStringList> parse(const QString& text, QStringList* problems = nullptr);

private:
    QStringList m_problems;
};
