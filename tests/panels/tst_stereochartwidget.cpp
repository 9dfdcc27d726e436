// The stereo panel driven through its controls, found by object name: the form as shipped, its
// pages and the pages a derived panel takes out, the display type, zoom, the contour range, the
// statistics labels and report, lineation, clusters, the cursor label, settings written and read
// back (and read from a damaged file), the colour map's direction on chart, legend and table,
// legends that match the points, and input that must neither crash nor show "nan".
#include "StereoPanelFixture.h"

#include <PanelColorButton.h>
#include <QDataStatisticSummary.h>
#include <QLegendListModel.h>
#include <QLegendListView.h>
#include <QWoodcockHelpWidget.h>

#include <MatrixDataArray.h>
#include <UnitRegistry.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QRadioButton>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBox>

#include <QIntSpinBoxWithSlider.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace rkBase;
using namespace panelfixture;

Q_DECLARE_METATYPE(rkBase::DensityMethod)

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool noNumberWentWrong(const QStringList& texts, QString& bad)
{
    static const QRegularExpression wrong(QStringLiteral("\\b(nan|inf)\\b"), QRegularExpression::CaseInsensitiveOption);
    for (const QString& t : texts) {
        if (wrong.match(t).hasMatch()) {
            bad = t;
            return false;
        }
    }
    return true;
}

// Blue dominates a colour of the low end of the spectrum, red one of the high end.
bool bluish(const QColor& c) { return c.isValid() && c.blue() > 150 && c.red() < 100; }
bool reddish(const QColor& c) { return c.isValid() && c.red() > 150 && c.blue() < 100; }

// The colour drawn at the middle of a point of the chart (a filled square of size 8).
QColor pointColour(QStereoChartWidget* w, const QPointF& orientation)
{
    QStereoPlotWidget* plot = w->drawingArea();
    const QImage image = plot->visibleChartImage();
    plot->setPointKind(0);
    const QPointF raster = plot->transformInPixelPoint(orientation);
    const QPoint at = (raster - QPointF(plot->xOffsetPixels(), plot->yOffsetPixels())).toPoint();
    return image.valid(at) ? QColor(image.pixel(at)) : QColor();
}
} // namespace

// A panel derived as the tangent plot's is: its own surface, its own cursor label, pages out.
class DerivedSurface : public QStereoPlotWidget
{
public:
    using QStereoPlotWidget::QStereoPlotWidget;
};

class DerivedPanel : public QStereoChartWidget
{
public:
    explicit DerivedPanel(const QString& title)
        : QStereoChartWidget(title, nullptr, nullptr, true, true, Qt::WindowFlags(), false, QStringLiteral("tangent"))
    {
        createChartArea(title);
        initializeChart();
        hideTab(QStringLiteral("Lineation"));
        showTab(QStringLiteral("PlotFoldAxis"));
    }
    int cursorCalls = 0;
    void updateCursorPosLabel(const QPointF&) override
    {
        ++cursorCalls;
        m_pqPoleCursorLabel->hide();
        m_pqPlaneCursorLabel->setText(QStringLiteral("(plunge/plunge az.):"));
    }

protected:
    void createChartArea(const QString& title) override
    {
        installChartArea(new DerivedSurface(m_pqStereoPlotFrame, title));
    }
};

class TestStereoChartWidget : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        qRegisterMetaType<MatrixData*>("MatrixData*");
        // A colour asked for never opens a dialog in a test.
        PanelColorButton::setColorDialog([](const QColor&, QWidget*, const QString&) { return QColor(); });
    }
    void formDefaults_data();
    void formDefaults();
    void toolBoxPages();
    void pagesTakenOutAndBack();
    void derivedPanel();
    void tabs();
    void reducedPanel();
    void displayDataReloads_data();
    void displayDataReloads();
    void zoomShowsScrollBars();
    void contourIntervalZeroResets_data();
    void contourIntervalZeroResets();
    void contourRangeWithoutPoints();
    void countingMethod_data();
    void countingMethod();
    void onePointShowsDashes();
    void statisticsOfAGroup();
    void lineationDataHidesFisherFields();
    void reportWithAndWithoutUnits();
    void fitOfFisherDistribution();
    void lineationFromPlungeAndAzimuth();
    void lineationFromPlaneAndPitch();
    void lineationNeedsEveryBox();
    void cursorLabel_data();
    void cursorLabel();
    void blueRedOnChartLegendAndTable_data();
    void blueRedOnChartLegendAndTable();
    void contourColourDirection();
    void legendRowsAreThePointClasses();
    void clustersAndTheirTable();
    void woodcockPointPerClass();
    void rotation_data();
    void rotation();
    void biasCorrectionEnablesScanline();
    void settingsRoundTrip();
    void settingsDefaultsAndGarbage();
    void badInput_data();
    void badInput();
    void reloadAfterOwnLasso_data();
    void reloadAfterOwnLasso();
    void columnLostWhileOpen();
};

void TestStereoChartWidget::formDefaults_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected");
    auto row = [](const char* c, const char* p, const QVariant& v) {
        QTest::addRow("%s.%s", c, p) << QString::fromLatin1(c) << QString::fromLatin1(p) << v;
    };
    row("QStereoProjectionWidget", "width", 871);
    // Display
    row("m_pqProjectedPlanesGroupBox", "title", QStringLiteral("Show Projected Planes"));
    row("m_pqShowPlanes", "text", QStringLiteral("All Planes"));
    row("m_pqShowPlanes", "checked", false);
    row("m_pqShowBestFitPlane", "text", QStringLiteral("Best Fit Plane"));
    row("m_pqPlaneWidthSpinBox", "minimum", 1);
    row("m_pqPlaneWidthSpinBox", "maximum", 5);
    row("m_pqBestFitPlaneWidthSpinBox", "maximum", 5);
    row("m_pqAddAttributeGroupBox", "title", QStringLiteral("Select Add. Attribute shown as"));
    row("m_pqSymbolsComboBox", "currentText", QStringLiteral("None"));
    row("m_pqColourMapComboBox", "currentText", QStringLiteral("None"));
    row("m_pqShowLineation", "text", QStringLiteral("Lineation"));
    row("m_pqZoomFactorCheckBox", "checked", false);
    row("m_pqZoomSpinBox", "minimum", 1.0);
    row("m_pqZoomSpinBox", "maximum", 20.0);
    row("m_pqZoomSpinBox", "singleStep", 0.1);
    row("m_pqZoomSpinBox", "value", 1.0);
    row("m_pqZoomSpinBox", "enabled", false);
    row("m_pqShowPoles", "text", QStringLiteral("All Poles"));
    row("m_pqShowPoles", "checked", true);
    row("m_pqShowMeanPrincipalPole", "checked", true);
    row("m_pqShowMeanResultantPole", "checked", true);
    row("m_pqShowTPole", "checked", false);
    row("m_pqShowLPole", "text", QStringLiteral("L Pole (beta-Axis)"));
    row("m_pqShowAzimuths", "checked", false);
    row("m_pqShowTAzimuth", "text", QStringLiteral("T Azimuth (Orientation of most Change)"));
    row("m_pqShowLAzimuth", "text", QStringLiteral("L Azimuth (Orientation of least Change)"));
    row("m_pqDisplayDataComboBox", "currentText", QStringLiteral("All + Highlight Selection"));
    // Projection type
    row("m_pqSchmidtRadioButton", "text", QStringLiteral("Schmidt (equal area)"));
    row("m_pqSchmidtRadioButton", "checked", true);
    row("m_pqWulffRadioButton", "text", QStringLiteral("Wulff (equal angle)"));
    row("m_pqSelectionRadioButton", "checked", true);
    row("m_pqProjectedPlaneRadioButton", "checked", false);
    row("m_pqCursorInformationComboBox", "currentText", QStringLiteral("Lines"));
    // Symbols and colours
    row("m_pqSymbolPointStyleGroupBox", "title", QStringLiteral("Choose Symbol Point Style"));
    row("m_pqMultipleSymbolRadioButton", "checked", true);
    row("m_pqColorMinRange", "text", QStringLiteral("---"));
    row("m_pqResetColorRangeButton", "toolTip", QStringLiteral("Expand Colour Map to Maximum Value Range"));
    row("m_pqBlueRedRadioButton", "checked", true);
    // Contours
    row("m_pqContoursForPoles", "text", QStringLiteral("for Poles"));
    row("m_pqContoursForPoles", "checked", false);
    row("m_pqDiscreteDensityGroupBox", "checkable", true);
    row("m_pqDiscreteDensityGroupBox", "checked", false);
    row("m_pqWithContoursRadioButton", "text", QStringLiteral("with Contours"));
    row("m_pqShowContourLabels", "text", QStringLiteral("Show Contour Labels"));
    row("m_pqShowDensityGrid", "text", QStringLiteral("Show"));
    row("m_pqGridCellsSpinBox", "minimum", 1);
    row("m_pqGridCellsSpinBox", "maximum", 100);
    row("m_pqGridCellsSpinBox", "value", 20);
    row("m_pqContourRangeGroupBox", "title", QStringLiteral("Colour Map  Range"));
    row("m_pqContourIntervalSizeLabel", "text", QStringLiteral("Interval Size (%)"));
    row("m_pqResetContourRangeButton", "toolTip", QStringLiteral("Expand Colour Map to Maximum Value Range"));
    row("m_pqContourBlueRedRadioButton", "checked", true);
    // Bias correction
    row("m_pqBiasCorrectionCheckBox", "checked", false);
    row("m_pqScanlinePlungeSpinBox", "maximum", 90);
    row("m_pqScanlineAzimuthSpinBox", "maximum", 360);
    row("m_pqMinimumBiasAngleSpinBox", "minimum", 0);
    row("m_pqMinimumBiasAngleSpinBox", "maximum", 30);
    row("m_pqMinimumBiasAngleSpinBox", "value", 15);
    row("m_pqGenerateBiasCorrectionButton", "text", QStringLiteral("Generate Bias Correction"));
    row("m_pqGenerateBiasCorrectionButton", "enabled", false);
    // Lineation
    row("m_pqPlungeAzimuthGroupBox", "checked", true);
    row("m_pqPlanePitchGroupBox", "checked", false);
    row("m_pqPitchDirectionLabel", "text", QStringLiteral("Direction"));
    // Clusters and rotation
    row("m_pqNumberOfClustersSpinBox", "value", 2);
    row("m_pqApplyClusterGenerationButton", "text", QStringLiteral("Apply Cluster Generation"));
    row("m_pqClusterMeanPoles", "checked", true);
    row("m_pqClusterMeanAzimuths", "checked", false);
    row("m_pqClusterMeansComboBox", "currentText", QStringLiteral("Poles"));
    row("m_pqRotationPlungeSpinBox", "maximum", 90);
    row("m_pqRotationAzimuthSpinBox", "maximum", 360);
    row("m_pqRotationAngleSpinBox", "minimum", -90);
    row("m_pqRotationAngleSpinBox", "maximum", 90);
    row("m_pqCentraliseMeanButton", "text", QStringLiteral("Centralise the Mean"));
    row("m_pqShowFoldAxisGroupBox", "title", QStringLiteral("Show Fold Axis"));
    // Statistics and annotation
    row("m_pqCalculationForComboBox", "currentText", QStringLiteral("Lines"));
    row("m_pqCreateMeanPrincipalPointCloudButton", "text", QStringLiteral("Create Mean Principal Point Cloud "));
    row("m_pqPointSizeSpinBox", "value", 2);
    row("m_pqWhiteBackgroundRadioButton", "text", QStringLiteral("white"));
    row("m_pqWhiteBackgroundRadioButton", "checked", true);
    row("m_pqShow10DegreeNet", "text", QStringLiteral("Net (10 degree Intervals)"));
    row("m_pqAnnotationDirectionsRadioButton", "checked", true);
    row("m_pqDipDipAzimuthRadioButton", "checked", true);
    row("m_pqStrikeDipSenseRadioButton", "text", QStringLiteral("Strike/Dip/Sense"));
    row("m_pqShowLabels", "checked", false);
    row("m_pqHorizontalScrollBar", "maximum", 100);
    row("m_pqHorizontalScrollBar", "pageStep", 100);
    row("m_pqVerticalScrollBar", "value", 50);
}

