// The analyser window with the table alone: set-up, tabs, data roots, Save As and settings.
#include <MatrixData.h>
#include <QAttributeTreeView.h>
#include <QDataAnalyserDialog.h>
#include <QRKEBarChartWidget.h>
#include <QSelectCellsDialog.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexMinMaxItemModel.h>
#include <QVertexMinMaxModelTableView.h>
#include <QVertexModelTableView.h>
#include <TabWidgetWithFloatingTabs.h>
#include <TreeBytes.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QAction>
#include <QClipboard>
#include <QHeaderView>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QSplitter>
#include <QTemporaryDir>

#include <memory>

using namespace rkBase;

namespace {
std::unique_ptr<QDataAnalyserDialog> makeDialog(UnitRegistry& registry, int minMaxMode = 1,
                                                void (QDataAnalyserDialog::*fill)() = &QDataAnalyserDialog::initializeTestData,
                                                bool withBarChart = true)
{
    auto dialog = std::make_unique<QDataAnalyserDialog>();
    dialog->dataRoot()->setRegistry(&registry);
    ((*dialog).*fill)();
    dialog->initialize(QStringLiteral("test"), nullptr, &registry, Qt::Horizontal, false, true, true, withBarChart, true,
                       true, minMaxMode, false, false);
    return dialog;
}

QStringList tabKeys(const QDataAnalyserDialog& d)
{
    QStringList keys;
    for (int i = 0; i < d.tabWidget()->count(); ++i)
        keys << d.tabWidget()->widget(i)->objectName();
    return keys;
}

// A stand-in page for a tab this window does not build; the page itself where it does.
QWidget* addPage(QDataAnalyserDialog& d, const QString& key)
{
    if (QWidget* built = d.tabWidget()->findPage(key))
        return built;
    auto* page = new QWidget(&d);
    page->setObjectName(key);
    d.tabWidget()->addTab(page, key);
    return page;
}
} // namespace

class TestDataAnalyserDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void setUp();
    void minMaxFrameHiddenInMode0();
    void barChartTab_data();
    void barChartTab();
    void orientationTabs();
    void ultraLightMode();
    void testData_data();
    void testData();
    void changeDataRoot();
    void saveAs_data();
    void saveAs();
    void settings();
    void graphicalSelection();
    void staleFlags();
    void selectionMarksEveryChart();
    void chartRows_data();
    void chartRows();
    void insertAndRemoveRows_data();
    void insertAndRemoveRows();
    void removeWithoutSelectionWarns_data();
    void removeWithoutSelectionWarns();
    void markerVisibility_data();
    void markerVisibility();
    void selectCellsDialog();
    void hideTakesTheSelectDialogAlong();
    void headerClicks_data();
    void headerClicks();
    void minMaxSignalsReachTheSheet();
    void refusedPasteKeepsTheSelection();
    void collectionSlotTakesTheEnum();
    void cellViewKeepsItsOffset();
};

void TestDataAnalyserDialog::init()
{
    QSettings().clear();
}

void TestDataAnalyserDialog::setUp()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    // The orientation tabs stand until the host hands over a root without orientations.
    QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "BARCHART", "HISTOGRAM", "CROSSPLOT", "ROSEPLOT", "STEREOPLOT", "TANGENTPLOT", "WELLLOGPLOT"}));
    QVERIFY(d->stereoChart() && d->tangentChart());
    QVERIFY(d->pasteAction());
    QVERIFY(!d->pasteAction()->isEnabled());
    QCOMPARE(d->vertexTable()->menu()->title(), QStringLiteral("Default Menu"));
    QCOMPARE(d->vertexTable()->menu()->actions().size(), 7);
    QVERIFY(d->treeView()->model());
    QCOMPARE(d->validCellsOnlyGroupBox()->title(), QStringLiteral("Show Valid Cells only"));
    QVERIFY(!d->validCellsOnlyGroupBox()->isChecked());
    // Ticked columns of the test data: X, Y, Z, Color, Lithology.
    QCOMPARE(d->vertexItemModel()->columnCount(), 5);
    QCOMPARE(d->vertexTable()->model(), d->proxyModel());
    QVERIFY(d->focusPolicy() == Qt::ClickFocus);
}

