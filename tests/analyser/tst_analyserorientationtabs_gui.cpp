// The stereo and tangent tabs of the analyser window: their pages and panels, the rows they are
// handed when their tab opens, a selection made on the net reaching the table and coming back
// without a reload, and the tabs going when the sheet holds no orientations.
#include <MatrixData.h>
#include <QDataAnalyserDialog.h>
#include <QRelationshipItemModel.h>
#include <QStereoChartWidget.h>
#include <QTangentChartWidget.h>
#include <QVertexModelTableView.h>
#include <TabWidgetWithFloatingTabs.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QAbstractButton>
#include <QSettings>
#include <QToolBox>

#include <algorithm>
#include <memory>

using namespace rkBase;

namespace {
constexpr int kRows = 60;

std::unique_ptr<QDataAnalyserDialog> makeDialog(UnitRegistry& registry)
{
    auto d = std::make_unique<QDataAnalyserDialog>();
    d->dataRoot()->setRegistry(&registry);
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    d->dataRoot()->appendChild(well, true);
    auto* dip = new MatrixData(QStringLiteral("dip"), kRows, 1, QVariant::Double, true);
    auto* azimuth = new MatrixData(QStringLiteral("azimuth"), kRows, 1, QVariant::Double, true);
    well->appendChild(dip, false);
    well->appendChild(azimuth, false);
    for (MatrixData* c : {dip, azimuth})
        c->setUnitManager(UnitRegistry::CATEGORY_ORIENTATION);
    for (int r = 0; r < kRows; ++r) {
        dip->setValue(r, 0, 10.0 + r % 60);
        azimuth->setValue(r, 0, 6.0 * r);
    }
    d->initialize(QStringLiteral("test"), nullptr, &registry, Qt::Horizontal, false, true, false, false, false, false, 1,
                  false, false);
    for (QStereoChartWidget* panel : {d->stereoChart(), static_cast<QStereoChartWidget*>(d->tangentChart())}) {
        panel->setCurrentDipSelectedDataSet(QStringLiteral("dip"));
        panel->setCurrentAzimuthSelectedDataSet(QStringLiteral("azimuth"));
    }
    return d;
}

QStereoChartWidget* panelOf(QDataAnalyserDialog& d, const QString& key)
{
    return key == QLatin1String("STEREOPLOT") ? d.stereoChart() : static_cast<QStereoChartWidget*>(d.tangentChart());
}

void showTab(QDataAnalyserDialog& d, const QString& key)
{
    d.tabWidget()->setCurrentWidget(d.tabWidget()->findPage(key));
}

boost::dynamic_bitset<> bits(const std::vector<int>& rows)
{
    boost::dynamic_bitset<> b(kRows);
    for (int r : rows)
        b.set(std::size_t(r));
    return b;
}

std::vector<int> modelSelection(const QRelationshipItemModel& model)
{
    std::vector<int> rows;
    for (int i = 0; i < model.pointCount(); ++i)
        if (model.isSelected(i))
            rows.push_back(model.tableRow(i));
    std::sort(rows.begin(), rows.end());
    return rows;
}

QStringList toolBoxPages(QWidget* panel)
{
    QStringList names;
    // The panel's own box: the Fisher fit plots have tool boxes of their own.
    if (auto* box = panel->findChild<QToolBox*>(QStringLiteral("m_pqStereoToolBox")))
        for (int i = 0; i < box->count(); ++i)
            names << box->widget(i)->objectName();
    return names;
}
} // namespace

class TestAnalyserOrientationTabs : public QObject
{
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }
    void pages_data();
    void pages();
    void openingTheTabLoadsTheTableSelection_data();
    void openingTheTabLoadsTheTableSelection();
    void selectionOnTheNetComesBackWithoutAReload();
    void tabsGoWithoutOrientations();
    void lightModeTakesPagesOut();
    void settingsUnderTheWindowsGroups();
};

void TestAnalyserOrientationTabs::pages_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("title");
    QTest::newRow("stereo") << "STEREOPLOT" << "Stereo Plot";
    QTest::newRow("tangent") << "TANGENTPLOT" << "Tangent Plot";
}

void TestAnalyserOrientationTabs::pages()
{
    QFETCH(QString, key);
    QFETCH(QString, title);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QWidget* page = d->tabWidget()->findPage(key);
    QVERIFY(page);
    QCOMPARE(d->tabWidget()->tabText(d->tabWidget()->indexOf(page)), title);
    QStereoChartWidget* panel = panelOf(*d, key);
    QVERIFY(panel && page->isAncestorOf(panel));
    // The boxes list the orientation columns.
    QCOMPARE(panel->currentDipSelectedDataSetName(), QStringLiteral("dip"));
    QCOMPARE(panel->currentAzimuthSelectedDataSetName(), QStringLiteral("azimuth"));
}

void TestAnalyserOrientationTabs::openingTheTabLoadsTheTableSelection_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("display");
    for (const char* key : {"STEREOPLOT", "TANGENTPLOT"}) {
        QTest::addRow("%s highlight", key) << key << int(QRelationshipItemModel::HighlightSelected);
        QTest::addRow("%s selected only", key) << key << int(QRelationshipItemModel::ShowSelectedOnly);
    }
}