void TestStereoChartWidget::formDefaults()
{
    QFETCH(QString, control);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);
    QStereoChartWidget w(QStringLiteral("Stereo Projection"), nullptr, nullptr);
    QObject* c = control == QLatin1String("QStereoProjectionWidget") ? &w : w.findChild<QObject*>(control);
    QVERIFY2(c, qPrintable(control));
    const QVariant got = c->property(property.toLatin1().constData());
    QVERIFY(got.isValid());
    if (expected.type() == QVariant::Double)
        QVERIFY2(qFuzzyCompare(got.toDouble(), expected.toDouble()), qPrintable(got.toString()));
    else
        QCOMPARE(got.toString(), expected.toString());
}

void TestStereoChartWidget::toolBoxPages()
{
    QStereoChartWidget w(QStringLiteral("Stereo Projection"), nullptr, nullptr);
    auto* box = w.findChild<QToolBox*>(QStringLiteral("m_pqStereoToolBox"));
    QVERIFY(box);
    const QStringList names = {"Display", "ProjectionType", "SymbolAttributeSettings", "ColourAttributeSettings",
                               "Contours", "BiasCorrection", "Lineation", "ClusterGeneration", "Rotation",
                               "DataStatistics", "AnnotationSettings"};
    const QStringList titles = {"Display", "Projection Type/ Graphical Actions", "Symbol Attribute Settings",
                                "Colour Attribute Settings", "Contours", "Bias Correction (Terzaghi)", "Lineation",
                                "Cluster Generation", "Rotation", "Data Statistics", "Annotation/Display Settings"};
    QCOMPARE(box->count(), names.size());
    for (int i = 0; i < names.size(); ++i) {
        QCOMPARE(box->widget(i)->objectName(), names[i]);
        QCOMPARE(box->itemText(i), titles[i]);
    }
    // The fold axis page is kept out of the box, its controls still reachable.
    QVERIFY(box->indexOf(w.findChild<QWidget*>(QStringLiteral("PlotFoldAxis"), Qt::FindDirectChildrenOnly)) < 0);
    QVERIFY(w.findChild<QGroupBox*>(QStringLiteral("m_pqShowFoldAxisGroupBox")));
}

// The pages a derived panel takes out by object name, and the fold axis page it puts in.
void TestStereoChartWidget::pagesTakenOutAndBack()
{
    QStereoChartWidget w(QStringLiteral("Tangent Plot"), nullptr, nullptr);
    auto* box = w.findChild<QToolBox*>(QStringLiteral("m_pqStereoToolBox"));
    const int before = box->count();
    const QStringList removable = {"Lineation", "ProjectionType", "Contours", "ClusterGeneration", "BiasCorrection",
                                   "Rotation"};
    for (const QString& name : removable)
        w.hideTab(name);
    QCOMPARE(box->count(), before - removable.size());
    for (const QString& name : removable) {
        QWidget* page = w.findChild<QWidget*>(name, Qt::FindDirectChildrenOnly);
        QVERIFY2(page, qPrintable(name));
        QCOMPARE(box->indexOf(page), -1);
    }
    // Settings still reach a control of a page that is out.
    QVERIFY(w.findChild<QSpinBox*>(QStringLiteral("m_pqGridCellsSpinBox")));
    w.hideTab(QStringLiteral("NoSuchPage"));
    QCOMPARE(box->count(), before - removable.size());

    w.showTab(QStringLiteral("PlotFoldAxis"), 1);
    QCOMPARE(box->widget(1)->objectName(), QStringLiteral("PlotFoldAxis"));
    QCOMPARE(box->itemText(1), QStringLiteral("Plot Fold Axis"));
    w.showTab(QStringLiteral("Rotation"));
    QCOMPARE(box->widget(box->count() - 1)->objectName(), QStringLiteral("Rotation"));
    QCOMPARE(box->itemText(box->count() - 1), QStringLiteral("Rotation"));
}

void TestStereoChartWidget::derivedPanel()
{
    Sheet s;
    addTwoClusters(s);
    auto* panel = new DerivedPanel(QStringLiteral("Tangent Plot"));
    StereoPanel p(s, panel);
    p.show();
    QVERIFY(dynamic_cast<DerivedSurface*>(p.w->drawingArea()));
    QCOMPARE(p.w->drawingArea()->model(), p.w->model());
    QCOMPARE(p.w->model()->pointCount(), 10);
    QCOMPARE(p.w->settingsPrefix(), QStringLiteral("tangent"));
    // The surface's cursor reaches the derived label.
    emit p.w->drawingArea()->cursorPos(QPointF(5, 5), true);
    QCOMPARE(panel->cursorCalls, 1);
    QCOMPARE(p.text("m_pqPlaneCursorLabel"), QStringLiteral("(plunge/plunge az.):"));
    auto* box = p.child<QToolBox>("m_pqStereoToolBox");
    QCOMPARE(box->widget(box->count() - 1)->objectName(), QStringLiteral("PlotFoldAxis"));
    QCOMPARE(box->indexOf(p.page("Lineation")), -1);
    // The form's controls drive the derived surface as they drive their own.
    p.child<QCheckBox>("m_pqShow2DegreeNet")->setChecked(true);
    QVERIFY(p.w->drawingArea()->show2DegreeNet());
}

void TestStereoChartWidget::tabs()
{
    QStereoChartWidget w(QStringLiteral("Stereo Projection"), nullptr, nullptr);
    auto* tabs = w.findChild<QTabWidget*>(QStringLiteral("m_pqTabWidget"));
    QStringList texts;
    for (int i = 0; i < tabs->count(); ++i)
        texts << tabs->tabText(i);
    QCOMPARE(texts, (QStringList{"Plot", "Woodcock Classification", "Statistic Summary", "Fit of Fisher Distribution"}));
    QCOMPARE(tabs->widget(3)->objectName(), QStringLiteral("GOODNESS_OF_FIT"));
    QTabWidget* fit = w.fitTabWidget();
    QVERIFY(fit);
    QCOMPARE(fit->count(), 4);
    QCOMPARE(fit->widget(1)->objectName(), QStringLiteral("EXPONENTIAL"));
    QCOMPARE(fit->widget(2)->objectName(), QStringLiteral("UNIFORM"));
    QCOMPARE(fit->widget(3)->objectName(), QStringLiteral("NORMAL"));
    for (const char* text : {"For Comparision (Calculated from Mean Resultant)", "Colatitude Plot", "Two Variable Plot",
                             "Estimated Dispersion (k value):"}) {
        bool found = false;
        for (QLabel* l : fit->findChildren<QLabel*>())
            found = found || l->text() == QLatin1String(text);
        for (QGroupBox* g : fit->findChildren<QGroupBox*>())
            found = found || g->title() == QLatin1String(text);
        QVERIFY2(found, text);
    }

    // Light mode: no Woodcock tab, no colatitude page, no cluster or rotation page.
    w.setLightMode();
    QCOMPARE(tabs->count(), 3);
    QCOMPARE(tabs->tabText(1), QStringLiteral("Statistic Summary"));
    QCOMPARE(fit->count(), 3);
    auto* box = w.findChild<QToolBox*>(QStringLiteral("m_pqStereoToolBox"));
    for (const char* name : {"ClusterGeneration", "Rotation"}) {
        QWidget* page = w.findChild<QWidget*>(QString::fromLatin1(name), Qt::FindDirectChildrenOnly);
        QVERIFY2(page, name);
        QCOMPARE(box->indexOf(page), -1);
    }
}

void TestStereoChartWidget::reducedPanel()
{
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s, false);
    p.show();
    QVERIFY(p.child<QToolBox>("m_pqStereoToolBox")->isHidden());
    // Without a symbol attribute the points take the shape of "Type".
    QVERIFY(p.child<QComboBox>("m_pqPointTypeComboBox")->isEnabled());
    QVERIFY(p.child<QWidget>("m_pqDataSetFrame")->isHidden());
    QCOMPARE(p.child<QTabWidget>("m_pqTabWidget")->count(), 1);
    QVERIFY(!p.w->woodcockWidget());
    QVERIFY(!p.w->statisticSummary());
    QCOMPARE(p.w->model()->pointCount(), 10);
    QCOMPARE(p.text("m_pqNumberOfSelectedPoints"), QStringLiteral("10"));
}