void TestDataAnalyserDialog::minMaxFrameHiddenInMode0()
{
    UnitRegistry registry;
    auto d = makeDialog(registry, 0);
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d.get()));
    auto* frame = d->findChild<QFrame*>(QStringLiteral("VertexMinMaxTableFrame"));
    QVERIFY(frame);
    QVERIFY(!frame->isVisible());
    QVERIFY(d->minMaxVertexItemModel());
    QCOMPARE(d->minMaxVertexItemModel()->rowCount(), 3);
}

void TestDataAnalyserDialog::barChartTab_data()
{
    QTest::addColumn<bool>("withBarChart");
    QTest::newRow("with a bar chart") << true;
    QTest::newRow("without") << false;
}

void TestDataAnalyserDialog::barChartTab()
{
    QFETCH(bool, withBarChart);
    UnitRegistry registry;
    auto d = makeDialog(registry, 1, &QDataAnalyserDialog::initializeTestData, withBarChart);
    QWidget* page = d->tabWidget()->findPage(QStringLiteral("BARCHART"));
    QCOMPARE(page != nullptr, withBarChart);
    QCOMPARE(d->barChart() != nullptr, withBarChart);
    if (!withBarChart) {
        QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "HISTOGRAM", "CROSSPLOT", "ROSEPLOT", "STEREOPLOT", "TANGENTPLOT", "WELLLOGPLOT"}));
        d->updateBarChart(); // nothing to route to
        d->resetSplitterRatios();
        return;
    }
    const int at = d->tabWidget()->indexOf(page);
    QCOMPARE(at, 1);
    QCOMPARE(d->tabWidget()->tabText(at), QStringLiteral("Bar Chart"));
    QVERIFY(!d->tabWidget()->tabIcon(at).isNull());
    // The page holds a vertical splitter with the panel above an empty frame.
    auto* splitter = qobject_cast<QSplitter*>(d->barChart()->parentWidget());
    QVERIFY(splitter);
    QCOMPARE(splitter->orientation(), Qt::Vertical);
    QCOMPARE(splitter->count(), 2);
    QCOMPARE(splitter->widget(0), static_cast<QWidget*>(d->barChart()));
    QVERIFY(page->isAncestorOf(splitter));
    // The panel keeps its settings in the analyser's group for it.
    QCOMPARE(d->barChart()->settingsGroup(), QStringLiteral("attribute_analyser/defaultSettingsGroup/barchart/"));
    d->barChart()->setBarMode(QBarDiagramWidget::PercentBars);
    d->saveSettings();
    QCOMPARE(QSettings().value(QStringLiteral("attribute_analyser/defaultSettingsGroup/barchart/display/bar_mode")).toInt(),
             int(QBarDiagramWidget::PercentBars));
    auto again = makeDialog(registry);
    QCOMPARE(again->barChart()->barMode(), QBarDiagramWidget::PercentBars);
    // Shown on a resized window, the chart takes the whole page.
    d->resize(900, 600);
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d.get()));
    d->tabWidget()->setCurrentWidget(page);
    QTRY_COMPARE(splitter->sizes().last(), 0);
}

void TestDataAnalyserDialog::orientationTabs()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QWidget* stereo = addPage(*d, QStringLiteral("STEREOPLOT"));
    d->hideShowOrientationWindows(); // no orientation data in the test sheet
    QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "BARCHART", "HISTOGRAM", "CROSSPLOT", "WELLLOGPLOT"}));
    QVERIFY(!stereo->isVisible());
    auto* group = d->dataRoot()->child(0);
    group->appendChild(new MatrixData(QStringLiteral("dip"), 3, 1, QVariant::Double, true), false);
    d->hideShowOrientationWindows();
    d->hideShowOrientationWindows(); // twice adds no second copy
    QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "BARCHART", "HISTOGRAM", "CROSSPLOT", "WELLLOGPLOT", "STEREOPLOT", "ROSEPLOT", "TANGENTPLOT"}));
    d->hideTab(QStringLiteral("NOSUCHTAB"));
    d->showTab(QStringLiteral("NOSUCHTAB"), QStringLiteral("x"));
    QCOMPARE(d->tabWidget()->count(), 8);
}

