// The cross plot panel driven through its controls, found by object name: the form as shipped,
// automatic update off, the display type, bins, the decimation question, zoom and scroll, the
// background and font of the axes, settings written and read back (and read from a damaged
// file), and input that must neither crash nor lose data.
#include "PanelFixture.h"

#include <PanelColorButton.h>
#include <QCartesianAxisWidget.h>
#include <QCrossPlot.h>
#include <QLegendListModel.h>
#include <QDepthPlotWidget.h>
#include <QUnitLineEdit.h>

#include <DisplayUnitManager.h>
#include <UnitRegistry.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSet>
#include <QTableWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QToolBox>

#include <limits>

using namespace rkBase;
using namespace panelfixture;

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

void fillXY(Sheet& s, int rows = 20)
{
    QVector<double> x, y;
    for (int i = 0; i < rows; ++i) {
        x << i;
        y << 2.0 * i + 1.0;
    }
    s.add(QStringLiteral("x"), x);
    s.add(QStringLiteral("y"), y);
}

} // namespace

class TestCrossPlotWidget : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<MatrixData*>("MatrixData*"); }
    void formDefaults_data();
    void formDefaults();
    void toolBoxPages();
    void displayTypeMapping_data();
    void displayTypeMapping();
    void automaticUpdateOff();
    void bins_data();
    void bins();
    void decimationQuestion_data();
    void decimationQuestion();
    void zoomAndScrollBars();
    void blackBackground();
    void fontSizeReachesAxes();
    void settingsRoundTrip();
    void settingsGarbage();
    void badAxisColumns_data();
    void badAxisColumns();
    void samplingAboveRows();
    void boundaryEdits();
    void clustersAboveRows();
    void clusterMeansTable();
    void cursorLabelInDisplayUnits_data();
    void cursorLabelInDisplayUnits();
    void colourRangeReset();
    void colourMapDirection_data();
    void colourMapDirection();
    void columnLostWhileOpen();
    void depthTrackOffersDepthOnly();
    void reloadAfterOwnLasso_data();
    void reloadAfterOwnLasso();
};

void TestCrossPlotWidget::formDefaults_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected");
    auto row = [](const char* c, const char* p, const QVariant& v) {
        QTest::addRow("%s.%s", c, p) << QString::fromLatin1(c) << QString::fromLatin1(p) << v;
    };
    row("m_pqShowGrid", "checked", true);
    row("m_pqShowBisectingLine", "checked", false);
    row("m_pqShowRegressionLine", "checked", false);
    row("m_pqShow90PercentRange", "checked", false);
    row("m_pqShowRegressionEquation", "checked", false);
    row("m_pqShowPointConnectionLine", "checked", false);
    row("m_pqShowStratigraphy", "checked", true);
    row("m_pqShowStratigraphyLabels", "checked", false);
    row("m_pqShowPoints", "checked", true);
    row("m_pqShowPoints", "text", QStringLiteral("Points"));
    row("m_pqShow90PercentRange", "text", QStringLiteral("90% Range"));
    row("m_pqZoomFactorSpinBox", "value", 1.0);
    row("m_pqZoomFactorSpinBox", "minimum", 1.0);
    row("m_pqZoomFactorSpinBox", "maximum", 20.0);
    row("m_pqZoomFactorSpinBox", "singleStep", 0.1);
    row("m_pqZoomFactorSpinBox", "enabled", false);
    row("automaticCrossPlotUpdate", "checked", true);
    row("updateCrossPlot", "enabled", false);
    row("updateCrossPlot", "text", QStringLiteral("Update Cross Plot Chart"));
    row("m_pqPixelSizeSpinBox", "value", 2);
    row("m_pqPixelSizeSpinBox", "maximum", 40);
    row("m_pqLinePixelSizeSpinBox", "value", 2);
    row("m_pqLinePixelSizeSpinBox", "maximum", 5);
    row("m_pqShowDefinedSymbolsOnly", "checked", true);
    row("m_pqShowDefinedSymbolsOnly", "text", QStringLiteral("Show cross plot points with defined symbols only"));
    row("m_pqVertexFilterSpinBox", "minimum", 1);
    row("m_pqVertexFilterSpinBox", "maximum", 1000);
    row("m_pqMultiSymbol", "checked", true);
    row("m_pqBlueRedRadioBtn", "checked", true);
    row("resetColorAttributeDisplay", "text", QStringLiteral("Expand Colour Map to Maximum Value Range"));
    row("numberOfClustersSpinBox", "minimum", 2);
    row("numberOfClustersSpinBox", "maximum", 100000);
    row("showCentroidsCheckBox", "checked", true);
    row("intervalSizeRadioBtn", "checked", true);
    row("numbOfIntervalsSpinBox", "value", 10);
    row("numbOfIntervalsSpinBox", "maximum", 300);
    row("graphicalActionRadioBtn", "text", QStringLiteral("Manual"));
    row("showIntervalAverages", "checked", true);
    row("showCountDataPerInterval", "checked", true);
    row("showBinBoundaries", "checked", true);
    row("m_paReplaceDecimated", "checked", true);
    row("m_paMergeToDecimated", "text", QStringLiteral("Merge to Existing Decimated Data"));
    row("m_pqWhiteBackgroundBtn", "checked", true);
    row("m_pqFontSizeSpinBox", "minimum", 0.0);
    row("m_pqFontSizeSpinBox", "maximum", 100.0);
    row("horizontalScrollBar", "maximum", 100);
    row("horizontalScrollBar", "value", 50);
    row("verticalScrollBar", "singleStep", 1);
    row("dataDecimationGroupBox", "enabled", false);
    row("createNewAttributeGroupBox", "enabled", false);
}

