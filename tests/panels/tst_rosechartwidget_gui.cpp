// The rose panel driven through its controls by object name: the form's defaults, the bins of an
// interval, the scaling switches, the colour legend and range of a classifying attribute (its
// classes counted from typed cells, as the plot would count them from per-bin values), the
// settings, and input a sheet can hold.
#include "PanelFixture.h"

#include <QIntSpinBoxWithSlider.h>
#include <QLegendListModel.h>
#include <QRoseChartWidget.h>
#include <QRosePlotWidget.h>
#include <RoseClassCounts.h>

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QToolBox>
#include <QtTest>

#include <cmath>

using namespace panelfixture;

class TestRoseChartWidget : public QObject
{
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }
    void form_data();
    void form();
    void intervalBins_data();
    void intervalBins();
    void scalingOffHidesGridAndTicks();
    void colourAttribute();
    void typedClassesAsThePlotCountsThem_data();
    void typedClassesAsThePlotCountsThem();
    void badInput_data();
    void badInput();
    void settingsRoundTrip();
};

namespace {
// Azimuths around 330 and 130 with a colour and a number per row.
struct RoseSheet : Sheet {
    MatrixData* azimuth = nullptr;
    MatrixData* colour = nullptr;
    MatrixData* porosity = nullptr;
    MatrixData* type = nullptr;
    RoseSheet()
    {
        QVector<double> a, p;
        QStringList c, t;
        for (int i = 0; i < 120; ++i) {
            const bool second = i % 3 == 0;
            a << std::fmod((second ? 130.0 : 330.0) + (i % 25) - 12 + 360.0, 360.0);
            p << 0.05 + 0.002 * i;
            c << (second ? QStringLiteral("#c81e1e") : QStringLiteral("#28a03c"));
            t << (second ? QStringLiteral("Fracture") : QStringLiteral("Bedding"));
        }
        azimuth = add(QStringLiteral("azimuth"), a);
        porosity = add(QStringLiteral("porosity"), p);
        colour = addText(QStringLiteral("colour"), c, QVariant::Color);
        type = addText(QStringLiteral("type"), t);
    }
};

struct RosePanel {
    RoseSheet sheet;
    QRoseChartWidget w{QStringLiteral("Rose Chart"), nullptr};
    RosePanel()
    {
        w.resize(900, 600);
        w.updateDataSetSelectionBox(sheet.names(), sheet.ids());
        w.updateColorAttributeDataSetSelectionBox(sheet.names(), sheet.ids());
        QObject::connect(&w, &QRoseChartWidget::dataSetSelected, [this] { reload(); });
    }
    void reload()
    {
        w.setDataSet(sheet.column(w.currentSelectedDataSetName()), sheet.column(w.currentColorSelectedDataSetName()));
    }
    template <class T> T* child(const char* name) const { return w.findChild<T*>(QString::fromLatin1(name)); }
    void activate(const char* box, const QString& text) { panelfixture::activate(&w, box, text); }
};
} // namespace

void TestRoseChartWidget::form_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("title") << "QRoseChartWidget" << "windowTitle" << QVariant("Rose Chart");
    QTest::newRow("Rose Plot") << "m_pqRosePlotRadioButton" << "checked" << QVariant(true);
    QTest::newRow("Area") << "m_pqAreaRadioButton" << "checked" << QVariant(true);
    QTest::newRow("Unidirectional") << "m_pqUnidirectionalRadioButton" << "checked" << QVariant(true);
    QTest::newRow("Mean Direction") << "m_pqMeanDirectionCheckBox" << "checked" << QVariant(true);
    QTest::newRow("Normalized Length") << "m_pqNormalizedLengthCheckBox" << "checked" << QVariant(true);
    QTest::newRow("Blue-Red") << "m_pqBlueRedRadioButton" << "checked" << QVariant(true);
    QTest::newRow("white") << "m_pqWhiteBackgroundRadioButton" << "checked" << QVariant(true);
    QTest::newRow("Directions") << "m_pqDirectionsRadioButton" << "checked" << QVariant(true);
    QTest::newRow("Circles") << "m_pqCirclesRadioButton" << "checked" << QVariant(true);
    QTest::newRow("Circle Frame") << "m_pqCircleFrameCheckBox" << "checked" << QVariant(true);
    QTest::newRow("Frequency Scale") << "m_pqFrequencyScaleSpinBox" << "value" << QVariant(5);
    QTest::newRow("Frequency Scale top") << "m_pqFrequencyScaleSpinBox" << "maximum" << QVariant(1000000);
    QTest::newRow("Width top") << "m_pqPetalOutlineWidthSpinBox" << "maximum" << QVariant(5);
    QTest::newRow("tooltip") << "m_pqNumbOfPointsTextLabel" << "toolTip"
                             << QVariant("The number of <b>data points</b>, that are taken into account for creating "
                                         "the histogram");
    QTest::newRow("range tool button") << "m_pqResetColorRangeButton" << "toolTip"
                                       << QVariant("Expand Colour Map to Maximum Value Range");
}