void TestDataAnalyserDialog::ultraLightMode()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    for (const char* key : {"BARCHART", "ROSEPLOT", "HISTOGRAM", "CROSSPLOT", "STEREOPLOT", "TANGENTPLOT", "WELLLOGPLOT"})
        addPage(*d, QLatin1String(key));
    d->setUltraLightMode();
    // The kept pages stay where they stood, in the order the window built them.
    QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "ROSEPLOT", "STEREOPLOT", "TANGENTPLOT"}));
}

void TestDataAnalyserDialog::testData_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QStringList>("groups");
    QTest::addColumn<int>("ticked");
    QTest::addColumn<QStringList>("cells"); // "column|row|text", an empty text for a blank cell
    QTest::newRow("test data") << 0 << QStringList{"Vertex", "Compaction", "Time/Depth Conversion", "Thickness", "Container Group"} << 5
                               << QStringList{"X|0|1", "Y|19|20", "Z|0|", "Z|19|", "Porosity|4|0.5", "Porosity|9|0.56",
                                              "Porosity|5|", "Velocity|2|2100", "Initial Velocity|8|2500",
                                              "Initial Velocity|0|", "Thickness 3|7|140", "Color|0|"};
    QTest::newRow("rock properties") << 1 << QStringList{"Compounds", "Compaction", "Time/Depth Conversion"} << 3
                                     << QStringList{"Sand|0|100", "Sand|1|0", "Shale|1|100", "Carbonate|0|", "Velocity|5|1800"};
    QTest::newRow("stratigraphy") << 2 << QStringList{"Stratigraphy"} << 5
                                  << QStringList{"Horizon|3|Eocene1", "Rock Properties|5|ShalySand", "Age|0|10",
                                                 "Depth(Average)|0|"};
    QTest::newRow("dummy") << 3 << QStringList{"Sheet1"} << 14 << QStringList{"A|0|", "N|199|"};
}

void TestDataAnalyserDialog::testData()
{
    QFETCH(int, which);
    QFETCH(QStringList, groups);
    QFETCH(int, ticked);
    QFETCH(QStringList, cells);
    UnitRegistry registry;
    QDataAnalyserDialog d;
    d.dataRoot()->setRegistry(&registry);
    switch (which) {
    case 0: d.initializeTestData(); break;
    case 1: d.initializeRockPropertyTestData(); break;
    case 2: d.initializeStratigraphyTestData(); break;
    default: d.initializeDummyData(); break;
    }
    QStringList names;
    for (MatrixData* g : d.dataRoot()->children())
        names << g->name();
    QCOMPARE(names, groups);
    QCOMPARE(d.dataRoot()->numberOfSelectedItems(), ticked);
    for (const QString& cell : cells) {
        const QStringList parts = cell.split(QLatin1Char('|'));
        MatrixData* column = d.dataRoot()->getNodeFromName(parts[0]);
        QVERIFY2(column, qPrintable(parts[0]));
        const QVariant value = column->value(parts[1].toInt(), 0);
        QVERIFY2(parts[2].isEmpty() ? !value.isValid() : value.toString() == parts[2], qPrintable(cell));
    }
    // A second default is only a default: it fills no cell.
    if (which == 0)
        QCOMPARE(d.dataRoot()->getNodeFromName(QStringLiteral("Z"))->defaultValue2(), 30.0);
    if (which == 1) {
        QCOMPARE(d.dataRoot()->getNodeFromName(QStringLiteral("Carbonate"))->defaultValue2(), 30.0);
        QCOMPARE(d.dataRoot()->maxName(), QStringLiteral("Shale"));
    }
}

void TestDataAnalyserDialog::changeDataRoot()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    MatrixData* old = d->dataRoot();
    d->changeDataRoot(nullptr); // the views keep the old tree
    QCOMPARE(d->dataRoot(), nullptr);
    QCOMPARE(d->vertexItemModel()->dataRoot(), old);
    MatrixData other(QStringLiteral("other"), -1, -1, QVariant::String, true);
    auto* g = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
    other.appendChild(g, true);
    g->appendChild(new MatrixData(QStringLiteral("only"), 4, 1, QVariant::Double, true), false);
    d->changeDataRoot(&other);
    d->updateAllViews();
    QCOMPARE(d->vertexItemModel()->columnCount(), 1);
    d->changeDataRoot(old); // hand the owned root back before the dialog deletes it
}

