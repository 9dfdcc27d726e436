#include "UnitManager.h"

#include "DisplayUnitManager.h"

#include <algorithm>

namespace rkBase {

UnitManager::UnitManager(const std::string& category, std::vector<Unit> units, DisplayUnitManager* display, int precision)
    : m_category(category), m_units(std::move(units)), m_display(display), m_precision(std::clamp(precision, 0, 15))
{
}

const UnitManager::Unit* UnitManager::unit(int key) const
{
    return key >= 0 && key < unitCount() ? &m_units[static_cast<std::size_t>(key)] : nullptr;
}

int UnitManager::displayUnit() const
{
    const int key = m_display ? m_display->displayUnit(m_category) : 0;
    return unit(key) ? key : 0;
}

int UnitManager::getUnitKey(const QString& nameOrTag) const
{
    for (int k = 0; k < unitCount(); ++k)
        if (m_units[k].name.compare(nameOrTag, Qt::CaseInsensitive) == 0 || m_units[k].tag == nameOrTag)
            return k;
    return -1;
}

QString UnitManager::getUnitName(int key) const
{
    const Unit* u = unit(key);
    return u ? u->name : QString();
}

QString UnitManager::getUnitTag(int key) const
{
    const Unit* u = unit(key);
    return u ? u->tag : QString();
}

double UnitManager::convertToModel(double value, int unitKey) const
{
    const Unit* u = unit(unitKey);
    return u ? value * u->toModel : value;
}

double UnitManager::convertFromModel(double value, int unitKey) const
{
    const Unit* u = unit(unitKey);
    return u ? value / u->toModel : value;
}

void UnitManager::setPrecision(int decimals)
{
    m_precision = std::clamp(decimals, 0, 15);
}

void UnitManager::printNumber(QString& out, double modelValue) const
{
    out = QString::number(convertModelToDisplay(modelValue), 'f', m_precision);
}

} // namespace rkBase
