// The SCAT window under the mouse on a real display: tops inserted, picked and dragged in one
// track appear the same in all four, the pressed track gets the green frame, the cursor line
// follows across the tracks, and a top picked between two others is not lost on close.
#include "PanelFixture.h"

#include <DepthLineField.h>
#include <QCrossPlot.h>
#include <QScatDepthPlotWidget.h>

#include <QLabel>
#include <QRadioButton>
#include <QToolButton>
#include <QtTest>

using namespace rkBase;
using panelfixture::Sheet;
using Track = QScatDepthPlotWidget::Track;

class TestScatDepthPlotWidgetGui : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void insertPickAndDragInAllTracks_data();
    void insertPickAndDragInAllTracks();
    void pressedTrackIsFramed();
    void cursorFollowsAcrossTracks();
    void pickBetweenTwoTopsThenCloseAsks();

private:
    // The widget point of a depth in a track, at the track's horizontal middle.
    QPoint at(Track track, double depth) const
    {
        QCrossPlot* p = w->plot(track);
        const QPointF pixel = p->transformInPixelPoint(QPointF(0.0, depth));
        return QPoint(p->width() / 2, int(std::lround(pixel.y())) - p->yOffsetPixels());
    }
    void click(Track track, double depth)
    {
        QTest::mouseClick(w->plot(track), Qt::LeftButton, Qt::NoModifier, at(track, depth));
    }
    // As a user opens the page before choosing what to create.
    void chooseCreation(const char* radio)
    {
        w->findChild<QWidget*>(QStringLiteral("m_pqToolBox"))->setProperty("currentIndex", 1);
        auto* button = w->findChild<QRadioButton*>(QLatin1String(radio));
        QTRY_VERIFY(button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
        QVERIFY(button->isChecked());
    }
    std::vector<DepthLineField*> fields() const
    {
        std::vector<DepthLineField*> out;
        for (int i = 0; i < QScatDepthPlotWidget::kTrackCount; ++i)
            out.push_back(w->model(Track(i))->structuralTops());
        return out;
    }

    std::unique_ptr<Sheet> sheet;
    std::unique_ptr<QScatDepthPlotWidget> w;
    QStringList questions;
};

void TestScatDepthPlotWidgetGui::init()
{
    sheet = std::make_unique<Sheet>();
    QVector<double> d, a, z;
    for (int i = 0; i < 400; ++i) {
        d << 25.0 + 10.0 * std::sin(i * 0.05);
        a << 120.0 + 30.0 * std::cos(i * 0.02);
        z << 1000.0 + i * 0.25;
    }
    MatrixData* dip = sheet->add(QStringLiteral("dip"), d);
    MatrixData* azimuth = sheet->add(QStringLiteral("azimuth"), a);
    MatrixData* depth = sheet->add(QStringLiteral("Measured Depth"), z);
    w = std::make_unique<QScatDepthPlotWidget>(nullptr, sheet->root.get());
    w->resize(1100, 760);
    questions.clear();
    w->setQuestion([this](QWidget*, const QString& title, const QString& text) {
        questions << title + QLatin1Char('|') + text;
        return QMessageBox::Cancel;
    });
    w->setDataSet(dip, azimuth, depth, nullptr, nullptr, {});
    w->show();
    QVERIFY(QTest::qWaitForWindowExposed(w.get()));
    // The depth axis runs from the data's nice range: 1000 to 1100 on this well.
    QCOMPARE(w->plot(Track::DipTrack)->minPoint().y(), 1000.0);
}

void TestScatDepthPlotWidgetGui::cleanup()
{
    w.reset();
    sheet.reset();
}

void TestScatDepthPlotWidgetGui::insertPickAndDragInAllTracks_data()
{
    QTest::addColumn<int>("insertIn");
    QTest::addColumn<int>("dragIn");
    QTest::newRow("azimuth, then transverse") << int(Track::AzimuthTrack) << int(Track::TransverseDipTrack);
    QTest::newRow("longitudinal, then dip") << int(Track::LongitudinalDipTrack) << int(Track::DipTrack);
}

