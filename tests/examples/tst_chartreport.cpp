// The well's report as the host writes it: every chart tab as PNG, SVG and EMF, the page that
// references them with the file's name, row count and date, the statistics of the stereonet and
// the histogram's two-sample test; and report directories that cannot be written.
#include <ChartReport.h>
#include <HostMainWindow.h>

#include <QDate>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

class TestChartReport : public QObject
{
    Q_OBJECT
private slots:
    void sampleWell();
    void unwritableDirectory();
};

namespace {
// Share of the pixels that differ from the corner's colour: a blank picture has none.
double inkShare(const QImage& image)
{
    const QRgb blank = image.pixel(0, 0);
    qint64 ink = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ink += image.pixel(x, y) != blank;
    return double(ink) / double(image.width() * image.height());
}
} // namespace

void TestChartReport::sampleWell()
{
    HostMainWindow window;
    QVERIFY(window.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    // The histogram's two-sample test on, as a user would set it before asking for the report.
    QVERIFY(window.showTab(QStringLiteral("HISTOGRAM")));
    QVERIFY(window.setControl(QStringLiteral("twoSampleTestGroupBox"), QStringLiteral("true")));
    QVERIFY(window.setControl(QStringLiteral("m_pqHistogramDataSetCompareComboBox"), QStringLiteral("Porosity")));
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString out = dir.filePath(QStringLiteral("report"));
    QTemporaryFile log;
    QVERIFY(log.open());
    std::FILE* progress = std::fopen(qPrintable(log.fileName()), "w");
    QVERIFY(progress);
    ChartReport report(window, QStringLiteral(RK_SAMPLE_CSV));
    report.setWindowSize(QSize(760, 520));
    report.setProgress(progress);
    QString error;
    const bool ok = report.write(out, &error);
    std::fclose(progress);
    QVERIFY2(ok, qPrintable(error));

    QFile page(QDir(out).filePath(QStringLiteral("index.html")));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QString html = QString::fromUtf8(page.readAll());
    QVERIFY(html.contains(QStringLiteral("sample_well.csv")));
    QVERIFY(html.contains(QStringLiteral("<td class=\"v\">3000</td>")));
    QVERIFY(html.contains(QDate::currentDate().toString(Qt::ISODate)));
    QVERIFY(html.contains(QStringLiteral("Summary of the Statistical Investigations of Spherical Data")));
    QVERIFY(html.contains(QStringLiteral("p-value")));

    // Every chart tab of the window, each in three forms, and the page last.
    const QStringList files = report.files();
    QCOMPARE(files.last(), QStringLiteral("index.html"));
    for (const char* key : {"barchart", "histogram", "crossplot", "roseplot", "stereoplot", "tangentplot",
                            "welllogplot"})
        for (const char* suffix : {".png", ".svg", ".emf"})
            QVERIFY2(files.contains(QLatin1String(key) + QLatin1String(suffix)), key);
    QFile lines(log.fileName());
    QVERIFY(lines.open(QIODevice::ReadOnly));
    QCOMPARE(lines.readAll().count('\n'), (files.size() - 1) / 3 + 1);
    // The page alone shows every picture: each is in it as well as beside it.
    QCOMPARE(html.count(QStringLiteral("src=\"data:image/png;base64,")), (files.size() - 1) / 3);
    for (const QString& name : files) {
        const QFileInfo info(QDir(out).filePath(name));
        QVERIFY2(info.isFile() && info.size() > 200, qPrintable(name));
        if (name == QLatin1String("index.html"))
            continue;
        QVERIFY2(html.contains(QLatin1Char('"') + name + QLatin1Char('"')), qPrintable(name));
        if (name.endsWith(QLatin1String(".png"))) {
            const QImage image(info.filePath());
            QVERIFY2(!image.isNull(), qPrintable(name));
            QVERIFY2(inkShare(image) > 0.01, qPrintable(name));
        }
    }
}

void TestChartReport::unwritableDirectory()
{
    HostMainWindow window;
    QVERIFY(window.openCsv(QStringLiteral(RK_SAMPLE_CSV), true));
    QTemporaryFile file;
    QVERIFY(file.open());
    ChartReport report(window, QStringLiteral(RK_SAMPLE_CSV));
    report.setProgress(nullptr);
    QString error;
    QVERIFY(!report.write(file.fileName() + QStringLiteral("/report"), &error));
    QVERIFY(error.contains(QStringLiteral("/report")));
    QVERIFY(report.files().isEmpty());
}

QTEST_MAIN(TestChartReport)
#include "tst_chartreport.moc"
