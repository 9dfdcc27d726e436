// A chart copied as an enhanced metafile: the clipboard types and their order, the vectors in
// the metafile, the picture beside them, and the chart's state around the copy.
#include "EmfRecords.h"
#include "FramedScatterChart.h"

#include <QClipboard>
#include <QMimeData>
#include <QtTest>

using namespace rkBase;

class TestEmfClipboard : public QObject
{
    Q_OBJECT
private slots:
    void copiesVectorsAndPicture_data();
    void copiesVectorsAndPicture();
    void shortcutAndAction();
};

void TestEmfClipboard::copiesVectorsAndPicture_data()
{
    QTest::addColumn<bool>("withPoints");
    QTest::addColumn<int>("zoomPercent");
    QTest::newRow("chart") << true << 100;
    QTest::newRow("empty chart") << false << 100;
    QTest::newRow("zoomed and scrolled") << true << 200;
}

void TestEmfClipboard::copiesVectorsAndPicture()
{
    QFETCH(bool, withPoints);
    QFETCH(int, zoomPercent);
    FramedScatterChart chart;
    if (withPoints)
        chart.loadGrid();
    chart.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chart));
    if (zoomPercent != 100) {
        chart.xoffset(100);
        chart.zoom(zoomPercent / 100.0);
    }
    QGuiApplication::clipboard()->setText(QStringLiteral("something else"));
    chart.paintFlags.clear();
    chart.copyWEMFToClipboard();
    // On for the metafile's paint only (a stale raster is rebuilt for the picture without it).
    QCOMPARE(chart.paintFlags.count(true), 1);
    QVERIFY(!chart.paintingToWEMF());

    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    QVERIFY(data);
    // Office programs here read only the first type; the picture comes last, for the rest.
    QCOMPARE(data->formats(), (QStringList{QStringLiteral("application/x-openoffice-emf;windows_formatname=\"Image EMF\""),
                                           QStringLiteral("image/emf"), QStringLiteral("image/x-emf"),
                                           QStringLiteral("image/png")}));
    const QByteArray emfBytes = data->data(QStringLiteral("image/emf"));
    QCOMPARE(data->data(data->formats().at(0)), emfBytes);
    QCOMPARE(data->data(QStringLiteral("image/x-emf")), emfBytes);
    const EmfFile emf = readEmf(emfBytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    // Clipped to the part of the raster the widget shows.
    const QRect shown = chart.pixmapRect();
    QCOMPARE(emf.linesStarting(QStringLiteral("CLIP")),
             (QStringList{QStringLiteral("CLIP mode 5 none"),
                          QStringLiteral("CLIP mode 1 rects 1 bound %1,%2 %3,%4")
                              .arg(shown.left()).arg(shown.top()).arg(shown.right()).arg(shown.bottom())}));
    // Two strokes per cross, in the chart's point colour, then the axis.
    const int points = withPoints ? FramedScatterChart::gridPoints().size() : 0;
    QCOMPARE(emf.count(U_EMR_LINETO), 2 * points);
    if (withPoints) {
        QVERIFY(emf.lines.contains(QStringLiteral("MOVETO 76,70")));
        QVERIFY(emf.lines.contains(QStringLiteral("LINETO 80,74")));
        QVERIFY(!emf.linesStarting(QStringLiteral("PEN")).filter(QStringLiteral("width 2 800000")).isEmpty());
    }
    QVERIFY(emf.lines.contains(QStringLiteral("POLYGON 40,30 360,30 360,250 40,250 40,30")));
    QCOMPARE(emf.linesStarting(QStringLiteral("TEXT ")),
             (QStringList{QStringLiteral("TEXT 60,290 Porosity"), QStringLiteral("TEXT 2,18 Pole: 30.00/ 120.00")}));

    // The picture is what the widget shows.
    QImage picture;
    QVERIFY(picture.loadFromData(data->data(QStringLiteral("image/png")), "PNG"));
    QCOMPARE(picture.size(), chart.size());
    // The chart keeps just the window it shows, zoomed or not.
    const QImage raster = chart.chartImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(picture.convertToFormat(QImage::Format_ARGB32), raster);
}

void TestEmfClipboard::shortcutAndAction()
{
    FramedScatterChart chart;
    chart.loadGrid();
    chart.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chart));
    QVERIFY(!chart.copyEmfAction()->isVisible());
    chart.allowCopyToWMF(true);
    QVERIFY(chart.copyEmfAction()->isVisible());
    QGuiApplication::clipboard()->clear();
    chart.copyEmfAction()->trigger();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(QStringLiteral("image/emf")));
    QGuiApplication::clipboard()->setText(QStringLiteral("x"));
    QTest::keyRelease(&chart, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(readEmf(QGuiApplication::clipboard()->mimeData()->data(QStringLiteral("image/emf"))).ok());
}

QTEST_MAIN(TestEmfClipboard)
#include "tst_emf_clipboard.moc"
