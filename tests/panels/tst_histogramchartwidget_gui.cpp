// The histogram panel driven through its controls by object name: the form, P10/P50/P90, the
// coupled interval controls, the switch to cumulative curves for the two-sample test, the
// test's verdict and the statistic of the samples beside it, and the input a sheet can hold.
#include "PanelFixture.h"

#include <QDoubleSpinBoxWithSlider.h>
#include <QHistogramChartWidget.h>
#include <QHistogramItemModel.h>
#include <QHistogramPlotWidget.h>
#include <QIntSpinBoxWithSlider.h>

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QToolBox>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace panelfixture;

class TestHistogramChartWidget : public QObject
{
    Q_OBJECT
private slots:
    void form_data();
    void form();
    void confidenceTable_data();
    void confidenceTable();
    void percentiles();
    void intervalControlsFollowEachOther();
    void comparisonSwitchesToCumulativeCurves();
    void twoSampleTest_data();
    void twoSampleTest();
    void badInput_data();
    void badInput();
    void randomOrientationOnlyAsks();
};

namespace {
QVector<double> ramp(int n, double from, double step)
{
    QVector<double> v;
    for (int i = 0; i < n; ++i)
        v << from + step * i;
    return v;
}

struct HistogramPanel {
    Sheet sheet;
    QHistogramChartWidget w{QStringLiteral("Histogram"), nullptr, nullptr};
    HistogramPanel()
    {
        w.resize(1000, 700);
        w.setDataRoot(sheet.root.get());
    }
    // The boxes from the sheet, as the window fills them.
    void fillBoxes()
    {
        w.updateDataSetSelectionBox(sheet.names(), sheet.ids(), {});
        w.updateDataSetSelectionBoxForDataGroup(sheet.names(), sheet.ids(), {});
        QObject::connect(&w, &QHistogramChartWidget::dataSetSelected, [this] { reload(); });
    }
    void reload() { w.setDataSet(sheet.column(w.currentSelectedDataSetName()), {}, -1); }
    template <class T> T* child(const char* name) const { return w.findChild<T*>(QString::fromLatin1(name)); }
    QString text(const char* label) const { return child<QLabel>(label)->text(); }
    void choose(const char* box, const QString& entry) { panelfixture::activate(&w, box, entry); }
};
} // namespace

void TestHistogramChartWidget::form_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("Grid") << "m_pqShowGrid" << "checked" << QVariant(true);
    QTest::newRow("Bars") << "m_pqShowBars" << "checked" << QVariant(true);
    QTest::newRow("Line") << "m_pqShowLine" << "checked" << QVariant(false);
    QTest::newRow("Width") << "lineWidthSpinBox" << "value" << QVariant(2);
    QTest::newRow("Zoom Factor off") << "m_pqZoomFactorSpinBox" << "enabled" << QVariant(false);
    QTest::newRow("Zoom Factor top") << "m_pqZoomFactorSpinBox" << "maximum" << QVariant(20.0);
    QTest::newRow("P10 label") << "m_pqP10Label" << "text" << QVariant("-----");
    QTest::newRow("P50 text") << "m_pqP50CheckBox" << "text" << QVariant("P(50) = ");
    QTest::newRow("comparison group") << "twoSampleTestGroupBox" << "checked" << QVariant(false);
    QTest::newRow("comparison title") << "twoSampleTestGroupBox" << "title" << QVariant("Comparison Data Set");
    QTest::newRow("Random Orientation") << "createRandomOrientation" << "text" << QVariant("Random Orientation");
    QTest::newRow("Use Data Group") << "useDataGroupBox" << "checked" << QVariant(false);
    QTest::newRow("95%") << "confidenceInterval95" << "checked" << QVariant(true);
    QTest::newRow("zone set 1") << "showConfidenceZoneSet1" << "checked" << QVariant(true);
    QTest::newRow("white") << "m_pqWhiteBackgroundBtn" << "checked" << QVariant(true);
    QTest::newRow("Use Small Values") << "useSmallValues" << "checked" << QVariant(true);
    QTest::newRow("scroll bar") << "m_pqHorizontalScrollBar" << "maximum" << QVariant(100);
    QTest::newRow("test result") << "m_pqKStestFailedInfo" << "text" << QVariant("---");
}

