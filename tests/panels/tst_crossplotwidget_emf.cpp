// The cross plot copied from its panel as an enhanced metafile: the chart reaches the panel's
// drawAxes through the meta-object, so the pasted picture carries its four axes beside the
// points, every tick label of each, outside the chart's own rectangle.
#include "EmfRecords.h"
#include "PanelFixture.h"

#include <QCartesianAxisWidget.h>
#include <QCrossPlot.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QRegularExpression>
#include <QtTest>

using namespace panelfixture;

class TestCrossPlotWidgetEmf : public QObject
{
    Q_OBJECT
private slots:
    void metafileHasFourAxes_data();
    void metafileHasFourAxes();
};

void TestCrossPlotWidgetEmf::metafileHasFourAxes_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("unzoomed") << 1.0;
    QTest::newRow("zoomed") << 2.0;
}

void TestCrossPlotWidgetEmf::metafileHasFourAxes()
{
    QFETCH(double, zoom);
    Sheet s;
    s.add(QStringLiteral("porosity"), {0.05, 0.12, 0.21, 0.08, 0.27, 0.15});
    s.add(QStringLiteral("depth"), {1010, 1025, 1040, 1055, 1070, 1085});
    Panel p(s);
    p.show(QStringLiteral("porosity"), QStringLiteral("depth"));
    p.w->show();
    QVERIFY(QTest::qWaitForWindowExposed(p.w.get()));
    QCrossPlot* chart = p.w->drawingArea();
    if (zoom != 1.0) {
        p.child<QCheckBox>("m_pqZoomCheckBox")->setChecked(true);
        p.child<QDoubleSpinBox>("m_pqZoomFactorSpinBox")->setValue(zoom);
        QCOMPARE(chart->zoomFactor(), zoom);
    }
    const EmfFile emf = readEmf(chart->toEnhancedMetafile());
    QVERIFY2(emf.ok(), qPrintable(emf.error));

    QMap<QString, int> texts;
    for (const QString& line : emf.linesStarting(QStringLiteral("TEXT "))) {
        const QRegularExpressionMatch m = QRegularExpression(QStringLiteral("^TEXT -?\\d+,-?\\d+ (.*)$")).match(line);
        if (m.hasMatch())
            ++texts[m.captured(1).trimmed()];
    }
    const auto axes = p.w->axes();
    for (QCartesianAxisWidget* axis : {axes.top(), axes.bottom(), axes.left(), axes.right()}) {
        QStringList labels;
        for (const QString& l : axis->tickLabels())
            if (!l.isEmpty())
                labels << l;
        QVERIFY2(labels.size() >= 2, qPrintable(axis->objectName()));
        for (const QString& l : labels)
            QVERIFY2(texts.contains(l), qPrintable(QStringLiteral("%1: no label %2 in %3")
                                                       .arg(axis->objectName(), l, QStringList(texts.keys()).join('|'))));
    }
    // Top and bottom show the same values, as do left and right: each label twice at least.
    for (const QString& l : axes.left()->tickLabels())
        if (!l.isEmpty())
            QVERIFY2(texts.value(l) >= 2, qPrintable(l));
}

QTEST_MAIN(TestCrossPlotWidgetEmf)
#include "tst_crossplotwidget_emf.moc"
