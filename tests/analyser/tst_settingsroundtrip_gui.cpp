// The window returns as it was left: every control of every chart panel, found by its object
// name, is moved away from where it starts, the window saves, and a second window reads it back
// to the same state. A settings file that holds nonsense reads as a first start.
#include "SampleWellWindow.h"

#include <PanelColorButton.h>
#include <PanelComboBoxes.h>
#include <QHistogramChartWidget.h>
#include <QRKEBarChartWidget.h>
#include <QRoseChartWidget.h>
#include <TabWidgetWithFloatingTabs.h>

#include <QtTest>

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QSplitter>
#include <QTemporaryDir>

#include <cmath>
#include <numeric>

using namespace rkBase;

namespace {

// Controls whose state is not part of what a panel keeps, as "<panel>/<object name>" patterns.
const char* const kNotKept[] = {
    // The histogram keeps its splitter only; its pages follow the data set on every load.
    "histogram/(?!sidePanelSplitter$).*",
    // The display type is the window's, handed to each panel as its table selection changes.
    "(cross_plot|depth)/displayDataTypeComboBox",
    // Stratigraphy and cluster centroids show results of the data loaded, and go with it.
    "(cross_plot|depth)/(m_pqShowStratigraphy|m_pqShowStratigraphyLabels|showCentroidsCheckBox)",
    // Legend panes size themselves to the legends of the data loaded.
    "(cross_plot|depth)/(legendSplitter|subLegendSplitter)",
    // Options of a derived column, asked again each time one is made.
    "(cross_plot|depth)/m_pa(MergeToDecimated|ReplaceDecimated|ReplaceOriginal)",
    "stereo/(m_pqBiasCorrectionCheckBox|m_pqCalculationForComboBox|m_pqClusterMeansComboBox)",
    // Statistics overlays of the data loaded.
    "rose/(m_pqMeanDirectionCheckBox|m_pqNormalizedLengthCheckBox)",
    "stereo/(m_pqClusterMeanPoles|m_pqClusterMeanAzimuths|m_pqShowContourLabels|m_pqShowFoldAxisGroupBox)",
};

bool kept(const QString& key)
{
    for (const char* pattern : kNotKept)
        if (QRegularExpression(QRegularExpression::anchoredPattern(QLatin1String(pattern))).match(key).hasMatch())
            return false;
    return true;
}

// The panels a save writes: the tangent panel is read at start but never written, so it has no
// state of its own to return to.
QList<QPair<QString, QWidget*>> panels(QDataAnalyserDialog& d)
{
    return {{QStringLiteral("barchart"), d.barChart()},       {QStringLiteral("histogram"), d.histogramChart()},
            {QStringLiteral("rose"), d.roseChart()},          {QStringLiteral("stereo"), d.stereoChart()},
            {QStringLiteral("cross_plot"), d.crossPlotChart()}, {QStringLiteral("depth"), d.depthPlotChart()}};
}

bool isEditOfAnotherControl(const QLineEdit* edit)
{
    return qobject_cast<QAbstractSpinBox*>(edit->parentWidget()) || qobject_cast<QComboBox*>(edit->parentWidget());
}

// Every control of every panel by "<panel>/<object name>", with the state a user sees.
using Controls = QMap<QString, QWidget*>;

Controls controlsOf(QDataAnalyserDialog& d)
{
    Controls out;
    out.insert(QStringLiteral("window/treeSplitter"), d.treeSplitter());
    for (const auto& p : panels(d)) {
        if (!p.second)
            continue;
        for (QWidget* w : p.second->findChildren<QWidget*>()) {
            // A plot panel inside another (the stereonet's Q-Q plot) is the inner panel's own.
            bool nested = false;
            for (QWidget* up = w->parentWidget(); up && up != p.second; up = up->parentWidget())
                nested = nested || qobject_cast<QCrossPlotWidget*>(up);
            const QString name = w->objectName();
            if (nested)
                continue;
            if (name.isEmpty() || name.startsWith(QLatin1String("qt_spinbox")))
                continue;
            const bool control = qobject_cast<QCheckBox*>(w) || qobject_cast<QRadioButton*>(w)
                                 || qobject_cast<QComboBox*>(w) || qobject_cast<QAbstractSpinBox*>(w)
                                 || qobject_cast<QAbstractSlider*>(w) || qobject_cast<QSplitter*>(w)
                                 || (qobject_cast<QGroupBox*>(w) && static_cast<QGroupBox*>(w)->isCheckable())
                                 || (qobject_cast<QLineEdit*>(w) && !isEditOfAnotherControl(static_cast<QLineEdit*>(w)))
                                 || (qobject_cast<QPushButton*>(w) && PanelColorButton::color(static_cast<QPushButton*>(w)).isValid());
            const QString key = p.first + QLatin1Char('/') + name;
            if (control && kept(key))
                out.insert(key, w);
        }
    }
    return out;
}

QVariant stateOf(QWidget* w)
{
    if (auto* b = qobject_cast<QPushButton*>(w))
        return PanelColorButton::color(b).name();
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        return b->isChecked();
    if (auto* g = qobject_cast<QGroupBox*>(w))
        return g->isChecked();
    if (auto* c = qobject_cast<QComboBox*>(w))
        return c->currentText();
    if (auto* s = qobject_cast<QSpinBox*>(w))
        return s->value();
    if (auto* s = qobject_cast<QDoubleSpinBox*>(w))
        return s->value();
    if (auto* s = qobject_cast<QAbstractSlider*>(w))
        return s->value();
    if (auto* e = qobject_cast<QLineEdit*>(w))
        return e->text();
    if (auto* s = qobject_cast<QSplitter*>(w)) {
        // Shares of the panes: a pane that takes its size from its contents may grow or shrink
        // the splitter by a few pixels between two windows.
        const QList<int> sizes = s->sizes();
        const double total = std::max(1, std::accumulate(sizes.begin(), sizes.end(), 0));
        QVariantList shares;
        for (int v : sizes)
            shares << v / total;
        return shares;
    }
    return {};
}

bool same(const QVariant& a, const QVariant& b)
{
    if (a.type() != QVariant::List || b.type() != QVariant::List)
        return a == b;
    const QVariantList x = a.toList(), y = b.toList();
    if (x.size() != y.size())
        return false;
    for (int i = 0; i < x.size(); ++i)
        if (std::abs(x[i].toDouble() - y[i].toDouble()) > 0.02)
            return false;
    return true;
}

QString text(const QVariant& v)
{
    QStringList parts;
    for (const QVariant& x : v.toList())
        parts << QString::number(x.toDouble(), 'f', 3);
    return v.type() == QVariant::List ? parts.join(QLatin1Char(' ')) : v.toString();
}

// Each tab once, as a user looking round does: a panel lays its splitters out when first shown.
void visitTabs(QDataAnalyserDialog& d)
{
    TabWidgetWithFloatingTabs* tabs = d.tabWidget();
    for (int i = tabs->count() - 1; i >= 0; --i) {
        tabs->setCurrentIndex(i);
        QCoreApplication::processEvents();
    }
}

QMap<QString, QVariant> snapshot(QDataAnalyserDialog& d)
{
    QMap<QString, QVariant> out;
    const Controls controls = controlsOf(d);
    for (auto it = controls.begin(); it != controls.end(); ++it)
        out.insert(it.key(), stateOf(it.value()));
    return out;
}

// Moves one control away from where it is, as far as its range lets it.
void move(QWidget* w)
{
    if (auto* b = qobject_cast<QPushButton*>(w)) {
        PanelColorButton::setColor(b, QColor(0x12, 0x34, 0x56));
    } else if (auto* r = qobject_cast<QRadioButton*>(w)) {
        // A group moves once, when its first radio comes up, to the radio after the checked one.
        QList<QRadioButton*> group;
        for (QRadioButton* other : r->parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly))
            if (other->autoExclusive())
                group << other;
        int checked = 0;
        for (int i = 0; i < group.size(); ++i)
            if (group[i]->isChecked())
                checked = i;
        if (group.size() > 1 && group.first() == r)
            group[(checked + 1) % group.size()]->setChecked(true);
    } else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
        b->setChecked(!b->isChecked());
    } else if (auto* g = qobject_cast<QGroupBox*>(w)) {
        g->setChecked(!g->isChecked());
    } else if (auto* c = qobject_cast<QComboBox*>(w)) {
        // "None" is where an attribute box starts, and a stored "None" leaves a data set box
        // to the panel's own choice: move to a named entry.
        int to = c->currentIndex();
        for (int step = 1; step < c->count(); ++step) {
            const int at = (c->currentIndex() + step) % c->count();
            if (c->itemText(at) != PanelComboBoxes::noneText()) {
                to = at;
                break;
            }
        }
        c->setCurrentIndex(to);
        emit c->activated(to);
    } else if (auto* s = qobject_cast<QSpinBox*>(w)) {
        s->setValue(s->value() < s->maximum() ? s->value() + 1 : s->value() - 1);
    } else if (auto* s = qobject_cast<QDoubleSpinBox*>(w)) {
        s->setValue(s->value() < s->maximum() ? s->value() + s->singleStep() : s->value() - s->singleStep());
    } else if (auto* s = qobject_cast<QAbstractSlider*>(w)) {
        s->setValue(s->value() < s->maximum() ? s->value() + 1 : s->value() - 1);
    } else if (auto* e = qobject_cast<QLineEdit*>(w)) {
        e->setText(QStringLiteral("12.5"));
        emit e->editingFinished();
    } else if (auto* s = qobject_cast<QSplitter*>(w)) {
        QList<int> sizes = s->sizes();
        if (sizes.size() > 1) {
            // From the largest pane to the one after it (or before, for the last).
            const int from = int(std::max_element(sizes.begin(), sizes.end()) - sizes.begin());
            const int to = from + 1 < sizes.size() ? from + 1 : from - 1;
            const int shift = std::min(37, sizes[from] / 2);
            sizes[from] -= shift;
            sizes[to] += shift;
            s->setSizes(sizes);
        }
    }
}

} // namespace

