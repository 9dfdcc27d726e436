// A chart's metafile as an office suite draws it: converted headless to PDF, rasterised at
// 96 dpi, and looked at where the frame, the crosses, the filled marker and the title must be.
// Slow (an office start per conversion), so it carries its own CTest label.
#include "EmfRecords.h"
#include "FramedScatterChart.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using namespace rkBase;

namespace {

bool dark(QRgb c) { return qRed(c) < 110 && qGreen(c) < 110 && qBlue(c) < 170; }
bool white(QRgb c) { return qRed(c) > 235 && qGreen(c) > 235 && qBlue(c) > 235; }
bool blueish(QRgb c) { return qBlue(c) > qRed(c) + 40 && qBlue(c) > qGreen(c) + 40; }
bool reddish(QRgb c) { return qRed(c) > 150 && qGreen(c) < 100 && qBlue(c) < 100; }

// Whether any pixel within radius r of p passes the test.
template <class Test>
bool near(const QImage& page, QPoint p, int r, Test test)
{
    for (int y = p.y() - r; y <= p.y() + r; ++y)
        for (int x = p.x() - r; x <= p.x() + r; ++x)
            if (page.valid(x, y) && test(page.pixel(x, y)))
                return true;
    return false;
}

// Runs a program to its end; the output on failure.
QString run(const QString& program, const QStringList& args, int timeoutMs)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, args);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished(5000);
        return program + QStringLiteral(" timed out");
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return program + QStringLiteral(" failed: ") + QString::fromLocal8Bit(process.readAll());
    return QString();
}

} // namespace

class TestEmfLibreOffice : public QObject
{
    Q_OBJECT
private slots:
    void chartAsTheOfficeDrawsIt();
};

void TestEmfLibreOffice::chartAsTheOfficeDrawsIt()
{
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    const QString pdftoppm = QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
    if (soffice.isEmpty() || pdftoppm.isEmpty())
        QSKIP("needs soffice (libreoffice-draw-nogui) and pdftoppm (poppler-utils): scripts/install-deps.sh");

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    FramedScatterChart chart;
    chart.loadGrid();
    const QString emfFile = dir.filePath(QStringLiteral("chart.emf"));
    const QByteArray bytes = chart.toEnhancedMetafile(emfFile);
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));

    // Its own profile, so that parallel or earlier office runs never meet this one.
    const QString profile = QUrl::fromLocalFile(dir.filePath(QStringLiteral("profile"))).toString();
    QString failure = run(soffice,
                          {QStringLiteral("-env:UserInstallation=") + profile, QStringLiteral("--headless"),
                           QStringLiteral("--norestore"), QStringLiteral("--convert-to"), QStringLiteral("pdf"),
                           QStringLiteral("--outdir"), dir.path(), emfFile},
                          300000);
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    failure = run(pdftoppm, {QStringLiteral("-r"), QStringLiteral("96"), QStringLiteral("-png"), QStringLiteral("-singlefile"),
                             dir.filePath(QStringLiteral("chart.pdf")), dir.filePath(QStringLiteral("page"))},
                  120000);
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    QImage page(dir.filePath(QStringLiteral("page.png")));
    QVERIFY(!page.isNull());
    page = page.convertToFormat(QImage::Format_RGB32);
    if (qEnvironmentVariableIsSet("RK_KEEP_RENDERED"))
        page.save(qEnvironmentVariable("RK_KEEP_RENDERED"));

    // The picture is centred on the page at its frame's size: where its bounds' corner lands.
    const U_RECTL b = emf.header.rclBounds;
    const QPointF size((b.right - b.left + 1), (b.bottom - b.top + 1));
    const QPointF origin = QPointF(page.width() - size.x(), page.height() - size.y()) / 2 - QPointF(b.left, b.top);
    // Find the frame's top and left edges near where they must be, then map the chart there.
    const QRect frame = FramedScatterChart::frame();
    auto firstDark = [&](QPoint from, QPoint step, int steps) {
        for (int i = 0; i < steps; ++i, from += step)
            if (page.valid(from) && dark(page.pixel(from)))
                return from;
        return QPoint(-1, -1);
    };
    const QPoint expectedTop = (origin + QPointF(frame.center().x(), frame.top())).toPoint();
    const QPoint top = firstDark(expectedTop - QPoint(0, 8), QPoint(0, 1), 16);
    const QPoint expectedLeft = (origin + QPointF(frame.left(), frame.center().y())).toPoint();
    const QPoint left = firstDark(expectedLeft - QPoint(8, 0), QPoint(1, 0), 16);
    QVERIFY2(top.y() >= 0 && left.x() >= 0, "the frame is not where the picture's size puts it");
    const QPoint at(left.x() - frame.left() + 1, top.y() - frame.top() + 1); // the 2 px line straddles the edge
    auto toPage = [&](QPointF p) { return (p + at).toPoint(); };
    // Drawn at 96 dpi: the right edge is the frame's width further on.
    const QPoint right = firstDark(toPage(QPointF(frame.right() + 6, frame.center().y())), QPoint(-1, 0), 16);
    QVERIFY2(std::abs(right.x() - toPage(QPointF(frame.right() + 1, 0)).x()) <= 2,
             qPrintable(QStringLiteral("right edge at %1").arg(right.x())));

    for (const QPointF& p : FramedScatterChart::gridPoints()) {
        QVERIFY2(near(page, toPage(p), 1, blueish), qPrintable(QStringLiteral("no cross at %1,%2").arg(p.x()).arg(p.y())));
        // The arm ends, and nothing between the arms.
        QVERIFY(near(page, toPage(p + QPointF(3, 0)), 1, blueish));
        QVERIFY(near(page, toPage(p + QPointF(0, -3)), 1, blueish));
        QVERIFY(white(page.pixel(toPage(p + QPointF(3, 3)))));
        QVERIFY(white(page.pixel(toPage(p + QPointF(30, 30)))));
    }
    // The marker is filled, the frame is not.
    QVERIFY(reddish(page.pixel(toPage(FramedScatterChart::marker().center()))));
    QVERIFY(white(page.pixel(toPage(QPointF(200, 220)))));
    // The title: ink where its letters are (centred on its start point), none well above it.
    const QPointF title = FramedScatterChart::titleAt();
    int ink = 0;
    for (int y = -16; y <= 2; ++y)
        for (int x = -45; x <= 45; ++x)
            ink += dark(page.pixel(toPage(title + QPointF(x, y))));
    QVERIFY2(ink > 80, qPrintable(QStringLiteral("%1 dark pixels of text").arg(ink)));
    QVERIFY(!near(page, toPage(title + QPointF(0, -24)), 3, dark));
}

QTEST_MAIN(TestEmfLibreOffice)
#include "tst_emf_libreoffice.moc"