void TestDataAnalyserDialog::saveAs_data()
{
    QTest::addColumn<QList<int>>("selected");
    QTest::addColumn<int>("lines");
    QTest::newRow("no selection writes all rows") << QList<int>{} << 21;
    QTest::newRow("selected rows only") << QList<int>{2, 5, 6} << 4;
}

void TestDataAnalyserDialog::saveAs()
{
    QFETCH(QList<int>, selected);
    QFETCH(int, lines);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    boost::dynamic_bitset<> bits(32);
    for (int r : selected)
        bits.set(static_cast<std::size_t>(r));
    d->vertexTable()->setRowSelection(bits);
    QTemporaryDir dir;
    QVERIFY(d->saveCSV(dir.filePath(QStringLiteral("sheet"))));
    QCOMPARE(d->fileName(), QStringLiteral("sheet.csv"));
    QCOMPARE(d->absolutePath(), dir.path());
    QFile f(dir.filePath(QStringLiteral("sheet.csv")));
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll().count('\n'), lines);
    QVERIFY(!d->saveCSV(QStringLiteral("/no/such/dir/x.csv")));
    QVERIFY(d->fileName().isEmpty());
}

void TestDataAnalyserDialog::settings()
{
    UnitRegistry registry;
    {
        auto d = makeDialog(registry);
        d->resize(900, 600);
        d->show();
        QVERIFY(QTest::qWaitForWindowExposed(d.get()));
        const QList<int> sizes = d->treeSplitter()->sizes();
        QCOMPARE(sizes.size(), 2);
        // 150 beside 300, as far as the tree pane's minimum width lets it be.
        QVERIFY2(sizes[0] > 0 && sizes[0] < sizes[1], qPrintable(QStringLiteral("%1 %2").arg(sizes[0]).arg(sizes[1])));
        d->concealTreeWidget(); // never sized by the user: the tree starts hidden
        QCOMPARE(d->treeSplitter()->sizes().first(), 0);
        d->setAbsolutPath(QStringLiteral("/tmp/somewhere"));
        d->saveSettings();
    }
    auto d = makeDialog(registry);
    QCOMPARE(d->absolutePath(), QStringLiteral("/tmp/somewhere"));
}

void TestDataAnalyserDialog::graphicalSelection()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QSignalSpy spy(d->vertexTable(), SIGNAL(verteciesSelected(std::vector<int>)));
    boost::dynamic_bitset<> bits(1000); // longer than the sheet
    bits.set(1);
    bits.set(3);
    bits.set(999);
    d->setNewRowSelectionFromGraphicalSelection(bits);
    QCOMPARE(d->vertexTable()->selectedRows(0), (std::vector<int>{1, 3}));
    QCOMPARE(spy.count(), 1);
    d->selectInverse();
    QCOMPARE(d->vertexTable()->selectedRows(0).size(), std::size_t(18));
    // Only whole rows count: one cell of a row does not select it.
    QItemSelectionModel* selection = d->vertexTable()->selectionModel();
    selection->select(d->proxyModel()->index(2, 1), QItemSelectionModel::ClearAndSelect);
    QVERIFY(d->vertexTable()->selectedRows(0).empty());
    d->vertexTable()->selectRow(4);
    QCOMPARE(d->vertexTable()->selectedRows(0), std::vector<int>{4});
}

void TestDataAnalyserDialog::staleFlags()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QWidget* rose = addPage(*d, QStringLiteral("ROSEPLOT"));
    d->resetChartsUpdateNeeded();
    d->tabWidget()->setCurrentWidget(rose);
    QVERIFY(!d->chartUpdateNeeded(3)); // the rose caught up when shown
    QVERIFY(d->chartUpdateNeeded(4));  // the stereonet, unseen, is still stale
}