class TestSettingsRoundTrip : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void everyControlReturns();
    void unreadableSettingsGiveTheDefaults_data();
    void unreadableSettingsGiveTheDefaults();

private:
    std::unique_ptr<QDataAnalyserDialog> shownWindow();
    // The settings file as a window that was used leaves it.
    void writeUsedFile();
    QTemporaryDir m_dir;
    UnitRegistry m_registry;
    QMap<QString, QVariant> m_defaults;
    QMap<QString, QVariant> m_moved;
    QStringList m_stuck;
    QByteArray m_usedFile;
};

void TestSettingsRoundTrip::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir.path());
    QCoreApplication::setOrganizationName(QStringLiteral("rkBaseTools-tests"));
    QCoreApplication::setApplicationName(QStringLiteral("settings-roundtrip"));
    QVERIFY(QSettings().fileName().startsWith(m_dir.path()));
    QSettings().clear();

    auto used = shownWindow();
    m_defaults = snapshot(*used);
    for (QWidget* w : controlsOf(*used))
        move(w);
    m_moved = snapshot(*used);
    // A control that cannot move (a single entry, a fixed range) proves nothing.
    for (auto it = m_moved.begin(); it != m_moved.end(); ++it)
        if (same(m_defaults.value(it.key()), it.value()) && !it.key().contains(QLatin1String("Radio")))
            m_stuck << it.key() + QLatin1Char(' ') + text(it.value());
    used->saveSettings();
    QSettings().sync();
    QFile file(QSettings().fileName());
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_usedFile = file.readAll();
}