void TestRoseChartWidget::form()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QVariant, value);
    RosePanel p;
    QObject* o = name == QLatin1String("QRoseChartWidget") ? &p.w : p.w.findChild<QObject*>(name);
    QVERIFY2(o, qPrintable(name));
    QCOMPARE(o->property(qPrintable(property)), value);
    auto* box = p.child<QToolBox>("m_pqRoseToolBox");
    QCOMPARE(box->count(), 3);
    QCOMPARE(box->itemText(0), QStringLiteral("Display"));
    QCOMPARE(box->itemText(1), QStringLiteral("Colour Attribute Settings"));
    QCOMPARE(box->itemText(2), QStringLiteral("Annotation/ Display Settings"));
}

void TestRoseChartWidget::intervalBins_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("bins");
    QTest::newRow("10") << 10 << 36;
    QTest::newRow("7 does not divide 360") << 7 << 51;
    QTest::newRow("200") << 200 << 1;
    QTest::newRow("360") << 360 << 1;
    QTest::newRow("1") << 1 << 360;
}

void TestRoseChartWidget::intervalBins()
{
    QFETCH(int, interval);
    QFETCH(int, bins);
    RosePanel p;
    p.activate("m_pqRoseDataSetComboBox", QStringLiteral("azimuth"));
    p.child<QSpinBox>("m_pqIntervalSizeSpinBox")->setValue(interval);
    const MatrixData* table = p.w.drawingArea()->frequencyNode();
    QVERIFY(table);
    QCOMPARE(table->rowCount(), bins);
    QCOMPARE(table->toDouble(bins - 1, 2), 360.0);
    double sum = 0.0;
    for (int r = 0; r < bins; ++r)
        sum += table->toDouble(r, 0);
    QCOMPARE(sum, 120.0);
    QCOMPARE(p.child<QLabel>("m_pqNumbOfPointsLabel")->text(), QStringLiteral("120"));
    // Bidirectional counts each azimuth twice.
    p.child<QRadioButton>("m_pqBidirectionalRadioButton")->click();
    sum = 0.0;
    for (int r = 0; r < p.w.drawingArea()->frequencyNode()->rowCount(); ++r)
        sum += p.w.drawingArea()->frequencyNode()->toDouble(r, 0);
    QCOMPARE(sum, 240.0);
}

void TestRoseChartWidget::scalingOffHidesGridAndTicks()
{
    RosePanel p;
    p.w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&p.w));
    p.activate("m_pqRoseDataSetComboBox", QStringLiteral("azimuth"));
    QRosePlotWidget* plot = p.w.drawingArea();
    QVERIFY(plot->gridCirclesOn());
    p.child<QRadioButton>("m_pqTickMarksRadioButton")->click();
    QVERIFY(plot->tickMarksOn() && !plot->gridCirclesOn());
    p.child<QRadioButton>("m_pqScalingOffRadioButton")->click();
    QVERIFY(!plot->tickMarksOn() && !plot->gridCirclesOn());
    p.child<QRadioButton>("m_pqCirclesRadioButton")->click();
    QVERIFY(plot->gridCirclesOn());
    p.child<QSpinBox>("m_pqFrequencyScaleSpinBox")->setValue(3);
    QCOMPARE(plot->getGridCircleDistance(), 3);
}

