// The panels' input widgets: a form that places them from a .ui file; the unit line edit's model
// and display units, what it does with bad text and when it signals; spin boxes and sliders in
// step; the tool box's markers following the open page.
#include "ui_PanelInputsForm.h"

#include <DisplayUnitManager.h>
#include <QCartesianAxisWidget.h>
#include <QDecoratedToolBox.h>
#include <QDoubleSpinBoxWithSlider.h>
#include <QIntSpinBoxWithSlider.h>
#include <QUnitLineEdit.h>
#include <UnitManager.h>
#include <UnitRegistry.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QVBoxLayout>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace rkBase;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A registry with the category shown in the named unit.
boost::shared_ptr<UnitManager> shownIn(UnitRegistry& registry, const QString& category, const QString& unit)
{
    boost::shared_ptr<UnitManager> m = registry.getCategory(category.toStdString());
    if (m)
        registry.displayUnitManager()->setDisplayUnit(m->category(), m->getUnitKey(unit));
    return m;
}

void type(QUnitLineEdit& edit, const QString& text)
{
    edit.setText(text);
    emit edit.editingFinished();
}

} // namespace

class TestPanelInputs : public QObject
{
    Q_OBJECT
private slots:
    void aFormPlacesThem();
    void unitEditReads_data();
    void unitEditReads();
    void unitEditSignals();
    void intSliderInStep_data();
    void intSliderInStep();
    void doubleSliderInStep_data();
    void doubleSliderInStep();
    void toolBoxMarksTheOpenPage();
    void toolBoxKeepsItsPagesWhole();
};

void TestPanelInputs::aFormPlacesThem()
{
    QWidget form;
    Ui::PanelInputsForm ui;
    ui.setupUi(&form);
    QCOMPARE(ui.pqAxisLeft->axisPosition(), QCartesianAxisWidget::AxisLeftDepth);
    QCOMPARE(ui.pqAxisLeft->originPosition(), QCartesianAxisWidget::OriginTopLeft);
    QCOMPARE(ui.pqAxisLeft->title(), QStringLiteral("Depth"));
    QCOMPARE(ui.toolBox->count(), 2);
    QCOMPARE(ui.toolBox->itemText(1), QStringLiteral("Annotation/ Display Settings"));
    QCOMPARE(ui.toolBox->indexOf(form.findChild<QWidget*>(QStringLiteral("page3"))), 1);
    QCOMPARE(ui.toolBox->currentIndex(), 1);
    QCOMPARE(ui.TransparencySpinBoxWithSlider->value(), 50);
    QCOMPARE(ui.TransparencySpinBoxWithSlider->slider()->value(), 50);
    QCOMPARE(ui.intervalSize->value(), 1.0);
    QCOMPARE(ui.intervalSize->sliderSteps(), 10);
    QCOMPARE(ui.intervalSize->slider()->value(), 4);
    QCOMPARE(ui.m_pqVertiMinAxis->modelValue(), 0.0);
}

void TestPanelInputs::unitEditReads_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("model"); // the value after; it was 10
    QTest::addColumn<QString>("shown");
    QTest::newRow("feet to metres") << "Elevation" << "ft" << "100" << 30.48 << "100";
    QTest::newRow("with the unit's tag") << "Elevation" << "ft" << " 12.5 ft " << 3.81 << "12.5";
    QTest::newRow("exponent") << "Dimension" << "km" << "2e-3" << 2.0 << "0.002";
    QTest::newRow("radians shown to ten digits") << "Orientation" << "radians" << "3.14159265358979" << 180.0 << "3.141592654";
    QTest::newRow("negative zero") << QString() << QString() << "-0" << 0.0 << "0";
    QTest::newRow("large") << QString() << QString() << "123456789012" << 123456789012.0 << "1.23456789e+11";
    QTest::newRow("not a number") << "Elevation" << "ft" << "abc" << 10.0 << "32.80839895";
    QTest::newRow("another unit's tag") << "Elevation" << "ft" << "5 m" << 10.0 << "32.80839895";
    QTest::newRow("overflows") << QString() << QString() << "1e400" << 10.0 << "10";
    QTest::newRow("infinity typed") << QString() << QString() << "-inf" << 10.0 << "10";
}