void TestSettingsRoundTrip::writeUsedFile()
{
    QFile file(QSettings().fileName());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(m_usedFile);
}

std::unique_ptr<QDataAnalyserDialog> TestSettingsRoundTrip::shownWindow()
{
    auto d = sampleWellWindow(m_registry);
    d->resize(1100, 800);
    d->show();
    visitTabs(*d);
    // The boxes are filled once the sheet is there; the settings read at start found them empty.
    d->readSettings(QStringLiteral("attribute_analyser"));
    return d;
}

void TestSettingsRoundTrip::everyControlReturns()
{
    QVERIFY(m_defaults.size() > 150);
    QVERIFY2(m_stuck.size() < m_defaults.size() / 10, qPrintable(m_stuck.join(QLatin1Char('\n'))));
    writeUsedFile();
    const QMap<QString, QVariant> returned = snapshot(*shownWindow());
    QStringList lost;
    for (auto it = m_moved.begin(); it != m_moved.end(); ++it)
        if (!same(returned.value(it.key()), it.value()))
            lost << QStringLiteral("%1: %2 came back as %3").arg(it.key(), text(it.value()), text(returned.value(it.key())));
    for (const QString& line : lost)
        qInfo().noquote() << line;
    QVERIFY2(lost.isEmpty(), "controls lost on the way, listed above");
}

