// The tangent panel: the stereo panel cut down to what a tangent plot of lines can use, with the
// fold axis page and a cursor label read back through the tangent projection.
#include "PanelFixture.h"

#include <QDoubleSpinBoxWithSlider.h>
#include <QTangentChartWidget.h>
#include <QTangentPlotWidget.h>

#include <QGroupBox>
#include <QLabel>
#include <QSignalSpy>
#include <QToolBox>
#include <QtTest>

#include <cmath>

using namespace panelfixture;

class TestTangentChartWidget : public QObject
{
    Q_OBJECT
private slots:
    void toolBoxPages_data();
    void toolBoxPages();
    void hiddenControls();
    void foldAxisControlsReachThePlot();
    void cursorLabel_data();
    void cursorLabel();
    void linesOnTheChart();
};

namespace {
QStringList pageNames(const QToolBox* box)
{
    QStringList names;
    for (int i = 0; i < box->count(); ++i)
        names << box->widget(i)->objectName();
    return names;
}

QToolBox* toolBox(QWidget* w)
{
    const QList<QToolBox*> boxes = w->findChildren<QToolBox*>();
    return boxes.isEmpty() ? nullptr : boxes.first();
}
} // namespace

void TestTangentChartWidget::toolBoxPages_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<bool>("shown");
    for (const char* gone : {"Lineation", "ProjectionType", "Contours", "ClusterGeneration", "BiasCorrection", "Rotation"})
        QTest::addRow("%s removed", gone) << gone << false;
    QTest::addRow("fold axis page") << "PlotFoldAxis" << true;
}

void TestTangentChartWidget::toolBoxPages()
{
    QFETCH(QString, page);
    QFETCH(bool, shown);
    QTangentChartWidget w(QStringLiteral("Tangent Plot"), nullptr, nullptr);
    QToolBox* box = toolBox(&w);
    QVERIFY(box);
    QCOMPARE(pageNames(box).contains(page), shown);
    if (shown)
        QCOMPARE(box->itemText(box->indexOf(w.findChild<QWidget*>(page))), QStringLiteral("Plot Fold Axis"));
}

void TestTangentChartWidget::hiddenControls()
{
    QTangentChartWidget w(QStringLiteral("Tangent Plot"), nullptr, nullptr);
    w.show();
    for (const char* name : {"m_pqProjectedPlanesGroupBox", "m_pqShowLineation", "m_pqLineationColorButton",
                             "m_pqConventionGroupBox"}) {
        QWidget* c = w.findChild<QWidget*>(QString::fromLatin1(name));
        QVERIFY2(c, name);
        QVERIFY2(c->isHidden(), name);
    }
    QVERIFY(qobject_cast<QTangentPlotWidget*>(w.drawingArea()));
}

void TestTangentChartWidget::foldAxisControlsReachThePlot()
{
    QTangentChartWidget w(QStringLiteral("Tangent Plot"), nullptr, nullptr);
    auto* group = w.findChild<QGroupBox*>(QStringLiteral("m_pqShowFoldAxisGroupBox"));
    auto* plunge = w.findChild<QDoubleSpinBoxWithSlider*>(QStringLiteral("m_pqFoldAxisPlungeSpinBox"));
    auto* azimuth = w.findChild<QDoubleSpinBoxWithSlider*>(QStringLiteral("m_pqFoldAxisAzimuthSpinBox"));
    QVERIFY(group && plunge && azimuth);
    QCOMPARE(plunge->minimum(), 0.0);
    QCOMPARE(plunge->maximum(), 60.0);
    QCOMPARE(azimuth->maximum(), 360.0);
    QTangentPlotWidget* plot = w.tangentPlot();
    group->setChecked(!group->isChecked());
    QCOMPARE(plot->showFoldAxis(), group->isChecked());
    plunge->setValue(25.0);
    azimuth->setValue(60.0);
    QCOMPARE(plot->foldAxis(), QPointF(25.0, 60.0));
    // Set from outside: the box follows without its signal, the chart takes the value.
    QSignalSpy spy(azimuth, SIGNAL(valueChanged(double)));
    w.setFoldAxisAzimuth(135.0);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(azimuth->value(), 135.0);
    QCOMPARE(plot->foldAxis(), QPointF(25.0, 135.0));
}

void TestTangentChartWidget::cursorLabel_data()
{
    QTest::addColumn<double>("fraction"); // of the radius out from the centre, due east
    QTest::addColumn<QString>("plunge");
    QTest::addRow("centre") << 0.0 << "0.00";
    QTest::addRow("rim") << 1.0 << "65.00";
}

void TestTangentChartWidget::cursorLabel()
{
    QFETCH(double, fraction);
    QFETCH(QString, plunge);
    QTangentChartWidget w(QStringLiteral("Tangent Plot"), nullptr, nullptr);
    w.resize(1000, 700);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QTangentPlotWidget* plot = w.tangentPlot();
    plot->grab();
    // The centre and a rim pixel, found through the projection itself (zoom 1: no offsets).
    const QPointF centre = plot->tangentPlotPointInPixel(QPointF(0.0, 0.0));
    const QPointF rim = plot->tangentPlotPointInPixel(QPointF(65.0, 90.0));
    const QPointF pixel = centre + fraction * (rim - centre);
    w.updateCursorPosLabel(pixel);
    auto* label = w.findChild<QLabel*>(QStringLiteral("m_pqPlaneCursorLabel"));
    auto* value = w.findChild<QLabel*>(QStringLiteral("m_pqPlaneCursorPos"));
    QVERIFY(label && value);
    QCOMPARE(label->text(), QStringLiteral("(plunge/plunge az.):"));
    QVERIFY2(value->text().startsWith(QStringLiteral("(") + plunge + QLatin1Char('/')), qPrintable(value->text()));
    QVERIFY(!value->text().contains(QLatin1String("nan")));
    QVERIFY(w.findChild<QLabel*>(QStringLiteral("m_pqPoleCursorLabel"))->isHidden());
}

// Loaded through the owner's path, the lines reach the tangent chart's model.
void TestTangentChartWidget::linesOnTheChart()
{
    Sheet s;
    s.add(QStringLiteral("dip"), {10, 20, 30, 40, 50});
    s.add(QStringLiteral("azimuth"), {0, 90, 180, 270, 45});
    QTangentChartWidget w(QStringLiteral("Tangent Plot"), nullptr, nullptr);
    w.setDataRoot(s.root.get());
    w.updateDataSetSelectionBox(s.names(), s.ids());
    w.setDataSet(s.column(QStringLiteral("dip")), s.column(QStringLiteral("azimuth")), nullptr, nullptr, nullptr,
                 nullptr, {});
    QCOMPARE(w.model()->pointCount(), 5);
    QVERIFY(!w.drawingArea()->visibleChartImage().isNull());
}

QTEST_MAIN(TestTangentChartWidget)
#include "tst_tangentchartwidget.moc"
