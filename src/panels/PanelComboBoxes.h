#pragma once
// Filling the selection boxes of a chart panel from the names and ids of the tree's columns:
// the axis boxes, and the attribute boxes (symbols, colours, tadpoles, third dimension, the
// stereonet's and histogram's classes) that start with "None". Item data is the column's id.

#include <QList>
#include <QString>
#include <QStringList>

class QComboBox;

namespace rkBase {

class MatrixData;

class PanelComboBoxes
{
public:
    // The text of the "no attribute" entry, translated in the panels' context.
    static QString noneText();

    // Clears the box and adds "None" (item data -1), then the names with their ids, a negative
    // id stored without its sign. Then the old text (or keepText, when not empty) is selected
    // if found, case-sensitively; with no old text, index when it is below the number of names;
    // otherwise "None". Signals of the box are blocked while it is refilled. Returns the index.
    static int refillWithNone(QComboBox* box, const QStringList& names, const QList<int>& ids, int index = 0,
                              const QString& keepText = QString());
    // Clears the box and adds the names with their ids (missing ids count as -1), signals
    // blocked; no entry is selected (-1) when there are no names. Returns the old text.
    static QString refill(QComboBox* box, const QStringList& names, const QList<int>& ids,
                          const QStringList& leaveOut = QStringList());
    // Selects the entry of that text (case-sensitive); false, and nothing changes, if none has it.
    static bool selectText(QComboBox* box, const QString& text);
    // The entry of that text, or "None" when the box has none of it (a name from settings that
    // the sheet no longer holds).
    static void selectTextOrNone(QComboBox* box, const QString& text);
    // The int item data of the current entry, -1 without one.
    static int currentId(const QComboBox* box);
    // The first column under root whose name is the box's text; null for no root, an empty text
    // or "None".
    static MatrixData* findColumn(const MatrixData* root, const QString& name);
};

} // namespace rkBase
