#include "UnitRegistry.h"

#include "DisplayUnitManager.h"
#include "UnitManager.h"

namespace rkBase {

const std::string UnitRegistry::CATEGORY_ORIENTATION = "Orientation";
const std::string UnitRegistry::CATEGORY_FRACTION = "Fraction";
const std::string UnitRegistry::CATEGORY_PERCENT = "Percent";
const std::string UnitRegistry::CATEGORY_ELEVATION = "Elevation";
const std::string UnitRegistry::CATEGORY_DIMENSIONLESS = "Dimensionless";
const std::string UnitRegistry::CATEGORY_DIMENSION = "Dimension";

UnitRegistry::UnitRegistry(QObject* parent) : QObject(parent), m_display(new DisplayUnitManager(this))
{
    const double degreesPerRadian = 57.295779513082320876798154814105;
    auto add = [this](const std::string& category, const QString& displayName, std::vector<UnitManager::Unit> units,
                      int precision) {
        m_display->addCategory(category, displayName, 0);
        m_managers[category] = boost::shared_ptr<UnitManager>(new UnitManager(category, std::move(units), m_display, precision));
    };
    add(CATEGORY_ORIENTATION, tr("Orientation"),
        {{tr("degrees"), QString::fromUtf8("\u00b0"), 1.0}, {tr("radians"), QStringLiteral("rad"), degreesPerRadian}}, 2);
    add(CATEGORY_FRACTION, tr("Fraction"), {{tr("fraction"), QString(), 1.0}, {tr("percent"), QStringLiteral("%"), 0.01}}, 4);
    add(CATEGORY_PERCENT, tr("Percent"), {{tr("percent"), QStringLiteral("%"), 1.0}, {tr("fraction"), QString(), 100.0}}, 2);
    add(CATEGORY_ELEVATION, tr("Elevation"), {{tr("metres"), QStringLiteral("m"), 1.0}, {tr("feet"), QStringLiteral("ft"), 0.3048}}, 2);
    add(CATEGORY_DIMENSIONLESS, tr("Dimensionless"), {{tr("dimensionless"), QString(), 1.0}}, 3);
    add(CATEGORY_DIMENSION, tr("Dimension"),
        {{tr("metres"), QStringLiteral("m"), 1.0}, {tr("feet"), QStringLiteral("ft"), 0.3048},
         {tr("kilometres"), QStringLiteral("km"), 1000.0}, {tr("centimetres"), QStringLiteral("cm"), 0.01}},
        3);
}

UnitRegistry::~UnitRegistry() = default;

boost::shared_ptr<UnitManager> UnitRegistry::getCategory(const std::string& category) const
{
    const auto it = m_managers.find(category);
    return it == m_managers.end() ? boost::shared_ptr<UnitManager>() : it->second;
}

QString UnitRegistry::printNumber(double value, const QString& key) const
{
    const std::string k = key.toStdString();
    const auto p = m_properties.find(k);
    if (p != m_properties.end())
        return QString::number(value, 'f', qBound(0, p->second, 15));
    const auto m = m_managers.find(k);
    if (m != m_managers.end())
        return QString::number(value, 'f', m->second->precision());
    return QString::number(value, 'f', 3);
}

void UnitRegistry::setProperty(const std::string& name, int value)
{
    const auto it = m_properties.find(name);
    if (it != m_properties.end() && it->second == value)
        return;
    m_properties[name] = value;
    emit property_changed(name, value);
}

} // namespace rkBase