void TestRoseChartWidget::colourAttribute()
{
    RosePanel p;
    p.w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&p.w));
    p.activate("m_pqRoseDataSetComboBox", QStringLiteral("azimuth"));
    // No attribute: no legend, and the range reads "---".
    QVERIFY(!p.child<QFrame>("m_pqColorLegendFrame")->isVisible());
    for (const char* edit : {"m_pqColorMinRange", "m_pqColorMaxRange", "m_pqColorIntervalSize"})
        QCOMPARE(p.child<QLineEdit>(edit)->text(), QStringLiteral("---"));
    p.activate("m_pqColourMapComboBox", QStringLiteral("porosity"));
    QTRY_VERIFY(p.child<QFrame>("m_pqColorLegendFrame")->isVisible());
    QCOMPARE(p.child<QLineEdit>("m_pqColorMinRange")->text(), QStringLiteral("0.05000"));
    QVERIFY(p.w.colorLegend()->rowCount() > 1);
    // The classes of each bin add up to its count.
    const auto& classes = p.w.drawingArea()->classification();
    const MatrixData* table = p.w.drawingArea()->frequencyNode();
    QCOMPARE(int(classes.size()), table->rowCount());
    for (int b = 0; b < table->rowCount(); ++b) {
        int n = 0;
        for (int c : classes[std::size_t(b)])
            n += c;
        QCOMPARE(double(n), table->toDouble(b, 0));
    }
    // A typed range stays while the attribute is loaded again.
    auto* min = p.child<QLineEdit>("m_pqColorMinRange");
    min->setText(QStringLiteral("0.1"));
    emit min->editingFinished();
    p.reload();
    QCOMPARE(min->text(), QStringLiteral("0.1"));
    p.child<QToolButton>("m_pqResetColorRangeButton")->click();
    QCOMPARE(min->text(), QStringLiteral("0.05000"));
}

void TestRoseChartWidget::typedClassesAsThePlotCountsThem_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<bool>("unidirectional");
    QTest::addColumn<int>("interval");
    QTest::newRow("colours") << "colour" << true << 10;
    QTest::newRow("colours, bidirectional") << "colour" << false << 15;
    QTest::newRow("numbers") << "porosity" << true << 10;
    QTest::newRow("numbers, bidirectional, 7 degrees") << "porosity" << false << 7;
}

void TestRoseChartWidget::typedClassesAsThePlotCountsThem()
{
    QFETCH(QString, attribute);
    QFETCH(bool, unidirectional);
    QFETCH(int, interval);
    RoseSheet sheet;
    MatrixData* classes = sheet.column(attribute);
    QVERIFY(RoseClassCounts::canCount(classes));
    QVERIFY(!RoseClassCounts::canCount(sheet.type));
    const std::vector<int> rows{0, 3, 4, 5, 9, 10, 11, 40, 41, 77, 119};
    // The plot's own way: per-bin values in QVariants.
    QRosePlotWidget plot(nullptr, QStringLiteral("rose"));
    QLegendListModel legend(nullptr, &plot, QLegendListModel::ColorLegend);
    legend.setSymbolNode(classes);
    std::vector<std::vector<QVariant>> values;
    MatrixData* table = MatrixData::newFrequencyData(interval, 360 / interval, 0, MatrixData::Frequency, rows,
                                                     sheet.azimuth, classes, values, unidirectional);
    const int bins = table->rowCount();
    plot.setRoseData(table, std::move(values), &legend, interval, 99999.0, 0.0, false);
    const auto expected = plot.classification();
    const QMap<int, QColor> expectedColours = legend.classColors();
    RoseClassCounts typed;
    QVERIFY(typed.count(sheet.azimuth, classes, interval, bins, rows, unidirectional, 19));
    QCOMPARE(typed.counts(), expected);
    QCOMPARE(typed.legendColours(), expectedColours);
}