void TestPanelInputs::unitEditReads()
{
    QFETCH(QString, category);
    QFETCH(QString, unit);
    QFETCH(QString, typed);
    QFETCH(double, model);
    QFETCH(QString, shown);
    UnitRegistry registry;
    QUnitLineEdit edit;
    edit.setUnitManager(shownIn(registry, category, unit));
    edit.setModelValue(10.0, false);
    QSignalSpy changed(&edit, &QUnitLineEdit::modelValueChanged);
    type(edit, typed);
    QVERIFY2(std::abs(edit.modelValue() - model) < 1e-12, qPrintable(QString::number(edit.modelValue(), 'g', 17)));
    QCOMPARE(edit.text(), shown);
    QCOMPARE(changed.count(), model == 10.0 ? 0 : 1);
    if (changed.count())
        QCOMPARE(changed.first().first().toDouble(), edit.modelValue());
}

void TestPanelInputs::unitEditSignals()
{
    UnitRegistry registry;
    QUnitLineEdit edit;
    edit.setUnitManager(shownIn(registry, QStringLiteral("Elevation"), QStringLiteral("ft")));
    QSignalSpy changed(&edit, &QUnitLineEdit::modelValueChanged);
    edit.setModelValue(5.0, false);
    QCOMPARE(changed.count(), 0);
    edit.setModelValue(6.0, true);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toDouble(), 6.0);
    edit.setModelValue(6.0, true);
    edit.setModelValue(kNaN, true);
    edit.setModelValue(std::numeric_limits<double>::infinity(), true);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(edit.modelValue(), 6.0);

    // Text shown with ten digits is not read back when the user left it alone.
    edit.setModelValue(1.0 / 3.0, false);
    emit edit.editingFinished();
    QCOMPARE(edit.modelValue(), 1.0 / 3.0);
    QCOMPARE(changed.count(), 1);

    // Another display unit shows the same model value anew, and says nothing.
    registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 0);
    QCOMPARE(edit.text(), QStringLiteral("0.3333333333"));
    QCOMPARE(edit.modelValue(), 1.0 / 3.0);
    QCOMPARE(changed.count(), 1);
}

void TestPanelInputs::intSliderInStep_data()
{
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected"); // the value held
    QTest::newRow("steps of five") << -90 << 90 << 5 << 45 << 45;
    QTest::newRow("above the range") << 0 << 30 << 1 << 99 << 30;
    QTest::newRow("maximum below minimum") << 10 << 0 << 1 << 3 << 10;
    QTest::newRow("whole int range") << std::numeric_limits<int>::min() << std::numeric_limits<int>::max() << 1 << 7 << 7;
    QTest::newRow("step of zero") << 0 << 360 << 0 << 90 << 90;
}

void TestPanelInputs::intSliderInStep()
{
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(int, step);
    QFETCH(int, value);
    QFETCH(int, expected);
    QIntSpinBoxWithSlider box;
    box.setRange(min, max);
    box.setSingleStep(step);
    box.setValue(value);
    QCOMPARE(box.value(), expected);
    QCOMPARE(box.slider()->minimum(), box.minimum());
    QCOMPARE(box.slider()->maximum(), box.maximum());
    QCOMPARE(box.slider()->value(), expected);
    QVERIFY(box.slider()->singleStep() >= 1);

    QSignalSpy changed(&box, &QIntSpinBoxWithSlider::valueChanged);
    const int target = int(box.minimum() + (qint64(box.maximum()) - box.minimum()) / 3);
    box.slider()->setValue(target);
    QCOMPARE(box.value(), target);
    QCOMPARE(box.spinBox()->value(), target);
    QCOMPARE(changed.count(), target == expected ? 0 : 1);
    box.spinBox()->setValue(box.maximum());
    QCOMPARE(box.slider()->value(), box.maximum());
}

