#include "DisplayUnitManager.h"

namespace rkBase {

DisplayUnitManager::DisplayUnitManager(QObject* parent) : QObject(parent) {}

void DisplayUnitManager::addCategory(const std::string& category, const QString& displayName, int displayUnit)
{
    m_categories[category] = Entry{displayName, displayUnit};
}

QStringList DisplayUnitManager::categories() const
{
    QStringList out;
    for (const auto& c : m_categories)
        out << QString::fromStdString(c.first);
    return out;
}

int DisplayUnitManager::displayUnit(const std::string& category) const
{
    const auto it = m_categories.find(category);
    return it == m_categories.end() ? -1 : it->second.displayUnit;
}

bool DisplayUnitManager::setDisplayUnit(const std::string& category, int unitKey)
{
    const auto it = m_categories.find(category);
    if (it == m_categories.end())
        return false;
    if (it->second.displayUnit != unitKey) {
        it->second.displayUnit = unitKey;
        emit displayChanged(QString::fromStdString(category));
    }
    return true;
}

QString DisplayUnitManager::getCategoryDisplayName(const std::string& category) const
{
    const auto it = m_categories.find(category);
    return it == m_categories.end() ? QString() : it->second.displayName;
}

std::string DisplayUnitManager::getCategoryFromDisplayName(const QString& displayName) const
{
    for (const auto& c : m_categories)
        if (c.second.displayName == displayName)
            return c.first;
    return std::string();
}

} // namespace rkBase