void TestRoseChartWidget::badInput_data()
{
    QTest::addColumn<QVector<double>>("cells");
    QTest::addColumn<bool>("text");
    QTest::addColumn<QString>("points");
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    QTest::newRow("no rows") << QVector<double>{} << false << "0";
    QTest::newRow("one value") << QVector<double>{45} << false << "1";
    QTest::newRow("all equal") << QVector<double>{90, 90, 90} << false << "3";
    QTest::newRow("NaN, inf and no value") << QVector<double>{nan, inf, -inf, 99999.0, 10} << false << "1";
    QTest::newRow("outside 0..360") << QVector<double>{-10, 370, 720} << false << "3";
    QTest::newRow("text column") << QVector<double>{1, 2} << true << "0";
}

void TestRoseChartWidget::badInput()
{
    QFETCH(QVector<double>, cells);
    QFETCH(bool, text);
    QFETCH(QString, points);
    RosePanel p;
    MatrixData* column = p.sheet.addCells(QStringLiteral("bad"), cells, text);
    p.w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&p.w));
    p.w.setDataSet(column, p.sheet.colour);
    QCOMPARE(p.child<QLabel>("m_pqNumbOfPointsLabel")->text(), points);
    p.child<QRadioButton>("m_pqBidirectionalRadioButton")->click();
    p.child<QRadioButton>("m_pqUnitVectorsRadioButton")->click();
    QVERIFY(!p.child<QLabel>("m_pqMeanDirectionLabel")->text().contains(QLatin1String("nan")));
    p.w.drawingArea()->updateChart();
    p.w.setDataSet(nullptr, nullptr);
    QCOMPARE(p.child<QLabel>("m_pqNumbOfPointsLabel")->text(), QStringLiteral("-----"));
}

void TestRoseChartWidget::settingsRoundTrip()
{
    const QString prefix = QStringLiteral("test/rose_plot/");
    {
        RosePanel p;
        p.w.readSettings(prefix);
        p.child<QSpinBox>("m_pqIntervalSizeSpinBox")->setValue(15);
        p.child<QRadioButton>("m_pqLinearRadioButton")->click();
        p.child<QRadioButton>("m_pqBidirectionalRadioButton")->click();
        p.child<QRadioButton>("m_pqAnglesRadioButton")->click();
        p.child<QRadioButton>("m_pqScalingOffRadioButton")->click();
        p.child<QRadioButton>("m_pqBlackBackgroundRadioButton")->click();
        p.child<QIntSpinBoxWithSlider>("m_pqZeroCircleSizeSlider")->setValue(12);
        p.w.writeSettings();
    }
    QSettings s;
    QCOMPARE(s.value(prefix + QStringLiteral("display/rose_plot_interval_size")).toInt(), 15);
    QCOMPARE(s.value(prefix + QStringLiteral("display_settings/petal_outline_color")).toString().toLower(),
             QStringLiteral("#828282"));
    QCOMPARE(s.value(prefix + QStringLiteral("display/classified_by_attribute")).toString(), QStringLiteral("None"));
    RosePanel q;
    q.w.readSettings(prefix);
    QCOMPARE(q.w.intervalSize(), 15);
    QVERIFY(q.child<QRadioButton>("m_pqLinearRadioButton")->isChecked());
    QVERIFY(q.child<QRadioButton>("m_pqBidirectionalRadioButton")->isChecked());
    QVERIFY(q.child<QRadioButton>("m_pqAnglesRadioButton")->isChecked());
    QVERIFY(q.child<QRadioButton>("m_pqScalingOffRadioButton")->isChecked());
    QVERIFY(q.child<QRadioButton>("m_pqBlackBackgroundRadioButton")->isChecked());
    QCOMPARE(q.child<QIntSpinBoxWithSlider>("m_pqZeroCircleSizeSlider")->value(), 12);
    // A damaged file gives the defaults.
    s.setValue(prefix + QStringLiteral("display_settings/scaling_interval_size"), QStringLiteral("lots"));
    s.setValue(prefix + QStringLiteral("display_settings/line_width_petal_outline"), 99);
    s.sync();
    RosePanel r;
    r.w.readSettings(prefix);
    QCOMPARE(r.child<QSpinBox>("m_pqFrequencyScaleSpinBox")->value(), 5);
    QCOMPARE(r.child<QSpinBox>("m_pqPetalOutlineWidthSpinBox")->value(), 1);
}

QTEST_MAIN(TestRoseChartWidget)
#include "tst_rosechartwidget_gui.moc"
