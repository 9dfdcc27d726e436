#include "QSortFilterProxyModelWithColor.h"

#include <QCollator>

#include <cmath>

namespace rkBase {

QSortFilterProxyModelWithColor::QSortFilterProxyModelWithColor(QObject* parent, bool sortByUserRole)
    : QSortFilterProxyModel(parent), m_sortByUserRole(sortByUserRole), m_highlightColor(255, 240, 160),
      // The C locale's collation knows no numeric mode; English sorts "a9" before "a10".
      m_collator(new QCollator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale()))
{
    m_collator->setNumericMode(true);
    m_collator->setCaseSensitivity(Qt::CaseInsensitive);
    if (sortByUserRole)
        setSortRole(Qt::UserRole);
}

QSortFilterProxyModelWithColor::~QSortFilterProxyModelWithColor()
{
    delete m_collator;
}

void QSortFilterProxyModelWithColor::setHighlightedRows(const QSet<int>& sourceRows)
{
    m_highlighted = sourceRows;
    if (rowCount() > 0 && columnCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::BackgroundRole});
}

QVariant QSortFilterProxyModelWithColor::data(const QModelIndex& index, int role) const
{
    if (role == Qt::BackgroundRole && !m_highlighted.isEmpty() && index.isValid()
        && m_highlighted.contains(mapToSource(index).row()))
        return m_highlightColor;
    return QSortFilterProxyModel::data(index, role);
}

void QSortFilterProxyModelWithColor::reset()
{
    beginResetModel();
    invalidate();
    endResetModel();
}

bool QSortFilterProxyModelWithColor::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    // NaN has no order: it sorts with the blanks.
    auto read = [this](const QModelIndex& i) {
        const QVariant v = i.data(sortRole());
        return v.type() == QVariant::Double && std::isnan(v.toDouble()) ? QVariant() : v;
    };
    const QVariant l = read(left);
    const QVariant r = read(right);
    // Blank cells gather at the end whichever way the column is sorted, and equal cells keep
    // their row order: a descending sort asks lessThan(right, left), so ties flip there.
    const bool descending = sortOrder() == Qt::DescendingOrder;
    const bool rowOrder = descending ? left.row() > right.row() : left.row() < right.row();
    if (!l.isValid() || !r.isValid()) {
        if (l.isValid() == r.isValid())
            return rowOrder;
        return descending ? !l.isValid() : l.isValid();
    }
    const bool lNumber = l.type() == QVariant::Double || l.type() == QVariant::Int || l.type() == QVariant::LongLong;
    const bool rNumber = r.type() == QVariant::Double || r.type() == QVariant::Int || r.type() == QVariant::LongLong;
    if (lNumber && rNumber) {
        const double a = l.toDouble(), b = r.toDouble();
        if (a != b)
            return a < b;
        return rowOrder;
    }
    if (lNumber != rNumber)
        return lNumber; // numbers before text
    const int c = m_collator->compare(l.toString(), r.toString());
    return c != 0 ? c < 0 : rowOrder;
}

} // namespace rkBase