void TestDataAnalyserDialog::selectionMarksEveryChart()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    const char* keys[] = {"BARCHART", "HISTOGRAM", "CROSSPLOT", "ROSEPLOT", "STEREOPLOT", "TANGENTPLOT", "WELLLOGPLOT"};
    for (const char* key : keys)
        d->tabWidget()->setCurrentWidget(addPage(*d, QLatin1String(key)));
    d->tabWidget()->setCurrentIndex(0); // back to the table
    for (int f = 0; f < 7; ++f)
        QVERIFY(!d->chartUpdateNeeded(f));
    // A click that selects nothing leaves the charts alone; one that selects rows marks them.
    d->checkResetChartsUpdateNeeded();
    QVERIFY(!d->chartUpdateNeeded(0));
    d->vertexTable()->selectRow(2);
    d->checkResetChartsUpdateNeeded();
    for (int f = 0; f < 7; ++f)
        QVERIFY(d->chartUpdateNeeded(f));
    // From a chart, with the table in front: every chart is stale, none rebuilt yet.
    for (int i = 1; i < d->tabWidget()->count(); ++i)
        d->tabWidget()->setCurrentIndex(i);
    d->tabWidget()->setCurrentIndex(0);
    boost::dynamic_bitset<> bits(20);
    bits.set(7);
    d->setNewRowSelectionFromGraphicalSelection(bits);
    for (int f = 0; f < 7; ++f)
        QVERIFY(d->chartUpdateNeeded(f));
    QCOMPARE(d->vertexTable()->selectedRows(0), std::vector<int>{7});
}

void TestDataAnalyserDialog::chartRows_data()
{
    QTest::addColumn<QList<int>>("selected");
    QTest::addColumn<bool>("validOnly");
    QTest::addColumn<int>("rows");
    QTest::newRow("no selection: all rows, as an empty list") << QList<int>{} << false << 0;
    QTest::newRow("selected rows") << QList<int>{3, 4} << false << 2;
    QTest::newRow("no selection, valid cells only: the rows shown") << QList<int>{} << true << 4;
    QTest::newRow("selection wins over the filter") << QList<int>{1} << true << 1;
}

void TestDataAnalyserDialog::chartRows()
{
    QFETCH(QList<int>, selected);
    QFETCH(bool, validOnly);
    QFETCH(int, rows);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    // Filter on "Color", which holds four cells.
    const int colorEntry = d->filterComboBox()->findText(QStringLiteral("Color"));
    QVERIFY(colorEntry >= 0);
    d->filterComboBox()->setCurrentIndex(colorEntry);
    d->validCellsOnlyGroupBox()->setChecked(validOnly);
    d->setFilterKeyColumn();
    boost::dynamic_bitset<> bits(20);
    for (int r : selected)
        bits.set(static_cast<std::size_t>(r));
    d->vertexTable()->setNewRowSelection(bits);
    const std::vector<int> got = d->chartDataRows();
    QCOMPARE(static_cast<int>(got.size()), rows);
    if (validOnly && selected.isEmpty())
        QCOMPARE(got, (std::vector<int>{1, 2, 5, 8}));

    // The bar chart takes the same rows, and only while its tab is in front.
    QRKEBarChartWidget* bar = d->barChart();
    d->updateBarChart();
    QCOMPARE(bar->barDiagram()->data().rowCount(), 0);
    d->tabWidget()->setCurrentWidget(d->tabWidget()->findPage(QStringLiteral("BARCHART")));
    QCOMPARE(bar->rows(), got);
    const int drawn = got.empty() ? 20 : rows;
    QCOMPARE(bar->barDiagram()->data().rowCount(), drawn);
    // The ticked numeric columns of the test data are the bars: X, Y and Z.
    QCOMPARE(bar->barDiagram()->data().seriesCount(), 3);
    QVERIFY(!d->chartUpdateNeeded(1));
}

void TestDataAnalyserDialog::insertAndRemoveRows_data()
{
    QTest::addColumn<QList<int>>("selected");
    QTest::addColumn<bool>("insert");
    QTest::addColumn<int>("rowsAfter");
    QTest::newRow("insert without a selection appends") << QList<int>{} << true << 21;
    QTest::newRow("insert after each selected row") << QList<int>{2, 5} << true << 22;
    QTest::newRow("remove the selected rows") << QList<int>{1, 3, 4} << false << 17;
    QTest::newRow("remove nothing") << QList<int>{} << false << 20;
}

