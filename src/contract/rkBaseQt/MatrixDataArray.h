#pragma once
// A dense grid of numbers addressed by row and column, such as a density-contour grid. Unlike
// a sheet column every cell starts at zero and is valid, so counts can be accumulated with
// addValue().

#include "MatrixData.h"

namespace rkBase {

class MatrixDataArray : public MatrixData
{
public:
    MatrixDataArray(const QString& name, int rows, int columns, QVariant::Type type);
    MatrixDataArray(const MatrixDataArray& other);
    MatrixDataArray& operator=(const MatrixDataArray& other);

    QVariant value(const QModelIndex& index) const override;
    QVariant value(int row, int column) const override;
    double toDouble(int row, int column) const override;
    int toInt(int row, int column) const override;
    bool setValue(int row, const QVariant& value) override;
    bool setValue(const QModelIndex& index, const QVariant& value) override;
    bool setValue(int row, int column, const QVariant& value) override;

    // Adds to the cell; a cell outside the grid is ignored.
    void addValue(int row, int column, const double& value);
    // Resizes the grid to rows x columns, keeping what fits; new cells are zero.
    void reserve(int rows, int columns);
    // Every cell back to zero.
    void clearData();
};

} // namespace rkBase
