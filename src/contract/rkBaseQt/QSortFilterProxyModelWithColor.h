#pragma once
// The sorting proxy under the spreadsheet. It sorts by the typed value a model gives for
// Qt::UserRole (numbers as numbers, text naturally, blank cells always last), and can tint chosen
// source rows so that rows picked in a chart stand out in the table.

#include <QColor>
#include <QSet>
#include <QSortFilterProxyModel>

class QCollator;

namespace rkBase {

class QSortFilterProxyModelWithColor : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit QSortFilterProxyModelWithColor(QObject* parent = nullptr, bool sortByUserRole = true);
    ~QSortFilterProxyModelWithColor() override;

    // Source rows drawn with the highlight colour.
    void setHighlightedRows(const QSet<int>& sourceRows);
    const QSet<int>& highlightedRows() const { return m_highlighted; }
    void setHighlightColor(const QColor& color) { m_highlightColor = color; }
    QColor highlightColor() const { return m_highlightColor; }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // Re-reads the source and drops cached mappings.
    virtual void reset();

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    bool m_sortByUserRole;
    QSet<int> m_highlighted;
    QColor m_highlightColor;
    QCollator* m_collator;
};

} // namespace rkBase
