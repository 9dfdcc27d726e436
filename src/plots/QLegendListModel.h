#pragma once
// The legend of a chart's symbol or colour classes: one row per class id (the key 0 holds a
// sample value of the attribute and is not shown). Only rows near the scroll position get a
// rendered symbol, so a legend of a hundred thousand classes scrolls at the cost of one page.
//
// A panel whose classes are numbered as the model numbers its points (from 0, or by the values
// of an integer column) turns the sample off (setSampleUnderIdZero(false)): every key is then a
// class, rows follow the keys in ascending order, and the swatch of a row is drawn with its own
// key, the symbol the chart gives the points of that class.

#include <QAbstractTableModel>
#include <QColor>
#include <QMap>
#include <QVariant>

#include <vector>

namespace rkBase {

class MatrixData;
class QChartDrawingArea;
class QRelationshipItemModel;

class QLegendListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum LegendType { SymbolLegend = 0, ColorLegend = 1 };

    QLegendListModel(QWidget* parent, QChartDrawingArea* chart, LegendType type);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // The type of the sample value under id 0 (Invalid without one), or Double while there are no classes.
    QVariant::Type cellType() const;
    // The symbol of a row, whatever the visible window.
    QVariant symbol(int row) const;
    void changeSymbolColor(const QModelIndex& index, const QColor& colour);

    // Replaces the classes; the maps are keyed by class id.
    void setClasses(const QMap<int, QVariant>& values, const QMap<int, QColor>& colours);
    // true (the default): the key 0 holds a sample value, rows show the ids 1, 2, ... in turn.
    // false: every key is a class (see above). Takes effect at the next setClasses().
    void setSampleUnderIdZero(bool on) { m_sampleUnderIdZero = on; }
    bool sampleUnderIdZero() const { return m_sampleUnderIdZero; }
    // The class id a row shows, and the row of a class id (-1 when none shows it).
    int idOfRow(int row) const;
    int rowOfId(int id) const;
    const QMap<int, QVariant>& classValues() const { return m_values; }
    const QMap<int, QColor>& classColors() const { return m_colors; }
    void setVisibleRows(int first, int last);
    int firstVisibleRow() const { return m_firstVisibleRow; }
    int lastVisibleRow() const { return m_lastVisibleRow; }
    void setLineationModel(QRelationshipItemModel* model) { m_lineationModel = model; }
    void setSymbolNode(MatrixData* node) { m_symbolNode = node; }
    MatrixData* symbolNode() const { return m_symbolNode; }
    LegendType legendType() const { return m_type; }

private:
    QVariant decoration(int row) const;

    QMap<int, QVariant> m_values;
    QMap<int, QColor> m_colors;
    int m_firstVisibleRow = 0;
    int m_lastVisibleRow = 60;
    QChartDrawingArea* m_chart;
    QRelationshipItemModel* m_lineationModel = nullptr;
    LegendType m_type;
    MatrixData* m_symbolNode = nullptr;
    bool m_sampleUnderIdZero = true;
    std::vector<int> m_ids; // row -> id, without the sample
};

} // namespace rkBase