void TestCrossPlotWidget::formDefaults()
{
    QFETCH(QString, control);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);
    QCrossPlotWidget w(nullptr, nullptr);
    QObject* c = w.findChild<QObject*>(control);
    QVERIFY2(c, qPrintable(control));
    const QVariant got = c->property(property.toLatin1().constData());
    QVERIFY(got.isValid());
    if (expected.type() == QVariant::Double)
        QVERIFY2(qFuzzyCompare(got.toDouble(), expected.toDouble()), qPrintable(got.toString()));
    else
        QCOMPARE(got.toString(), expected.toString());
}

void TestCrossPlotWidget::toolBoxPages()
{
    QCrossPlotWidget w(nullptr, nullptr);
    auto* box = w.findChild<QToolBox*>(QStringLiteral("m_pqToolBox"));
    QVERIFY(box);
    const QStringList names = {"page1", "SymbolAttributeSettings", "ColourAttributeSettings", "ClusterGeneration",
                               "DataDecimation", "page3", "page2"};
    const QStringList titles = {"Display", "Symbol Attribute Settings", "Colour Attribute Settings",
                                "Cluster Generation", "Data Decimation", "Annotation/ Display Settings",
                                "Data Statistics"};
    QCOMPARE(box->count(), names.size());
    for (int i = 0; i < names.size(); ++i) {
        QCOMPARE(box->widget(i)->objectName(), names[i]);
        QCOMPARE(box->itemText(i), titles[i]);
    }
    // Without decimation the page goes, and its controls stay answerable by name.
    QCrossPlotWidget lean(nullptr, nullptr, true, true, false);
    auto* leanBox = lean.findChild<QToolBox*>(QStringLiteral("m_pqToolBox"));
    QCOMPARE(leanBox->count(), names.size() - 1);
    QVERIFY(lean.findChild<QPushButton*>(QStringLiteral("calculatePushButton")));
}

void TestCrossPlotWidget::displayTypeMapping_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::newRow("0") << 0 << "All + Highlight Selection" << int(QRelationshipItemModel::HighlightSelected);
    QTest::newRow("1") << 1 << "All" << int(QRelationshipItemModel::ShowAll);
    QTest::newRow("2") << 2 << "Selected Data Only" << int(QRelationshipItemModel::ShowSelectedOnly);
}

void TestCrossPlotWidget::displayTypeMapping()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(int, type);
    Sheet s;
    fillXY(s);
    Panel p(s);
    p.show("x", "y");
    auto* box = p.child<QComboBox>("displayDataTypeComboBox");
    QCOMPARE(box->itemText(index), text);
    p.w->setDisplayDataType(QRelationshipItemModel::DisplayType(type));
    QCOMPARE(box->currentIndex(), index);
    QCOMPARE(int(p.w->displayDataType()), type);

    // Between "All" and highlighting nothing is re-read; "Selected Data Only" re-reads.
    p.w->setDisplayDataType(QRelationshipItemModel::HighlightSelected);
    p.reloads = 0;
    p.activate("displayDataTypeComboBox", text);
    QCOMPARE(p.reloads, type == QRelationshipItemModel::ShowSelectedOnly ? 1 : 0);
}

void TestCrossPlotWidget::automaticUpdateOff()
{
    Sheet s;
    fillXY(s);
    s.add(QStringLiteral("z"), {5, 6, 7});
    Panel p(s);
    p.show("x", "y");
    p.child<QCheckBox>("automaticCrossPlotUpdate")->setChecked(false);
    QVERIFY(p.child<QPushButton>("updateCrossPlot")->isEnabled());
    p.reloads = 0;
    p.activate("m_pqHorizontalComboBox", "z");
    p.child<QSpinBox>("m_pqVertexFilterSpinBox")->setValue(5);
    p.child<QUnitLineEdit>("m_pqHoriMaxAxis")->setModelValue(1000.0, true);
    QCOMPARE(p.reloads, 0);
    QCOMPARE(p.w->horizontalDataSet()->name(), QStringLiteral("x"));
    QVERIFY(p.w->drawingArea()->maxPoint().x() < 1000.0);
    p.child<QPushButton>("updateCrossPlot")->click();
    QCOMPARE(p.reloads, 1);
    QCOMPARE(p.w->horizontalDataSet()->name(), QStringLiteral("z"));
    // With the same columns, a typed boundary counts once the update runs.
    p.child<QUnitLineEdit>("m_pqHoriMaxAxis")->setModelValue(1000.0, true);
    QVERIFY(p.w->drawingArea()->maxPoint().x() < 1000.0);
    p.child<QPushButton>("updateCrossPlot")->click();
    QCOMPARE(p.reloads, 2);
    QCOMPARE(p.w->drawingArea()->maxPoint().x(), 1000.0);

    // Back on: the box reaches the owner again.
    p.child<QCheckBox>("automaticCrossPlotUpdate")->setChecked(true);
    p.activate("m_pqHorizontalComboBox", "x");
    QCOMPARE(p.reloads, 3);
}