void TestHistogramChartWidget::form()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QVariant, value);
    HistogramPanel p;
    QObject* o = p.w.findChild<QObject*>(name);
    QVERIFY2(o, qPrintable(name));
    QCOMPARE(o->property(qPrintable(property)), value);
    auto* box = p.child<QToolBox>("m_pqHistogramToolBox");
    QStringList pages;
    for (int i = 0; i < box->count(); ++i)
        pages << box->widget(i)->objectName() + QLatin1Char('|') + box->itemText(i);
    QCOMPARE(pages, (QStringList{"Display|Display", "KolmogorovTest|Kolmogorov-Smirnov Two-Sample Test",
                                 "Annotation|Annotation/Display Settings"}));
    auto* type = p.child<QComboBox>("m_pqHistogramTypeComboBox");
    QCOMPARE(type->count(), 3);
    QCOMPARE(type->itemText(2), QStringLiteral("Cumulative Relative Frequency"));
}

void TestHistogramChartWidget::confidenceTable_data()
{
    QTest::addColumn<QString>("radio");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("level");
    QTest::addColumn<double>("k");
    QTest::newRow("99") << "confidenceInterval99" << "99%      P(0.01)=1.63" << 1 << 1.63;
    QTest::newRow("95") << "confidenceInterval95" << "95%      P(0.05)=1.36" << 5 << 1.36;
    QTest::newRow("90") << "confidenceInterval90" << "90%      P(0.10)=1.22" << 10 << 1.22;
    QTest::newRow("85") << "confidenceInterval85" << "85%      P(0.15)=1.14" << 15 << 1.14;
    QTest::newRow("80") << "confidenceInterval80" << "80%      P(0.20)=1.07" << 20 << 1.07;
}

void TestHistogramChartWidget::confidenceTable()
{
    QFETCH(QString, radio);
    QFETCH(QString, text);
    QFETCH(int, level);
    QFETCH(double, k);
    HistogramPanel p;
    auto* r = p.w.findChild<QRadioButton*>(radio);
    QCOMPARE(r->text(), text);
    r->setChecked(true);
    double got = 0.0;
    QCOMPARE(p.w.confidenceInterval(got), level);
    QCOMPARE(got, k);
    // None checked: 0, and k as it was.
    r->setAutoExclusive(false);
    r->setChecked(false);
    got = 7.0;
    QCOMPARE(p.w.confidenceInterval(got), 0);
    QCOMPARE(got, 7.0);
}

void TestHistogramChartWidget::percentiles()
{
    HistogramPanel p;
    MatrixData* values = p.sheet.add(QStringLiteral("values"), ramp(100, 0.5, 1.0)); // 0.5 .. 99.5
    p.w.setHistogramInitialInterval(10.0);
    p.w.setDataSet(values);
    for (const char* box : {"m_pqP10CheckBox", "m_pqP50CheckBox", "m_pqP90CheckBox"})
        p.child<QCheckBox>(box)->setChecked(true);
    p.w.updateHistogramIntervals(10.0);
    QHistogramPlotWidget* plot = p.w.histogramPlot();
    // Ten values a bin from 0.5: the cumulative curve reaches 10% at 10.5, 50% at 50.5.
    QCOMPARE(plot->p10(), 10.5);
    QCOMPARE(plot->p50(), 50.5);
    QCOMPARE(plot->p90(), 90.5);
    QCOMPARE(p.text("m_pqP50Label"), values->printValue(50.5));
    QCOMPARE(p.text("m_pqNumbOfPointsLabel"), QStringLiteral("100"));
    QCOMPARE(p.w.histogramModel()->rowCount(), 10);
    // Marks are drawn where the values are.
    p.w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&p.w));
    QTRY_VERIFY(!plot->chartImage().isNull());
    const int x = int(std::lround(plot->transformInPixelPoint(QPointF(50.5, 0.0)).x()));
    const QRgb mark = plot->chartImage().pixel(x, plot->chartImage().height() / 2);
    QVERIFY2(qBlue(mark) > 120 && qRed(mark) < 60 && qGreen(mark) < 60, qPrintable(QColor(mark).name()));
}