void TestDataAnalyserDialog::insertAndRemoveRows()
{
    QFETCH(QList<int>, selected);
    QFETCH(bool, insert);
    QFETCH(int, rowsAfter);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QSignalSpy modified(d.get(), SIGNAL(dataModified(bool)));
    boost::dynamic_bitset<> bits(20);
    for (int r : selected)
        bits.set(static_cast<std::size_t>(r));
    d->vertexTable()->setNewRowSelection(bits);
    MatrixData* x = d->dataRoot()->getNodeFromName(QStringLiteral("X"));
    if (insert) {
        const int row = d->insertAfterSelectedRow(false, false);
        QVERIFY(row >= 0);
        QVERIFY(!x->isValueValid(row, 0)); // a blank record
    } else {
        d->removeSelectedRows(false, false);
        // X held 1 + row: what remains is every record that was not selected, in order.
        QList<double> expected;
        for (int r = 0; r < 20; ++r)
            if (!selected.contains(r))
                expected << 1.0 + r;
        QList<double> remaining;
        for (int r = 0; r < x->validValueRowCount(); ++r)
            remaining << x->toDouble(r, 0);
        QCOMPARE(remaining, expected);
    }
    QCOMPARE(d->vertexItemModel()->rowCount(), rowsAfter);
    QVERIFY(!modified.isEmpty()); // the document changed
    QVERIFY(d->vertexTable()->selectedRows(0).empty());
}

void TestDataAnalyserDialog::removeWithoutSelectionWarns_data()
{
    QTest::addColumn<bool>("wellMarkerMode");
    QTest::addColumn<QString>("text");
    QTest::newRow("markers") << true << "No marker data has been selected.\n Please select Marker data row first.";
    QTest::newRow("dips") << false << "No point / dip data has been selected.\n Please select point / dip data row first.";
}

void TestDataAnalyserDialog::removeWithoutSelectionWarns()
{
    QFETCH(bool, wellMarkerMode);
    QFETCH(QString, text);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d.get()));
    QString seen;
    QTimer::singleShot(0, [&seen] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            seen = box->windowTitle() + QLatin1Char('|') + box->text();
            box->accept();
        }
    });
    d->removeSelectedRows(wellMarkerMode, !wellMarkerMode);
    QCOMPARE(seen, QStringLiteral("Information|") + text);
    QCOMPARE(d->vertexItemModel()->rowCount(), 20);
}

void TestDataAnalyserDialog::markerVisibility_data()
{
    QTest::addColumn<bool>("all");
    QTest::addColumn<bool>("scat");
    QTest::addColumn<bool>("decimated");
    QTest::addColumn<bool>("top");
    QTest::addColumn<bool>("fault");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<bool>("withV"); // false: "$V" is taken out of the tree first
    QTest::addColumn<QList<int>>("shown");
    // Rows: 0 a dip, 1 a SCAT dip, 2 a top (no dip, a horizon), 3 a fault, 4 a horizon with a dip.
    QTest::newRow("all shown") << true << false << false << false << false << true << true << QList<int>{0, 1, 2, 3, 4};
    QTest::newRow("all hidden") << true << false << false << false << false << false << true << QList<int>{};
    QTest::newRow("SCAT only") << false << true << false << false << false << true << true << QList<int>{1};
    QTest::newRow("tops: by type and by the blank dip") << false << false << false << true << false << true << true
                                                        << QList<int>{0, 2};
    QTest::newRow("faults") << false << false << false << false << true << true << true << QList<int>{3};
    QTest::newRow("decimated falls back to dip and azimuth") << false << false << true << false << false << true << true
                                                             << QList<int>{0, 1, 4};
    QTest::newRow("the flag does not hide what passes") << false << true << false << false << false << false << true
                                                        << QList<int>{1};
    // Every flag set to hide: a lookalike column must not stand in for "$V".
    QTest::newRow("without $V nothing happens") << true << true << true << true << true << false << false
                                                << QList<int>{0, 1, 2, 3, 4};
}