void TestPanelInputs::doubleSliderInStep_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("position");
    QTest::newRow("quarters") << 0.0 << 2.5 << 0.25 << 1.0 << 10 << 4;
    QTest::newRow("step not dividing the range") << 0.0 << 1.0 << 0.3 << 0.9 << 4 << 4;
    QTest::newRow("one value") << 5.0 << 5.0 << 0.1 << 5.0 << 0 << 0;
    QTest::newRow("step finer than the slider") << 0.0 << 1000.0 << 0.001 << 250.0 << 100000 << 25000;
    QTest::newRow("near the largest doubles") << -1e300 << 1e300 << 1.0 << 0.0 << 100000 << 50000;
}

void TestPanelInputs::doubleSliderInStep()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);
    QFETCH(double, value);
    QFETCH(int, steps);
    QFETCH(int, position);
    QDoubleSpinBoxWithSlider box;
    box.setDecimals(3);
    box.setRange(min, max);
    box.setSingleStep(step);
    box.setValue(value);
    QCOMPARE(box.sliderSteps(), steps);
    QCOMPARE(box.slider()->maximum(), steps);
    QCOMPARE(box.slider()->value(), position);

    // The slider's positions land on the spin box (to its decimals) and the slider stays put.
    QSignalSpy changed(&box, &QDoubleSpinBoxWithSlider::valueChanged);
    for (int k : {0, steps / 3, steps}) {
        box.slider()->setValue(k);
        QCOMPARE(box.slider()->value(), k);
        QVERIFY(std::abs(box.value() - box.sliderValue(k)) <= 0.0005 * std::max(1.0, std::abs(box.sliderValue(k))));
        QVERIFY(std::isfinite(box.value()));
    }
    QCOMPARE(box.sliderValue(steps), box.maximum());
    QCOMPARE(changed.isEmpty(), steps == 0);
    if (steps)
        QCOMPARE(changed.last().first().toDouble(), box.value());

    // Input of no number is ignored.
    box.setValue(kNaN);
    box.setRange(kNaN, 1.0);
    box.setSingleStep(0.0);
    box.setSingleStep(-1.0);
    box.setSingleStep(kNaN);
    QCOMPARE(box.minimum(), min);
    QCOMPARE(box.singleStep(), step);
    QCOMPARE(box.sliderSteps(), steps);
}

// Exactly the open page's header carries the open marker, whatever adds, removes or opens pages,
// and a new palette brings new markers.
void TestPanelInputs::toolBoxMarksTheOpenPage()
{
    QDecoratedToolBox box;
    auto marked = [&box]() {
        for (int i = 0; i < box.count(); ++i)
            if (box.itemIcon(i).cacheKey() != (i == box.currentIndex() ? box.openMarker() : box.closedMarker()).cacheKey())
                return false;
        return true;
    };
    for (const char* name : {"page1", "SymbolAttributeSettings", "page3"})
        box.addItem(new QWidget, QString::fromLatin1(name));
    box.setCurrentIndex(2);
    QVERIFY(marked());
    box.removeItem(box.currentIndex());
    QVERIFY(marked());
    box.insertItem(0, new QWidget, QStringLiteral("first"));
    QVERIFY(marked());
    const qint64 before = box.openMarker().cacheKey();
    QPalette other = box.palette();
    other.setColor(QPalette::HighlightedText, Qt::yellow);
    box.setPalette(other);
    QVERIFY(box.openMarker().cacheKey() != before && marked());
}

// In a splitter beside a chart the box gets at least the width its widest page needs: a side
// panel squeezed to the splitter's starting share shows every check box's text whole.
void TestPanelInputs::toolBoxKeepsItsPagesWhole()
{
    QSplitter splitter;
    auto* chart = new QWidget;
    splitter.addWidget(chart);
    auto* box = new QDecoratedToolBox;
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* wide = new QCheckBox(QStringLiteral("Show cross plot points with defined symbols only"));
    layout->addWidget(wide);
    box->addItem(page, QStringLiteral("Display"));
    box->addItem(new QWidget, QStringLiteral("Data Statistics"));
    splitter.addWidget(box);
    splitter.resize(800, 400);
    splitter.setSizes({650, 150});
    splitter.show();
    QVERIFY(QTest::qWaitForWindowExposed(&splitter));
    QTRY_VERIFY(wide->width() >= wide->sizeHint().width());
    QVERIFY(box->width() > 150);
}

QTEST_MAIN(TestPanelInputs)
#include "tst_panelinputs.moc"
