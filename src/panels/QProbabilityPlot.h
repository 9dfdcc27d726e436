#pragma once
// A probability (Q-Q) plot of the rotated orientations of a relationship model against one
// reference distribution, drawn by the cross plot panel it derives from. The type string picks
// the distribution: "EXPONENTIAL" (colatitude), "UNIFORM" (longitude) or "NORMAL" (the
// two-variable plot); any other string plots as "UNIFORM". The plot owns its two columns, the
// reference quantiles (x) and the sample quantiles (y), and rebuilds them on each update; the
// slope of the regression line through them is the fit's estimate.
//
// Rules kept here that callers could otherwise guess:
// - The model must have been rotated first (rotateDataToMeanPole2 or
//   rotateDataToForNormalQQPlot); only rows passing its row filter and holding a rotated value
//   are plotted.
// - The expected quantile of the i-th smallest sample uses n = numberOfSelectedPoints(), which
//   may differ from the number of plotted rows.
// - The longitude is read as a whole number of degrees: 359.6 reads as 360.
// - Both columns have one row per table row; rows that are not plotted stay blank, and so does a
//   row whose expected quantile does not exist (more samples than n).
// - The columns live outside the data tree: a plot given a data root (setDataRoot) would drop
//   them as lost columns. Leave the root unset.

#include "QCrossPlotWidget.h"

#include "gdfVertex.h"

#include <QString>

#include <boost/dynamic_bitset.hpp>

#include <vector>

namespace rkBase {

class DisplayUnitManager;
class MatrixData;
class QRelationshipItemModel;

class QProbabilityPlot : public QCrossPlotWidget
{
    Q_OBJECT
public:
    QProbabilityPlot(QWidget* parent, DisplayUnitManager* manager, QString const& type);
    ~QProbabilityPlot() override;

    // Rebuilds both columns from the model's rotated data, plots them and returns the slope of
    // the regression line (99999.0 when there is none).
    double updateProbabilityPlot(QRelationshipItemModel* model);

    // The sample values of the passing rows, sorted ascending by x; y holds the table row.
    void createQuantile(QRelationshipItemModel* model, QString const& type, std::vector<gdfVertex>& out);
    void createUniformProbability(QRelationshipItemModel* model);
    void createExpontentialProbability(QRelationshipItemModel* model);
    void createNormalProbability(QRelationshipItemModel* model);

    // A new table of p (column 0) and the standard normal quantile of p (column 1), 201 rows
    // from p = 1e-05 in steps of 0.005, the last row at p = 1 repeating the quantile before it.
    // The caller deletes it.
    void inverse_normal_distribution(MatrixData*& out);

    QString type() const { return m_type; }
    MatrixData* referenceQuantiles() const { return m_reference; }
    MatrixData* sampleQuantiles() const { return m_sample; }

public slots:
    void slotDataPointsSelection(boost::dynamic_bitset<> const& rows);

signals:
    void dataPointsSelection(const boost::dynamic_bitset<>& rows, const QString& type);

private:
    void deleteColumns();

    QString m_type;
    MatrixData* m_reference = nullptr;
    MatrixData* m_sample = nullptr;
};

} // namespace rkBase