void TestCrossPlotWidget::bins_data()
{
    QTest::addColumn<bool>("bySize");
    QTest::addColumn<double>("size");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("made");
    // y runs 1 to 39.
    QTest::newRow("size 10") << true << 10.0 << 0 << true;
    QTest::newRow("number 4") << false << 0.0 << 4 << true;
    QTest::newRow("size 0") << true << 0.0 << 0 << false;
    QTest::newRow("size negative") << true << -5.0 << 0 << false;
    QTest::newRow("size making millions") << true << 1e-6 << 0 << false;
}

void TestCrossPlotWidget::bins()
{
    QFETCH(bool, bySize);
    QFETCH(double, size);
    QFETCH(int, count);
    QFETCH(bool, made);
    Sheet s;
    fillXY(s);
    Panel p(s);
    p.show("x", "y");
    if (bySize) {
        p.child<QUnitLineEdit>("intervalSizeUnitLineEdit")->setModelValue(size, false);
        p.child<QPushButton>("createsByIntervalSizePushButton")->click();
    } else {
        p.child<QRadioButton>("numbOfIntervalsRadioBtn")->setChecked(true);
        p.child<QSpinBox>("numbOfIntervalsSpinBox")->setValue(count);
        p.child<QPushButton>("createByNumbofIntervalsPushButton")->click();
    }
    DepthLineField* filter = p.w->model()->intervalFilter();
    const int lines = filter ? int(filter->lineDepths().size()) : 0;
    QCOMPARE(lines > 0, made);
    QCOMPARE(p.child<QWidget>("dataDecimationGroupBox")->isEnabled(), made);
    QCOMPARE(p.child<QWidget>("createNewAttributeGroupBox")->isEnabled(), made);
    if (made) {
        QVERIFY(lines >= 4);
        QVERIFY(lines <= 6);
        p.child<QPushButton>("deleteIntervalsPushButton")->click();
        QVERIFY(!p.child<QWidget>("dataDecimationGroupBox")->isEnabled());
    }
}

void TestCrossPlotWidget::decimationQuestion_data()
{
    QTest::addColumn<QString>("horizontal");
    QTest::addColumn<bool>("replaceOriginal");
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("questions");
    QTest::addColumn<int>("emitted");
    QTest::newRow("dip, replace, yes") << "dip" << true << int(QMessageBox::Yes) << 1 << 1;
    QTest::newRow("dip, replace, no") << "dip" << true << int(QMessageBox::No) << 1 << 0;
    QTest::newRow("dip, merge") << "dip" << false << int(QMessageBox::No) << 0 << 1;
    QTest::newRow("other column") << "x" << true << int(QMessageBox::No) << 0 << 1;
}

void TestCrossPlotWidget::decimationQuestion()
{
    QFETCH(QString, horizontal);
    QFETCH(bool, replaceOriginal);
    QFETCH(int, answer);
    QFETCH(int, questions);
    QFETCH(int, emitted);
    Sheet s;
    fillXY(s);
    s.add(QStringLiteral("dip"), {10, 20, 30, 40, 50, 60, 70, 80});
    Panel p(s);
    int asked = 0;
    QString askedText;
    p.w->setQuestion([&](QWidget*, const QString& title, const QString& text) {
        ++asked;
        askedText = title + QLatin1Char('|') + text;
        return QMessageBox::StandardButton(answer);
    });
    p.show(horizontal, "y");
    p.child<QRadioButton>("numbOfIntervalsRadioBtn")->setChecked(true);
    p.child<QPushButton>("createByNumbofIntervalsPushButton")->click();
    if (replaceOriginal)
        p.child<QRadioButton>("m_paReplaceOriginal")->setChecked(true);
    QSignalSpy spy(p.w.get(), &QCrossPlotWidget::createDataDecimationAttribute);
    p.child<QPushButton>("newAttributeFromBinAveragePushButton")->click();
    QCOMPARE(asked, questions);
    QCOMPARE(spy.count(), emitted);
    if (questions)
        QCOMPARE(askedText,
                 QStringLiteral("Create New Attributes|Do you really want to replace your original dip/azimuth data?"));
    if (emitted) {
        QCOMPARE(spy[0][1].toBool(), true);
        QCOMPARE(spy[0][2].toBool(), replaceOriginal && horizontal == QLatin1String("dip"));
    }
    // The count button never asks.
    asked = 0;
    p.child<QPushButton>("newAttributeFromNumbOfDataPerBinPushButton")->click();
    QCOMPARE(asked, 0);
    QCOMPARE(spy.last()[1].toBool(), false);
}

void TestCrossPlotWidget::zoomAndScrollBars()
{
    Sheet s;
    fillXY(s);
    Panel p(s);
    p.show("x", "y");
    auto* check = p.child<QCheckBox>("m_pqZoomCheckBox");
    auto* spin = p.child<QDoubleSpinBox>("m_pqZoomFactorSpinBox");
    auto* hbar = p.child<QScrollBar>("horizontalScrollBar");
    auto* vbar = p.child<QScrollBar>("verticalScrollBar");
    check->setChecked(true);
    QVERIFY(spin->isEnabled());
    QVERIFY(p.w->drawingArea()->mouseZoomEnabled());
    spin->setValue(3.0);
    QCOMPARE(p.w->drawingArea()->zoomFactor(), 3.0);
    QVERIFY(!hbar->isHidden());
    QVERIFY(!vbar->isHidden());
    QCOMPARE(hbar->pageStep(), 50);
    for (QCartesianAxisWidget* a : p.w->axes().all())
        QCOMPARE(a->zoom(), 3.0);
    hbar->setValue(100);
    vbar->setValue(0);
    QVERIFY(p.w->drawingArea()->xOffsetPixels() > 0);
    QCOMPARE(p.w->axes().top()->offset(), 100);
    // The left axis counts from its origin at the bottom.
    QCOMPARE(p.w->axes().left()->offset(), 100);
    check->setChecked(false);
    QCOMPARE(p.w->drawingArea()->zoomFactor(), 1.0);
    QVERIFY(hbar->isHidden());
    QVERIFY(vbar->isHidden());
}