void TestSettingsRoundTrip::unreadableSettingsGiveTheDefaults_data()
{
    // What each key is replaced by; "bytes" replaces the whole file.
    QTest::addColumn<QVariant>("value");
    // Line edits of a range or an axis take any finite number.
    QTest::addColumn<bool>("numbersAreValues");
    QTest::newRow("garbage text") << QVariant(QStringLiteral("garbage")) << false;
    QTest::newRow("a list") << QVariant(QVariantList{1, QStringLiteral("x"), 2.5}) << false;
    QTest::newRow("empty") << QVariant(QString()) << false;
    QTest::newRow("out of any range") << QVariant(QStringLiteral("-1e308")) << true;
    QTest::newRow("not a number") << QVariant(QStringLiteral("nan")) << false;
    QTest::newRow("file of random bytes") << QVariant(QStringLiteral("bytes")) << false;
}

void TestSettingsRoundTrip::unreadableSettingsGiveTheDefaults()
{
    QFETCH(QVariant, value);
    QFETCH(bool, numbersAreValues);
    writeUsedFile();
    if (value == QVariant(QStringLiteral("bytes"))) {
        QFile file(QSettings().fileName());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QByteArray junk("[attribute_analyser]\n");
        quint32 x = 2463534242u;
        for (int i = 0; i < 20000; ++i) {
            x ^= x << 13, x ^= x >> 17, x ^= x << 5;
            junk.append(char(x & 0xff));
        }
        file.write(junk);
    } else {
        QSettings settings;
        const QStringList keys = settings.allKeys();
        QVERIFY(keys.size() > 100);
        for (const QString& key : keys)
            settings.setValue(key, value);
    }

    auto d = shownWindow();
    const QMap<QString, QVariant> read = snapshot(*d);
    const Controls controls = controlsOf(*d);
    QStringList differ;
    for (auto it = m_defaults.begin(); it != m_defaults.end(); ++it)
        if (!same(read.value(it.key()), it.value()) && !(numbersAreValues && qobject_cast<QLineEdit*>(controls.value(it.key()))))
            differ << QStringLiteral("%1: %2 instead of %3").arg(it.key(), text(read.value(it.key())), text(it.value()));
    for (const QString& line : differ)
        qInfo().noquote() << line;
    QVERIFY2(differ.isEmpty(), "controls not at their defaults, listed above");
}

QTEST_MAIN(TestSettingsRoundTrip)
#include "tst_settingsroundtrip_gui.moc"
