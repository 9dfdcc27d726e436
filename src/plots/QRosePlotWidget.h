#pragma once
// The rose diagram: azimuth bins drawn as pie slices from the centre, optionally split by the
// classes of an attribute (stacked, outermost class first), or the azimuths as unit vectors;
// with grid circles or tick marks, spokes, a zero circle and the resultant vector.
//
// Rules kept here that callers could otherwise guess:
// - A petal's radius: with z = zeroCircleSize % of R and f = count / maxFrequency, linear
//   r = (R - z) f + z; equal area r = (R - z) sqrt(f) + z.
// - Classes come from the legend model's node: colour and text attributes by their distinct
//   values (createSymbolClassification), anything else by its colour map
//   (createColorMapClassification). Class k is legend id k + 1 (the legend keeps id 0 for a
//   sample value); the plot fills the legend model and paints each class with the legend's
//   colour, so a colour changed in the legend shows at the next redraw.
// - Counts without a class (a blank attribute cell) stay in the petal: the petal is drawn in the
//   frequency node's colour first and the classes stack inside it.
// - Grid circles finer than two pixels apart on average (more than R / 2 of them) are left out,
//   and a grid distance of 0 draws none.
// - In unit-vector mode each distinct end pixel is drawn once, so a million azimuths cost what
//   the circle's few thousand rim pixels cost.

#include "QPolarPlotWidget.h"

#include <QColor>
#include <QMap>
#include <QVariant>

#include <memory>
#include <vector>

namespace rkBase {

class MatrixData;
class QLegendListModel;

class QRosePlotWidget : public QPolarPlotWidget
{
    Q_OBJECT
public:
    QRosePlotWidget(QWidget* parent, const QString& title);
    ~QRosePlotWidget() override;

    // Takes the bins (frequency: a table of newFrequencyData, owned from now on; the old one is
    // freed) with their per-bin class values, the legend that holds the classifying attribute,
    // the bin width in degrees and the resultant (direction 99999.0: none; length 0..1).
    // autoColor: keep the attribute's own colour map step (else at most 19 classes, trimmed to
    // what the bins use).
    void setRoseData(MatrixData* frequency, std::vector<std::vector<QVariant>> values,
                     QLegendListModel* legendModel, int binSize, double direction, double length, bool autoColor);
    // The raw azimuths for unit-vector mode (not owned) and the rows to draw (empty: all).
    void setDirectionData(MatrixData* direction, const std::vector<int>& rows);

    void createClassification(int classCount);
    // Class counts made by the caller (per bin, per class in legend order, in the frequency
    // table's unit) in place of the per-bin values: the plot takes them as they are and gives
    // the legend its classes.
    void setClassification(std::vector<std::vector<int>> counts, const QMap<int, QVariant>& legendValues,
                           const QMap<int, QColor>& legendColours);
    void createColorMapClassification(int classCount);
    void createSymbolClassification();

    int getGridCircleDistance() const { return m_gridCircleDistance; }
    void setGridCircleDistance(int distance) { m_gridCircleDistance = distance; }
    void setUnidirectional(bool on) { m_unidirectional = on; }
    bool unidirectional() const { return m_unidirectional; }
    void setZeroCircleSize(double percent) { m_zeroCircleSize = percent; }
    double zeroCircleSize() const { return m_zeroCircleSize; }
    void showDirectionAsRosePlot(bool on) { m_directionAsRosePlot = on; }
    bool directionAsRosePlot() const { return m_directionAsRosePlot; }
    void showGridCircles(bool on) { m_gridCirclesOn = on; }
    bool gridCirclesOn() const { return m_gridCirclesOn; }
    void showResultantMeanDirection(bool on) { m_showResultantMeanDirection = on; }
    void showResultantMeanLength(bool on) { m_showResultantMeanLength = on; }
    void showTickMarks(bool on) { m_tickMarksOn = on; }
    bool tickMarksOn() const { return m_tickMarksOn; }
    void setTickMarkInterval(int degrees) { m_tickMarkInterval = degrees; }
    int tickMarkInterval() const { return m_tickMarkInterval; }
    void setPetalOutlineColor(const QColor& colour) { m_petalOutlineColor = colour; }
    QColor petalOutlineColor() const { return m_petalOutlineColor; }
    void setPetalOutlineWidth(int width) { m_petalOutlineWidth = width; }
    int petalOutlineWidth() const { return m_petalOutlineWidth; }

    double maxFrequency() const { return m_maxFrequency; }
    int binSize() const { return m_binSize; }
    double resultantDirection() const { return m_resultantDirection; }
    double resultantLength() const { return m_resultantLength; }
    const MatrixData* frequencyNode() const { return m_frequencyNode; }
    // Per bin, the count of each class (classes in legend order).
    const std::vector<std::vector<int>>& classification() const { return m_classification; }
    const std::vector<std::vector<QVariant>>& classValues() const { return m_classValues; }

    // The radius of a count on the current scale.
    double frequencyRadius(double count) const;

    void drawChart(QPainter& painter) override;
    void redraw() override;

    void drawBin(QPainter* painter, double azimuth, double r);
    void drawBinBoundaryCircles(QPainter* painter);
    void drawClassifiedRoseData(QPainter* painter);
    void drawEqualAreaCircles(QPainter* painter);
    void drawLinearCircles(QPainter* painter);
    void drawGridCircles(QPainter* painter);
    void drawEqualAreaTickMarks(QPainter* painter);
    void drawLinearTickMarks(QPainter* painter);
    void drawTickMarks(QPainter* painter);
    void drawRoseData(QPainter* painter);
    void drawUnitVectors(QPainter* painter);
    // A line from c along azimuth a: R + extra long, or R x resultantLength when that is shown
    // and extra is not 0; an arrow head only when extra is not 0.
    void drawVector(QPainter* painter, double azimuth, int length);

private:
    void drawPlot(QPainter* painter, bool gridWithPetalsOnly);
    // The grid's frequency fractions (s, 2s, ... below the top), empty when there is no step
    // or the circles would crowd; sqrtScale stops where sqrt(f) reaches 1.
    std::vector<double> gridFractions() const;
    void drawSpokes(QPainter* painter);
    void setGridPen(QPainter* painter);
    QColor classColour(int k) const;
    // A short line across each spoke at every grid circle's radius.
    void drawTicksAtGrid(QPainter* painter, bool equalArea);

    QColor m_petalOutlineColor{Qt::darkGray};
    int m_petalOutlineWidth = 1;
    MatrixData* m_directionNode = nullptr;
    std::unique_ptr<bool[]> m_rowUsed;
    int m_rowUsedCount = 0;
    MatrixData* m_frequencyNode = nullptr;
    double m_maxFrequency = 0.0;
    int m_binSize = 20;
    double m_resultantDirection = 99999.0;
    double m_resultantLength = 0.0;
    int m_gridCircleDistance = 2;
    bool m_gridCirclesOn = true;
    bool m_tickMarksOn = false;
    std::vector<std::vector<int>> m_classification;
    std::vector<std::vector<QVariant>> m_classValues;
    QLegendListModel* m_legendModel = nullptr;
    bool m_showResultantMeanDirection = true;
    bool m_showResultantMeanLength = false;
    bool m_directionAsRosePlot = true;
    bool m_unidirectional = true;
    int m_tickMarkInterval = 30;
    double m_zeroCircleSize = 0.0;
};

} // namespace rkBase
