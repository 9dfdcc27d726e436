// A host without OpenGL and without a display: a chart still constructs, paints its points and
// its density contours, and the stress overlay, the one OpenGL path, leaves its area empty.
#include "ScatterTestChart.h"

#include <MatrixDataArray.h>
#include <OpenGLScene.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <memory>

using namespace rkBase;

class TestChartNoDisplay : public QObject
{
    Q_OBJECT
private slots:
    void paintsWithoutOpenGL_data();
    void paintsWithoutOpenGL();
};

void TestChartNoDisplay::paintsWithoutOpenGL_data()
{
    QTest::addColumn<bool>("stressOverlay");
    QTest::addColumn<bool>("expectContourColour");
    QTest::newRow("density contours through the painter") << false << true;
    QTest::newRow("stress overlay needs OpenGL: left empty") << true << false;
}

void TestChartNoDisplay::paintsWithoutOpenGL()
{
    QFETCH(bool, stressOverlay);
    QFETCH(bool, expectContourColour);
    QVERIFY(qEnvironmentVariableIsEmpty("DISPLAY"));
    MatrixData x(QStringLiteral("x"), 2, 1, QVariant::Double, true), y(QStringLiteral("y"), 2, 1, QVariant::Double, true);
    x.setValue(0, 0, 20.0);
    y.setValue(0, 0, 20.0);
    x.setValue(1, 0, 150.0);
    y.setValue(1, 0, 90.0);
    QRelationshipItemModel model;
    model.takeNewDataSet(&x, &y, QRelationshipItemModel::ShowAll);
    model.setPointStyle(QRelationshipItemModel::Square);
    model.setPointPixelSize(3);
    model.setShowStressState(stressOverlay);
    MatrixDataArray* grid = model.contourGridPoles();
    grid->reserve(5, 5);
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j)
            grid->setValue(i, j, 1.0 + i);

    ScatterTestChart chart;
    QVERIFY(chart.openGLScene());
    chart.setModel(&model);
    chart.setGridRect(QRectF(100, 10, 80, 80));
    chart.setContourPolesOn(true);
    chart.setContourRange(0.0, 3.0); // 0 to 150 % of the two points
    chart.resize(200, 120);
    const QImage image = chart.grab().toImage();
    QCOMPARE(image.size(), QSize(200, 120));
    QCOMPARE(QColor(image.pixel(20, 20)), QColor(Qt::darkBlue));
    const QColor inGrid = image.pixel(110, 50);
    QCOMPARE(inGrid != QColor(Qt::white), expectContourColour);
}

QTEST_MAIN(TestChartNoDisplay)
#include "tst_chart_nodisplay.moc"
