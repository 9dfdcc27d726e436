#include "MatrixDataStrike.h"

#include <cmath>

namespace rkBase {

MatrixDataStrike::MatrixDataStrike(const QString& name, MatrixData* azimuth, MatrixData* dip)
    : MatrixData(name, azimuth ? azimuth->rowCount() : 0, 1, QVariant::Double, true), m_azimuth(azimuth), m_dip(dip)
{
    setNodeComputed(true);
    if (azimuth)
        setUnitManager(azimuth->unitManager());
    recompute();
}

void MatrixDataStrike::setAzimuthNode(MatrixData* azimuth)
{
    recompute();
    m_azimuth = azimuth;
}

bool MatrixDataStrike::strikeAt(int row, double& strike) const
{
    if (!m_azimuth || !m_azimuth->isValueValid(row, 0))
        return false;
    const double azimuth = m_azimuth->toDouble(row, 0);
    if (!std::isfinite(azimuth) || azimuth == 99999.0)
        return false;
    strike = std::fmod(azimuth - 90.0, 360.0);
    if (strike < 0.0)
        strike += 360.0;
    return true;
}

void MatrixDataStrike::recompute()
{
    if (!m_azimuth)
        return;
    const int rows = m_azimuth->validValueRowCount();
    setAllocatedRowCount(rows);
    for (int r = 0; r < rows; ++r) {
        double s = 0.0;
        MatrixData::setValue(r, 0, strikeAt(r, s) ? QVariant(s) : QVariant());
    }
    setValidValueRowCount(rows);
}

bool MatrixDataStrike::isValueEditable(int, int) const
{
    return false;
}

bool MatrixDataStrike::isValueValid(int row, int column) const
{
    if (!m_azimuth)
        return MatrixData::isValueValid(row, column);
    double s = 0.0;
    return column == 0 && strikeAt(row, s);
}

QVariant MatrixDataStrike::value(const QModelIndex& index) const
{
    return index.isValid() ? value(index.row(), 0) : QVariant();
}

QVariant MatrixDataStrike::value(int row, int column) const
{
    if (!m_azimuth)
        return MatrixData::value(row, column);
    double s = 0.0;
    return column == 0 && strikeAt(row, s) ? QVariant(s) : QVariant();
}

double MatrixDataStrike::toDouble(int row, int column) const
{
    if (!m_azimuth)
        return MatrixData::toDouble(row, column);
    double s = 0.0;
    return column == 0 && strikeAt(row, s) ? s : 0.0;
}

} // namespace rkBase