void TestScatDepthPlotWidgetGui::insertPickAndDragInAllTracks()
{
    QFETCH(int, insertIn);
    QFETCH(int, dragIn);
    chooseCreation("HorizonRadioButton");
    for (int i = 0; i < QScatDepthPlotWidget::kTrackCount; ++i)
        QCOMPARE(w->plot(Track(i))->dataCreationType(), QCrossPlot::CreateStructuralTops);

    click(Track(insertIn), 1040.0);
    for (DepthLineField* f : fields()) {
        QCOMPARE(f->lineDepths().size(), std::size_t(1));
        QVERIFY(std::abs(f->lineDepths()[0] - 1040.0) < 0.5);
        QCOMPARE(f->lineNames()[0], QStringLiteral("Horizon_0"));
    }

    // Press on the line in another track, drag it 40 pixels down, release.
    QCrossPlot* p = w->plot(Track(dragIn));
    const QPoint from = at(Track(dragIn), fields()[0]->lineDepths()[0]);
    QTest::mousePress(p, Qt::LeftButton, Qt::NoModifier, from);
    for (DepthLineField* f : fields())
        QVERIFY(f->isSelected(0));
    QVERIFY(p->structuralTopsHeld());
    for (int dy = 10; dy <= 40; dy += 10)
        QTest::mouseMove(p, from + QPoint(0, dy));
    QTest::mouseRelease(p, Qt::LeftButton, Qt::NoModifier, from + QPoint(0, 40));
    const double moved = fields()[0]->lineDepths()[0];
    QVERIFY2(moved > 1043.0, qPrintable(QString::number(moved)));
    for (DepthLineField* f : fields()) {
        QCOMPARE(f->lineDepths()[0], moved);
        QVERIFY(f->originalDepthChanged()[0]);
        QVERIFY(f->modified());
    }
}

void TestScatDepthPlotWidgetGui::pressedTrackIsFramed()
{
    // A lasso in the dip track selects rows there and frames that track alone.
    QCrossPlot* dip = w->plot(Track::DipTrack);
    QSignalSpy selection(w.get(), &QScatDepthPlotWidget::dataPointsSelection);
    w->plot(Track::AzimuthTrack)->setActivePlotWindow(true);
    const QPoint c(dip->width() / 2, dip->height() / 2);
    QTest::mousePress(dip, Qt::LeftButton, Qt::NoModifier, c + QPoint(-80, -80));
    QTest::mouseMove(dip, c + QPoint(80, -80));
    QTest::mouseMove(dip, c + QPoint(80, 80));
    QTest::mouseMove(dip, c + QPoint(-80, 80));
    QTest::mouseRelease(dip, Qt::LeftButton, Qt::NoModifier, c + QPoint(-80, 80));
    QCOMPARE(selection.count(), 1);
    QVERIFY(dip->activeWindow());
    for (Track t : {Track::AzimuthTrack, Track::TransverseDipTrack, Track::LongitudinalDipTrack})
        QVERIFY(!w->plot(t)->activeWindow());
    QVERIFY(!w->selectedDataRows().empty());
    QTRY_COMPARE(dip->grab().toImage().pixelColor(1, dip->height() / 2), QColor(0, 255, 0));
    QTRY_VERIFY(w->plot(Track::AzimuthTrack)->grab().toImage().pixelColor(1, dip->height() / 2) != QColor(0, 255, 0));
}

void TestScatDepthPlotWidgetGui::cursorFollowsAcrossTracks()
{
    QCrossPlot* azimuth = w->plot(Track::AzimuthTrack);
    const QPoint p(azimuth->width() / 3, azimuth->height() / 3);
    QTest::mouseMove(azimuth, p);
    QTRY_COMPARE(w->plot(Track::LongitudinalDipTrack)->mousePickingPos().y(), double(p.y()));
    QCOMPARE(w->plot(Track::DipTrack)->mousePickingPos(), QPointF(0.0, p.y()));
    auto* label = w->findChild<QLabel*>(QStringLiteral("cursorPosLabel"));
    QCOMPARE(label->text(), QStringLiteral("(azimuth, Measured Depth):"));
}

void TestScatDepthPlotWidgetGui::pickBetweenTwoTopsThenCloseAsks()
{
    chooseCreation("FaultRadioButton");
    click(Track::DipTrack, 1010.0);
    // Another click elsewhere with a top picked only drops the pick; the next one inserts.
    click(Track::DipTrack, 1090.0);
    if (fields()[0]->lineDepths().size() == 1)
        click(Track::DipTrack, 1090.0);
    QCOMPARE(fields()[0]->lineDepths().size(), std::size_t(2));
    for (DepthLineField* f : fields()) {
        f->deselectAll();
        f->setModified(false);
    }
    click(Track::TransverseDipTrack, 1050.0);
    for (DepthLineField* f : fields()) {
        QCOMPARE(f->lineDepths().size(), std::size_t(3));
        QCOMPARE(f->lineTypes()[1], DepthLineField::Fault);
    }
    auto* close = w->findChild<QToolButton*>(QStringLiteral("closeScenarioBtn"));
    QVERIFY(close->isVisible());
    QTest::mouseClick(close, Qt::LeftButton);
    QCOMPARE(questions, QStringList{QStringLiteral("Close|Do you want to save the changes you made to 'Scenario_0'?")});
    // Cancel: the scenario and its three tops stay.
    QCOMPARE(fields()[0]->lineDepths().size(), std::size_t(3));
}

QTEST_MAIN(TestScatDepthPlotWidgetGui)
#include "tst_scatdepthplotwidget_gui.moc"
