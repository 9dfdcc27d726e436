// The demo host as a user drives it: open files good and bad, edit, undo and redo.
#include <HostMainWindow.h>
#include <MatrixData.h>
#include <QCrossPlot.h>
#include <QCrossPlotWidget.h>
#include <QDataAnalyserDialog.h>
#include <QDepthPlotWidget.h>
#include <QHistogramChartWidget.h>
#include <QHistogramItemModel.h>
#include <QRKEBarChartWidget.h>
#include <QVertexItemModel.h>
#include <DepthLineField.h>
#include <QScatDepthPlotWidget.h>

#include <QPushButton>
#include <QRadioButton>

#include <QtTest>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QMenuBar>
#include <QSettings>
#include <QSpinBox>
#include <QSplitter>
#include <QTemporaryDir>

using rkBase::MatrixData;

class TestHostMainWindow : public QObject
{
    Q_OBJECT
private slots:
    void openAndUndo();
    void undoDerivedColumns();
    void badFiles_data();
    void badFiles();
    void tabsAndSelection_data();
    void tabsAndSelection();
    void chartTabs_data();
    void chartTabs();
    void setControl_data();
    void setControl();
    void scatWellMarkers();
    void closingKeepsTheWindow();
};

namespace {
QAction* action(QMainWindow& w, const QString& prefix)
{
    for (QAction* menu : w.menuBar()->actions())
        for (QAction* a : menu->menu()->actions())
            if (a->text().remove(QLatin1Char('&')).startsWith(prefix))
                return a;
    return nullptr;
}
} // namespace

void TestHostMainWindow::openAndUndo()
{
    HostMainWindow w;
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    rkBase::QVertexItemModel* model = w.analyser()->vertexItemModel();
    QCOMPARE(model->rowCount(), 3000);
    QVERIFY(w.analyser()->dataRoot()->hasOrientationData());
    QAction* undo = action(w, QStringLiteral("Undo"));
    QAction* redo = action(w, QStringLiteral("Redo"));
    QVERIFY(undo && redo);
    QVERIFY(!undo->isEnabled());
    const QModelIndex name = model->index(0, 5);
    QVERIFY(model->setData(name, QStringLiteral("Renamed")));
    QVERIFY(undo->isEnabled());
    QVERIFY(undo->text().contains(QStringLiteral("Edit Cell")));
    undo->trigger();
    QCOMPARE(model->data(model->index(0, 5)).toString(), QStringLiteral("Bedding 1"));
    QVERIFY(redo->isEnabled());
    redo->trigger();
    QCOMPARE(model->data(model->index(0, 5)).toString(), QStringLiteral("Renamed"));
    // A second file becomes a second sheet with a name of its own.
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    QCOMPARE(w.analyser()->dataRoot()->childCount(), 2);
    QCOMPARE(w.analyser()->dataRoot()->child(1)->name(), QStringLiteral("sample_well_1"));
}

// The histogram's random orientations arrive as a new group; Edit > Undo takes the group and
// its columns out of the table again, and Redo brings them back.
void TestHostMainWindow::undoDerivedColumns()
{
    HostMainWindow w;
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    rkBase::QVertexItemModel* model = w.analyser()->vertexItemModel();
    MatrixData* root = w.analyser()->dataRoot();
    const int columns = model->columnCount();
    // The button sits in the two-sample test's box, which the user ticks first.
    rkBase::QHistogramChartWidget* histogram = w.analyser()->histogramChart();
    histogram->findChild<QGroupBox*>(QStringLiteral("twoSampleTestGroupBox"))->setChecked(true);
    auto* button = histogram->findChild<QPushButton*>(QStringLiteral("createRandomOrientation"));
    QVERIFY(button && button->isEnabled());
    button->click();
    QVERIFY(root->getNodeFromName(QStringLiteral("Random:Dip")));
    QCOMPARE(model->columnCount(), columns + 2);
    QAction* undo = action(w, QStringLiteral("Undo"));
    QVERIFY(undo->isEnabled());
    QVERIFY(undo->text().contains(QStringLiteral("Random Orientations")));
    undo->trigger();
    QVERIFY(!root->getNodeFromName(QStringLiteral("Orientation Data")));
    QCOMPARE(model->columnCount(), columns);
    action(w, QStringLiteral("Redo"))->trigger();
    QVERIFY(root->getNodeFromName(QStringLiteral("Random:Dip Azimuth")));
    QCOMPARE(model->columnCount(), columns + 2);
}