void TestCrossPlotWidget::blackBackground()
{
    Sheet s;
    fillXY(s);
    Panel p(s);
    p.show("x", "y");
    p.child<QRadioButton>("m_pqBlackBackgroundBtn")->setChecked(true);
    QCOMPARE(p.w->drawingArea()->labelColor(), QColor(Qt::white));
    QCOMPARE(p.w->axes().left()->palette().color(QPalette::WindowText), QColor(Qt::white));
    p.child<QRadioButton>("m_pqWhiteBackgroundBtn")->setChecked(true);
    QCOMPARE(p.w->drawingArea()->labelColor(), QColor(Qt::black));
    QCOMPARE(p.w->axes().left()->palette().color(QPalette::Base), QColor(Qt::white));
}

void TestCrossPlotWidget::fontSizeReachesAxes()
{
    QCrossPlotWidget w(nullptr, nullptr);
    w.findChild<QDoubleSpinBox*>(QStringLiteral("m_pqFontSizeSpinBox"))->setValue(17.0);
    QCOMPARE(w.axes().all().size(), 4);
    for (QCartesianAxisWidget* a : w.axes().all())
        QCOMPARE(a->fontPointSize(), 17.0);
}

void TestCrossPlotWidget::settingsRoundTrip()
{
    Sheet s;
    fillXY(s);
    s.add(QStringLiteral("z"), {1, 2, 3});
    const QString prefix = QStringLiteral("roundtrip/crossplot/");
    QSettings().remove(QStringLiteral("roundtrip"));
    Panel a(s);
    a.w->readSettings(prefix); // nothing stored yet: defaults, and the prefix for writing
    a.show("z", "x");
    for (const char* name : {"m_pqShowGrid", "m_pqShowBisectingLine", "m_pqShow90PercentRange", "m_pqShowRegressionLine",
                             "m_pqShowRegressionEquation", "m_pqShowPointConnectionLine", "m_pqShowPoints",
                             "m_pqZoomCheckBox", "m_pqShowDefinedSymbolsOnly", "showIntervalAverages",
                             "showCountDataPerInterval", "showBinBoundaries"})
        a.child<QCheckBox>(name)->toggle();
    a.child<QCheckBox>("automaticCrossPlotUpdate")->setChecked(false);
    a.child<QDoubleSpinBox>("m_pqZoomFactorSpinBox")->setValue(4.5);
    a.child<QScrollBar>("horizontalScrollBar")->setValue(20);
    a.child<QScrollBar>("verticalScrollBar")->setValue(70);
    a.child<QSpinBox>("m_pqVertexFilterSpinBox")->setValue(7);
    a.child<QComboBox>("m_pqPointStyleComboBox")->setCurrentIndex(3);
    a.child<QSpinBox>("m_pqPixelSizeSpinBox")->setValue(9);
    a.child<QSpinBox>("m_pqLinePixelSizeSpinBox")->setValue(4);
    PanelColorButton::setColor(a.child<QPushButton>("pointColorButton"), QColor("#12AB34"));
    PanelColorButton::setColor(a.child<QPushButton>("lineColorButton"), QColor("#ABCDEF"));
    a.child<QRadioButton>("m_pqSingleSymbol")->setChecked(true);
    a.child<QLineEdit>("m_pqMinRange")->setText("1.5");
    a.child<QLineEdit>("m_pqMaxRange")->setText("9.5");
    a.child<QLineEdit>("m_pqIntervallSize")->setText("0.5");
    a.child<QRadioButton>("m_pqRedBlueRadioBtn")->setChecked(true);
    a.child<QSpinBox>("numberOfClustersSpinBox")->setValue(3);
    a.child<QComboBox>("thirdDimComboBox")->setCurrentText("y");
    a.child<QComboBox>("m_pqSymbolAttributeComboBox")->setCurrentText("y");
    a.child<QComboBox>("tadpoleAttributeComboBox")->setCurrentText("x");
    a.child<QComboBox>("m_pqColorAttributeComboBox")->setCurrentText("z");
    a.child<QRadioButton>("numbOfIntervalsRadioBtn")->setChecked(true);
    a.child<QSpinBox>("numbOfIntervalsSpinBox")->setValue(33);
    a.child<QUnitLineEdit>("intervalSizeUnitLineEdit")->setModelValue(12.5, false);
    a.child<QRadioButton>("m_pqBlackBackgroundBtn")->setChecked(true);
    a.child<QUnitLineEdit>("m_pqVertiMinAxis")->setModelValue(-3.0, false);
    a.child<QUnitLineEdit>("m_pqVertiMaxAxis")->setModelValue(30.0, false);
    a.child<QUnitLineEdit>("m_pqHoriMinAxis")->setModelValue(-1.0, false);
    a.child<QUnitLineEdit>("m_pqHoriMaxAxis")->setModelValue(11.0, false);
    a.child<QDoubleSpinBox>("m_pqFontSizeSpinBox")->setValue(21.0);
    a.w->writeSettings();
    Panel c(s);
    c.w->readSettings(prefix);

    const QStringList checks = {"m_pqShowGrid", "m_pqShowBisectingLine", "m_pqShow90PercentRange",
                                "m_pqShowRegressionLine", "m_pqShowRegressionEquation", "m_pqShowPointConnectionLine",
                                "m_pqShowPoints", "m_pqZoomCheckBox", "m_pqShowDefinedSymbolsOnly",
                                "showIntervalAverages", "showCountDataPerInterval", "showBinBoundaries",
                                "automaticCrossPlotUpdate", "m_pqSingleSymbol", "m_pqRedBlueRadioBtn",
                                "numbOfIntervalsRadioBtn", "m_pqBlackBackgroundBtn"};
    for (const QString& n : checks)
        QVERIFY2(c.w->findChild<QAbstractButton*>(n)->isChecked() == a.w->findChild<QAbstractButton*>(n)->isChecked(),
                 qPrintable(n));
    for (const char* n : {"m_pqVertexFilterSpinBox", "m_pqPixelSizeSpinBox", "m_pqLinePixelSizeSpinBox",
                          "numberOfClustersSpinBox", "numbOfIntervalsSpinBox"})
        QCOMPARE(c.child<QSpinBox>(n)->value(), a.child<QSpinBox>(n)->value());
    for (const char* n : {"m_pqZoomFactorSpinBox", "m_pqFontSizeSpinBox"})
        QCOMPARE(c.child<QDoubleSpinBox>(n)->value(), a.child<QDoubleSpinBox>(n)->value());
    for (const char* n : {"horizontalScrollBar", "verticalScrollBar"})
        QCOMPARE(c.child<QScrollBar>(n)->value(), a.child<QScrollBar>(n)->value());
    for (const char* n : {"m_pqPointStyleComboBox", "thirdDimComboBox", "m_pqSymbolAttributeComboBox",
                          "tadpoleAttributeComboBox", "m_pqColorAttributeComboBox", "m_pqHorizontalComboBox",
                          "m_pqVerticalComboBox"})
        QCOMPARE(c.child<QComboBox>(n)->currentText(), a.child<QComboBox>(n)->currentText());
    for (const char* n : {"m_pqMinRange", "m_pqMaxRange", "m_pqIntervallSize"})
        QCOMPARE(c.child<QLineEdit>(n)->text(), a.child<QLineEdit>(n)->text());
    for (const char* n : {"intervalSizeUnitLineEdit", "m_pqVertiMinAxis", "m_pqVertiMaxAxis", "m_pqHoriMinAxis",
                          "m_pqHoriMaxAxis"})
        QCOMPARE(c.child<QUnitLineEdit>(n)->modelValue(), a.child<QUnitLineEdit>(n)->modelValue());
    QCOMPARE(PanelColorButton::color(c.child<QPushButton>("pointColorButton")), QColor("#12AB34"));
    QCOMPARE(PanelColorButton::color(c.child<QPushButton>("lineColorButton")), QColor("#ABCDEF"));
    QCOMPARE(c.w->drawingArea()->labelColor(), QColor(Qt::white));
    QCOMPARE(c.child<QComboBox>("m_pqHorizontalComboBox")->currentText(), QStringLiteral("z"));
}

