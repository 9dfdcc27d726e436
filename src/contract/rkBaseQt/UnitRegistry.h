#pragma once
// All unit categories of a session, the display-unit choices, and named properties (a
// column's name -> the decimals it is printed with). The host owns it; the data tree, the
// spreadsheet and the charts share its managers.

#include <QObject>
#include <QString>

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

namespace rkBase {

class DisplayUnitManager;
class UnitManager;

class UnitRegistry : public QObject
{
    Q_OBJECT
public:
    static const std::string CATEGORY_ORIENTATION;   // degrees (model), radians
    static const std::string CATEGORY_FRACTION;      // fraction (model), percent
    static const std::string CATEGORY_PERCENT;       // percent (model), fraction
    static const std::string CATEGORY_ELEVATION;     // metres (model), feet
    static const std::string CATEGORY_DIMENSIONLESS; // one unit without a tag
    static const std::string CATEGORY_DIMENSION;     // metres (model), feet, kilometres, centimetres

    explicit UnitRegistry(QObject* parent = nullptr);
    ~UnitRegistry() override;

    // Null for an unknown category.
    boost::shared_ptr<UnitManager> getCategory(const std::string& category) const;
    boost::shared_ptr<UnitManager> getOrientationUnitManager() const { return getCategory(CATEGORY_ORIENTATION); }
    boost::shared_ptr<UnitManager> getPercentUnitManager() const { return getCategory(CATEGORY_PERCENT); }
    boost::shared_ptr<UnitManager> getFractionUnitManager() const { return getCategory(CATEGORY_FRACTION); }
    DisplayUnitManager* displayUnitManager() const { return m_display; }

    // Prints a value that is already in the unit to show. key names a property (its value is
    // the decimals) or a category (its precision); anything else prints with three decimals.
    QString printNumber(double value, const QString& key) const;

    typedef std::map<std::string, int> PropertyMap;
    PropertyMap::const_iterator find_property(const std::string& name) const { return m_properties.find(name); }
    PropertyMap::const_iterator properties_end() const { return m_properties.end(); }
    void setProperty(const std::string& name, int value);

signals:
    void property_changed(const std::string& name, int value);

private:
    DisplayUnitManager* m_display;
    std::map<std::string, boost::shared_ptr<UnitManager>> m_managers;
    PropertyMap m_properties;
};

} // namespace rkBase
