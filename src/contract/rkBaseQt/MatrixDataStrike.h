#pragma once
// The strike of planes, computed from their dip-direction (azimuth) column by the right-hand
// rule: strike = dip direction - 90, in [0, 360). It keeps the azimuth and dip columns it derives
// from, so that deleting either can also remove or detach this one. It reads the azimuth column
// live; a row whose azimuth is blank or 99999.0 ("no value") is blank here too.

#include "MatrixData.h"

namespace rkBase {

class MatrixDataStrike : public MatrixData
{
public:
    MatrixDataStrike(const QString& name, MatrixData* azimuth, MatrixData* dip);

    MatrixData* azimuthNode() const { return m_azimuth; }
    MatrixData* dipNode() const { return m_dip; }
    // Called when a source column goes away; the column then keeps its last values.
    void setAzimuthNode(MatrixData* azimuth);
    void setDipNode(MatrixData* dip) { m_dip = dip; }

    bool isValueEditable(int row, int column) const override;
    bool isValueValid(int row, int column) const override;
    QVariant value(const QModelIndex& index) const override;
    QVariant value(int row, int column) const override;
    double toDouble(int row, int column) const override;

    // Copies the current strikes into the column's own cells.
    void recompute();

private:
    bool strikeAt(int row, double& strike) const;
    MatrixData* m_azimuth;
    MatrixData* m_dip;
};

} // namespace rkBase
