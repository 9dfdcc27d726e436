// The cross plot and depth plot tabs of the analyser window: their pages, the rows they are
// handed when their tab opens, the lasso's road into the table and back, automatic update off,
// a column lost while the tab is open, and the stale flags.
#include <MatrixData.h>
#include <QCrossPlot.h>
#include <QCrossPlotWidget.h>
#include <QDataAnalyserDialog.h>
#include <QDepthPlotWidget.h>
#include <QRelationshipItemModel.h>
#include <QVertexModelTableView.h>
#include <TabWidgetWithFloatingTabs.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>

#include <memory>

using namespace rkBase;

namespace {
constexpr int kRows = 100;
// A 10 x 10 grid of readings: porosity steps along each depth, depth every ten rows.
double porosityOf(int r) { return 0.1 + 0.02 * (r % 10); }
double depthOf(int r) { return 1000.0 + 10.0 * (r / 10); }

MatrixData* column(MatrixData* group, const char* name)
{
    auto* c = new MatrixData(QLatin1String(name), kRows, 1, QVariant::Double, true);
    group->appendChild(c, false);
    return c;
}

std::unique_ptr<QDataAnalyserDialog> makeDialog(UnitRegistry& registry, bool withCharts = true)
{
    auto d = std::make_unique<QDataAnalyserDialog>();
    d->dataRoot()->setRegistry(&registry);
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    d->dataRoot()->appendChild(well, true);
    MatrixData* depth = column(well, "Measured Depth");
    MatrixData* porosity = column(well, "Porosity");
    MatrixData* gamma = column(well, "Gamma");
    for (int r = 0; r < kRows; ++r) {
        depth->setValue(r, 0, depthOf(r));
        porosity->setValue(r, 0, porosityOf(r));
        gamma->setValue(r, 0, 40.0 + r);
    }
    d->initialize(QStringLiteral("test"), nullptr, &registry, Qt::Horizontal, false, false, withCharts, true, false,
                  withCharts, 1, false, false);
    for (QCrossPlotWidget* panel : {static_cast<QCrossPlotWidget*>(d->depthPlotChart()), d->crossPlotChart()})
        if (panel) {
            panel->setCurrentHorizontalSelectedDataSet(QStringLiteral("Porosity"));
            panel->setCurrentVerticalSelectedDataSet(QStringLiteral("Measured Depth"));
        }
    return d;
}

QCrossPlotWidget* panelOf(QDataAnalyserDialog& d, const QString& key)
{
    return key == QLatin1String("CROSSPLOT") ? d.crossPlotChart() : static_cast<QCrossPlotWidget*>(d.depthPlotChart());
}

int flagOf(const QString& key) { return key == QLatin1String("CROSSPLOT") ? 0 : 6; }

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

void addTabColumns()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("cross plot") << QStringLiteral("CROSSPLOT");
    QTest::newRow("depth plot") << QStringLiteral("WELLLOGPLOT");
}
} // namespace

class TestAnalyserChartTabs : public QObject
{
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }
    void pages_data();
    void pages();
    void withoutPanels();
    void openingTheTabLoadsTheTableSelection_data();
    void openingTheTabLoadsTheTableSelection();
    void selectedOnlyReloadsOnSelection_data();
    void selectedOnlyReloadsOnSelection();
    void lassoSelectsTheTableRows();
    void automaticUpdateOffWaitsForTheButton();
    void columnLostWhileTheTabIsOpen_data();
    void columnLostWhileTheTabIsOpen();
    void dataChangeRebuildsOnlyTheCurrentTab_data();
    void dataChangeRebuildsOnlyTheCurrentTab();
    void lightModeKeepsTheTabs();
};

void TestAnalyserChartTabs::pages_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("settings");
    QTest::newRow("cross plot") << "CROSSPLOT" << "Cross Plot" << "attribute_analyser/defaultSettingsGroup/cross_plot/";
    QTest::newRow("depth plot") << "WELLLOGPLOT" << "Depth Plot" << "attribute_analyser/defaultSettingsGroup/well_log_plot/";
}