void TestHistogramChartWidget::intervalControlsFollowEachOther()
{
    HistogramPanel p;
    MatrixData* values = p.sheet.add(QStringLiteral("values"), ramp(200, 0.0, 0.5)); // 0 .. 99.5
    p.w.setDataSet(values);
    auto* count = p.child<QIntSpinBoxWithSlider>("m_pqIntervalsSlider");
    auto* size = p.child<QDoubleSpinBoxWithSlider>("m_pqIntervalSizeSlider");
    count->setValue(10);
    QCOMPARE(size->value(), 9.95);
    QCOMPARE(p.w.histogramModel()->intervalSize(), 9.95);
    count->setValue(256); // read as 255
    QCOMPARE(p.w.histogramModel()->intervalSize(), 99.5 / 255);
    size->setValue(19.9);
    QCOMPARE(count->value(), 5);
    QCOMPARE(p.w.histogramModel()->rowCount(), 6); // the maximum opens a bin of its own
    // The automatic interval again: the range of the size control follows the data.
    p.w.setDataSet(values);
    QVERIFY(std::abs(size->minimum() - 99.5 / 1000) < 1e-6);
    QVERIFY(std::abs(size->maximum() - 99.5 / 3) < 1e-6);
}

void TestHistogramChartWidget::comparisonSwitchesToCumulativeCurves()
{
    HistogramPanel p;
    p.sheet.add(QStringLiteral("a"), ramp(50, 0.0, 1.0));
    p.sheet.add(QStringLiteral("b"), ramp(50, 30.0, 1.0));
    p.fillBoxes();
    p.w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&p.w));
    p.choose("m_pqHistogramDataSetComboBox", QStringLiteral("a"));
    QSignalSpy asked(&p.w, SIGNAL(dataSetSelected()));
    auto* group = p.child<QGroupBox>("twoSampleTestGroupBox");
    p.child<QToolBox>("m_pqHistogramToolBox")->setCurrentIndex(1);
    QTest::qWait(50);
    QTest::mouseClick(group, Qt::LeftButton, {}, QPoint(12, 8));
    QVERIFY(group->isChecked());
    QCOMPARE(asked.count(), 1);
    QCOMPARE(p.child<QComboBox>("m_pqHistogramTypeComboBox")->currentIndex(), 2);
    QVERIFY(p.child<QCheckBox>("m_pqShowLine")->isChecked());
    QVERIFY(!p.child<QCheckBox>("m_pqShowBars")->isChecked());
    QVERIFY(p.w.histogramPlot()->showHistogramLine() && !p.w.histogramPlot()->showHistogramBars());
    QVERIFY(p.w.compareData());
    QCOMPARE(p.text("m_pqKStestFailedInfo"), QStringLiteral("failed"));
}