void TestDataAnalyserDialog::markerVisibility()
{
    QFETCH(bool, all);
    QFETCH(bool, scat);
    QFETCH(bool, decimated);
    QFETCH(bool, top);
    QFETCH(bool, fault);
    QFETCH(bool, visible);
    QFETCH(bool, withV);
    QFETCH(QList<int>, shown);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    MatrixData* markers = new MatrixData(QStringLiteral("Markers"), -1, -1, QVariant::String, true);
    d->dataRoot()->appendChild(markers, true);
    auto column = [markers](const char* name, QVariant::Type type, const QVariantList& values) {
        auto* c = new MatrixData(QLatin1String(name), values.size(), 1, type, true);
        for (int r = 0; r < values.size(); ++r)
            if (values[r].isValid())
                c->setValue(r, 0, values[r]);
        markers->appendChild(c, false);
        return c;
    };
    const QVariant none;
    MatrixData* v = column("$V", QVariant::Bool, {true, true, true, true, true});
    column("SCAT", QVariant::Bool, {false, true, false, false, false});
    column("dip", QVariant::Double, {10.0, 20.0, none, none, 30.0});
    column("azimuth", QVariant::Double, {100.0, 200.0, none, none, 300.0});
    column("Horizon", QVariant::String, {none, none, "H1", none, "H2"});
    column("Type", QVariant::String, {"Top", "Dip", "Horizon", "Fault", "Dip"});
    std::unique_ptr<MatrixData> detached;
    if (!withV) {
        markers->removeChild(v);
        detached.reset(v);
        column("V", QVariant::Bool, {true, true, true, true, true});
    }
    const QByteArray before = treeBytes(*d->dataRoot());
    d->setMarkerVisibility(all, scat, decimated, top, fault, visible);
    QList<int> got;
    for (int r = 0; r < 5; ++r)
        if (v->value(r, 0).toBool())
            got << r;
    QCOMPARE(got, shown);
    if (!withV)
        QCOMPARE(treeBytes(*d->dataRoot()), before);
}

void TestDataAnalyserDialog::selectCellsDialog()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->showSelectValueCellsDlg();
    QSelectCellsDialog* dlg = d->selectCellsDialog();
    QVERIFY(dlg && dlg->isVisible());
    QCOMPARE(dlg->windowTitle(), QStringLiteral("Select Cell(s)"));
    dlg->setMethod(QSelectCellsDialog::LessThan);
    dlg->setValues(QStringLiteral("3"), QString());
    dlg->setSelectionKind(true, false);
    dlg->okButtonClicked();
    // X and Y run 1..20 and Z is 30: rows 0 and 1 hold a value below 3.
    QCOMPARE(d->vertexTable()->selectedRows(0), (std::vector<int>{0, 1}));
    QCOMPARE(dlg->numberOfSelectedCellsText(), QStringLiteral("2"));
    QCOMPARE(dlg->rowNumberText(), QStringLiteral("1, 1"));
    d->slotScrollToNextSelectedItem(true);
    QCOMPARE(dlg->rowNumberText(), QStringLiteral("2, 1"));
    dlg->setShowSelectedTableCells(true);
    dlg->okButtonClicked();
    QCOMPARE(dlg->numberOfSelectedCellsText(), QStringLiteral("0"));
    QCOMPARE(d->proxyModel()->rowCount(), 2);
    emit dlg->clearFilterSelectedRows();
    QCOMPARE(d->proxyModel()->rowCount(), 20);
    emit dlg->clearSelection();
    QCOMPARE(dlg->numberOfSelectedCellsText(), QStringLiteral("0"));
    QVERIFY(dlg->rowNumberText().isEmpty());
    QVERIFY(d->hideSelectValueCellsDlg());
    QVERIFY(!d->hideSelectValueCellsDlg());
}

void TestDataAnalyserDialog::hideTakesTheSelectDialogAlong()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d.get()));
    d->showSelectValueCellsDlg();
    QVERIFY(d->selectCellsDialog()->isVisible());
    d->hide();
    QVERIFY(!d->selectCellsDialog()->isVisible());
}