void TestCrossPlotWidget::settingsGarbage()
{
    const QString prefix = QStringLiteral("garbage/crossplot/");
    {
        QSettings st;
        st.remove(QStringLiteral("garbage"));
        for (const char* g : {"display", "point_style", "line_style", "add_attributes", "symbol_attribute_settings",
                              "color_map_settings", "cluster_generation", "data_decimation", "display_settings",
                              "splitter_sizes"}) {
            st.beginGroup(prefix + QString::fromLatin1(g));
            for (const char* k : {"show_grid", "zoom_factor", "zoom_factor_on", "zoom_horizontalScrollBar", "vertex_sampling",
                                  "type", "size", "point_color", "line_color", "symbols_attribute",
                                  "single_point_style", "multiple_point_style", "color_map_min_range",
                                  "color_map_blue_red", "color_map_red_blue", "expected_clusters", "bin_size",
                                  "numb_of_bins", "bin_size_on", "numb_of_bins_on", "background_white",
                                  "background_black", "vertical_min", "font_size", "side_panel_splitter",
                                  "automatic_update", "show_points"})
                st.setValue(QString::fromLatin1(k), QStringLiteral("#garbage;-1e999"));
            st.endGroup();
        }
    }
    QCrossPlotWidget fresh(nullptr, nullptr);
    QCrossPlotWidget w(nullptr, nullptr);
    w.readSettings(prefix);
    for (QAbstractButton* b : fresh.findChildren<QAbstractButton*>())
        if (b->isCheckable() && !b->objectName().isEmpty())
            QVERIFY2(w.findChild<QAbstractButton*>(b->objectName())->isChecked() == b->isChecked(),
                     qPrintable(b->objectName()));
    for (QSpinBox* b : fresh.findChildren<QSpinBox*>())
        if (!b->objectName().isEmpty())
            QVERIFY2(w.findChild<QSpinBox*>(b->objectName())->value() == b->value(), qPrintable(b->objectName()));
    for (QDoubleSpinBox* b : fresh.findChildren<QDoubleSpinBox*>())
        if (!b->objectName().isEmpty())
            QVERIFY2(w.findChild<QDoubleSpinBox*>(b->objectName())->value() == b->value(),
                     qPrintable(b->objectName()));
    QCOMPARE(w.findChild<QLineEdit*>(QStringLiteral("m_pqMinRange"))->text(), QStringLiteral("---"));
    QCOMPARE(PanelColorButton::color(w.findChild<QPushButton*>(QStringLiteral("pointColorButton"))), QColor(0, 0, 255));
    QCOMPARE(w.findChild<QUnitLineEdit*>(QStringLiteral("intervalSizeUnitLineEdit"))->modelValue(), 100.0);
    QCOMPARE(w.drawingArea()->zoomFactor(), 1.0);
}

