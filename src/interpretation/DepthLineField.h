#pragma once
// A named list of horizontal lines along a well: structural tops, planes, horizons, faults.
// Each line has a depth, an x position, a name, a colour, a type, an orientation and the row of
// the well data it came from. The bin boundaries of an interval filter are such a list too.
// All line vectors stay parallel, one entry per line.

#include <QColor>
#include <QPointF>
#include <QString>

#include <vector>

namespace rkBase {

class DepthLineField
{
public:
    // The number is what the scenario file holds.
    enum DataType {
        CrestalPlane = 0,
        AxialPlane = 1,
        InflectionPlane = 2,
        Horizon = 3,
        Fault = 4,
        IntervalBoundary = 5,
        Top = 6
    };
    enum DomainType { Stratigraphy = 0, StructuralDomains = 1, NoDomain = 2 };

    explicit DepthLineField(const QString& name);
    virtual ~DepthLineField();

    QString name() const { return m_name; }
    bool modified() const { return m_modified; }
    std::vector<double> const& linesX() const { return m_linesX; }
    std::vector<double> const& lineDepths() const { return m_lineDepths; }
    std::vector<QString> const& lineNames() const { return m_lineNames; }
    std::vector<QColor> const& lineColors() const { return m_lineColors; }
    std::vector<DataType> const& lineTypes() const { return m_lineTypes; }
    std::vector<QPointF> const& lineOrientations() const { return m_lineOrientations; }
    std::vector<int> const& originalRowPos() const { return m_originalRowPos; }
    std::vector<int> const& deletedOriginalRowPos() const { return m_deletedOriginalRowPos; }
    std::vector<bool> const& originalDepthChanged() const { return m_originalDepthChanged; }
    int lineWidth() const { return m_lineWidth; }
    DomainType domainType() const { return m_domainType; }
    int domainTransparency() const { return m_domainTransparency; }

protected:
    QString m_name;
    bool m_modified = false;
    std::vector<double> m_linesX;
    std::vector<double> m_lineDepths;
    std::vector<QString> m_lineNames;
    std::vector<QColor> m_lineColors;
    std::vector<DataType> m_lineTypes;
    std::vector<bool> m_selected;
    std::vector<QPointF> m_lineOrientations; // (dip, azimuth)
    std::vector<int> m_originalRowPos;        // row in the well data, -1 for none
    std::vector<int> m_deletedOriginalRowPos; // rows of erased lines
    std::vector<bool> m_originalDepthChanged;
    int m_lineWidth = 2;
    DomainType m_domainType = Stratigraphy;
    int m_domainTransparency = 180; // alpha, 0 to 255
    bool m_showHorizons = true;
    bool m_showFaults = true;
    bool m_showAverageOrientations = true;
    bool m_showStructuralPlanes = true;
    bool m_showHorizonLabels = true;
    bool m_showFaultLabels = true;
    bool m_showAverageOrientationLabels = false;
    bool m_showStructuralPlaneLabels = true;
};

} // namespace rkBase