void TestHostMainWindow::badFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("loads");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("binary garbage") << QByteArray("\x00\x01\xff\xfe,\x80\x81\n\x02", 10) << true;
    QTest::newRow("ragged with quotes") << QByteArray("a,b\n1,\"x\n2,3,4\n") << true;
}

void TestHostMainWindow::badFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, loads);
    QTemporaryDir dir;
    QFile f(dir.filePath(QStringLiteral("bad.csv")));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    f.close();
    HostMainWindow w;
    QCOMPARE(w.openCsv(f.fileName(), true), loads);
    QCOMPARE(w.analyser()->dataRoot()->childCount(), loads ? 1 : 0);
}

void TestHostMainWindow::tabsAndSelection_data()
{
    QTest::addColumn<QString>("tab");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("barRows"); // rows the bar chart draws; -1 when it is not in front
    QTest::newRow("bar chart, all rows") << "BARCHART" << true << 0 << 0 << 3000;
    QTest::newRow("bar chart, a selection") << "BARCHART" << true << 1001 << 1400 << 400;
    QTest::newRow("a selection running past the end") << "BARCHART" << true << 2901 << 5000 << 100;
    QTest::newRow("the table") << "TABLE" << true << 0 << 0 << -1;
    QTest::newRow("a key without a tab") << "NOSUCHTAB" << false << 0 << 0 << -1;
    QTest::newRow("a selection outside the sheet") << "BARCHART" << true << 4000 << 5000 << 3000;
}

void TestHostMainWindow::tabsAndSelection()
{
    QFETCH(QString, tab);
    QFETCH(bool, shown);
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, barRows);
    HostMainWindow w;
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    if (first > 0)
        QCOMPARE(w.selectRows(first, last), first <= 3000);
    QCOMPARE(w.showTab(tab), shown);
    rkBase::QRKEBarChartWidget* bar = w.analyser()->barChart();
    QVERIFY(bar);
    if (barRows < 0) {
        QCOMPARE(bar->barDiagram()->data().rowCount(), 0);
        return;
    }
    QCOMPARE(bar->barDiagram()->data().rowCount(), barRows);
    if (first > 0 && first <= 3000)
        QCOMPARE(bar->rows().front(), first - 1);
}

void TestHostMainWindow::chartTabs_data()
{
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QString>("horizontal");
    QTest::addColumn<QString>("vertical");
    QTest::newRow("cross plot") << "CROSSPLOT" << "Measured Depth" << "Porosity";
    QTest::newRow("depth plot") << "WELLLOGPLOT" << "Porosity" << "Measured Depth";
}

void TestHostMainWindow::chartTabs()
{
    QFETCH(QString, tab);
    QFETCH(QString, horizontal);
    QFETCH(QString, vertical);
    HostMainWindow w;
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    QVERIFY(w.selectRows(1001, 1400));
    QVERIFY(w.showTab(tab));
    rkBase::QCrossPlotWidget* panel = tab == QLatin1String("CROSSPLOT")
                                          ? w.analyser()->crossPlotChart()
                                          : static_cast<rkBase::QCrossPlotWidget*>(w.analyser()->depthPlotChart());
    QVERIFY(panel && panel->horizontalDataSet() && panel->verticalDataSet());
    QCOMPARE(panel->horizontalDataSet()->name(), horizontal);
    QCOMPARE(panel->verticalDataSet()->name(), vertical);
    QCOMPARE(panel->model()->pointCount(), 3000);
    QCOMPARE(panel->model()->numberOfSelectedPoints(), 400);
    QCOMPARE(w.currentChart(), static_cast<rkBase::QChartDrawingArea*>(panel->drawingArea()));
}

void TestHostMainWindow::setControl_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("set");
    QTest::newRow("a box's entry") << "m_pqHistogramDataSetComboBox" << "Porosity" << true;
    QTest::newRow("an entry the box lacks") << "m_pqHistogramDataSetComboBox" << "Gold" << false;
    QTest::newRow("a checkable group") << "twoSampleTestGroupBox" << "true" << true;
    QTest::newRow("a check box") << "m_pqP50CheckBox" << "true" << true;
    QTest::newRow("a check box, not a truth") << "m_pqP50CheckBox" << "yes" << false;
    QTest::newRow("a spin box") << "lineWidthSpinBox" << "4" << true;
    QTest::newRow("no such control") << "m_pqNoSuchControl" << "1" << false;
}