void TestStereoChartWidget::displayDataReloads_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<int>("reloads");
    const int highlight = int(QRelationshipItemModel::HighlightSelected);
    const int all = int(QRelationshipItemModel::ShowAll);
    const int selected = int(QRelationshipItemModel::ShowSelectedOnly);
    QTest::newRow("highlight to all") << highlight << "All" << 0;
    QTest::newRow("all to highlight") << all << "All + Highlight Selection" << 0;
    QTest::newRow("highlight to selected only") << highlight << "Selected Data Only" << 1;
    QTest::newRow("all to selected only") << all << "Selected Data Only" << 1;
    QTest::newRow("selected only to all") << selected << "All" << 1;
    QTest::newRow("unchanged") << highlight << "All + Highlight Selection" << 0;
}

void TestStereoChartWidget::displayDataReloads()
{
    QFETCH(int, from);
    QFETCH(QString, to);
    QFETCH(int, reloads);
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.tableRows = {1, 2, 3};
    p.show();
    p.w->setDisplayDataType(QRelationshipItemModel::DisplayType(from));
    p.reload();
    QCOMPARE(int(p.w->model()->displayType()), from);
    const quint64 revision = p.w->model()->dataRevision();
    p.reloads = 0;
    p.activate("m_pqDisplayDataComboBox", to);
    QCOMPARE(p.reloads, reloads);
    QCOMPARE(p.w->model()->displayType(), p.w->displayDataType());
    if (reloads == 0)
        QCOMPARE(p.w->model()->dataRevision(), revision);
    // Counting follows the display: all points, or the three selected.
    const int counted = p.w->displayDataType() == QRelationshipItemModel::ShowAll ? 10 : 3;
    QCOMPARE(p.text("m_pqNumberOfSelectedPoints"), QString::number(counted));
}

void TestStereoChartWidget::zoomShowsScrollBars()
{
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.show();
    auto* check = p.child<QCheckBox>("m_pqZoomFactorCheckBox");
    auto* spin = p.child<QDoubleSpinBox>("m_pqZoomSpinBox");
    auto* hbar = p.child<QScrollBar>("m_pqHorizontalScrollBar");
    auto* vbar = p.child<QScrollBar>("m_pqVerticalScrollBar");
    QVERIFY(hbar->isHidden() && vbar->isHidden());
    check->setChecked(true);
    QVERIFY(spin->isEnabled());
    QVERIFY(p.w->drawingArea()->mouseZoomEnabled());
    spin->setValue(3.0);
    QCOMPARE(p.w->drawingArea()->zoomFactor(), 3.0);
    QVERIFY(!hbar->isHidden() && !vbar->isHidden());
    QCOMPARE(hbar->pageStep(), 50);
    hbar->setValue(100);
    QVERIFY(p.w->drawingArea()->xOffsetPixels() > 0);
    spin->setValue(1.0);
    QVERIFY(hbar->isHidden() && vbar->isHidden());
    QCOMPARE(p.w->drawingArea()->zoomFactor(), 1.0);
    // A zoom the chart makes with the wheel reaches the spin box and the bars.
    spin->setValue(2.0);
    p.w->chartZoomChanged(5.0);
    QCOMPARE(spin->value(), 5.0);
    QCOMPARE(hbar->pageStep(), 25);
    check->setChecked(false);
    QVERIFY(!spin->isEnabled());
    QCOMPARE(p.w->drawingArea()->zoomFactor(), 1.0);
    QVERIFY(hbar->isHidden() && vbar->isHidden());
}

void TestStereoChartWidget::contourIntervalZeroResets_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("zero") << "0";
    QTest::newRow("zero with decimals") << "0.000";
    QTest::newRow("text") << "abc";
    QTest::newRow("no value") << "---";
}

void TestStereoChartWidget::contourIntervalZeroResets()
{
    QFETCH(QString, typed);
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.show();
    p.child<QCheckBox>("m_pqContoursForPoles")->setChecked(true);
    auto* minimum = p.child<QLineEdit>("m_pqContourMinRange");
    auto* maximum = p.child<QLineEdit>("m_pqContourMaxRange");
    auto* interval = p.child<QLineEdit>("m_pqContourIntervalSize");
    // The range of the counted grid: each point counts at the four corners of its cell, and the
    // rim is wrapped, so the largest count is at least the size of the larger cluster.
    MatrixDataArray* grid = p.w->model()->contourGridPoles();
    double lo = 0, hi = 0, mean = 0;
    QVERIFY(grid->getMinMax(lo, hi, mean, boost::dynamic_bitset<>()));
    QCOMPARE(minimum->text(), QString::number(lo, 'f', 5));
    QCOMPARE(maximum->text(), QString::number(hi, 'f', 5));
    QVERIFY(hi >= 5.0);
    const QString expectedInterval = QString::number((hi - lo) * (100.0 / 10) / 19.0, 'f', 5);
    QCOMPARE(interval->text(), expectedInterval);

    minimum->setText(QStringLiteral("1.5"));
    maximum->setText(QStringLiteral("3"));
    interval->setText(typed);
    emit interval->editingFinished();
    QCOMPARE(minimum->text(), QString::number(lo, 'f', 5));
    QCOMPARE(maximum->text(), QString::number(hi, 'f', 5));
    QCOMPARE(interval->text(), expectedInterval);
    QCOMPARE(p.w->model()->contourGridPoles()->colorMapStepSize(), expectedInterval.toDouble() + 5e-09);

    // A usable interval is kept.
    interval->setText(QStringLiteral("2.5"));
    emit interval->editingFinished();
    QCOMPARE(interval->text(), QStringLiteral("2.5"));
    QCOMPARE(p.w->model()->contourGridPoles()->colorMapStepSize(), 2.5 + 5e-09);
}

void TestStereoChartWidget::contourRangeWithoutPoints()
{
    // Selected rows that hold no orientation: nothing is counted, and no range reaches the chart.
    Sheet s;
    addOrientations(s, {kNaN, kNaN, 30}, {kNaN, kNaN, 120});
    StereoPanel p(s);
    p.tableRows = {0, 1};
    p.show();
    p.child<QCheckBox>("m_pqContoursForPoles")->setChecked(true);
    QCOMPARE(p.w->model()->numberOfSelectedPoints(), 0);
    QCOMPARE(p.child<QLineEdit>("m_pqContourIntervalSize")->text(), QStringLiteral("---"));
    p.child<QAbstractButton>("m_pqResetContourRangeButton")->click();
    QCOMPARE(p.child<QLineEdit>("m_pqContourMinRange")->text(), QStringLiteral("---"));
    QVERIFY(!p.w->drawingArea()->visibleChartImage().isNull());
}

void TestStereoChartWidget::countingMethod_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<DensityMethod>("method");
    QTest::newRow("kamb") << 1 << DensityMethod::Kamb;
    QTest::newRow("exponential kamb") << 2 << DensityMethod::ExponentialKamb;
}

// A Kamb method turns the grid into multiples of sigma with ranges from 2 by 2 and labels in
// sigma; going back to the grid count gives the count of before, to the last bit.
void TestStereoChartWidget::countingMethod()
{
    QFETCH(int, index);
    QFETCH(DensityMethod, method);
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.show();
    p.child<QCheckBox>("m_pqContoursForPoles")->setChecked(true);
    p.child<QGroupBox>("m_pqDiscreteDensityGroupBox")->setChecked(true);
    p.child<QCheckBox>("m_pqShowContourLabels")->setChecked(true);
    MatrixDataArray* grid = p.w->model()->contourGridPoles();
    auto values = [grid] {
        std::vector<double> v;
        for (int i = 0; i < grid->rowCount(); ++i)
            for (int j = 0; j < grid->columnCount(); ++j)
                v.push_back(grid->toDouble(i, j));
        return v;
    };
    const std::vector<double> counted = values();
    const QString countInterval = p.child<QLineEdit>("m_pqContourIntervalSize")->text();
    auto* combo = p.child<QComboBox>("m_pqCountingMethodComboBox");
    QCOMPARE(combo->itemText(index), index == 1 ? QStringLiteral("Kamb (sigma)") : QStringLiteral("Exponential Kamb (sigma)"));
    combo->setCurrentIndex(index);
    emit combo->activated(index);
    QCOMPARE(p.w->drawingArea()->densityMethod(), method);
    const std::vector<double> sigmas = values();
    const double peak = *std::max_element(sigmas.begin(), sigmas.end());
    // Ten poles, sigma 3: a cone of cos 10/19 and a standard deviation of 30/19, so each value is
    // a whole count times 19/30, and nodes between the clusters (70 degrees apart) hold all ten.
    if (method == DensityMethod::Kamb) {
        for (double v : sigmas)
            QVERIFY(std::abs(v * 30.0 / 19.0 - std::round(v * 30.0 / 19.0)) < 1e-9);
        QVERIFY(std::abs(peak - 10.0 * 19.0 / 30.0) < 1e-9);
    }
    QVERIFY(peak > 3.0);
    QCOMPARE(p.child<QLineEdit>("m_pqContourMinRange")->text(), QStringLiteral("2.00000"));
    QCOMPARE(p.child<QLineEdit>("m_pqContourMaxRange")->text(), QString::number(2.0 * std::ceil(peak / 2.0), 'f', 5));
    QCOMPARE(p.child<QLineEdit>("m_pqContourIntervalSize")->text(), QStringLiteral("2.00000"));
    p.w->drawingArea()->grab();
    QVERIFY(!p.w->drawingArea()->contourLabelTexts().empty());
    for (const QString& label : p.w->drawingArea()->contourLabelTexts())
        QVERIFY2(label.endsWith(QChar(0x03C3)), qPrintable(label));

    combo->setCurrentIndex(0);
    emit combo->activated(0);
    QCOMPARE(values(), counted);
    QCOMPARE(p.child<QLineEdit>("m_pqContourIntervalSize")->text(), countInterval);
    p.w->drawingArea()->grab();
    for (const QString& label : p.w->drawingArea()->contourLabelTexts())
        QVERIFY2(label.endsWith(QLatin1Char('%')), qPrintable(label));
}

void TestStereoChartWidget::onePointShowsDashes()
{
    Sheet s;
    addOrientations(s, {30}, {120});
    StereoPanel p(s);
    p.show();
    QCOMPARE(p.text("m_pqNumberOfSelectedPoints"), QStringLiteral("1"));
    QCOMPARE(p.text("m_pqKappa"), QStringLiteral("-----"));
    QCOMPARE(p.text("m_pqConfidenceRadius"), QStringLiteral("-----"));
    QCOMPARE(p.text("m_pqConfidenceRadiusDegree"), QStringLiteral("-----"));
    QString bad;
    QVERIFY2(noNumberWentWrong(p.labelTexts(), bad), qPrintable(bad));
    QVERIFY2(!p.w->statisticSummary()->documentHtml().contains(QLatin1String("nan")),
             qPrintable(p.w->statisticSummary()->documentHtml()));
}

