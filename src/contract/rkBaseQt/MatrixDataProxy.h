#pragma once
// A column that shows the rows of other columns one after another, without copying them: the
// rows of the first source, then those of the second, and so on. Depth plots use it to show
// several wells' curves as one. The sources are not owned.

#include "MatrixData.h"

#include <vector>

namespace rkBase {

class MatrixDataProxy : public MatrixData
{
public:
    MatrixDataProxy(const QString& name, QVariant::Type type);

    void addNode(MatrixData* node);
    void clearNodes();
    const std::vector<MatrixData*>& nodes() const { return m_sources; }

    // The node that holds the given row, with the row inside that node; null when out of range.
    MatrixData* row(int row, int& localRow) const;

    int rowCount() const override;
    bool isValueEditable(int row, int column) const override;
    bool isValueValid(int row, int column) const override;
    QVariant value(const QModelIndex& index) const override;
    QVariant value(int row, int column) const override;
    double toDouble(int row, int column) const override;
    int toInt(int row, int column) const override;
    bool setValue(int row, const QVariant& value) override;
    bool setValue(const QModelIndex& index, const QVariant& value) override;
    bool setValue(int row, int column, const QVariant& value) override;

    // Recounts the rows after a source changed.
    void refresh();

private:
    std::vector<MatrixData*> m_sources;
    std::vector<int> m_firstRow; // first proxy row of each source
};

} // namespace rkBase
