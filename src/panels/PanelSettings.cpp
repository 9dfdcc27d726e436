#include "PanelSettings.h"

#include <MatrixData.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSplitter>
#include <QSpinBox>

#include <cmath>

namespace rkBase {

namespace {
PanelSettings::Shared* g_shared = nullptr;
} // namespace

PanelSettings::Shared::Shared() : m_previous(g_shared) { g_shared = this; }

PanelSettings::Shared::~Shared() { g_shared = m_previous; }

PanelSettings::PanelSettings(const QString& prefix)
    : m_own(g_shared ? nullptr : std::make_unique<QSettings>()),
      m_settings(g_shared ? &g_shared->settings() : m_own.get()),
      m_prefix(prefix)
{
}

void PanelSettings::beginGroup(const QString& name) { m_settings->beginGroup(m_prefix + name); }

void PanelSettings::endGroup() { m_settings->endGroup(); }

void PanelSettings::writeColor(const QString& key, const QColor& colour)
{
    MatrixData holder(QString(), 0, 1, QVariant::Double);
    holder.setColor(colour);
    m_settings->setValue(key, holder.colorHexaString());
}

bool PanelSettings::readBool(const QString& key, bool def) const
{
    const QVariant v = m_settings->value(key);
    if (v.type() == QVariant::Bool)
        return v.toBool();
    const QString text = v.toString().trimmed().toLower();
    if (text == QLatin1String("true") || text == QLatin1String("1"))
        return true;
    if (text == QLatin1String("false") || text == QLatin1String("0"))
        return false;
    return def;
}

int PanelSettings::readInt(const QString& key, int def, int minimum, int maximum) const
{
    bool ok = false;
    const int v = m_settings->value(key).toString().trimmed().toInt(&ok);
    return ok && v >= minimum && v <= maximum ? v : def;
}

double PanelSettings::readDouble(const QString& key, double def, double minimum, double maximum) const
{
    bool ok = false;
    const double v = m_settings->value(key).toString().trimmed().toDouble(&ok);
    return ok && std::isfinite(v) && v >= minimum && v <= maximum ? v : def;
}

QString PanelSettings::readString(const QString& key, const QString& def) const
{
    const QVariant v = m_settings->value(key);
    if (!v.isValid() || !v.canConvert<QString>())
        return def;
    return v.toString();
}

QColor PanelSettings::readColor(const QString& key, const QColor& def) const
{
    const QString text = m_settings->value(key).toString();
    if (text.isEmpty())
        return def;
    const QColor colour = MatrixData::colorFromHexaString(text);
    return colour.isValid() ? colour : def;
}

QList<int> PanelSettings::readIntList(const QString& key) const
{
    QList<int> out;
    for (const QVariant& v : m_settings->value(key).toList()) {
        bool ok = false;
        const int n = v.toInt(&ok);
        if (!ok || n < 0)
            return {};
        out.append(n);
    }
    return out;
}

void PanelSettings::readInto(QAbstractButton* check, const QString& key, bool def) const
{
    if (check)
        check->setChecked(readBool(key, def));
}

void PanelSettings::readRadios(const QList<QPair<QAbstractButton*, QString>>& radios, int defaultIndex) const
{
    for (const auto& r : radios)
        if (readBool(r.second, false)) {
            r.first->setChecked(true);
            return;
        }
    if (defaultIndex >= 0 && defaultIndex < radios.size())
        radios[defaultIndex].first->setChecked(true);
}

void PanelSettings::readInto(QSpinBox* spin, const QString& key, int def) const
{
    if (spin)
        spin->setValue(readInt(key, def, spin->minimum(), spin->maximum()));
}

void PanelSettings::readInto(QComboBox* combo, const QString& key, int def) const
{
    if (combo && combo->count() > 0)
        combo->setCurrentIndex(readInt(key, def, 0, combo->count() - 1));
}

void PanelSettings::readInto(QDoubleSpinBox* spin, const QString& key, double def) const
{
    if (spin)
        spin->setValue(readDouble(key, def, spin->minimum(), spin->maximum()));
}

QString PanelSettings::readRangeText(const QString& key) const
{
    const QString noValue = QStringLiteral("---");
    const QString text = readString(key, noValue).trimmed();
    bool ok = false;
    const double v = text.toDouble(&ok);
    return ok && std::isfinite(v) ? text : noValue;
}

void PanelSettings::writeSplitters(const QSplitter* side, const QSplitter* legend)
{
    beginGroup(QStringLiteral("splitter_sizes"));
    write(QStringLiteral("side_panel_splitter"), side->saveState());
    if (legend)
        write(QStringLiteral("legend_splitter"), legend->saveState());
    endGroup();
}

void PanelSettings::readSplitters(QSplitter* side, QSplitter* legend)
{
    beginGroup(QStringLiteral("splitter_sizes"));
    side->restoreState(m_settings->value(QStringLiteral("side_panel_splitter")).toByteArray());
    if (legend)
        legend->restoreState(m_settings->value(QStringLiteral("legend_splitter")).toByteArray());
    endGroup();
}

} // namespace rkBase
