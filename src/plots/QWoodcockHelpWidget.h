#pragma once
// Where an orientation distribution falls on a Woodcock eigenvalue ratio diagram. The diagram
// is a picture (":/rkBaseQt/Resources/Woodcock.png") scaled to the widget; the widget finds the
// picture's axes by interpolating between positions measured at two sizes (point()) and plots
// ratio pairs (ln(S2/S3), ln(S1/S2)), both axes running 0 to 5, on top. Stored points are the
// classes of a symbol attribute; the current point is the whole selection. Values above 5 plot
// beyond the axes and are not clipped.

#include "QChartDrawingArea.h"

#include <QColor>
#include <QPixmap>
#include <QPointF>

#include <vector>

namespace rkBase {

class QWoodcockHelpWidget : public QChartDrawingArea
{
    Q_OBJECT
public:
    explicit QWoodcockHelpWidget(QWidget* parent);
    ~QWoodcockHelpWidget() override;

    void addPoint(const double& x, const double& y, const int& id, const QColor& colour);
    void setPoint(double x, double y);
    void resetPoints();
    // A position on the scaled picture from its place at 383 (small) and 634 (large) pixels.
    QPointF point(const QPointF& small, const QPointF& large);

    // The pixel of a ratio pair on the picture as last painted.
    QPointF ratioPixel(double x, double y);
    double currentX() const { return m_currentX; }
    double currentY() const { return m_currentY; }
    const std::vector<QPointF>& points() const { return m_points; }
    const std::vector<int>& symbolIds() const { return m_symbolIds; }
    const std::vector<QColor>& colours() const { return m_colours; }
    // Whether the last paint found the current point among the stored ones.
    bool currentPointShown() const { return m_currentPointShown; }
    const QPixmap& scaledPixmap() const { return m_scaledPixmap; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // Scales the picture to the widget when the size has changed.
    void rescalePixmap();
    bool drawable(const QPointF& pixel) const;

    QPixmap m_diagramPixmap;
    QPixmap m_scaledPixmap;
    std::vector<QPointF> m_points;
    std::vector<int> m_symbolIds;
    std::vector<QColor> m_colours;
    double m_currentX = 2.0;
    double m_currentY = 3.0;
    bool m_currentPointShown = false;
};

} // namespace rkBase