void TestStereoChartWidget::statisticsOfAGroup()
{
    Sheet s;
    addOrientations(s, {30, 32, 28, 30}, {120, 120, 120, 124});
    StereoPanel p(s);
    p.show();
    QCOMPARE(p.text("m_pqNumberOfSelectedPoints"), QStringLiteral("4"));
    bool ok = false;
    const double kappa = p.text("m_pqKappa").toDouble(&ok);
    QVERIFY2(ok && kappa > 100.0, qPrintable(p.text("m_pqKappa")));
    QCOMPARE(p.text("m_pqClassification"), QStringLiteral("1. clustered unimodal"));
    // The mean plane of four planes about 30/120, as dip and dip azimuth.
    const QStringList mean = p.text("m_pqMeanPrincipalValue").mid(1).chopped(1).split(QLatin1Char('/'));
    QCOMPARE(mean.size(), 2);
    QVERIFY(std::abs(mean[0].toDouble() - 30.0) < 1.0);
    QVERIFY(std::abs(mean[1].toDouble() - 121.0) < 1.0);
    QCOMPARE(p.text("m_pqMeanPrincipalCaption"), QStringLiteral("(Dip,Dip Az.):"));
    // In the strike convention: strike 31 (right hand), the dip and the sense.
    p.child<QRadioButton>("m_pqStrikeDipSenseRadioButton")->setChecked(true);
    QCOMPARE(p.text("m_pqMeanPrincipalCaption"), QStringLiteral("(Strike,Dip,Sense):"));
    QVERIFY2(p.text("m_pqMeanPrincipalValue").endsWith(QLatin1String(" SE)")), qPrintable(p.text("m_pqMeanPrincipalValue")));
}

void TestStereoChartWidget::lineationDataHidesFisherFields()
{
    UnitRegistry registry;
    Sheet s;
    s.root->setRegistry(&registry);
    addOrientations(s, {30, 32, 28, 30}, {120, 120, 120, 124});
    s.column(QStringLiteral("dip"))->setRegistry(&registry);
    StereoPanel p(s);
    p.show();
    QVERIFY(!p.child<QLabel>("m_pqKappa")->isHidden());
    QVERIFY(!p.child<QLabel>("m_pqConfidenceRadius")->isHidden());
    QVERIFY(p.w->statisticSummary()->documentHtml().contains(QLatin1String("Fisher Distribution")));
    p.activate("m_pqCalculationForComboBox", QStringLiteral("Planes"));
    for (const char* name : {"m_pqKappaCaption", "m_pqKappa", "m_pqConfidenceRadiusCaption", "m_pqConfidenceRadius",
                             "m_pqConfidenceRadiusDegree"})
        QVERIFY2(p.child<QLabel>(name)->isHidden(), name);
    QCOMPARE(p.text("m_pqMeanPrincipalCaption"), QStringLiteral("(Plunge,Plunge Az.):"));
    QVERIFY(!p.w->statisticSummary()->documentHtml().contains(QLatin1String("Fisher Distribution")));
    QVERIFY(p.w->statisticSummary()->documentHtml().contains(QLatin1String("Mean Principal Direction")));
    p.activate("m_pqCalculationForComboBox", QStringLiteral("Lines"));
    QVERIFY(!p.child<QLabel>("m_pqKappa")->isHidden());
}

void TestStereoChartWidget::reportWithAndWithoutUnits()
{
    UnitRegistry registry;
    Sheet s;
    addOrientations(s, {30, 32, 28, 30}, {120, 120, 120, 124});
    StereoPanel p(s);
    p.w->setObservationDataName(QStringLiteral("Bedding"));
    p.show();
    // No unit registry: the heading and the data's name only.
    QString html = p.w->statisticSummary()->documentHtml();
    QVERIFY(html.contains(QLatin1String("Summary of the Statistical Investigations of Spherical Data")));
    QVERIFY(html.contains(QLatin1String("Bedding")));
    QVERIFY(!html.contains(QLatin1String("General Statistics")));

    s.root->setRegistry(&registry);
    s.column(QStringLiteral("dip"))->setRegistry(&registry);
    p.w->updateObservationStatistics();
    html = p.w->statisticSummary()->documentHtml();
    for (const char* section : {"General Statistics", "Fisher Distribution", "Mean Principal Orientation",
                                "Mean Resultant Orientation", "Transverse (T) Orientation",
                                "Longitudinal (L) Orientation/ Best-Fit Orientation", "Suggested Section Orientation",
                                "Resultant Length (normalized)", "Pole(plunge,plunge azimuth)"})
        QVERIFY2(html.contains(QLatin1String(section)), section);
    QVERIFY(html.contains(QLatin1String(" rad  (")));
    QVERIFY(!html.contains(QLatin1String("nan")));
}

void TestStereoChartWidget::fitOfFisherDistribution()
{
    Sheet s;
    // A cap of planes about 30/120, spread a few degrees.
    QVector<double> dips, azimuths;
    for (int i = 0; i < 40; ++i) {
        dips << 30.0 + 6.0 * std::sin(i * 1.3);
        azimuths << 120.0 + 9.0 * std::cos(i * 0.7);
    }
    addOrientations(s, dips, azimuths);
    StereoPanel p(s);
    p.show();
    auto* tabs = p.child<QTabWidget>("m_pqTabWidget");
    QTabWidget* fit = p.w->fitTabWidget();
    fit->setCurrentIndex(2);
    tabs->setCurrentIndex(3);
    QCOMPARE(fit->currentIndex(), 0);
    auto value = [&p](const char* name) {
        bool ok = false;
        const double v = p.w->findChild<QLabel*>(QString::fromLatin1(name))->text().toDouble(&ok);
        return ok ? v : -1.0;
    };
    // A tight cap: both estimates of the dispersion are large, as the resultant's is.
    QVERIFY2(value("m_pqColatitudeKappa") > 10.0, qPrintable(p.text("m_pqColatitudeKappa")));
    QVERIFY2(value("m_pqTwoVariableKappa") > 10.0, qPrintable(p.text("m_pqTwoVariableKappa")));
    QVERIFY2(value("m_pqMeanResultantKappa") > 10.0, qPrintable(p.text("m_pqMeanResultantKappa")));
    QCOMPARE(p.text("m_pqMeanResultantKappa"), p.text("m_pqKappa"));
    QString bad;
    QVERIFY2(noNumberWentWrong(p.labelTexts(), bad), qPrintable(bad));

    // Rows picked in a Q-Q plot reach the owner, and the chart reloads on its way back.
    auto* plot = p.w->findChild<QWidget*>(QStringLiteral("exponentialPlot"));
    QVERIFY(plot);
    QSignalSpy spy(p.w.get(), &QStereoChartWidget::dataPointsSelection);
    boost::dynamic_bitset<> rows(40);
    rows.set(3);
    QVERIFY(QMetaObject::invokeMethod(plot, "dataPointsSelection", Q_ARG(boost::dynamic_bitset<>, rows),
                                      Q_ARG(QString, QStringLiteral("EXPONENTIAL"))));
    QCOMPARE(spy.count(), 1);
    p.reloads = 0;
    tabs->setCurrentIndex(0);
    QCOMPARE(p.reloads, 1);
    tabs->setCurrentIndex(1);
    QCOMPARE(p.reloads, 1);
}

void TestStereoChartWidget::lineationFromPlungeAndAzimuth()
{
    Sheet s;
    addOrientations(s, {30, 32, 28}, {120, 120, 120});
    s.add(QStringLiteral("plunge"), {10, 20, kNaN});
    s.add(QStringLiteral("trend"), {200, 210, 220});
    StereoPanel p(s);
    p.show();
    auto* show = p.child<QCheckBox>("m_pqShowLineation");
    QVERIFY(!show->isEnabled());
    p.activate("m_pqLineationPlungeComboBox", QStringLiteral("plunge"));
    QVERIFY(!show->isEnabled()); // the azimuth is missing
    p.reloads = 0;
    p.activate("m_pqLineationAzimuthComboBox", QStringLiteral("trend"));
    QVERIFY(show->isEnabled());
    QVERIFY(show->isChecked());
    QVERIFY(p.w->drawingArea()->showLineation());
    QCOMPARE(p.reloads, 1);
    // The row without a plunge is left out.
    QCOMPARE(p.w->lineationModel()->pointCount(), 2);
    QCOMPARE(p.w->lineationModel()->data()->value(1, 0).toPointF(), QPointF(20, 210));
    // Back to "None": no lineation.
    p.activate("m_pqLineationPlungeComboBox", QStringLiteral("None"));
    QVERIFY(!show->isEnabled());
    QVERIFY(!p.w->drawingArea()->showLineation());
}

void TestStereoChartWidget::lineationFromPlaneAndPitch()
{
    Sheet s;
    addOrientations(s, {30, 60}, {120, 200});
    s.add(QStringLiteral("pitch"), {90, 0});
    s.addText(QStringLiteral("sense"), {QString(), QString()});
    StereoPanel p(s);
    p.show();
    p.child<QGroupBox>("m_pqPlanePitchGroupBox")->setChecked(true);
    QVERIFY(!p.child<QGroupBox>("m_pqPlungeAzimuthGroupBox")->isChecked());
    p.activate("m_pqPitchPlaneDipComboBox", QStringLiteral("dip"));
    p.activate("m_pqPitchPlaneAzimuthComboBox", QStringLiteral("azimuth"));
    p.activate("m_pqPitchComboBox", QStringLiteral("pitch"));
    QVERIFY(!p.child<QCheckBox>("m_pqShowLineation")->isEnabled());
    p.activate("m_pqPitchDirectionComboBox", QStringLiteral("sense"));
    QVERIFY(p.child<QCheckBox>("m_pqShowLineation")->isEnabled());
    QCOMPARE(p.w->lineationModel()->pointCount(), 2);
    // A pitch of 90 is the dip line itself; a pitch of 0 the horizontal strike line.
    const QPointF dipLine = p.w->lineationModel()->data()->value(0, 0).toPointF();
    QVERIFY(std::abs(dipLine.x() - 30.0) < 1e-6 && std::abs(dipLine.y() - 120.0) < 1e-6);
    QVERIFY(std::abs(p.w->lineationModel()->data()->value(1, 0).toPointF().x()) < 1e-6);
}