void TestCrossPlotWidget::badAxisColumns_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("points");
    QTest::newRow("text") << "text" << 0;
    QTest::newRow("colour") << "colour" << 0;
    QTest::newRow("blank") << "blank" << 0;
    QTest::newRow("constant") << "constant" << 5;
    QTest::newRow("NaN and infinite") << "odd" << 2;
}

void TestCrossPlotWidget::badAxisColumns()
{
    QFETCH(QString, column);
    QFETCH(int, points);
    Sheet s;
    s.add(QStringLiteral("y"), {1, 2, 3, 4, 5});
    s.addText(QStringLiteral("text"), {"a", "b", "c", "d", "e"});
    s.addText(QStringLiteral("colour"), {"#FF0000", "#00FF00", "#0000FF", "#FFFFFF", "#000000"}, QVariant::Color);
    s.add(QStringLiteral("blank"), {kNaN, kNaN, kNaN, kNaN, kNaN});
    s.add(QStringLiteral("constant"), {7, 7, 7, 7, 7});
    s.add(QStringLiteral("odd"), {kNaN, kInf, -kInf, 1, 2}, true);
    Panel p(s);
    p.child<QCheckBox>("m_pqShowRegressionEquation")->setChecked(true);
    for (bool asX : {true, false}) {
        p.show(asX ? column : "y", asX ? "y" : column);
        QCOMPARE(p.w->model()->pointCount(), points);
        QCOMPARE(p.child<QLabel>("m_pqNumberOfPoints")->text(), QString::number(points));
        const QPointF lo = p.w->drawingArea()->minPoint(), hi = p.w->drawingArea()->maxPoint();
        QVERIFY(std::isfinite(lo.x()) && std::isfinite(lo.y()) && std::isfinite(hi.x()) && std::isfinite(hi.y()));
        QVERIFY(hi.x() > lo.x());
        QVERIFY(hi.y() > lo.y());
        QVERIFY(!p.w->drawingArea()->visibleChartImage().isNull());
    }
    // The data are untouched.
    QCOMPARE(s.column(column)->rowCount(), 5);
}

void TestCrossPlotWidget::samplingAboveRows()
{
    Sheet s;
    s.add(QStringLiteral("x"), {1, 2, 3});
    s.add(QStringLiteral("y"), {4, 5, 6});
    Panel p(s);
    p.show("x", "y");
    p.child<QSpinBox>("m_pqVertexFilterSpinBox")->setValue(1000);
    QVERIFY(p.w->model()->pointCount() <= 1);
    QVERIFY(!p.w->drawingArea()->visibleChartImage().isNull());
}

void TestCrossPlotWidget::boundaryEdits()
{
    Sheet s;
    fillXY(s);
    Panel p(s);
    p.show("x", "y");
    auto* maxEdit = p.child<QUnitLineEdit>("m_pqHoriMaxAxis");
    auto* minEdit = p.child<QUnitLineEdit>("m_pqHoriMinAxis");
    const double before = maxEdit->modelValue();
    maxEdit->setText(QStringLiteral("not a number"));
    emit maxEdit->editingFinished();
    QCOMPARE(maxEdit->modelValue(), before);
    // Minimum above maximum: the range is taken the other way round.
    minEdit->setModelValue(50.0, true);
    maxEdit->setModelValue(-10.0, true);
    QCOMPARE(p.w->drawingArea()->minPoint().x(), -10.0);
    QCOMPARE(p.w->drawingArea()->maxPoint().x(), 50.0);
}

void TestCrossPlotWidget::clustersAboveRows()
{
    Sheet s;
    s.add(QStringLiteral("x"), {1, 2, 3});
    s.add(QStringLiteral("y"), {1, 5, 2});
    s.add(QStringLiteral("one"), {1});
    Panel p(s);
    p.show("x", "y");
    auto* spin = p.child<QSpinBox>("numberOfClustersSpinBox");
    QCOMPARE(spin->maximum(), 3);
    spin->setValue(50);
    QCOMPARE(spin->value(), 3);
    QSignalSpy spy(p.w.get(), &QCrossPlotWidget::createClusterAttribute);
    p.child<QPushButton>("applyClusterGenerationPushButton")->click();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy[0][0].toString(), QStringLiteral("CrossPlot_x_y_None"));
    // Fewer than two points: the button is off.
    p.show("one", "one");
    QVERIFY(!p.child<QPushButton>("applyClusterGenerationPushButton")->isEnabled());
}

