#include "QHistogramItemModel.h"

#include "ColumnReader.h"

#include <MatrixDataArray.h>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
constexpr double kAutomaticInterval = 99999.0;
constexpr double kSmallestInterval = 1e-08;
} // namespace

QHistogramItemModel::QHistogramItemModel(QObject* parent) : QAbstractItemModel(parent) {}

QHistogramItemModel::~QHistogramItemModel() { delete m_frequencyData; }

void QHistogramItemModel::clearDataNode()
{
    beginResetModel();
    delete m_frequencyData;
    m_frequencyData = nullptr;
    m_source = nullptr;
    m_subGroup.reset();
    m_rows.clear();
    endResetModel();
}

void QHistogramItemModel::build(MatrixData* source, MatrixData::HistogramType type, const std::vector<int>& rows,
                                bool useSmallValues)
{
    beginResetModel();
    delete m_frequencyData;
    m_frequencyData = nullptr;
    m_histogramType = type;
    m_source = source;
    m_rows = rows;
    m_useSmallValues = useSmallValues;
    if (!(m_intervalSize >= kSmallestInterval) || !std::isfinite(m_intervalSize))
        m_intervalSize = kAutomaticInterval;
    if (source) {
        m_frequencyData = source->newFrequencyData(m_intervalSize, type, rows, true, m_dataRoot, useSmallValues);
        m_frequencyData->setColor(source->color());
        m_min = m_frequencyData->rowCount() > 0 ? m_frequencyData->minValue().toDouble() : 0.0;
    }
    endResetModel();
}

void QHistogramItemModel::takeNewDataSet(MatrixData* node, MatrixData::HistogramType type, const std::vector<int>& rows,
                                         bool useSmallValues)
{
    m_subGroup.reset();
    build(node, type, rows, useSmallValues);
}

void QHistogramItemModel::takeNewDataSetFromSubGroup(MatrixData* node, MatrixData::HistogramType type,
                                                     const std::vector<int>& rows, bool useSmallValues,
                                                     MatrixData* attribute, const QString& group)
{
    if (!node) {
        m_subGroup.reset();
        build(nullptr, type, rows, useSmallValues);
        return;
    }
    const int size = node->rowCount();
    std::vector<char> wanted(static_cast<std::size_t>(std::max(size, 0)), rows.empty() ? 1 : 0);
    for (int r : rows)
        if (r >= 0 && r < size)
            wanted[static_cast<std::size_t>(r)] = 1;
    auto sub = std::make_unique<MatrixDataArray>(QStringLiteral("Sub Group"), std::max(size, 0), 1, QVariant::Double);
    sub->setColor(node->color());
    int kept = 0;
    const ColumnReader cells(node);
    for (int r = 0; r < size && attribute; ++r) {
        if (!wanted[static_cast<std::size_t>(r)])
            continue;
        const QVariant tag = attribute->value(r, 0);
        if (!tag.isValid() || tag.isNull() || tag.toString() != group)
            continue;
        double v = 0.0;
        if (!cells.read(r, v))
            continue;
        sub->setValue(kept++, 0, v);
    }
    sub->setValidValueRowCount(kept);
    m_subGroup = std::move(sub);
    // The rows were applied while collecting: the sub group counts all of its own.
    build(m_subGroup.get(), type, std::vector<int>(), useSmallValues);
}

int QHistogramItemModel::sampleSize() const { return m_frequencyData ? m_frequencyData->validValueRowCount() : 0; }

std::vector<double> QHistogramItemModel::sampleValues() const
{
    std::vector<double> out;
    if (!m_source || !m_frequencyData)
        return out;
    const ColumnReader cells(m_source);
    const int valid = m_source->validValueRowCount();
    auto take = [&](int r) {
        double v = 0.0;
        if (r >= 0 && r < valid && cells.read(r, v))
            out.push_back(v);
    };
    if (m_rows.empty()) {
        out.reserve(static_cast<std::size_t>(std::max(valid, 0)));
        for (int r = 0; r < valid; ++r)
            take(r);
    } else {
        out.reserve(m_rows.size());
        for (int r : m_rows)
            take(r);
    }
    if (!m_useSmallValues && !out.empty()) {
        // The same values the table left out: below a millionth of the largest magnitude.
        double largest = 0.0;
        for (double v : out)
            largest = std::max(largest, std::abs(v));
        const double small = largest * 1e-6;
        out.erase(std::remove_if(out.begin(), out.end(), [small](double v) { return std::abs(v) < small; }), out.end());
    }
    return out;
}

QVariant QHistogramItemModel::data(const QModelIndex& index, int role) const
{
    if (!m_frequencyData || !index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return QVariant();
    if (index.row() >= m_frequencyData->rowCount() || index.column() >= 3)
        return QVariant();
    return m_frequencyData->value(index.row(), index.column());
}

QVariant QHistogramItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Vertical)
        return section + 1;
    static const char* const titles[] = {QT_TRANSLATE_NOOP("QHistogramItemModel", "Frequency"),
                                         QT_TRANSLATE_NOOP("QHistogramItemModel", "Relative Frequency"),
                                         QT_TRANSLATE_NOOP("QHistogramItemModel", "Cumulative Relative Frequency")};
    switch (section) {
    case 0: return tr(titles[int(m_histogramType)]);
    case 1: return tr("Interval Start");
    case 2: return tr("Interval End");
    default: return QVariant();
    }
}

QModelIndex QHistogramItemModel::index(int row, int column, const QModelIndex& parent) const
{
    if (parent.isValid() || row < 0 || column < 0 || row >= rowCount() || column >= columnCount())
        return QModelIndex();
    return createIndex(row, column);
}

QModelIndex QHistogramItemModel::parent(const QModelIndex&) const { return QModelIndex(); }

int QHistogramItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_frequencyData ? 0 : m_frequencyData->rowCount();
}

int QHistogramItemModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 3; }

} // namespace rkBase
