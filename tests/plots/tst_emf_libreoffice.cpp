// A chart's metafile as an office suite draws it: converted headless to PDF, rasterised at
// 96 dpi, and looked at where the frame, the crosses, the filled marker and the labels must be,
// and a stereonet's density bands where they meet the rim. Slow (an office start per
// conversion), so it carries its own CTest label.
#include "EmfRecords.h"
#include "FramedScatterChart.h"
#include "RimBandStereo.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

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

// The page the office draws from the metafile, or a null image with the reason in failure.
QImage officePage(const QTemporaryDir& dir, const QString& name, const QByteArray& metafile, QString& failure)
{
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    const QString pdftoppm = QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
    const QString emfFile = dir.filePath(name + QStringLiteral(".emf"));
    QFile file(emfFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(metafile) != metafile.size()) {
        failure = QStringLiteral("cannot write ") + emfFile;
        return QImage();
    }
    file.close();
    // Its own profile, so that parallel or earlier office runs never meet this one.
    const QString profile = QUrl::fromLocalFile(dir.filePath(QStringLiteral("profile"))).toString();
    failure = run(soffice,
                  {QStringLiteral("-env:UserInstallation=") + profile, QStringLiteral("--headless"),
                   QStringLiteral("--norestore"), QStringLiteral("--convert-to"), QStringLiteral("pdf"),
                   QStringLiteral("--outdir"), dir.path(), emfFile},
                  300000);
    if (!failure.isEmpty())
        return QImage();
    failure = run(pdftoppm, {QStringLiteral("-r"), QStringLiteral("96"), QStringLiteral("-png"), QStringLiteral("-singlefile"),
                             dir.filePath(name + QStringLiteral(".pdf")), dir.filePath(name)},
                  120000);
    if (!failure.isEmpty())
        return QImage();
    QImage page(dir.filePath(name + QStringLiteral(".png")));
    if (page.isNull()) {
        failure = QStringLiteral("no page rendered");
        return QImage();
    }
    page = page.convertToFormat(QImage::Format_RGB32);
    // RK_KEEP_RENDERED=PREFIX keeps each page as PREFIX-name.png, to look at.
    if (qEnvironmentVariableIsSet("RK_KEEP_RENDERED"))
        page.save(qEnvironmentVariable("RK_KEEP_RENDERED") + QLatin1Char('-') + name + QStringLiteral(".png"));
    return page;
}

// Where the picture's (0, 0) lands: the office centres it on the page at its bounds' size.
QPointF pictureOrigin(const QImage& page, const EmfFile& emf)
{
    const U_RECTL b = emf.header.rclBounds;
    const QPointF size((b.right - b.left + 1), (b.bottom - b.top + 1));
    return QPointF(page.width() - size.x(), page.height() - size.y()) / 2 - QPointF(b.left, b.top);
}

// The first and last columns with dark pixels in the rows and columns given, or (-1, -1).
std::pair<int, int> inkColumns(const QImage& image, int top, int bottom, int left, int right)
{
    std::pair<int, int> out(-1, -1);
    for (int x = left; x <= right; ++x)
        for (int y = top; y <= bottom; ++y)
            if (image.valid(x, y) && dark(image.pixel(x, y))) {
                if (out.first < 0)
                    out.first = x;
                out.second = x;
                break;
            }
    return out;
}

bool officeTools()
{
    return !QStandardPaths::findExecutable(QStringLiteral("soffice")).isEmpty()
           && !QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty();
}

} // namespace

class TestEmfLibreOffice : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void chartAsTheOfficeDrawsIt();
    void stereonetBandsReachTheRim();

private:
    std::unique_ptr<QTemporaryDir> m_dir; // a fresh one for each test
};

