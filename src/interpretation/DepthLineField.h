#pragma once
// A named list of horizontal lines along a well: structural tops, planes, horizons, faults.
// Each line has a depth, an x position, a name, a colour, a type, an orientation and the row of
// the well data it came from. The bin boundaries of an interval filter are such a list too.
// All line vectors stay parallel, one entry per line, in ascending depth order when filled by
// insertHorizontalLine.
//
// Rules kept here that callers could otherwise guess:
// - Only appending (addLine, read) sets modified; an ordered insert before an existing line
//   leaves it as it was.
// - eraseHorizontalLines removes from depths, names and colours only: an interval filter uses
//   just those three, so the other vectors keep their length there.
// - The scenario file keeps six significant digits of every number and turns blanks in names
//   into underscores; a read appends without clearing or sorting and leaves modified set.

#include <QColor>
#include <QPointF>
#include <QString>

#include <vector>

namespace rkBase {

class DepthLineField
{
public:
    // The number is what the scenario file holds. A file may hold other numbers; they are kept as
    // they are (hence the fixed underlying type) and written back unchanged.
    enum DataType : int {
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

    // "Crestal_Plane", "Axial_Plane", "Inflection_Plane", "Horizon", "Fault", "Top"; anything
    // else (the interval boundary too) gives "Horizon".
    static QString type(const DataType& type);
    // Exact match of the texts above; an unknown text gives Horizon.
    static DataType type(const QString& text);
    // True for the three planes and "Top".
    static bool isStructuralType(const QString& text);

    // ---- lines ----
    // Ordered insert: refused (nothing changes) when a line lies within eps of depth.
    void insertHorizontalLine(const double& x, const double& depth, const QString& name, const QColor& color,
                              const DataType& type, const double& eps, const QPointF& orientation,
                              const int& originalRow);
    // Selects and returns the indices of the visible lines strictly within eps of p.y();
    // earlier selections stay.
    std::vector<int> pickHorizontalLines(const QPointF& p, const double& eps);
    // Erases every line strictly within eps of p.y() from depths, names and colours; true if any.
    bool eraseHorizontalLines(const QPointF& p, const double& eps);
    // Erases the first selected line from every vector, remembers its well row, clears the
    // selection.
    void erasePickedLine();
    void moveSelectedLines(const QPointF& delta);
    void updatePickedHorizon(int index, const double& depth);
    void changePickedLineColor(const QColor& color);
    void changePickedLineName(const QString& name);
    void changePickedOrientation(const QPointF& orientation);
    QColor getColourOfSelectedLine() const;
    QString getNameOfSelectedLine() const;
    bool isSelected(int index) const;
    bool isSomethingSelected() const;
    // Adds to the selection; indices out of range are ignored.
    void setSelected(const std::vector<int>& indices);
    void deselectAll();
    void clearAll();
    void clearOriginalRowPos();

    // ---- interval filters ----
    // Boundaries from min by size while below max, then one more at the first value not below
    // max. A size that is not positive or not finite, a range that is not finite, or more than a
    // million steps would never end or exhaust memory: such a filter keeps its line at min only.
    void generateAquidistantIntervalFilter(const double& size, const double& min, const double& max);
    // count + 1 boundaries from min to max in equal steps; a count below 1 leaves the line at min.
    void generateNumberOfIntervalFilter(const int& count, const double& min, const double& max);

    // ---- the scenario file ----
    void read(QString path);
    void write(QString path);
    // The same format on a string, for callers that hold the text already.
    void readFromText(const QString& text);
    QString writeToText() const;

    // ---- fields ----
    QString name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    bool modified() const { return m_modified; }
    void setModified(bool on) { m_modified = on; }
    std::vector<double> const& linesX() const { return m_linesX; }
    std::vector<double> const& lineDepths() const { return m_lineDepths; }
    std::vector<QString> const& lineNames() const { return m_lineNames; }
    std::vector<QColor> const& lineColors() const { return m_lineColors; }
    std::vector<DataType> const& lineTypes() const { return m_lineTypes; }
    std::vector<bool> const& selected() const { return m_selected; }
    std::vector<QPointF> const& lineOrientations() const { return m_lineOrientations; }
    std::vector<int> const& originalRowPos() const { return m_originalRowPos; }
    std::vector<int> const& deletedOriginalRowPos() const { return m_deletedOriginalRowPos; }
    std::vector<bool> const& originalDepthChanged() const { return m_originalDepthChanged; }
    int lineWidth() const { return m_lineWidth; }
    void setLineWidth(int width) { m_lineWidth = width; }
    DomainType domainType() const { return m_domainType; }
    void setDomainType(DomainType type) { m_domainType = type; }
    int domainTransparency() const { return m_domainTransparency; }
    void setDomainTransparency(int alpha) { m_domainTransparency = alpha; }

    bool showHorizons() const { return m_showHorizons; }
    void setShowHorizons(bool on) { m_showHorizons = on; }
    bool showFaults() const { return m_showFaults; }
    void setShowFaults(bool on) { m_showFaults = on; }
    bool showAverageOrientations() const { return m_showAverageOrientations; }
    void setShowAverageOrientations(bool on) { m_showAverageOrientations = on; }
    bool showStructuralPlanes() const { return m_showStructuralPlanes; }
    void setShowStructuralPlanes(bool on) { m_showStructuralPlanes = on; }
    bool showHorizonLabels() const { return m_showHorizonLabels; }
    // The name keeps the spelling callers already use.
    void setShowHorizonLables(bool on) { m_showHorizonLabels = on; }
    bool showFaultLabels() const { return m_showFaultLabels; }
    void setShowFaultLabels(bool on) { m_showFaultLabels = on; }
    bool showAverageOrientationLabels() const { return m_showAverageOrientationLabels; }
    void setShowAverageOrientationLabels(bool on) { m_showAverageOrientationLabels = on; }
    bool showStructuralPlaneLabels() const { return m_showStructuralPlaneLabels; }
    void setShowStructuralPlaneLabels(bool on) { m_showStructuralPlaneLabels = on; }

private:
    void addLine(const double& x, const double& depth, const QString& name, const QColor& color, const DataType& type,
                 const QPointF& orientation, const int& originalRow);
    void eraseAt(std::size_t index);

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
