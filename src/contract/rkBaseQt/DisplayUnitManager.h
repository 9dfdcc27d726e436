#pragma once
// Which unit each category is shown in. Switching a category's display unit is a user choice
// that every view follows: it emits displayChanged with the category's name.

#include <QObject>
#include <QString>
#include <QStringList>

#include <map>
#include <string>

namespace rkBase {

class DisplayUnitManager : public QObject
{
    Q_OBJECT
public:
    explicit DisplayUnitManager(QObject* parent = nullptr);

    // Registers a category with its human name and starting display unit.
    void addCategory(const std::string& category, const QString& displayName, int displayUnit);
    QStringList categories() const;

    int displayUnit(const std::string& category) const;
    // False for an unknown category; emits displayChanged only when the unit really changes.
    bool setDisplayUnit(const std::string& category, int unitKey);

    QString getCategoryDisplayName(const std::string& category) const;
    // Empty for a name that no category bears.
    std::string getCategoryFromDisplayName(const QString& displayName) const;

signals:
    void displayChanged(const QString& category);

private:
    struct Entry {
        QString displayName;
        int displayUnit = 0;
    };
    std::map<std::string, Entry> m_categories;
};

} // namespace rkBase