void TestStereoChartWidget::lineationNeedsEveryBox()
{
    Sheet s;
    addOrientations(s, {30, 60}, {120, 200});
    s.add(QStringLiteral("pitch"), {90, 0});
    StereoPanel p(s);
    p.show();
    p.child<QGroupBox>("m_pqPlanePitchGroupBox")->setChecked(true);
    p.reloads = 0;
    // Only one box of four chosen: nothing is built or drawn, and no reload is asked for.
    p.activate("m_pqPitchComboBox", QStringLiteral("pitch"));
    QVERIFY(!p.child<QCheckBox>("m_pqShowLineation")->isEnabled());
    QVERIFY(!p.w->lineationPlungeData());
    QCOMPARE(p.reloads, 0);
    p.reload();
    QCOMPARE(p.w->lineationModel()->pointCount(), 0);
    QVERIFY(!p.w->drawingArea()->visibleChartImage().isNull());
}

void TestStereoChartWidget::cursorLabel_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("strike");
    QTest::addColumn<bool>("firstShown");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::addColumn<QString>("sense");
    // The centre of the net: the pole of a horizontal plane; the net's top: a vertical line.
    QTest::newRow("selection, lines") << "selection" << 0 << false << true << "Plane(dip/dip az.):" << 0.0 << 0.0 << "";
    QTest::newRow("selection, lines, strike") << "selection" << 0 << true << true << "Plane(strike/dip/sense):" << 270.0
                                              << 0.0 << "N";
    QTest::newRow("selection, poles and planes") << "selection" << 1 << false << false << "Line(plunge/plunge az.):"
                                                 << 90.0 << 180.0 << "";
    QTest::newRow("projected plane") << "plane" << 0 << false << true << "Plane(dip/dip az.):" << 90.0 << 180.0 << "";
    QTest::newRow("pole") << "pole" << 0 << false << true << "Plane(dip/dip az.):" << 0.0 << 0.0 << "";
}

void TestStereoChartWidget::cursorLabel()
{
    QFETCH(QString, action);
    QFETCH(int, mode);
    QFETCH(bool, strike);
    QFETCH(bool, firstShown);
    QFETCH(QString, caption);
    QFETCH(double, first);
    QFETCH(double, second);
    QFETCH(QString, sense);
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.show();
    const char* radio = action == "plane" ? "m_pqProjectedPlaneRadioButton"
                        : action == "pole" ? "m_pqPoleRadioButton"
                                           : "m_pqSelectionRadioButton";
    p.child<QRadioButton>(radio)->setChecked(true);
    p.child<QRadioButton>(strike ? "m_pqStrikeDipSenseRadioButton" : "m_pqDipDipAzimuthRadioButton")->setChecked(true);
    p.child<QComboBox>("m_pqCursorInformationComboBox")->setCurrentIndex(mode);
    QStereoPlotWidget* plot = p.w->drawingArea();
    const QPointF centre = QPointF(plot->centre()) - QPointF(plot->xOffsetPixels(), plot->yOffsetPixels());
    p.w->updateCursorPosLabel(centre);
    // Numbers with the decimals of the dip column.
    const int decimals = s.column(QStringLiteral("dip"))->unitPrecision();
    const QString value = QStringLiteral("(") + QString::number(first, 'f', decimals) + QLatin1Char('/')
                          + QString::number(second, 'f', decimals) + (sense.isEmpty() ? QString() : QLatin1Char(' ') + sense)
                          + QStringLiteral(")");
    QCOMPARE(plot->cursorInformationMode(), mode);
    QCOMPARE(!p.child<QLabel>("m_pqPoleCursorLabel")->isHidden(), firstShown);
    QCOMPARE(p.text("m_pqPlaneCursorLabel"), caption);
    QCOMPARE(p.text("m_pqPlaneCursorPos"), value);
    if (firstShown)
        QCOMPARE(p.text("m_pqPoleCursorLabel"), QStringLiteral("Pole(plunge/plunge az.):"));
    // Far outside the net nothing is read and nothing breaks.
    p.w->updateCursorPosLabel(QPointF(-1e6, kNaN));
    QCOMPARE(p.text("m_pqPlaneCursorPos"), value);
}

void TestStereoChartWidget::blueRedOnChartLegendAndTable_data()
{
    QTest::addColumn<bool>("blueRed");
    QTest::newRow("Blue-Red") << true;
    QTest::newRow("Red-Blue") << false;
}

// "Blue-Red": low values blue, high values red, wherever the colour map shows.
void TestStereoChartWidget::blueRedOnChartLegendAndTable()
{
    QFETCH(bool, blueRed);
    Sheet s;
    // Two points far apart on the net, one with the lowest value and one with the highest.
    addOrientations(s, {30, 40, 50, 60}, {45, 100, 200, 300});
    s.add(QStringLiteral("value"), {0.0, 3.0, 6.0, 10.0});
    StereoPanel p(s);
    p.child<QRadioButton>("m_pqAnnotationOffRadioButton")->setChecked(true);
    p.child<QComboBox>("m_pqPointTypeComboBox")->setCurrentIndex(
        p.child<QComboBox>("m_pqPointTypeComboBox")->findData(int(QRelationshipItemModel::Square)));
    p.child<QSpinBox>("m_pqPointSizeSpinBox")->setValue(8);
    p.activate("m_pqColourMapComboBox", QStringLiteral("value"));
    p.show();
    if (!blueRed) {
        p.child<QRadioButton>("m_pqRedBlueRadioButton")->setChecked(true);
        QVERIFY(p.child<QRadioButton>("m_pqRedBlueRadioButton")->isChecked());
    }
    auto low = blueRed ? bluish : reddish;
    auto high = blueRed ? reddish : bluish;
    // The table colours the cells from the column's own map.
    MatrixData* values = s.column(QStringLiteral("value"));
    QVERIFY2(low(values->cellColor(0)), qPrintable(values->cellColor(0).name()));
    QVERIFY2(high(values->cellColor(3)), qPrintable(values->cellColor(3).name()));
    // The legend: its first class is the lowest band, its last the highest.
    QLegendListModel* legend = p.w->colorLegend();
    QVERIFY(legend->rowCount() >= 2);
    const QColor first = legend->data(legend->index(0, 0), Qt::DecorationRole).value<QColor>();
    const QColor last = legend->data(legend->index(legend->rowCount() - 1, 0), Qt::DecorationRole).value<QColor>();
    QVERIFY2(low(first), qPrintable(first.name()));
    QVERIFY2(high(last), qPrintable(last.name()));
    // The chart: the points themselves.
    const QColor lowPoint = pointColour(p.w.get(), QPointF(30, 45));
    const QColor highPoint = pointColour(p.w.get(), QPointF(60, 300));
    QVERIFY2(low(lowPoint), qPrintable(lowPoint.name()));
    QVERIFY2(high(highPoint), qPrintable(highPoint.name()));
}

void TestStereoChartWidget::contourColourDirection()
{
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.show();
    p.child<QCheckBox>("m_pqContoursForPoles")->setChecked(true);
    QVERIFY(!p.w->model()->contourGridPoles()->flipColorMap());
    p.child<QRadioButton>("m_pqContourRedBlueRadioButton")->setChecked(true);
    p.w->updateStereoPlotContours(true);
    QVERIFY(p.w->model()->contourGridPoles()->flipColorMap());
    p.child<QRadioButton>("m_pqContourBlueRedRadioButton")->setChecked(true);
    QVERIFY(!p.w->model()->contourGridPoles()->flipColorMap());
}

// A text attribute numbers its classes from 0: every class has its row, and the swatch of a row
// is the symbol and colour of the points of that class.
void TestStereoChartWidget::legendRowsAreThePointClasses()
{
    Sheet s;
    addOrientations(s, {30, 40, 50, 60}, {45, 100, 200, 300});
    s.addText(QStringLiteral("rock"), {"sand", "shale", "sand", "lime"});
    StereoPanel p(s);
    p.activate("m_pqSymbolsComboBox", QStringLiteral("rock"));
    p.show();
    QVERIFY(p.page("SymbolAttributeSettings")->isEnabled());
    QVERIFY(!p.page("ColourAttributeSettings")->isEnabled());
    QVERIFY(!p.child<QWidget>("m_pqSymbolLegendFrame")->isHidden());
    QLegendListModel* legend = p.w->symbolLegend();
    QCOMPARE(legend->rowCount(), 3);
    // Each class in a shape of its own: the one shape of "Type" is not used.
    QVERIFY(!p.child<QComboBox>("m_pqPointTypeComboBox")->isEnabled());
    QRelationshipItemModel* model = p.w->model();
    QStereoPlotWidget* plot = p.w->drawingArea();
    for (int row = 0; row < model->pointCount(); ++row) {
        QColor colour;
        const int id = model->getColor(row, colour);
        const int legendRow = legend->rowOfId(id);
        QVERIFY2(legendRow >= 0, qPrintable(QString::number(id)));
        QCOMPARE(legend->data(legend->index(legendRow, 1)).toInt(), id);
        QCOMPARE(legend->data(legend->index(legendRow, 0)).toString(),
                 QStringList({"sand", "shale", "sand", "lime"})[row]);
        // The swatch is the chart's symbol of that class in that colour.
        int symbol = id;
        const QImage swatch = legend->data(legend->index(legendRow, 0), Qt::DecorationRole).value<QPixmap>().toImage();
        const QColor background = plot->backgroundColor();
        plot->setBackgroundColor(Qt::white);
        const QImage expected = plot->getSymbolPixmap(symbol, legend->classColors().value(id), true).toImage();
        plot->setBackgroundColor(background);
        QCOMPARE(swatch, expected);
    }
    p.child<QRadioButton>("m_pqSingleSymbolRadioButton")->click();
    QVERIFY(p.child<QComboBox>("m_pqPointTypeComboBox")->isEnabled());
    QVERIFY(p.w->drawingArea()->symbolColorOnly());
    p.child<QRadioButton>("m_pqMultipleSymbolRadioButton")->click();
    QVERIFY(!p.w->drawingArea()->symbolColorOnly());
    // Clicking a class selects its points.
    QSignalSpy spy(p.w.get(), &QStereoChartWidget::dataPointsSelection);
    auto* view = p.child<QLegendListView>("m_pqSymbolLegendView");
    QColor sandColour;
    const int sandRow = legend->rowOfId(model->getColor(0, sandColour));
    view->selectionModel()->select(legend->index(sandRow, 0), QItemSelectionModel::ClearAndSelect);
    p.w->updateSymbolLegendItemSelection(legend->index(sandRow, 0));
    QCOMPARE(spy.count(), 1);
    const auto bits = spy[0][0].value<boost::dynamic_bitset<>>();
    QCOMPARE(int(bits.count()), 2);
    QVERIFY(bits.test(0) && bits.test(2));
}

