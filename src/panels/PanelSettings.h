#pragma once
// Reading a panel's QSettings group back when the file may hold anything: a value of the wrong
// kind, out of range or not finite gives the default, so a damaged settings file never puts a
// control into a state the form could not reach. Groups are prefix + name, as the panels'
// owners choose the prefix.

#include <QColor>
#include <QList>
#include <QPair>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <memory>

class QAbstractButton;
class QComboBox;
class QDoubleSpinBox;
class QSpinBox;
class QSplitter;

namespace rkBase {

class PanelSettings
{
public:
    // While one lives, every PanelSettings goes through its QSettings: a window that saves all
    // its panels in a row writes the file once, not once per panel (each write replaces the
    // whole file and waits for the disk).
    class Shared
    {
    public:
        Shared();
        ~Shared();
        Shared(const Shared&) = delete;
        Shared& operator=(const Shared&) = delete;
        QSettings& settings() { return m_settings; }

    private:
        QSettings m_settings;
        Shared* m_previous;
    };

    explicit PanelSettings(const QString& prefix);

    void beginGroup(const QString& name);
    void endGroup();
    QSettings& settings() { return *m_settings; }

    void write(const QString& key, const QVariant& value) { m_settings->setValue(key, value); }
    void writeColor(const QString& key, const QColor& colour);

    // "true"/"false", 1/0 or a bool; anything else gives def.
    bool readBool(const QString& key, bool def) const;
    int readInt(const QString& key, int def, int minimum, int maximum) const;
    double readDouble(const QString& key, double def, double minimum, double maximum) const;
    QString readString(const QString& key, const QString& def) const;
    QColor readColor(const QString& key, const QColor& def) const;
    QList<int> readIntList(const QString& key) const;
    // A range edit's text: a finite number as written, anything else "---".
    QString readRangeText(const QString& key) const;

    // The controls straight from a key, within the control's own range (signals are not blocked).
    void readInto(QAbstractButton* check, const QString& key, bool def) const;
    void readInto(QSpinBox* spin, const QString& key, int def) const;
    void readInto(QDoubleSpinBox* spin, const QString& key, double def) const;
    // A combo box's index, within its items.
    void readInto(QComboBox* combo, const QString& key, int def) const;
    // One radio button of a group, each with its own key: the first whose key reads true is
    // checked; with none, the one at defaultIndex.
    void readRadios(const QList<QPair<QAbstractButton*, QString>>& radios, int defaultIndex) const;
    // The "splitter_sizes" group of a panel: the side panel's splitter and, where the panel has
    // one, the legends'.
    void writeSplitters(const QSplitter* side, const QSplitter* legend = nullptr);
    void readSplitters(QSplitter* side, QSplitter* legend = nullptr);

private:
    std::unique_ptr<QSettings> m_own;
    QSettings* m_settings;
    QString m_prefix;
};

} // namespace rkBase
