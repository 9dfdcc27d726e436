// The analyser window with the table alone: set-up, tabs, data roots, Save As and settings.
#include <MatrixData.h>
#include <QAttributeTreeView.h>
#include <QDataAnalyserDialog.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexMinMaxItemModel.h>
#include <QVertexModelTableView.h>
#include <TabWidgetWithFloatingTabs.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QAction>
#include <QFrame>
#include <QGroupBox>
#include <QMenu>
#include <QSettings>
#include <QSplitter>
#include <QTemporaryDir>

#include <memory>

using namespace rkBase;

namespace {
std::unique_ptr<QDataAnalyserDialog> makeDialog(UnitRegistry& registry, int minMaxMode = 1,
                                                void (QDataAnalyserDialog::*fill)() = &QDataAnalyserDialog::initializeTestData)
{
    auto dialog = std::make_unique<QDataAnalyserDialog>();
    dialog->dataRoot()->setRegistry(&registry);
    ((*dialog).*fill)();
    dialog->initialize(QStringLiteral("test"), nullptr, &registry, Qt::Horizontal, false, true, true, true, true, true,
                       minMaxMode, false, false);
    return dialog;
}

QStringList tabKeys(const QDataAnalyserDialog& d)
{
    QStringList keys;
    for (int i = 0; i < d.tabWidget()->count(); ++i)
        keys << d.tabWidget()->widget(i)->objectName();
    return keys;
}

QWidget* addPage(QDataAnalyserDialog& d, const QString& key)
{
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
};

void TestDataAnalyserDialog::init()
{
    QSettings().clear();
}

void TestDataAnalyserDialog::setUp()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QCOMPARE(tabKeys(*d), QStringList{"TABLE"});
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

void TestDataAnalyserDialog::orientationTabs()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    QWidget* stereo = addPage(*d, QStringLiteral("STEREOPLOT"));
    addPage(*d, QStringLiteral("WELLLOGPLOT"));
    d->hideShowOrientationWindows(); // no orientation data in the test sheet
    QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "WELLLOGPLOT"}));
    QVERIFY(!stereo->isVisible());
    auto* group = d->dataRoot()->child(0);
    group->appendChild(new MatrixData(QStringLiteral("dip"), 3, 1, QVariant::Double, true), false);
    d->hideShowOrientationWindows();
    d->hideShowOrientationWindows(); // twice adds no second copy
    QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "WELLLOGPLOT", "STEREOPLOT"}));
    d->hideTab(QStringLiteral("NOSUCHTAB"));
    d->showTab(QStringLiteral("NOSUCHTAB"), QStringLiteral("x"));
    QCOMPARE(d->tabWidget()->count(), 3);
}

void TestDataAnalyserDialog::ultraLightMode()
{
    UnitRegistry registry;
    auto d = makeDialog(registry);
    for (const char* key : {"BARCHART", "ROSEPLOT", "HISTOGRAM", "CROSSPLOT", "STEREOPLOT", "TANGENTPLOT", "WELLLOGPLOT"})
        addPage(*d, QLatin1String(key));
    d->setUltraLightMode();
    QCOMPARE(tabKeys(*d), (QStringList{"TABLE", "ROSEPLOT", "STEREOPLOT", "TANGENTPLOT"}));
}

void TestDataAnalyserDialog::testData_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QStringList>("groups");
    QTest::addColumn<int>("ticked");
    QTest::newRow("test data") << 0 << QStringList{"Vertex", "Compaction", "Time/Depth Conversion", "Thickness", "Container Group"} << 5;
    QTest::newRow("rock properties") << 1 << QStringList{"Compounds", "Compaction", "Time/Depth Conversion"} << 3;
    QTest::newRow("stratigraphy") << 2 << QStringList{"Stratigraphy"} << 5;
    QTest::newRow("dummy") << 3 << QStringList{"Sheet1"} << 14;
}

void TestDataAnalyserDialog::testData()
{
    QFETCH(int, which);
    QFETCH(QStringList, groups);
    QFETCH(int, ticked);
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
    if (which == 1)
        QCOMPARE(d.dataRoot()->maxName(), QStringLiteral("Shale"));
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
    d->vertexTable()->setRowSelection(std::vector<int>(selected.begin(), selected.end()));
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

QTEST_MAIN(TestDataAnalyserDialog)
#include "tst_qdataanalyserdialog.moc"
