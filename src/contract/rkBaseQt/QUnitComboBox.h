#pragma once
// A combo box of units: either the unit categories of a registry, or the units of one category.

#include <QComboBox>

#include <string>

namespace rkBase {

class UnitRegistry;

class QUnitComboBox : public QComboBox
{
    Q_OBJECT
public:
    enum UnitSelector { SelectCategory, SelectUnit };

    QUnitComboBox(UnitSelector selector, UnitRegistry* registry, QWidget* parent = nullptr);

    UnitSelector selector() const { return m_selector; }
    // For SelectUnit: fill with the units of this category (its internal name).
    void setCategory(const std::string& category);
    std::string category() const { return m_category; }
    // The category's internal name (SelectCategory) or the unit key (SelectUnit) of the entry.
    QVariant currentKey() const { return currentData(); }

private:
    UnitSelector m_selector;
    UnitRegistry* m_registry;
    std::string m_category;
};

} // namespace rkBase