void TestDataAnalyserDialog::headerClicks_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<int>("selectedColumn"); // -1: the selection is left alone
    QTest::addColumn<bool>("rectangleOff");
    // With a min/max table its header is the only one shown.
    QTest::newRow("min/max header selects the column") << "min/max" << 2 << false;
    QTest::newRow("row header") << "rows" << -1 << true;
}

void TestDataAnalyserDialog::headerClicks()
{
    QFETCH(QString, header);
    QFETCH(int, selectedColumn);
    QFETCH(bool, rectangleOff);
    UnitRegistry registry;
    auto d = makeDialog(registry);
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d.get()));
    QVertexModelTableView* table = d->vertexTable();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(d->proxyModel()->index(0, 0)).center());
    // X and Y hold 1 and 2 in rows 0 and 1; the scroll buttons then stand on a found cell.
    QVERIFY(table->selectCells(QStringLiteral("3"), QString(), QSelectCellsDialog::LessThan, false, false, false) > 0);
    table->scrollToNextSelectedItem(false);
    QVERIFY(table->selectionRectangleOn());
    QVERIFY(table->currentItem() >= 0);
    const QHeaderView* clicked = header == QLatin1String("rows") ? table->verticalHeader()
                                                                 : d->minMaxVertexTable()->horizontalHeader();
    emit const_cast<QHeaderView*>(clicked)->sectionClicked(selectedColumn >= 0 ? selectedColumn : 0);
    QCOMPARE(table->currentItem(), -1);
    if (rectangleOff)
        QVERIFY(!table->selectionRectangleOn());
    if (selectedColumn >= 0)
        QVERIFY(table->selectionModel()->isColumnSelected(selectedColumn, QModelIndex()));
}

void TestDataAnalyserDialog::minMaxSignalsReachTheSheet()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    // An edit in the min/max table changes cells the sheet shows: the sheet reads them anew.
    QSignalSpy sheetReset(d->vertexItemModel(), SIGNAL(modelReset()));
    emit d->minMaxVertexItemModel()->dataModified(true);
    QVERIFY(!sheetReset.isEmpty());
    // A column kept in a unit of its own is converted to the model unit on request.
    MatrixData* x = d->vertexItemModel()->getNode(0);
    x->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
    x->setNodeUnitKey(1); // feet
    emit d->minMaxVertexTable()->convertNodeUnits(d->vertexItemModel()->index(0, 0));
    QCOMPARE(x->nodeUnitKey(), -1);
    QVERIFY(qFuzzyCompare(x->toDouble(1, 0), 2 * 0.3048));
}

void TestDataAnalyserDialog::refusedPasteKeepsTheSelection()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    MatrixData* x = d->vertexItemModel()->getNode(0);
    x->setNodeEditable(false);
    const QByteArray before = treeBytes(*d->dataRoot());
    boost::dynamic_bitset<> bits(20);
    bits.set(6);
    bits.set(7);
    d->vertexTable()->setNewRowSelection(bits);
    QApplication::clipboard()->setText(QStringLiteral("5\t6"));
    d->pasteFromClipboard();
    QCOMPARE(treeBytes(*d->dataRoot()), before);
    QCOMPARE(d->vertexTable()->selectedRows(0), (std::vector<int>{6, 7}));
}

void TestDataAnalyserDialog::collectionSlotTakesTheEnum()
{
    // Subclasses override it and string-based connections name it by its collection type.
    const QByteArray slot = QMetaObject::normalizedSignature("updateChartDataSetSelectionBox(MatrixData::AttributeCollection)");
    QVERIFY(QDataAnalyserDialog::staticMetaObject.indexOfSlot(slot) >= 0);
}

void TestDataAnalyserDialog::cellViewKeepsItsOffset()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    boost::dynamic_bitset<> bits(20);
    bits.set(5);
    bits.set(6);
    bits.set(1); // would land above the first row, and is dropped
    d->vertexTable()->setNewRowSelection(bits);
    d->updateCellView();
    QCOMPARE(d->vertexTable()->selectedRows(0), (std::vector<int>{2, 3}));
}

QTEST_MAIN(TestDataAnalyserDialog)
#include "tst_qdataanalyserdialog.moc"