void TestAnalyserChartTabs::pages()
{
    QFETCH(QString, key);
    QFETCH(QString, title);
    QFETCH(QString, settings);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QWidget* page = d->tabWidget()->findPage(key);
    QVERIFY(page);
    const int at = d->tabWidget()->indexOf(page);
    QVERIFY(at > 0);
    QCOMPARE(d->tabWidget()->tabText(at), title);
    QVERIFY(!d->tabWidget()->tabIcon(at).isNull());
    QCrossPlotWidget* panel = panelOf(*d, key);
    auto* splitter = qobject_cast<QSplitter*>(panel->parentWidget());
    QVERIFY(splitter && page->isAncestorOf(splitter));
    QCOMPARE(splitter->orientation(), Qt::Vertical);
    QCOMPARE(splitter->count(), 2);
    QCOMPARE(panel->getDataRoot(), d->dataRoot());
    QCOMPARE(panel->getSettingsPrefix(), settings);
    // The boxes hold the sheet's numeric columns; the depth track offers only depth columns.
    QCOMPARE(panel->currentVerticalSelectedDataSetName(), QStringLiteral("Measured Depth"));
    QCOMPARE(panel->currentHorizontalSelectedDataSetName(), QStringLiteral("Porosity"));
}

void TestAnalyserChartTabs::withoutPanels()
{
    UnitRegistry registry;
    auto d = makeDialog(registry, false);
    QVERIFY(!d->crossPlotChart());
    QVERIFY(!d->depthPlotChart());
    QVERIFY(!d->tabWidget()->findPage(QStringLiteral("CROSSPLOT")));
    // Every route that reaches a panel must stand its absence.
    d->updateRelationshipData();
    d->updateDepthPlotData();
    d->setNewRowSelectionFromGraphicalSelection(bits({1, 2}));
    d->checkResetChartsUpdateNeeded();
    d->setLightMode();
    d->validCellsOnlyGroupBox()->setChecked(true);
    d->setFilterKeyColumn();
    d->changeDataRoot(d->dataRoot());
}

void TestAnalyserChartTabs::openingTheTabLoadsTheTableSelection_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("display");
    for (const char* key : {"CROSSPLOT", "WELLLOGPLOT"}) {
        QTest::addRow("%s highlight", key) << key << int(QRelationshipItemModel::HighlightSelected);
        QTest::addRow("%s selected only", key) << key << int(QRelationshipItemModel::ShowSelectedOnly);
    }
}

void TestAnalyserChartTabs::openingTheTabLoadsTheTableSelection()
{
    QFETCH(QString, key);
    QFETCH(int, display);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QCrossPlotWidget* panel = panelOf(*d, key);
    showTab(*d, key);
    QCOMPARE(panel->model()->pointCount(), kRows);
    panel->setDisplayDataType(QRelationshipItemModel::DisplayType(display));
    showTab(*d, QStringLiteral("TABLE"));

    const std::vector<int> rows{3, 17, 42, 99};
    d->setNewRowSelectionFromGraphicalSelection(bits(rows));
    QCOMPARE(d->vertexTable()->selectedRows(0), rows);
    // Nothing reaches the chart while its tab is hidden.
    QVERIFY(panel->selectedDataRows().empty());
    QVERIFY(d->chartUpdateNeeded(flagOf(key)));

    showTab(*d, key);
    QVERIFY(!d->chartUpdateNeeded(flagOf(key)));
    QCOMPARE(panel->selectedDataRows(), rows);
    QCOMPARE(int(panel->model()->displayType()), display);
    QCOMPARE(panel->model()->numberOfSelectedPoints(), 4);
    QCOMPARE(modelSelection(*panel->model()), rows);
}

void TestAnalyserChartTabs::selectedOnlyReloadsOnSelection_data()
{
    addTabColumns();
}

