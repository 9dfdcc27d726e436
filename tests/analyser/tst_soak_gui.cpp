// A long seeded walk of user actions over the whole window on the sample well: tab switches,
// table selections, lassos, boxes, check boxes, cell edits, undo, the derived-attribute buttons,
// settings written and read back, and a data root swapped. After every action the tree and the
// controls must still agree. RK_SOAK_ACTIONS sets the length (20000), RK_SOAK_SEED the seed; a
// failure names both and the action's index, so that the walk can be replayed up to it.
#include "LassoOutline.h"
#include "SampleWellWindow.h"

#include <PanelColorButton.h>
#include <PanelComboBoxes.h>
#include <QChartDrawingArea.h>
#include <QVertexItemModel.h>
#include <QVertexModelTableView.h>
#include <TabWidgetWithFloatingTabs.h>

#include <QtTest>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <functional>
#include <random>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

using namespace rkBase;

namespace {

// The buttons that make derived columns, and those that make or drop the bins they start from.
const char* const kDerivedAttributeButtons[] = {
    "applyClusterGenerationPushButton",          "m_pqApplyClusterGenerationButton",
    "m_pqApplyRotationButton",                   "m_pqCentraliseMeanButton",
    "m_pqCreateMeanPrincipalPointCloudButton",   "m_pqCreateNewAttributesButton",
    "m_pqGenerateBiasCorrectionButton",          "createRandomOrientation",
    "newAttributeFromBinAveragePushButton",      "newAttributeFromNumbOfDataPerBinPushButton",
    "createByNumbofIntervalsPushButton",         "createsByIntervalSizePushButton",
    "deleteIntervalsPushButton",
};

// Where the walk is, for a crash report: a sanitizer that stops the process names it as well.
quint32 g_seed = 0;
int g_action = -1;
const char* g_actionName = "";

#if defined(__SANITIZE_ADDRESS__)
void reportPosition()
{
    std::fprintf(stderr, "soak: stopped at seed %u, action %d (%s)\n", g_seed, g_action, g_actionName);
}
#endif

int envInt(const char* name, int def)
{
    bool ok = false;
    const int v = qEnvironmentVariableIntValue(name, &ok);
    return ok ? v : def;
}

class Walk
{
public:
    // Takes the spare root, the tree the window is not showing, and deletes whichever that is
    // at the end; the window deletes the one it shows.
    Walk(QDataAnalyserDialog& d, MatrixData* spareRoot, quint32 seed) : m_d(d), m_spare(spareRoot), m_random(seed)
    {
        for (QComboBox* c : d.findChildren<QComboBox*>())
            if (isColumnBox(c))
                m_columnBoxes << c;
    }
    ~Walk() { delete m_spare; }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    // Runs one action chosen by weight; returns its name.
    QString step()
    {
        struct Action {
            const char* name;
            int weight;
            void (Walk::*run)();
        };
        // Weights in 2000. Under ASan a selection or an edit costs about a millisecond, and an
        // action that rebuilds a chart 30 to 100 (an undo rebuilds every view, as the host does);
        // settings read back rebuild every chart.
        // The cheap ones carry the walk, so that 20,000 actions stay within CI's time.
        static const Action actions[] = {
            {"table selection", 1007, &Walk::tableSelection}, {"cell edit", 900, &Walk::cellEdit},
            {"undo", 6, &Walk::undo},                          {"check", 24, &Walk::check},
            {"combo", 6, &Walk::combo},                        {"spin", 8, &Walk::spin},
            {"tab", 8, &Walk::tab},                            {"lasso", 12, &Walk::lasso},
            {"derived attribute", 12, &Walk::derivedAttribute}, {"settings", 1, &Walk::settings},
            {"data root", 2, &Walk::swapRoot},
        };
        int total = 0;
        for (const Action& a : actions)
            total += a.weight;
        int pick = below(total);
        for (const Action& a : actions) {
            if (pick < a.weight) {
                g_actionName = a.name;
                (this->*a.run)();
                return QLatin1String(a.name);
            }
            pick -= a.weight;
        }
        return {};
    }

    // Empty when the tree, the table and the boxes agree; otherwise what is wrong.
    QString inconsistency() const
    {
        QSet<QString> columns;
        const QString bad = checkRows(m_d.dataRoot(), columns);
        if (!bad.isEmpty())
            return bad;
        const int rows = m_d.vertexTable()->model() ? m_d.vertexTable()->model()->rowCount() : 0;
        for (int r : m_d.vertexTable()->selectedRows(0))
            if (r < 0 || r >= std::max(rows, maxRows(m_d.dataRoot())))
                return QStringLiteral("selected row %1 of %2").arg(r).arg(rows);
        for (QComboBox* c : m_columnBoxes) {
            const QString text = c->currentText();
            if (!text.isEmpty() && text != PanelComboBoxes::noneText() && !columns.contains(text))
                return QStringLiteral("%1 names \"%2\", which is no column").arg(c->objectName(), text);
        }
        return {};
    }

private:
    int below(int n) { return n > 0 ? int(m_random() % quint32(n)) : 0; }