void TestHistogramChartWidget::twoSampleTest_data()
{
    QTest::addColumn<QVector<double>>("first");
    QTest::addColumn<QVector<double>>("second");
    QTest::addColumn<QString>("level"); // radio
    QTest::addColumn<QString>("group"); // a data group of the first column, or none
    QTest::addColumn<QString>("maxDifference");
    QTest::addColumn<QString>("critical");
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<QString>("sampleD");
    const QVector<double> hundred = ramp(100, 0.0, 1.0);
    QTest::newRow("identical: 0.00%, passed") << hundred << hundred << "confidenceInterval95" << ""
                                              << "0.00%" << "19.23%" << "passed" << "0.0000";
    QTest::newRow("99%, n = 100 each: 23.05%") << hundred << ramp(100, 0.5, 1.0) << "confidenceInterval99" << ""
                                               << "" << "23.05%" << "passed" << "0.0100";
    QTest::newRow("shifted far: failed") << hundred << ramp(100, 60.0, 1.0) << "confidenceInterval95" << ""
                                         << "" << "19.23%" << "failed" << "0.6000";
    QTest::newRow("disjoint: nothing in both spans") << ramp(100, 0.0, 0.01) << ramp(100, 50.0, 0.01)
                                                     << "confidenceInterval95" << "" << "0.00%" << "19.23%" << "passed"
                                                     << "1.0000";
    QTest::newRow("comparison of no valid rows") << hundred << QVector<double>{std::nan(""), std::nan("")}
                                                 << "confidenceInterval95" << "" << "---" << "---" << "---" << "---";
    QTest::newRow("a data group that matches nothing") << hundred << hundred << "confidenceInterval95" << "nothing"
                                                       << "---" << "---" << "---" << "---";
    // Rows 0..49 carry "low": the group is half the column.
    QTest::newRow("a data group") << hundred << hundred << "confidenceInterval95" << "low" << "" << "23.56%"
                                  << "failed" << "0.5000";
}

void TestHistogramChartWidget::twoSampleTest()
{
    QFETCH(QVector<double>, first);
    QFETCH(QVector<double>, second);
    QFETCH(QString, level);
    QFETCH(QString, group);
    QFETCH(QString, maxDifference);
    QFETCH(QString, critical);
    QFETCH(QString, verdict);
    QFETCH(QString, sampleD);
    HistogramPanel p;
    p.sheet.add(QStringLiteral("first"), first, true);
    p.sheet.add(QStringLiteral("second"), second, true);
    QStringList tags;
    for (int i = 0; i < first.size(); ++i)
        tags << (i < first.size() / 2 ? QStringLiteral("low") : QStringLiteral("high"));
    p.sheet.addText(QStringLiteral("tag"), tags);
    p.fillBoxes();
    p.w.findChild<QRadioButton*>(level)->setChecked(true);
    p.choose("m_pqHistogramDataSetCompareComboBox", QStringLiteral("second"));
    if (!group.isEmpty()) {
        p.child<QGroupBox>("useDataGroupBox")->setChecked(true);
        p.choose("dataGroupAttributeComboBox", QStringLiteral("tag"));
        auto* groups = p.child<QComboBox>("dataGroupComboBox");
        QCOMPARE(groups->count(), 2); // first-seen order
        QCOMPARE(groups->itemText(0), QStringLiteral("low"));
        if (groups->findText(group) < 0)
            groups->addItem(group); // a text no row holds
        p.choose("dataGroupComboBox", group);
    }
    auto* test = p.child<QGroupBox>("twoSampleTestGroupBox");
    test->setChecked(true);
    emit test->clicked(true);
    p.choose("m_pqHistogramDataSetComboBox", QStringLiteral("first"));
    if (!maxDifference.isEmpty())
        QCOMPARE(p.text("m_pqMaxDifferenceLabel"), maxDifference);
    QCOMPARE(p.text("m_pqCriticalDifferenceLabel"), critical);
    QCOMPARE(p.text("m_pqKStestFailedInfo"), verdict);
    QCOMPARE(p.text("m_pqSampleStatisticLabel"), sampleD);
    for (const char* label : {"m_pqMaxDifferenceLabel", "m_pqCriticalDifferenceLabel", "m_pqSamplePValueLabel"})
        QVERIFY(!p.text(label).contains(QLatin1String("nan")) && !p.text(label).contains(QLatin1String("inf")));
    if (verdict != QLatin1String("---")) {
        // The verdict follows the gap and the critical difference shown.
        const double d = p.w.binnedResult().maxDifference, c = p.w.binnedResult().critical;
        QCOMPARE(verdict == QLatin1String("passed"), d <= c);
        QCOMPARE(p.text("m_pqKSNumbOfPointsSet1"), QString::number(p.w.histogramModel()->sampleSize()));
        QCOMPARE(p.w.histogramPlot()->confidenceIntervalLineID(), 0);
        p.child<QRadioButton>("showConfidenceZoneSet2")->setChecked(true);
        QCOMPARE(p.w.histogramPlot()->confidenceIntervalLineID(), 1);
        p.child<QGroupBox>("confidenceZoneGroupBox")->setChecked(false);
        QCOMPARE(p.w.histogramPlot()->confidenceIntervalLineID(), -1);
    }
    p.w.histogramPlot()->updateChart();
}