void TestAnalyserChartTabs::selectedOnlyReloadsOnSelection()
{
    QFETCH(QString, key);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QCrossPlotWidget* panel = panelOf(*d, key);
    showTab(*d, key);
    d->setNewRowSelectionFromGraphicalSelection(bits({0, 1, 2, 3, 4, 5}));
    panel->setDisplayDataType(QRelationshipItemModel::ShowSelectedOnly);
    d->slotTabWidgetChanged();
    QCOMPARE(panel->model()->numberOfSelectedPoints(), 6);

    // A selection made on the chart goes to the table and comes back as the only points.
    const std::vector<int> rows{10, 20, 30};
    panel->slotDataPointsSelection(bits(rows));
    QCOMPARE(d->vertexTable()->selectedRows(0), rows);
    QCOMPARE(panel->selectedDataRows(), rows);
    QCOMPARE(panel->model()->numberOfSelectedPoints(), 3);
    QCOMPARE(modelSelection(*panel->model()), rows);
}

void TestAnalyserChartTabs::lassoSelectsTheTableRows()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->resize(1100, 800);
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d.get()));
    showTab(*d, QStringLiteral("CROSSPLOT"));
    QCrossPlot* plot = d->crossPlotChart()->drawingArea();
    QTRY_VERIFY(plot->isVisible() && plot->width() > 200 && plot->height() > 200);
    plot->updateChart();

    // A rectangle halfway between grid lines: porosity 0.15..0.23, depth 1025..1065.
    const QVector<QPointF> corners{{0.15, 1025.0}, {0.23, 1025.0}, {0.23, 1065.0}, {0.15, 1065.0}};
    QVector<QPoint> lasso;
    for (const QPointF& c : corners)
        lasso << plot->transformInPixelPoint(c).toPoint();
    QTest::mousePress(plot, Qt::LeftButton, Qt::NoModifier, lasso.first());
    for (int i = 1; i <= lasso.size(); ++i)
        for (int step = 1; step <= 4; ++step)
            QTest::mouseMove(plot, lasso[i - 1] + (lasso[i % lasso.size()] - lasso[i - 1]) * step / 4);
    QTest::mouseRelease(plot, Qt::LeftButton, Qt::NoModifier, lasso.first());

    std::vector<int> want;
    for (int r = 0; r < kRows; ++r)
        if (porosityOf(r) > 0.15 && porosityOf(r) < 0.23 && depthOf(r) > 1025.0 && depthOf(r) < 1065.0)
            want.push_back(r);
    QCOMPARE(want.size(), std::size_t(16));
    QCOMPARE(d->vertexTable()->selectedRows(0), want);
    // The chart shows what it sent, highlighted, and keeps it when its tab is shown again.
    QCOMPARE(modelSelection(*d->crossPlotChart()->model()), want);
    showTab(*d, QStringLiteral("TABLE"));
    showTab(*d, QStringLiteral("CROSSPLOT"));
    QCOMPARE(modelSelection(*d->crossPlotChart()->model()), want);
    QCOMPARE(d->crossPlotChart()->model()->pointCount(), kRows);
}

void TestAnalyserChartTabs::automaticUpdateOffWaitsForTheButton()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QCrossPlotWidget* panel = d->crossPlotChart();
    showTab(*d, QStringLiteral("CROSSPLOT"));
    QCOMPARE(panel->horizontalDataSet()->name(), QStringLiteral("Porosity"));
    panel->findChild<QCheckBox*>(QStringLiteral("automaticCrossPlotUpdate"))->setChecked(false);
    auto* box = panel->findChild<QComboBox*>(QStringLiteral("m_pqHorizontalComboBox"));
    const int gamma = box->findText(QStringLiteral("Gamma"));
    QVERIFY(gamma >= 0);
    box->setCurrentIndex(gamma);
    emit box->activated(gamma);
    QCOMPARE(panel->horizontalDataSet()->name(), QStringLiteral("Porosity"));
    auto* button = panel->findChild<QPushButton*>(QStringLiteral("updateCrossPlot"));
    QVERIFY(button->isEnabled());
    button->click();
    QCOMPARE(panel->horizontalDataSet()->name(), QStringLiteral("Gamma"));
}