    // A box of column names, told apart by holding one at the start.
    bool isColumnBox(const QComboBox* c) const
    {
        const QList<MatrixData*> leafs = m_d.dataRoot()->leafs();
        for (int i = 0; i < c->count(); ++i)
            for (const MatrixData* leaf : leafs)
                if (leaf->name() == c->itemText(i))
                    return true;
        return false;
    }

    static int maxRows(const MatrixData* root)
    {
        int rows = 0;
        for (const MatrixData* leaf : root->leafs())
            rows = std::max(rows, leaf->rowCount());
        return rows;
    }

    static QString checkRows(const MatrixData* node, QSet<QString>& columns)
    {
        int rows = -1;
        for (const MatrixData* child : node->children()) {
            if (child->isGroup()) {
                const QString bad = checkRows(child, columns);
                if (!bad.isEmpty())
                    return bad;
                continue;
            }
            columns.insert(child->name());
            if (rows >= 0 && child->rowCount() != rows)
                return QStringLiteral("%1 holds %2 rows beside %3 in %4").arg(child->name()).arg(child->rowCount()).arg(rows).arg(node->name());
            rows = child->rowCount();
        }
        return {};
    }

    QWidget* page() const { return m_d.tabWidget()->currentWidget(); }

    template <class T>
    T* anyOn(QWidget* w)
    {
        QList<T*> all;
        if (w)
            for (T* c : w->findChildren<T*>())
                if (c->isEnabled() && c->isVisibleTo(w))
                    all << c;
        return all.isEmpty() ? nullptr : all[below(all.size())];
    }

    void combo()
    {
        if (QComboBox* c = anyOn<QComboBox>(page()); c && c->count() > 0) {
            c->setCurrentIndex(below(c->count()));
            emit c->activated(c->currentIndex());
        }
    }

    void check()
    {
        QAbstractButton* b = below(2) ? static_cast<QAbstractButton*>(anyOn<QCheckBox>(page()))
                                       : static_cast<QAbstractButton*>(anyOn<QRadioButton>(page()));
        if (b)
            b->click();
    }

    void spin()
    {
        if (QSpinBox* s = anyOn<QSpinBox>(page()))
            s->setValue(s->minimum() + below(std::min(s->maximum() - s->minimum(), 8) + 1));
    }

    void tableSelection()
    {
        QAbstractItemModel* model = m_d.vertexTable()->model();
        if (!model || model->rowCount() == 0 || model->columnCount() == 0)
            return;
        const int first = below(model->rowCount());
        const int last = std::min(model->rowCount() - 1, first + below(200));
        const QItemSelection range(model->index(first, 0), model->index(last, model->columnCount() - 1));
        m_d.vertexTable()->selectionModel()->select(
            range, (below(4) ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Select) | QItemSelectionModel::Rows);
    }

    void cellEdit()
    {
        QAbstractItemModel* model = m_d.vertexTable()->model();
        if (!model || model->rowCount() == 0 || model->columnCount() == 0)
            return;
        const QModelIndex at = model->index(below(model->rowCount()), below(model->columnCount()));
        // Mostly numbers, sometimes what a slip of the hand types.
        static const QVariant odd[] = {QStringLiteral("abc"), QString(), QStringLiteral("1e400"), QStringLiteral("-0")};
        const QVariant value = below(5) ? QVariant(below(100000) / 100.0) : odd[below(4)];
        model->setData(at, value, Qt::EditRole);
    }

    void undo()
    {
        if (m_d.dataRoot()->undoLastAction())
            m_d.updateAllViews(false, true);
    }

    void tab()
    {
        TabWidgetWithFloatingTabs* tabs = m_d.tabWidget();
        if (tabs->count() > 0)
            tabs->setCurrentIndex(below(tabs->count()));
    }

    void lasso()
    {
        QChartDrawingArea* chart = anyOn<QChartDrawingArea>(page());
        if (!chart || chart->width() < 20 || chart->height() < 20)
            return;
        // The shared outline, shrunk by a random factor and laid anywhere on the chart.
        const double scale = 0.2 + 0.8 * below(100) / 100.0;
        const QPointF shift(below(chart->width()) - chart->width() / 2.0, below(chart->height()) - chart->height() / 2.0);
        QVector<QPoint> points;
        for (const QPointF& p : lassoOutline(16))
            points << QPointF(chart->width() * (0.5 + scale * (p.x() / 1000.0 - 0.5)) + shift.x() * (1 - scale),
                              chart->height() * (0.5 + scale * (p.y() / 800.0 - 0.5)) + shift.y() * (1 - scale))
                          .toPoint();
        QTest::mousePress(chart, Qt::LeftButton, Qt::NoModifier, points.first());
        for (const QPoint& p : points)
            QTest::mouseMove(chart, p);
        QTest::mouseRelease(chart, Qt::LeftButton, Qt::NoModifier, points.first());
    }