void TestStereoChartWidget::clustersAndTheirTable()
{
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.show();
    QSignalSpy spy(p.w.get(), &QStereoChartWidget::createClusterAttribute);
    p.child<QSpinBox>("m_pqNumberOfClustersSpinBox")->setValue(2);
    p.child<QPushButton>("m_pqApplyClusterGenerationButton")->click();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy[0][0].toString(), QStringLiteral("StereoPlot_dip_azimuth"));
    auto* table = p.child<QTableWidget>("m_pqClusterMeansTableWidget");
    QCOMPARE(table->rowCount(), 2);
    QCOMPARE(table->columnCount(), 4);
    QCOMPARE(table->horizontalHeaderItem(1)->text(), QStringLiteral("Plunge"));
    QCOMPARE(table->horizontalHeaderItem(3)->text(), QStringLiteral("Distortion"));
    p.activate("m_pqClusterMeansComboBox", QStringLiteral("Planes"));
    QCOMPARE(table->horizontalHeaderItem(1)->text(), QStringLiteral("Dip"));
    QSet<int> dips;
    for (int r = 0; r < 2; ++r)
        dips << qRound(table->item(r, 1)->text().toDouble());
    QCOMPARE(dips, (QSet<int>{40, 70}));
    QVERIFY(!table->item(0, 0)->icon().isNull());

    // More clusters than points: no run, no column.
    p.child<QSpinBox>("m_pqNumberOfClustersSpinBox")->setValue(50);
    p.child<QPushButton>("m_pqApplyClusterGenerationButton")->click();
    QCOMPARE(spy.count(), 1);
    QVERIFY(!p.w->model()->hasClusterIDs());
}

void TestStereoChartWidget::woodcockPointPerClass()
{
    Sheet s;
    addTwoClusters(s);
    // Cluster numbers as the analyser writes them: whole numbers, one class each.
    auto* clusters = new MatrixData(QStringLiteral("cluster"), 10, 1, QVariant::Int, true);
    for (int r = 0; r < 10; ++r)
        clusters->setValue(r, 0, r < 5 ? 0 : 1);
    s.group->appendChild(clusters, false);
    StereoPanel p(s);
    p.activate("m_pqSymbolsComboBox", QStringLiteral("cluster"));
    p.show();
    QWoodcockHelpWidget* woodcock = p.w->woodcockWidget();
    QVERIFY(woodcock);
    QLegendListModel* legend = p.w->symbolLegend();
    // The classes the points fall in: the two clusters, in the legend's order.
    std::vector<int> classes;
    for (int row = 0; row < p.w->model()->pointCount(); ++row) {
        QColor colour;
        const int id = p.w->model()->getColor(row, colour);
        if (std::find(classes.begin(), classes.end(), id) == classes.end())
            classes.push_back(id);
    }
    std::sort(classes.begin(), classes.end());
    QCOMPARE(int(classes.size()), 2);
    QString ids;
    for (int id : woodcock->symbolIds())
        ids += QString::number(id) + QLatin1Char(' ');
    QVERIFY2(woodcock->symbolIds() == classes, qPrintable(ids));
    for (std::size_t k = 0; k < classes.size(); ++k) {
        QVERIFY(legend->rowOfId(classes[k]) >= 0);
        QCOMPARE(woodcock->colours()[k], legend->classColors().value(classes[k]));
        // Two tight groups: each one clustered, far up the diagram's axes.
        QVERIFY(woodcock->points()[k].x() > 1.0 || woodcock->points()[k].y() > 1.0);
    }
    // The working selection is gone afterwards.
    QVERIFY(!p.w->model()->partSelection());
}

void TestStereoChartWidget::rotation_data()
{
    QTest::addColumn<int>("plunge");
    QTest::addColumn<int>("azimuth");
    QTest::addColumn<int>("angle");
    QTest::addColumn<bool>("unchanged");
    QTest::newRow("zeros") << 0 << 0 << 0 << true;
    QTest::newRow("about the vertical by 30") << 90 << 0 << 30 << false;
}

void TestStereoChartWidget::rotation()
{
    QFETCH(int, plunge);
    QFETCH(int, azimuth);
    QFETCH(int, angle);
    QFETCH(bool, unchanged);
    Sheet s;
    addOrientations(s, {30, 50}, {100, 200});
    StereoPanel p(s);
    p.show();
    p.child<QIntSpinBoxWithSlider>("m_pqRotationPlungeSpinBox")->setValue(plunge);
    p.child<QIntSpinBoxWithSlider>("m_pqRotationAzimuthSpinBox")->setValue(azimuth);
    p.child<QIntSpinBoxWithSlider>("m_pqRotationAngleSpinBox")->setValue(angle);
    emit p.child<QPushButton>("m_pqApplyRotationButton")->pressed();
    const QPointF first = p.w->model()->data()->value(0, 0).toPointF();
    QVERIFY(std::isfinite(first.x()) && std::isfinite(first.y()));
    QCOMPARE(std::abs(first.x() - 30.0) < 1e-6, true);
    QCOMPARE(std::abs(first.y() - 100.0) < 1e-6, unchanged);
    // Centring the mean brings the mean plane to the horizontal.
    emit p.child<QPushButton>("m_pqCentraliseMeanButton")->pressed();
    QVERIFY(p.w->model()->meanPrincipalPlane().x() < 1.0);
    QSignalSpy spy(p.w.get(), &QStereoChartWidget::createRotatedAttributes);
    emit p.child<QPushButton>("m_pqCreateNewAttributesButton")->pressed();
    QCOMPARE(spy.count(), 1);
}

void TestStereoChartWidget::biasCorrectionEnablesScanline()
{
    Sheet s;
    addTwoClusters(s);
    StereoPanel p(s);
    p.show();
    p.child<QIntSpinBoxWithSlider>("m_pqScanlineAzimuthSpinBox")->setValue(45);
    p.child<QCheckBox>("m_pqBiasCorrectionCheckBox")->setChecked(true);
    QVERIFY(p.child<QGroupBox>("m_pqScanlineGroupBox")->isEnabled());
    QVERIFY(p.child<QPushButton>("m_pqGenerateBiasCorrectionButton")->isEnabled());
    QCOMPARE(p.w->model()->scanlineAzimuth(), 45.0);
    QSignalSpy spy(p.w.get(), &QStereoChartWidget::createBiasWeightAttribute);
    emit p.child<QPushButton>("m_pqGenerateBiasCorrectionButton")->pressed();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy[0][0].toString(), QStringLiteral("Bias Weights"));
    QCOMPARE(p.child<QLineEdit>("m_pqContourMinRange")->text(), QStringLiteral("---"));
    p.child<QCheckBox>("m_pqBiasCorrectionCheckBox")->setChecked(false);
    QVERIFY(!p.child<QGroupBox>("m_pqScanlineGroupBox")->isEnabled());
}

namespace {
// Every key, by group, that the panel keeps.
const QMap<QString, QStringList>& settingsKeys()
{
    static const QMap<QString, QStringList> keys = {
        {"splitter_sizes", {"side_panel_splitter", "legend_splitter"}},
        {"display",
         {"dip_selected_data_set", "azimuth_selected_data_set", "show_10_degree_intervals", "show_2_degree_intervals",
          "show_labels", "show_projected_planes", "show_mean_principal_plane", "show_mean_resultant_plane",
          "show_suggested_section_plane", "show_best_fit_plane", "line_width_projected_planes",
          "line_width_mean_principal_plane", "line_width_mean_resultant_plane", "line_width_suggested_section_plane",
          "line_width_best_fit_plane", "show_poles", "color_poles", "show_mean_principal_pole",
          "show_mean_resultant_pole", "show_t_pole", "show_l_pole", "show_dip_directions", "show_lineation",
          "color_dip_directions", "color_plane", "show_mean_principal_dip_dir", "show_mean_resultant_dip_dir",
          "show_t_dip_dir", "show_l_dip_dir", "color_lineation", "color_mean_principal_plane",
          "color_mean_resultant_plane", "color_suggested_section_plane", "color_best_fit_plane",
          "color_mean_principal_pole", "color_t_pole", "color_l_pole", "color_mean_resultant_pole",
          "color_mean_principal_azimuth", "color_t_azimuth", "color_l_azimuth", "color_mean_resultant_azimuth",
          "zoom_factor_on", "zoom_factor", "zoom_horizontalScrollBar", "zoom_verticalScrollBar"}},
        {"point_style", {"type", "size"}},
        {"add_attributes", {"colour_map_attribute", "symbols_attribute"}},
        {"stereographic_projection", {"equal_area_projection", "equal_angle_projection"}},
        {"graphic_action", {"projected_plane", "selection", "projected_pole", "cursor_information"}},
        {"symbol_attribute_settings", {"single_point_style", "multiple_point_style"}},
        {"color_map_settings",
         {"color_map_min_range", "color_map_max_range", "color_map_interval_size", "color_map_blue_red",
          "color_map_red_blue"}},
        {"contours",
         {"density_contours_poles", "density_contours_dipdir", "discrete_density_ranges", "show_grid",
          "number_of_grid_cells", "counting_method"}},
        {"contour_color_map_settings",
         {"color_map_min_range", "color_map_max_range", "color_map_interval_size", "color_map_blue_red",
          "color_map_red_blue"}},
        {"cluster_generation", {"expected_clusters"}},
        {"lineation",
         {"plunge_azimuth_group_box", "plane_pitch_group_box", "plunge_attribute", "plunge_azimuth_attribute",
          "plane_dip_attribute", "plane_azimuth_attribute", "pitch_attribute", "pitch_direction_attribute",
          "point_type", "point_size"}},
        {"display_settings",
         {"background_white", "background_black", "annotation_angles", "annotation_directions", "annotation_off",
          "dip_dip_azimuth_convention", "strike_dip_sense_convention"}},
        {"rotation", {"plunge", "azimuth", "angle"}},
        {"bias_correction", {"scanline_plunge", "scanline_azimuth", "minimum_bias_angle"}},
    };
    return keys;
}

// The state of every named control of a panel, for comparing two panels.
QMap<QString, QString> controlStates(QWidget* w)
{
    QMap<QString, QString> out;
    for (QAbstractButton* b : w->findChildren<QAbstractButton*>())
        if (b->isCheckable() && !b->objectName().isEmpty())
            out.insert(b->objectName(), b->isChecked() ? "1" : "0");
    for (QGroupBox* g : w->findChildren<QGroupBox*>())
        if (g->isCheckable())
            out.insert(g->objectName(), g->isChecked() ? "1" : "0");
    for (QSpinBox* b : w->findChildren<QSpinBox*>())
        if (!b->objectName().isEmpty())
            out.insert(b->objectName(), QString::number(b->value()));
    for (QIntSpinBoxWithSlider* b : w->findChildren<QIntSpinBoxWithSlider*>())
        out.insert(b->objectName(), QString::number(b->value()));
    for (QDoubleSpinBox* b : w->findChildren<QDoubleSpinBox*>())
        if (!b->objectName().isEmpty())
            out.insert(b->objectName(), QString::number(b->value()));
    for (QComboBox* b : w->findChildren<QComboBox*>())
        if (!b->objectName().isEmpty())
            out.insert(b->objectName(), b->currentText());
    for (QLineEdit* e : w->findChildren<QLineEdit*>())
        if (e->objectName().startsWith(QLatin1String("m_pq")))
            out.insert(e->objectName(), e->text());
    for (const char* bar : {"m_pqHorizontalScrollBar", "m_pqVerticalScrollBar"})
        out.insert(bar, QString::number(w->findChild<QScrollBar*>(bar)->value()));
    for (QPushButton* b : w->findChildren<QPushButton*>())
        if (b->objectName().startsWith(QLatin1String("m_pq")) && b->objectName().endsWith(QLatin1String("ColorButton")))
            out.insert(b->objectName(), PanelColorButton::color(b).name());
    return out;
}
} // namespace

