// The stereonet keeps its data points between redraws when only a net, labels or which kinds of
// points show have changed. Whatever happened in between, the chart must then look exactly as a
// full redraw draws it.
#include "StereoPanelFixture.h"

#include <QCheckBox>
#include <QSpinBox>

using namespace rkBase;
using namespace panelfixture;

namespace {
enum class Between { Nothing, SelectionCleared, PointSizeSilently, Zoomed, OtherRowsSelected };
}
Q_DECLARE_METATYPE(Between)

class TestStereoPointLayers : public QObject
{
    Q_OBJECT
private slots:
    void sameAsFullRedraw_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<Between>("between");
        QTest::addColumn<int>("toggles");
        QTest::newRow("2 degree net") << "m_pqShow2DegreeNet" << Between::Nothing << 1;
        QTest::newRow("10 degree net twice") << "m_pqShow10DegreeNet" << Between::Nothing << 2;
        QTest::newRow("poles off") << "m_pqShowPoles" << Between::Nothing << 1;
        QTest::newRow("poles off and on") << "m_pqShowPoles" << Between::Nothing << 2;
        QTest::newRow("dip directions on") << "m_pqShowAzimuths" << Between::Nothing << 1;
        QTest::newRow("planes on") << "m_pqShowPlanes" << Between::Nothing << 1;
        QTest::newRow("labels") << "m_pqShowLabels" << Between::Nothing << 1;
        QTest::newRow("selection cleared first") << "m_pqShow2DegreeNet" << Between::SelectionCleared << 1;
        QTest::newRow("other rows selected first") << "m_pqShowPoles" << Between::OtherRowsSelected << 2;
        QTest::newRow("point size set silently first") << "m_pqShow2DegreeNet" << Between::PointSizeSilently << 1;
        QTest::newRow("zoomed first") << "m_pqShow10DegreeNet" << Between::Zoomed << 1;
    }
    void sameAsFullRedraw()
    {
        QFETCH(QString, control);
        QFETCH(Between, between);
        QFETCH(int, toggles);
        Sheet s;
        addTwoClusters(s);
        StereoPanel p(s);
        p.tableRows = {1, 2, 3, 6};
        p.show();
        QStereoPlotWidget* plot = p.w->drawingArea();
        plot->updateChart();
        QRelationshipItemModel* model = p.w->model();
        switch (between) {
        case Between::Nothing:
            break;
        case Between::SelectionCleared:
            model->clearSelection();
            break;
        case Between::OtherRowsSelected:
            model->clearSelection();
            model->setSelected(8, true);
            model->setSelected(9, true);
            break;
        case Between::PointSizeSilently: {
            QSpinBox* size = p.child<QSpinBox>("m_pqPointSizeSpinBox");
            const QSignalBlocker quiet(size);
            size->setValue(size->value() + 4);
            break;
        }
        case Between::Zoomed:
            plot->zoom(2.0);
            break;
        }
        QCheckBox* box = p.child<QCheckBox>(qPrintable(control));
        QVERIFY(box);
        for (int i = 0; i < toggles; ++i)
            box->toggle();
        const QImage kept = plot->visibleChartImage();
        plot->updateChart();
        const QImage full = plot->visibleChartImage();
        QCOMPARE(kept.size(), full.size());
        QVERIFY(kept == full);
    }
};

QTEST_MAIN(TestStereoPointLayers)
#include "tst_stereopointlayers.moc"