    void derivedAttribute()
    {
        QList<QPushButton*> buttons;
        for (const char* name : kDerivedAttributeButtons)
            for (QPushButton* b : m_d.findChildren<QPushButton*>(QLatin1String(name)))
                if (b->isEnabled())
                    buttons << b;
        if (!buttons.isEmpty())
            buttons[below(buttons.size())]->click();
    }

    void settings()
    {
        m_d.saveSettings();
        m_d.readSettings(QStringLiteral("attribute_analyser"));
    }

    void swapRoot()
    {
        MatrixData* old = m_d.dataRoot();
        m_d.changeDataRoot(m_spare);
        m_spare = old;
        m_d.updateAllViews(false, false);
    }

    QDataAnalyserDialog& m_d;
    MatrixData* m_spare;
    std::mt19937 m_random;
    QList<QComboBox*> m_columnBoxes;
};

} // namespace

class TestSoak : public QObject
{
    Q_OBJECT
private slots:
    void walk();
};

void TestSoak::walk()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path());
    QCoreApplication::setOrganizationName(QStringLiteral("rkBaseTools-tests"));
    QCoreApplication::setApplicationName(QStringLiteral("soak"));

    const int count = envInt("RK_SOAK_ACTIONS", 20000);
    const quint32 seed = quint32(envInt("RK_SOAK_SEED", 20231));
    qInfo("soak: %d actions, seed %u (RK_SOAK_ACTIONS, RK_SOAK_SEED)", count, seed);
    g_seed = seed;
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(reportPosition);
#endif

    // Nothing may wait for a person: colour dialogs give no colour, questions are answered, and
    // any other dialog that opens is closed and reported.
    PanelColorButton::setColorDialog([](const QColor&, QWidget*, const QString&) { return QColor(); });
    UnitRegistry registry;
    auto d = sampleWellWindow(registry);
    // Edits go on the root's undo list, as in a host that offers Edit > Undo.
    d->vertexItemModel()->enableUndoRedo(true);
    for (QCrossPlotWidget* p : d->findChildren<QCrossPlotWidget*>())
        p->setQuestion([](QWidget*, const QString&, const QString&) { return QMessageBox::Yes; });
    QString dialogSeen;
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [&] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            dialogSeen = modal->windowTitle();
            modal->close();
        }
    });
    watchdog.start(100);
    d->setAttribute(Qt::WA_DontShowOnScreen);
    d->resize(1100, 800);
    d->show();
    QCoreApplication::processEvents();

    // A second tree for the window to swap to: the same well, loaded on its own.
    auto* spare = new MatrixData(QStringLiteral("Data Root"), -1, -1, QVariant::String, true);
    spare->setRegistry(&registry);
    if (MatrixData* sheet = readSampleWell())
        spare->appendChild(sheet, true);

    Walk walk(*d, spare, seed);
    QElapsedTimer clock;
    clock.start();
    QMap<QString, QPair<int, qint64>> spent;
    for (int i = 0; i < count; ++i) {
        g_action = i;
        QElapsedTimer one;
        one.start();
        const QString action = walk.step();
        spent[action].first += 1;
        spent[action].second += one.nsecsElapsed();
        // Paint and deferred deletes now and then, as a user's pauses would allow.
        if (i % 256 == 0)
            QCoreApplication::processEvents();
        if (i % 2000 == 1999)
            qInfo("soak: %d actions, %lld ms", i + 1, clock.elapsed());
        const QString bad = walk.inconsistency();
        if (!bad.isEmpty() || !dialogSeen.isEmpty())
            QFAIL(qPrintable(QStringLiteral("seed %1, action %2 (%3): %4")
                                 .arg(seed).arg(i).arg(action, bad.isEmpty() ? QStringLiteral("a dialog opened: ") + dialogSeen : bad)));
    }
    qInfo("soak: %d actions in %lld ms", count, clock.elapsed());
    for (auto it = spent.begin(); it != spent.end(); ++it)
        qInfo("  %-18s %6d x %8.2f ms", qPrintable(it.key()), it->first, it->second / 1e6 / std::max(1, it->first));
    PanelColorButton::setColorDialog({});
}

QTEST_MAIN(TestSoak)
#include "tst_soak_gui.moc"