void TestEmfLibreOffice::init()
{
    if (!officeTools())
        QSKIP("needs soffice (libreoffice-draw-nogui) and pdftoppm (poppler-utils): scripts/install-deps.sh");
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestEmfLibreOffice::chartAsTheOfficeDrawsIt()
{
    FramedScatterChart chart;
    chart.loadGrid();
    const QByteArray bytes = chart.toEnhancedMetafile();
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    QString failure;
    const QImage page = officePage(*m_dir, QStringLiteral("chart"), bytes, failure);
    QVERIFY2(!page.isNull(), qPrintable(failure));

    // Find the frame's top and left edges near where the picture's size puts them, then map the
    // chart there.
    const QPointF origin = pictureOrigin(page, emf);
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
    // The title: ink to the right of its start, where its letters are, and none well above it.
    const QPointF title = FramedScatterChart::titleAt();
    int ink = 0;
    for (int y = -16; y <= 2; ++y)
        for (int x = 0; x <= 90; ++x)
            ink += dark(page.pixel(toPage(title + QPointF(x, y))));
    QVERIFY2(ink > 80, qPrintable(QStringLiteral("%1 dark pixels of text").arg(ink)));
    QVERIFY(!near(page, toPage(title + QPointF(0, -24)), 3, dark));

    // Each label spans on the page what it spans on the screen: it starts where the screen starts
    // it, and the one against the left edge keeps its first characters.
    QImage screen(chart.size(), QImage::Format_RGB32);
    screen.fill(Qt::white);
    {
        QPainter painter(&screen);
        chart.drawChart(painter);
        chart.drawAxis(painter, chart.pixmapRect());
    }
    for (const QPointF& label : {FramedScatterChart::titleAt(), FramedScatterChart::readoutAt()}) {
        const int above = int(label.y()) - 20, below = int(label.y()) + 5;
        const auto shown = inkColumns(screen, above, below, 0, screen.width() - 1);
        QVERIFY(shown.first >= 0);
        const int pageLeft = toPage(QPointF(-100, 0)).x(), pageRight = toPage(QPointF(screen.width() - 1, 0)).x();
        const auto pasted =
            inkColumns(page, toPage(QPointF(0, above)).y(), toPage(QPointF(0, below)).y(), pageLeft, pageRight);
        const QString where = QStringLiteral("label at %1,%2: screen %3..%4, page %5..%6")
                                  .arg(label.x()).arg(label.y()).arg(toPage(QPointF(shown.first, 0)).x())
                                  .arg(toPage(QPointF(shown.second, 0)).x()).arg(pasted.first).arg(pasted.second);
        QVERIFY2(std::abs(pasted.first - toPage(QPointF(shown.first, 0)).x()) <= 2, qPrintable(where));
        QVERIFY2(std::abs(pasted.second - toPage(QPointF(shown.second, 0)).x()) <= 3, qPrintable(where));
    }
}

void TestEmfLibreOffice::stereonetBandsReachTheRim()
{
    RimBandStereo net;
    const QByteArray bytes = net.metafile();
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    QString failure;
    const QImage page = officePage(*m_dir, QStringLiteral("stereonet"), bytes, failure);
    QVERIFY2(!page.isNull(), qPrintable(failure));
    const QPointF origin = pictureOrigin(page, emf);
    auto toPage = [&](QPointF p) { return (p + origin).toPoint(); };

    const std::vector<QColor> colours = RimBandStereo::bandColours();
    auto band = [&](QRgb c) {
        for (const QColor& b : colours)
            if (std::abs(qRed(c) - b.red()) <= 24 && std::abs(qGreen(c) - b.green()) <= 24
                && std::abs(qBlue(c) - b.blue()) <= 24)
                return true;
        return false;
    };
    // All round the rim: band colour just inside it, none outside the disc.
    const QPointF centre(net.centre());
    const double R = net.radius();
    for (int degrees = 0; degrees < 360; degrees += 15) {
        const QPointF direction(std::cos(degrees * M_PI / 180), std::sin(degrees * M_PI / 180));
        QVERIFY2(near(page, toPage(centre + (R - 4) * direction), 2, band),
                 qPrintable(QStringLiteral("no band colour inside the rim at %1 degrees").arg(degrees)));
        QVERIFY2(!near(page, toPage(centre + (R + 8) * direction), 1, band),
                 qPrintable(QStringLiteral("band colour outside the disc at %1 degrees").arg(degrees)));
    }
}

QTEST_MAIN(TestEmfLibreOffice)
#include "tst_emf_libreoffice.moc"