void TestCrossPlotWidget::clusterMeansTable()
{
    // Two tight groups far apart: the table shows the two means, whatever order k-means finds
    // them in, under the headers of the two axes.
    Sheet s;
    s.add(QStringLiteral("x"), {1.0, 1.1, 0.9, 1.0, 9.0, 9.1, 8.9, 9.0});
    s.add(QStringLiteral("y"), {2.0, 2.1, 1.9, 2.0, 7.0, 7.1, 6.9, 7.0});
    Panel p(s);
    p.show("x", "y");
    p.child<QSpinBox>("numberOfClustersSpinBox")->setValue(2);
    p.child<QPushButton>("applyClusterGenerationPushButton")->click();
    p.w->updateClusterMeansTable();
    auto* table = p.child<QTableWidget>("clusterMeansTableWidget");
    QCOMPARE(table->columnCount(), 4);
    QCOMPARE(table->horizontalHeaderItem(1)->text(), QStringLiteral("x"));
    QCOMPARE(table->horizontalHeaderItem(2)->text(), QStringLiteral("y"));
    QCOMPARE(table->horizontalHeaderItem(3)->text(), QStringLiteral("Distortion"));
    QCOMPARE(table->rowCount(), 2);
    QSet<QString> means;
    for (int r = 0; r < 2; ++r)
        means << table->item(r, 1)->text() + QLatin1Char('/') + table->item(r, 2)->text();
    QCOMPARE(means, (QSet<QString>{QStringLiteral("1.00/2.00"), QStringLiteral("9.00/7.00")}));
}

void TestCrossPlotWidget::cursorLabelInDisplayUnits_data()
{
    QTest::addColumn<bool>("feet");
    QTest::addColumn<QString>("expected");
    // Porosity as a fraction shown in percent, depth in metres shown as stored or in feet.
    QTest::newRow("metres") << false << "^\\(25(\\.0+)? %, 1000(\\.0+)? m\\)$";
    QTest::newRow("feet") << true << "^\\(25(\\.0+)? %, 3280\\.8\\d* ft\\)$";
}

void TestCrossPlotWidget::cursorLabelInDisplayUnits()
{
    QFETCH(bool, feet);
    QFETCH(QString, expected);
    UnitRegistry registry;
    registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_FRACTION, 1);
    if (feet)
        registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    Sheet s;
    s.root->setRegistry(&registry);
    s.add(QStringLiteral("porosity"), {0.1, 0.2, 0.3})->setUnitManager(UnitRegistry::CATEGORY_FRACTION);
    s.add(QStringLiteral("depth"), {990, 1000, 1010})->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
    Panel p(s);
    p.show("porosity", "depth");
    p.w->updateCursorPosLabel(QPointF(0.25, 1000.0));
    const QString text = p.child<QLabel>("cursorPos")->text();
    QVERIFY2(QRegularExpression(expected).match(text).hasMatch(), qPrintable(text));
}

void TestCrossPlotWidget::colourRangeReset()
{
    // A colour attribute starts at its own range in 19 steps; "Expand Colour Map to Maximum Value
    // Range" brings edited limits back; without one the edits say "---".
    Sheet s;
    fillXY(s, 3);
    s.add(QStringLiteral("z"), {2.0, 21.0, 5.0});
    Panel p(s);
    p.activate("m_pqColorAttributeComboBox", QStringLiteral("z"));
    auto* minimum = p.child<QLineEdit>("m_pqMinRange");
    auto* maximum = p.child<QLineEdit>("m_pqMaxRange");
    auto* step = p.child<QLineEdit>("m_pqIntervallSize");
    p.show("x", "y");
    QCOMPARE(minimum->text(), QStringLiteral("2.00000"));
    QCOMPARE(maximum->text(), QStringLiteral("21.00000"));
    QCOMPARE(step->text(), QStringLiteral("1.00000"));
    minimum->setText(QStringLiteral("7"));
    p.child<QRadioButton>("m_pqRedBlueRadioBtn")->setChecked(true);
    p.child<QPushButton>("resetColorAttributeDisplay")->click();
    QCOMPARE(minimum->text(), QStringLiteral("2.00000"));
    QVERIFY(p.child<QRadioButton>("m_pqBlueRedRadioBtn")->isChecked());
    p.activate("m_pqColorAttributeComboBox", QStringLiteral("None"));
    p.w->resetDisplayColorAttribute();
    QCOMPARE(minimum->text(), QStringLiteral("---"));
}

void TestCrossPlotWidget::colourMapDirection_data()
{
    QTest::addColumn<QString>("radio");
    QTest::addColumn<bool>("lowBlue");
    QTest::newRow("Blue-Red") << "m_pqBlueRedRadioBtn" << true;
    QTest::newRow("Red-Blue") << "m_pqRedBlueRadioBtn" << false;
}

// "Blue-Red" shows low values blue and high values red, in the legend and in the table's cells
// (the column's own colour map, which the stereo panel sets the same way).
void TestCrossPlotWidget::colourMapDirection()
{
    QFETCH(QString, radio);
    QFETCH(bool, lowBlue);
    Sheet s;
    fillXY(s, 3);
    s.add(QStringLiteral("z"), {0.0, 5.0, 10.0});
    Panel p(s);
    p.activate("m_pqColorAttributeComboBox", QStringLiteral("z"));
    p.show("x", "y");
    p.w->findChild<QRadioButton*>(radio)->setChecked(true);
    p.reload();
    auto blue = [](const QColor& c) { return c.blue() > 150 && c.red() < 100; };
    auto red = [](const QColor& c) { return c.red() > 150 && c.blue() < 100; };
    MatrixData* z = s.column(QStringLiteral("z"));
    QCOMPARE(blue(z->cellColor(0)), lowBlue);
    QCOMPARE(red(z->cellColor(2)), lowBlue);
    QLegendListModel* legend = p.w->colorLegend();
    QVERIFY(legend->rowCount() > 1);
    const QColor last = legend->data(legend->index(legend->rowCount() - 1, 0), Qt::DecorationRole).value<QColor>();
    QCOMPARE(red(last), lowBlue);
    QCOMPARE(blue(last), !lowBlue);
}