void TestHistogramChartWidget::badInput_data()
{
    QTest::addColumn<QVector<double>>("cells");
    QTest::addColumn<bool>("text");
    QTest::addColumn<double>("interval"); // 0: automatic
    QTest::addColumn<QString>("points");
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    QTest::newRow("no rows") << QVector<double>{} << false << 0.0 << "0";
    QTest::newRow("one value") << QVector<double>{4.2} << false << 0.0 << "1";
    QTest::newRow("all values equal") << QVector<double>{3, 3, 3, 3} << false << 0.0 << "4";
    QTest::newRow("NaN and infinite cells") << QVector<double>{nan, 1, inf, 2, -inf, 3} << false << 0.0 << "3";
    QTest::newRow("text column") << QVector<double>{1, 2, 3} << true << 0.0 << "0";
    QTest::newRow("negative interval") << ramp(50, 0, 1) << false << -5.0 << "50";
    QTest::newRow("interval giving millions of bins") << ramp(50, 0, 1e6) << false << 1e-6 << "50";
}

void TestHistogramChartWidget::badInput()
{
    QFETCH(QVector<double>, cells);
    QFETCH(bool, text);
    QFETCH(double, interval);
    QFETCH(QString, points);
    HistogramPanel p;
    MatrixData* column = p.sheet.addCells(QStringLiteral("bad"), cells, text);
    p.w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&p.w));
    p.w.setDataSet(column, {}, -1);
    if (interval != 0.0)
        p.w.updateHistogramIntervals(interval);
    QCOMPARE(p.text("m_pqNumbOfPointsLabel"), points);
    QVERIFY(p.w.histogramModel()->rowCount() <= MatrixData::kMaxFrequencyBins);
    for (const char* label : {"m_pqP10Label", "m_pqP50Label", "m_pqP90Label", "m_pqStandDeviationLabel"})
        QVERIFY2(!p.text(label).contains(QLatin1String("nan")), label);
    // The interval controls of an empty column do nothing.
    p.child<QIntSpinBoxWithSlider>("m_pqIntervalsSlider")->setValue(7);
    p.w.updateHistogramIntervals(0.0);
    // Every chart type and the test against itself.
    for (int type = 0; type < 3; ++type)
        p.child<QComboBox>("m_pqHistogramTypeComboBox")->setCurrentIndex(type);
    QTRY_VERIFY(!p.w.histogramPlot()->chartImage().isNull());
}

void TestHistogramChartWidget::randomOrientationOnlyAsks()
{
    HistogramPanel p;
    MatrixData* values = p.sheet.add(QStringLiteral("values"), ramp(20, 0, 1));
    p.w.setDataSet(values);
    QSignalSpy asked(&p.w, SIGNAL(createRandomOrientation()));
    // The button belongs to the comparison: it works while the comparison is on.
    p.child<QGroupBox>("twoSampleTestGroupBox")->setChecked(true);
    const int columns = p.sheet.root->leafs().size();
    p.child<QPushButton>("createRandomOrientation")->click();
    QCOMPARE(asked.count(), 1);
    QCOMPARE(p.sheet.root->leafs().size(), columns);
}

QTEST_MAIN(TestHistogramChartWidget)
#include "tst_histogramchartwidget_gui.moc"