void TestHostMainWindow::setControl()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QFETCH(bool, set);
    HostMainWindow w;
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    QVERIFY(w.showTab(QStringLiteral("HISTOGRAM")));
    QCOMPARE(w.setControl(name, value), set);
    rkBase::QHistogramChartWidget* panel = w.analyser()->histogramChart();
    QVERIFY(panel);
    if (name == QLatin1String("m_pqHistogramDataSetComboBox") && set) {
        // Chosen as a user chooses: the panel reloads with that column.
        QCOMPARE(panel->histogramData()->name(), value);
        QCOMPARE(panel->histogramModel()->sampleSize(), 3000);
    }
    if (name == QLatin1String("twoSampleTestGroupBox"))
        QCOMPARE(panel->findChild<QComboBox*>(QStringLiteral("m_pqHistogramTypeComboBox"))->currentIndex(), 2);
    QVERIFY(w.showChartPage(QStringLiteral("Kolmogorov-Smirnov Two-Sample Test")));
}

// The SCAT window's well marker buttons: a top picked in the window becomes a marker row of the
// sheet (SCAT ticked), and erased there it leaves the sheet again.
void TestHostMainWindow::scatWellMarkers()
{
    HostMainWindow w;
    QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    rkBase::QScatDepthPlotWidget* scat = w.scatWindow();
    QVERIFY(scat);
    MatrixData* root = w.analyser()->dataRoot();
    MatrixData* depth = root->getNodeFromName(QStringLiteral("Measured Depth"));
    const int rows = depth->rowCount();
    const std::size_t seeded = scat->structuralTops()->lineDepths().size();
    QCOMPARE(seeded, std::size_t(85)); // the sheet's SCAT rows
    // Shown, so that a pick's tolerance is three pixels of a real track.
    w.showScatWindow();
    QVERIFY(QTest::qWaitForWindowExposed(scat));
    scat->findChild<QRadioButton*>(QStringLiteral("HorizonRadioButton"))->setChecked(true);
    scat->slotInsertScatUpdate(QPointF(0.0, 1234.25));
    scat->findChild<QPushButton*>(QStringLiteral("createWellMarkersBtn"))->click();
    QCOMPARE(depth->rowCount(), rows + 1);
    QCOMPARE(depth->value(rows, 0).toDouble(), 1234.25);
    QCOMPARE(root->getNodeFromName(QStringLiteral("Name"))->value(rows, 0).toString(), QStringLiteral("Horizon_0"));
    QVERIFY(root->getNodeFromName(QStringLiteral("SCAT"))->value(rows, 0).toBool());
    // Read back from the well, the new top knows its row.
    rkBase::DepthLineField* tops = scat->structuralTops();
    QCOMPARE(tops->lineDepths().size(), seeded + 1);
    const auto at = std::find(tops->lineDepths().begin(), tops->lineDepths().end(), 1234.25) - tops->lineDepths().begin();
    QCOMPARE(tops->originalRowPos()[std::size_t(at)], rows);
    scat->slotPickPosUpdate({int(at)});
    scat->slotDeleteSelected();
    scat->findChild<QPushButton*>(QStringLiteral("deleteWellMarkersBtn"))->click();
    QCOMPARE(depth->rowCount(), rows);
    QCOMPARE(scat->structuralTops()->lineDepths().size(), seeded);
}

QTEST_MAIN(TestHostMainWindow)
void TestHostMainWindow::closingKeepsTheWindow()
{
    QSettings().clear();
    QByteArray tree;
    {
        HostMainWindow w;
        w.resize(1200, 800);
        w.show();
        QVERIFY(w.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
        QSplitter* splitter = w.analyser()->treeSplitter();
        splitter->setSizes({230, 900});
        tree = splitter->saveState();
        QVERIFY(w.showTab(QStringLiteral("CROSSPLOT")));
        QVERIFY(w.setControl(QStringLiteral("m_pqShowGrid"), QStringLiteral("false")));
        QVERIFY(w.setControl(QStringLiteral("m_pqPixelSizeSpinBox"), QStringLiteral("5")));
        QVERIFY(w.close());
    }
    // The next start, before any file is opened.
    HostMainWindow next;
    QCOMPARE(next.analyser()->treeSplitter()->saveState(), tree);
    auto* grid = next.analyser()->crossPlotChart()->findChild<QCheckBox*>(QStringLiteral("m_pqShowGrid"));
    auto* size = next.analyser()->crossPlotChart()->findChild<QSpinBox*>(QStringLiteral("m_pqPixelSizeSpinBox"));
    QVERIFY(grid && size);
    QVERIFY(!grid->isChecked());
    QCOMPARE(size->value(), 5);
    QSettings().clear();
}

#include "tst_hostmainwindow.moc"
