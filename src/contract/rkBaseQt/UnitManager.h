#pragma once
// The units of one category (orientation, elevation, fraction, ...): how a stored value in the
// category's model unit converts to the unit it is shown in, or to a column's own unit, and how
// it is printed. Shared between columns through boost::shared_ptr.

#include <QString>

#include <string>
#include <vector>

namespace rkBase {

class DisplayUnitManager;

class UnitManager
{
public:
    struct Unit {
        QString name;   // "feet"
        QString tag;    // "ft"
        double toModel; // one of this unit in model units
    };

    // Unit key 0 is the model unit.
    UnitManager(const std::string& category, std::vector<Unit> units, DisplayUnitManager* display, int precision);

    const std::string& category() const { return m_category; }
    DisplayUnitManager* displayUnitManager() const { return m_display; }

    int unitCount() const { return static_cast<int>(m_units.size()); }
    int displayUnit() const;
    // -1 for a name or tag that is not a unit of this category.
    int getUnitKey(const QString& nameOrTag) const;
    QString getUnitName(int key) const;
    QString getUnitTag(int key) const;
    QString getDisplayUnitName() const { return getUnitName(displayUnit()); }
    QString getDisplayUnitTag() const { return getUnitTag(displayUnit()); }

    double convertModelToDisplay(double value) const { return convertFromModel(value, displayUnit()); }
    double convertDisplayToModel(double value) const { return convertToModel(value, displayUnit()); }
    // From or to a column's own unit; key -1 (or unknown) means the value is in model units.
    double convertToModel(double value, int unitKey) const;
    double convertFromModel(double value, int unitKey) const;

    int precision() const { return m_precision; }
    void setPrecision(int decimals);
    // The model value in display units with the category's precision, without a tag.
    void printNumber(QString& out, double modelValue) const;

private:
    const Unit* unit(int key) const;
    std::string m_category;
    std::vector<Unit> m_units;
    DisplayUnitManager* m_display;
    int m_precision;
};

} // namespace rkBase