void TestCrossPlotWidget::columnLostWhileOpen()
{
    Sheet s;
    fillXY(s);
    s.add(QStringLiteral("z"), {3, 2, 1});
    Panel p(s);
    p.show("z", "y");
    MatrixData* z = s.column(QStringLiteral("z"));
    s.group->removeChild(z);
    delete z;
    // The panel is touched before its owner hands new columns.
    p.child<QCheckBox>("m_pqShowGrid")->toggle();
    p.child<QCheckBox>("m_pqShowDefinedSymbolsOnly")->toggle();
    p.child<QPushButton>("createByNumbofIntervalsPushButton")->click();
    p.w->displayUnitsChanged(QString());
    QVERIFY(!p.w->horizontalDataSet());
    QCOMPARE(p.w->model()->pointCount(), 0);
    // The owner refills the boxes: the lost column's box falls to the last entry.
    p.w->updateDataSetSelectionBox(s.names(), s.ids());
    QCOMPARE(p.w->currentHorizontalSelectedDataSetName(), QStringLiteral("y"));
    p.w->defaultComboBoxSelectionFromTopEntries(true);
    p.w->findChild<QComboBox*>(QStringLiteral("m_pqHorizontalComboBox"))->setCurrentText(QStringLiteral("gone"));
    p.w->findChild<QComboBox*>(QStringLiteral("m_pqHorizontalComboBox"))->clear();
    p.w->updateDataSetSelectionBox(s.names(), s.ids());
    QCOMPARE(p.w->currentHorizontalSelectedDataSetName(), QStringLiteral("x"));
    p.reload();
    QCOMPARE(p.w->model()->pointCount(), 20);
}

void TestCrossPlotWidget::depthTrackOffersDepthOnly()
{
    Sheet s;
    s.add(QStringLiteral("GR"), {10, 20, 30});
    s.add(QStringLiteral("Depth"), {100, 110, 120});
    s.add(QStringLiteral("Measured Depth"), {101, 111, 121});
    Panel p(s, new QDepthPlotWidget(nullptr, nullptr, true, true));
    auto* box = p.child<QComboBox>("m_pqVerticalComboBox");
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->currentText(), QStringLiteral("Measured Depth"));
    p.show("GR", "Depth");
    QCOMPARE(p.w->drawingArea()->originPosition(), QCrossPlot::OriginTopLeft);
    QCOMPARE(p.w->axes().left()->axisPosition(), QCartesianAxisWidget::AxisLeftDepth);
}

void TestCrossPlotWidget::reloadAfterOwnLasso_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<bool>("reloads");
    QTest::addRow("the lasso's rows come back") << "none" << false;
    QTest::addRow("a cell edited since") << "edit" << true;
    QTest::addRow("other rows come back") << "rows" << true;
    QTest::addRow("clusters made since") << "clusters" << true;
    QTest::addRow("a lasso row blank since") << "blank" << true;
    QTest::addRow("only the selection shown") << "selectedOnly" << true;
}

// A lasso selects rows in the table, and the table hands them back when the tab is shown
// again: that load would draw what the chart already shows and is left out; anything else
// that changed since loads.
void TestCrossPlotWidget::reloadAfterOwnLasso()
{
    QFETCH(QString, change);
    QFETCH(bool, reloads);
    Sheet s;
    fillXY(s);
    Panel p(s);
    p.show("x", "y");
    MatrixData* x = s.column(QStringLiteral("x"));
    MatrixData* y = s.column(QStringLiteral("y"));
    p.w->setDataSet(x, y, nullptr, nullptr, {2, 5, 7});
    QRelationshipItemModel* model = p.w->model();
    // The chart's lasso: the model's selection first, then the panel hears of it.
    model->clearSelection();
    boost::dynamic_bitset<> lasso(20);
    for (int row : {1, 3, 4}) {
        model->setSelected(row, true);
        lasso.set(std::size_t(row));
    }
    p.w->slotDataPointsSelection(lasso);
    std::vector<int> rows{1, 3, 4};
    if (change == "edit")
        x->setValue(3, 0, 42.0);
    else if (change == "rows")
        rows = {1, 3};
    else if (change == "clusters")
        p.child<QPushButton>("applyClusterGenerationPushButton")->click();
    else if (change == "blank")
        y->setValue(4, 0, QVariant());
    else if (change == "selectedOnly")
        p.w->setDisplayDataType(QRelationshipItemModel::ShowSelectedOnly);
    const quint64 before = model->dataRevision();
    p.w->setDataSet(x, y, nullptr, nullptr, rows);
    QCOMPARE(model->dataRevision() != before, reloads);
    // Either way the chart holds what a load of these rows gives.
    if (change == "edit")
        QCOMPARE(model->data()->value(3, 0).toPointF(), QPointF(42.0, 7.0));
    const int expected = change == "blank" ? 2 : int(rows.size());
    QCOMPARE(int(model->selection().count()), expected);
}

QTEST_MAIN(TestCrossPlotWidget)
#include "tst_crossplotwidget.moc"