void TestStereoChartWidget::settingsRoundTrip()
{
    Sheet s;
    addTwoClusters(s);
    s.add(QStringLiteral("value"), {1, 2, 3});
    s.add(QStringLiteral("plunge"), {1, 2, 3});
    const QString prefix = QStringLiteral("roundtrip/stereo/");
    QSettings().remove(QStringLiteral("roundtrip"));
    StereoPanel a(s);
    a.w->readSettings(prefix);
    a.show();
    for (const char* name :
         {"m_pqShow10DegreeNet", "m_pqShow2DegreeNet", "m_pqShowLabels", "m_pqShowPlanes", "m_pqShowMeanPrincipalPlane",
          "m_pqShowMeanResultantPlane", "m_pqShowSuggestedSectionPlane", "m_pqShowBestFitPlane", "m_pqShowPoles",
          "m_pqShowMeanPrincipalPole", "m_pqShowMeanResultantPole", "m_pqShowTPole", "m_pqShowLPole", "m_pqShowAzimuths",
          "m_pqShowMeanPrincipalAzimuth", "m_pqShowMeanResultantAzimuth", "m_pqShowTAzimuth", "m_pqShowLAzimuth",
          "m_pqZoomFactorCheckBox", "m_pqContoursForPoles", "m_pqContoursForDipDirections", "m_pqShowDensityGrid"})
        a.child<QCheckBox>(name)->toggle();
    a.child<QCheckBox>("m_pqShowLineation")->setEnabled(true);
    a.child<QCheckBox>("m_pqShowLineation")->setChecked(true);
    a.child<QGroupBox>("m_pqDiscreteDensityGroupBox")->setChecked(true);
    for (const char* name : {"m_pqWulffRadioButton", "m_pqPoleRadioButton", "m_pqSingleSymbolRadioButton",
                             "m_pqRedBlueRadioButton", "m_pqContourRedBlueRadioButton",
                             "m_pqBlackBackgroundRadioButton", "m_pqAnnotationOffRadioButton",
                             "m_pqStrikeDipSenseRadioButton"})
        a.child<QRadioButton>(name)->setChecked(true);
    int width = 1;
    for (const char* name : {"m_pqPlaneWidthSpinBox", "m_pqMeanPrincipalPlaneWidthSpinBox",
                             "m_pqMeanResultantPlaneWidthSpinBox", "m_pqSuggestedSectionPlaneWidthSpinBox",
                             "m_pqBestFitPlaneWidthSpinBox"})
        a.child<QSpinBox>(name)->setValue(++width > 5 ? 5 : width);
    int shade = 0x10;
    for (QPushButton* b : a.w->findChildren<QPushButton*>())
        if (b->objectName().startsWith(QLatin1String("m_pq")) && b->objectName().endsWith(QLatin1String("ColorButton")))
            PanelColorButton::setColor(b, QColor(shade += 9, 0x80, 0x40));
    a.child<QDoubleSpinBox>("m_pqZoomSpinBox")->setValue(4.5);
    a.child<QScrollBar>("m_pqHorizontalScrollBar")->setValue(20);
    a.child<QScrollBar>("m_pqVerticalScrollBar")->setValue(70);
    a.child<QComboBox>("m_pqPointTypeComboBox")->setCurrentIndex(3);
    a.child<QSpinBox>("m_pqPointSizeSpinBox")->setValue(9);
    a.select("m_pqColourMapComboBox", "value");
    a.select("m_pqSymbolsComboBox", "plunge");
    a.child<QComboBox>("m_pqCursorInformationComboBox")->setCurrentIndex(1);
    a.child<QLineEdit>("m_pqColorMinRange")->setText("1.5");
    a.child<QLineEdit>("m_pqColorMaxRange")->setText("9.5");
    a.child<QLineEdit>("m_pqColorIntervalSize")->setText("0.5");
    a.child<QSpinBox>("m_pqGridCellsSpinBox")->setValue(33);
    a.child<QComboBox>("m_pqCountingMethodComboBox")->setCurrentIndex(2);
    a.child<QLineEdit>("m_pqContourMinRange")->setText("2");
    a.child<QLineEdit>("m_pqContourMaxRange")->setText("8");
    a.child<QLineEdit>("m_pqContourIntervalSize")->setText("1.25");
    a.child<QSpinBox>("m_pqNumberOfClustersSpinBox")->setValue(5);
    a.child<QGroupBox>("m_pqPlanePitchGroupBox")->setChecked(true);
    a.select("m_pqLineationPlungeComboBox", "plunge");
    a.select("m_pqLineationAzimuthComboBox", "azimuth");
    a.select("m_pqPitchPlaneDipComboBox", "dip");
    a.select("m_pqPitchPlaneAzimuthComboBox", "value");
    a.select("m_pqPitchComboBox", "plunge");
    a.select("m_pqPitchDirectionComboBox", "azimuth");
    a.child<QComboBox>("m_pqLineationPointStyleComboBox")->setCurrentIndex(4);
    a.child<QSpinBox>("m_pqLineationPointSizeSpinBox")->setValue(7);
    a.child<QIntSpinBoxWithSlider>("m_pqRotationPlungeSpinBox")->setValue(12);
    a.child<QIntSpinBoxWithSlider>("m_pqRotationAzimuthSpinBox")->setValue(230);
    a.child<QIntSpinBoxWithSlider>("m_pqRotationAngleSpinBox")->setValue(-40);
    a.child<QIntSpinBoxWithSlider>("m_pqScanlinePlungeSpinBox")->setValue(22);
    a.child<QIntSpinBoxWithSlider>("m_pqScanlineAzimuthSpinBox")->setValue(310);
    a.child<QIntSpinBoxWithSlider>("m_pqMinimumBiasAngleSpinBox")->setValue(25);
    a.child<QSplitter>("m_pqSidePanelSplitter")->setSizes({600, 300});
    a.select("m_pqDipComboBox", "azimuth");
    a.select("m_pqAzimuthComboBox", "dip");
    a.w->writeSettings();

    QSettings st;
    for (auto it = settingsKeys().cbegin(); it != settingsKeys().cend(); ++it)
        for (const QString& key : it.value())
            QVERIFY2(st.contains(prefix + it.key() + QLatin1Char('/') + key), qPrintable(it.key() + '/' + key));

    StereoPanel c(s);
    c.w->readSettings(prefix);
    const QMap<QString, QString> written = controlStates(a.w.get());
    const QMap<QString, QString> read = controlStates(c.w.get());
    for (auto it = written.cbegin(); it != written.cend(); ++it) {
        // Enabling is the data's business, not the settings': the lineation box follows its columns.
        QVERIFY2(read.value(it.key()) == it.value(),
                 qPrintable(it.key() + ": " + it.value() + " / " + read.value(it.key())));
    }
    QCOMPARE(c.w->drawingArea()->labelColor(), QColor(Qt::white));
    QVERIFY(!c.w->drawingArea()->equalAreaScaling());
    QCOMPARE(c.w->drawingArea()->zoomFactor(), 4.5);
    QCOMPARE(c.child<QSplitter>("m_pqSidePanelSplitter")->saveState(),
             a.child<QSplitter>("m_pqSidePanelSplitter")->saveState());
}