void TestAnalyserOrientationTabs::openingTheTabLoadsTheTableSelection()
{
    QFETCH(QString, key);
    QFETCH(int, display);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QStereoChartWidget* panel = panelOf(*d, key);
    showTab(*d, key);
    QCOMPARE(panel->model()->pointCount(), kRows);
    panel->setDisplayDataType(QRelationshipItemModel::DisplayType(display));
    showTab(*d, QStringLiteral("TABLE"));

    const std::vector<int> rows{2, 11, 40, 59};
    d->setNewRowSelectionFromGraphicalSelection(bits(rows));
    QCOMPARE(d->vertexTable()->selectedRows(0), rows);
    showTab(*d, key);
    QCOMPARE(int(panel->model()->displayType()), display);
    QCOMPARE(panel->model()->numberOfSelectedPoints(), 4);
    QCOMPARE(modelSelection(*panel->model()), rows);
}

void TestAnalyserOrientationTabs::selectionOnTheNetComesBackWithoutAReload()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QStereoChartWidget* panel = d->stereoChart();
    showTab(*d, QStringLiteral("STEREOPLOT"));
    // The chart's own selection: the model first, as a lasso leaves it, then the panel hears it.
    const std::vector<int> rows{5, 6, 7, 30};
    panel->model()->clearSelection();
    for (int r : rows)
        panel->model()->setSelected(r, true);
    panel->slotDataPointsSelection(bits(rows));
    QCOMPARE(d->vertexTable()->selectedRows(0), rows);
    const quint64 before = panel->model()->dataRevision();
    showTab(*d, QStringLiteral("TABLE"));
    showTab(*d, QStringLiteral("STEREOPLOT"));
    QCOMPARE(modelSelection(*panel->model()), rows);
    QCOMPARE(panel->model()->dataRevision(), before);
}

void TestAnalyserOrientationTabs::tabsGoWithoutOrientations()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->hideShowOrientationWindows();
    QVERIFY(d->tabWidget()->indexOf(d->tabWidget()->findPage(QStringLiteral("STEREOPLOT"))) >= 0);
    // A root without orientation columns: both tabs go, their pages live on.
    auto* root = new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true);
    auto* group = new MatrixData(QStringLiteral("Sheet"), -1, -1, QVariant::String, true);
    root->appendChild(group, true);
    group->appendChild(new MatrixData(QStringLiteral("Porosity"), 3, 1, QVariant::Double, true), false);
    MatrixData* old = d->dataRoot();
    d->changeDataRoot(root);
    for (const char* key : {"STEREOPLOT", "TANGENTPLOT"}) {
        QWidget* page = d->findChild<QWidget*>(QLatin1String(key));
        QVERIFY(page);
        QCOMPARE(d->tabWidget()->indexOf(page), -1);
    }
    d->changeDataRoot(old);
    delete root;
    QVERIFY(d->tabWidget()->indexOf(d->tabWidget()->findPage(QStringLiteral("TANGENTPLOT"))) >= 0);
}

void TestAnalyserOrientationTabs::lightModeTakesPagesOut()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QVERIFY(toolBoxPages(d->stereoChart()).contains(QStringLiteral("Rotation")));
    d->setLightMode();
    for (QStereoChartWidget* panel : {d->stereoChart(), static_cast<QStereoChartWidget*>(d->tangentChart())}) {
        QVERIFY(!toolBoxPages(panel).contains(QStringLiteral("Rotation")));
        QVERIFY(!toolBoxPages(panel).contains(QStringLiteral("ClusterGeneration")));
    }
}

// The stereo panel reads and writes under "/stereo_plot/"; the tangent panel reads under
// "/tangent_plot/" and is never written. A first start gives the panels' own defaults (the 10
// degree net on).
void TestAnalyserOrientationTabs::settingsUnderTheWindowsGroups()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    auto* net = d->stereoChart()->findChild<QAbstractButton*>(QStringLiteral("m_pqShow10DegreeNet"));
    QVERIFY(net && net->isChecked());
    net->setChecked(false);
    d->saveSettings();
    const QStringList keys = QSettings().allKeys();
    QVERIFY(std::any_of(keys.begin(), keys.end(), [](const QString& k) { return k.contains(QLatin1String("/stereo_plot/")); }));
    QVERIFY(std::none_of(keys.begin(), keys.end(), [](const QString& k) { return k.contains(QLatin1String("/tangent_plot/")); }));
    auto again = makeDialog(registry);
    QVERIFY(!again->stereoChart()->findChild<QAbstractButton*>(QStringLiteral("m_pqShow10DegreeNet"))->isChecked());
    QVERIFY(again->tangentChart()->findChild<QAbstractButton*>(QStringLiteral("m_pqShow10DegreeNet"))->isChecked());
}

QTEST_MAIN(TestAnalyserOrientationTabs)
#include "tst_analyserorientationtabs_gui.moc"