void TestAnalyserChartTabs::columnLostWhileTheTabIsOpen_data()
{
    addTabColumns();
}

void TestAnalyserChartTabs::columnLostWhileTheTabIsOpen()
{
    QFETCH(QString, key);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->resize(900, 700);
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d.get()));
    QCrossPlotWidget* panel = panelOf(*d, key);
    showTab(*d, key);
    QCOMPARE(panel->model()->pointCount(), kRows);
    MatrixData* porosity = d->dataRoot()->getNodeFromName(QStringLiteral("Porosity"));
    QVERIFY(porosity);
    porosity->parent()->removeChild(porosity);
    delete porosity;
    // The chart repaints and takes a selection before the host tells the window.
    panel->drawingArea()->updateChart();
    QCoreApplication::processEvents();
    panel->updateRelationshipDiagram();
    d->setNewRowSelectionFromGraphicalSelection(bits({1, 2}));
    d->slotTabWidgetChanged();
    d->updateAllViews();
    QCoreApplication::processEvents();
    QVERIFY(panel->currentHorizontalSelectedDataSetName() != QLatin1String("Porosity"));
    if (panel->horizontalDataSet())
        QVERIFY(panel->horizontalDataSet()->name() != QLatin1String("Porosity"));
}

void TestAnalyserChartTabs::dataChangeRebuildsOnlyTheCurrentTab_data()
{
    addTabColumns();
}

void TestAnalyserChartTabs::dataChangeRebuildsOnlyTheCurrentTab()
{
    QFETCH(QString, key);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QCrossPlotWidget* panel = panelOf(*d, key);
    showTab(*d, key);
    QCOMPARE(panel->model()->pointCount(), kRows);
    showTab(*d, QStringLiteral("TABLE"));
    // A blanked porosity cell leaves one point fewer, but only once the tab is shown.
    d->dataRoot()->getNodeFromName(QStringLiteral("Porosity"))->setValue(5, 0, QVariant());
    d->slotDataModified(true);
    QVERIFY(d->chartUpdateNeeded(0));
    QVERIFY(d->chartUpdateNeeded(6));
    QCOMPARE(panel->model()->pointCount(), kRows);
    showTab(*d, key);
    QCOMPARE(panel->model()->pointCount(), kRows - 1);
    QVERIFY(!d->chartUpdateNeeded(flagOf(key)));
    // The other chart stays stale until its own tab is shown.
    QVERIFY(d->chartUpdateNeeded(6 - flagOf(key)));
}

void TestAnalyserChartTabs::lightModeKeepsTheTabs()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->setLightMode();
    QVERIFY(d->tabWidget()->findPage(QStringLiteral("CROSSPLOT")));
    QVERIFY(d->tabWidget()->findPage(QStringLiteral("WELLLOGPLOT")));
    // The cross plot drops its attribute pages; what is left still loads.
    QVERIFY(!d->crossPlotChart()->findChild<QWidget*>(QStringLiteral("ClusterGeneration"))->isVisible());
    showTab(*d, QStringLiteral("CROSSPLOT"));
    QCOMPARE(d->crossPlotChart()->model()->pointCount(), kRows);
    d->setUltraLightMode();
    QVERIFY(d->tabWidget()->indexOf(d->tabWidget()->findPage(QStringLiteral("CROSSPLOT"))) < 0);
    QVERIFY(d->tabWidget()->indexOf(d->tabWidget()->findPage(QStringLiteral("WELLLOGPLOT"))) < 0);
}

QTEST_MAIN(TestAnalyserChartTabs)
#include "tst_analysercharttabs_gui.moc"