void TestStereoChartWidget::settingsDefaultsAndGarbage()
{
    const QString empty = QStringLiteral("empty/stereo/");
    const QString garbage = QStringLiteral("garbage/stereo/");
    {
        QSettings st;
        st.remove(QStringLiteral("empty"));
        st.remove(QStringLiteral("garbage"));
        for (auto it = settingsKeys().cbegin(); it != settingsKeys().cend(); ++it)
            for (const QString& key : it.value())
                st.setValue(garbage + it.key() + QLatin1Char('/') + key, QStringLiteral("#garbage;-1e999"));
    }
    Sheet s;
    addTwoClusters(s);
    StereoPanel byDefault(s);
    byDefault.w->readSettings(empty);
    // The defaults of a settings file that holds nothing.
    QVERIFY(byDefault.child<QCheckBox>("m_pqShow10DegreeNet")->isChecked());
    QVERIFY(byDefault.child<QCheckBox>("m_pqShowLabels")->isChecked());
    QVERIFY(byDefault.child<QCheckBox>("m_pqShowAzimuths")->isChecked());
    QVERIFY(byDefault.child<QRadioButton>("m_pqAnnotationAnglesRadioButton")->isChecked());
    QCOMPARE(byDefault.child<QSpinBox>("m_pqPlaneWidthSpinBox")->value(), 1);
    QCOMPARE(byDefault.child<QSpinBox>("m_pqBestFitPlaneWidthSpinBox")->value(), 2);
    QCOMPARE(byDefault.child<QIntSpinBoxWithSlider>("m_pqRotationAzimuthSpinBox")->value(), 90);
    QCOMPARE(byDefault.child<QIntSpinBoxWithSlider>("m_pqRotationAngleSpinBox")->value(), 1);
    QCOMPARE(byDefault.child<QIntSpinBoxWithSlider>("m_pqScanlineAzimuthSpinBox")->value(), 90);
    QCOMPARE(PanelColorButton::color(byDefault.child<QPushButton>("m_pqLineationColorButton")), QColor("#AA00FF"));
    QCOMPARE(PanelColorButton::color(byDefault.child<QPushButton>("m_pqMeanResultantPoleColorButton")),
             QColor("#FF5500"));
    QCOMPARE(byDefault.child<QLineEdit>("m_pqContourMinRange")->text(), QStringLiteral("---"));

    StereoPanel damaged(s);
    damaged.w->readSettings(garbage);
    const QMap<QString, QString> expected = controlStates(byDefault.w.get());
    const QMap<QString, QString> got = controlStates(damaged.w.get());
    for (auto it = expected.cbegin(); it != expected.cend(); ++it)
        QVERIFY2(got.value(it.key()) == it.value(),
                 qPrintable(it.key() + ": " + it.value() + " / " + got.value(it.key())));
    QCOMPARE(damaged.w->drawingArea()->zoomFactor(), 1.0);
    damaged.show();
    QCOMPARE(damaged.w->model()->pointCount(), 10);
}

void TestStereoChartWidget::badInput_data()
{
    QTest::addColumn<QVector<double>>("dips");
    QTest::addColumn<QVector<double>>("azimuths");
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("kappa");
    QTest::newRow("no rows") << QVector<double>{} << QVector<double>{} << 0 << "-----";
    QTest::newRow("one point") << QVector<double>{30} << QVector<double>{120} << 1 << "-----";
    QTest::newRow("identical points") << QVector<double>{30, 30, 30, 30} << QVector<double>{120, 120, 120, 120} << 4
                                      << "-----";
    QTest::newRow("identical along an axis") << QVector<double>{0, 0, 0} << QVector<double>{0, 0, 0} << 3 << "-----";
    QTest::newRow("perfect girdle") << QVector<double>{90, 90, 90, 90, 90, 90} << QVector<double>{0, 30, 60, 90, 120, 150}
                                    << 6 << "";
    QTest::newRow("NaN orientations") << QVector<double>{kNaN, 30, kNaN, 40}
                                      << QVector<double>{120, kNaN, kNaN, 130} << 1 << "-----";
    QTest::newRow("negative dips") << QVector<double>{-30, -30, 20} << QVector<double>{200, 100, 10} << 3 << "";
}

// Input that a sheet may hold: the panel loads what it can and shows "-----" for what it cannot
// compute, never "nan", and every tool still runs.
void TestStereoChartWidget::badInput()
{
    QFETCH(QVector<double>, dips);
    QFETCH(QVector<double>, azimuths);
    QFETCH(int, points);
    QFETCH(QString, kappa);
    Sheet s;
    s.add(QStringLiteral("dip"), dips, true);
    s.add(QStringLiteral("azimuth"), azimuths, true);
    QStringList words;
    for (int i = 0; i < dips.size(); ++i)
        words << QStringLiteral("abc");
    s.addText(QStringLiteral("text"), words);
    StereoPanel p(s);
    p.child<QCheckBox>("m_pqContoursForPoles")->setChecked(true);
    p.show();
    QCOMPARE(p.w->model()->pointCount(), points);
    QCOMPARE(p.text("m_pqNumberOfSelectedPoints"), QString::number(points));
    if (!kappa.isEmpty())
        QCOMPARE(p.text("m_pqKappa"), kappa);
    // Every tool once.
    p.child<QLineEdit>("m_pqContourIntervalSize")->setText(QStringLiteral("---"));
    emit p.child<QLineEdit>("m_pqContourIntervalSize")->editingFinished();
    p.child<QLineEdit>("m_pqColorMinRange")->setText(QStringLiteral("text"));
    emit p.child<QLineEdit>("m_pqColorMinRange")->editingFinished();
    p.child<QSpinBox>("m_pqNumberOfClustersSpinBox")->setValue(3);
    p.child<QPushButton>("m_pqApplyClusterGenerationButton")->click();
    emit p.child<QPushButton>("m_pqApplyRotationButton")->pressed();
    emit p.child<QPushButton>("m_pqCentraliseMeanButton")->pressed();
    p.child<QCheckBox>("m_pqBiasCorrectionCheckBox")->setChecked(true);
    p.activate("m_pqCalculationForComboBox", QStringLiteral("Planes"));
    p.activate("m_pqColourMapComboBox", QStringLiteral("text"));
    p.activate("m_pqSymbolsComboBox", QStringLiteral("text"));
    p.child<QTabWidget>("m_pqTabWidget")->setCurrentIndex(3);
    p.child<QTabWidget>("m_pqTabWidget")->setCurrentIndex(0);
    p.w->updateCursorPosLabel(QPointF(10, 10));
    QVERIFY(!p.w->drawingArea()->visibleChartImage().isNull());
    QString bad;
    QVERIFY2(noNumberWentWrong(p.labelTexts(), bad), qPrintable(bad));
    QVERIFY2(!p.w->statisticSummary()->documentHtml().contains(QLatin1String("nan")), "report");
    // The data are untouched.
    QCOMPARE(s.column(QStringLiteral("dip"))->rowCount(), dips.size());
}

void TestStereoChartWidget::reloadAfterOwnLasso_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<bool>("reloads");
    QTest::addRow("the lasso's rows come back") << "none" << false;
    QTest::addRow("the lasso's rows come back, with lines") << "lineation" << false;
    QTest::addRow("a lineation cell edited since") << "lineationEdit" << true;
    QTest::addRow("a cell edited since") << "edit" << true;
    QTest::addRow("other rows come back") << "rows" << true;
    QTest::addRow("rotated since") << "rotate" << true;
    QTest::addRow("a lasso row blank since") << "blank" << true;
    QTest::addRow("only the selection shown") << "selectedOnly" << true;
}

// A lasso selects rows in the table, and the table hands them back when the tab is shown again:
// that load would draw what the chart already shows and is left out; anything else loads.
void TestStereoChartWidget::reloadAfterOwnLasso()
{
    QFETCH(QString, change);
    QFETCH(bool, reloads);
    Sheet s;
    addTwoClusters(s);
    s.add(QStringLiteral("plunge"), {10, 20, 30, 40, 50, 10, 20, 30, 40, 50});
    s.add(QStringLiteral("trend"), {10, 20, 30, 40, 50, 60, 70, 80, 90, 100});
    StereoPanel p(s);
    p.tableRows = {2, 5, 7};
    p.show();
    const bool lines = change.startsWith(QLatin1String("lineation"));
    if (lines) {
        p.activate("m_pqLineationPlungeComboBox", QStringLiteral("plunge"));
        p.activate("m_pqLineationAzimuthComboBox", QStringLiteral("trend"));
        QCOMPARE(p.w->lineationModel()->pointCount(), 10);
    }
    const quint64 linesBefore = p.w->lineationModel()->dataRevision();
    MatrixData* dip = s.column(QStringLiteral("dip"));
    MatrixData* azimuth = s.column(QStringLiteral("azimuth"));
    QRelationshipItemModel* model = p.w->model();
    // The chart's lasso: the model's selection first, then the panel hears of it.
    model->clearSelection();
    boost::dynamic_bitset<> lasso(10);
    for (int row : {1, 3, 4}) {
        model->setSelected(row, true);
        lasso.set(std::size_t(row));
    }
    QSignalSpy spy(p.w.get(), &QStereoChartWidget::dataPointsSelection);
    p.w->slotDataPointsSelection(lasso);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(p.text("m_pqNumberOfSelectedPoints"), QStringLiteral("3"));
    std::vector<int> rows{1, 3, 4};
    if (change == "edit")
        dip->setValue(3, 0, 42.0);
    else if (change == "rows")
        rows = {1, 3};
    else if (change == "rotate")
        emit p.child<QPushButton>("m_pqApplyRotationButton")->pressed();
    else if (change == "blank")
        azimuth->setValue(4, 0, QVariant());
    else if (change == "selectedOnly")
        p.w->setDisplayDataType(QRelationshipItemModel::ShowSelectedOnly);
    else if (change == "lineationEdit")
        s.column(QStringLiteral("trend"))->setValue(0, 0, 11.0);
    const quint64 before = model->dataRevision();
    p.w->setDataSet(dip, azimuth, nullptr, nullptr, nullptr, nullptr, rows);
    QCOMPARE(model->dataRevision() != before, reloads);
    if (lines) {
        // The lines stay drawn either way, read again only when they changed.
        QCOMPARE(p.w->lineationModel()->pointCount(), 10);
        QCOMPARE(p.w->lineationModel()->dataRevision() != linesBefore, reloads);
        QVERIFY(p.w->drawingArea()->showLineation());
    }
    if (change == "edit")
        QCOMPARE(model->data()->value(3, 0).toPointF(), QPointF(42.0, 121.0));
    const int expected = change == "blank" ? 2 : int(rows.size());
    QCOMPARE(int(model->selection().count()), expected);
}

void TestStereoChartWidget::columnLostWhileOpen()
{
    Sheet s;
    addTwoClusters(s);
    s.add(QStringLiteral("value"), {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    StereoPanel p(s);
    p.activate("m_pqColourMapComboBox", QStringLiteral("value"));
    p.show();
    MatrixData* dip = s.column(QStringLiteral("dip"));
    s.group->removeChild(dip);
    delete dip;
    // The panel is touched before its owner hands new columns.
    p.child<QCheckBox>("m_pqShowPoles")->toggle();
    p.child<QPushButton>("m_pqApplyClusterGenerationButton")->click();
    p.child<QAbstractButton>("m_pqResetColorRangeButton")->click();
    p.w->updateStereoPlot();
    QVERIFY(!p.w->dipDataSet());
    QCOMPARE(p.w->model()->pointCount(), 0);
    QVERIFY(!p.w->drawingArea()->visibleChartImage().isNull());
}

QTEST_MAIN(TestStereoChartWidget)
#include "tst_stereochartwidget.moc"
