#include "QUnitComboBox.h"

#include "DisplayUnitManager.h"
#include "UnitManager.h"
#include "UnitRegistry.h"

namespace rkBase {

QUnitComboBox::QUnitComboBox(UnitSelector selector, UnitRegistry* registry, QWidget* parent)
    : QComboBox(parent), m_selector(selector), m_registry(registry)
{
    if (selector == SelectCategory && registry) {
        DisplayUnitManager* d = registry->displayUnitManager();
        for (const QString& c : d->categories())
            addItem(d->getCategoryDisplayName(c.toStdString()), c);
    }
}

void QUnitComboBox::setCategory(const std::string& category)
{
    m_category = category;
    if (m_selector != SelectUnit)
        return;
    clear();
    boost::shared_ptr<UnitManager> m = m_registry ? m_registry->getCategory(category) : boost::shared_ptr<UnitManager>();
    if (!m)
        return;
    for (int k = 0; k < m->unitCount(); ++k) {
        const QString tag = m->getUnitTag(k);
        addItem(tag.isEmpty() ? m->getUnitName(k) : QStringLiteral("%1 (%2)").arg(m->getUnitName(k), tag), k);
    }
    setCurrentIndex(m->displayUnit());
}

} // namespace rkBase
