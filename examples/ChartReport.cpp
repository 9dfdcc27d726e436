#include "ChartReport.h"

#include "HostMainWindow.h"

#include <QChartDrawingArea.h>
#include <QDataAnalyserDialog.h>
#include <QDataStatisticSummary.h>
#include <QHistogramChartWidget.h>
#include <QStereoChartWidget.h>
#include <QVertexItemModel.h>
#include <TabWidgetWithFloatingTabs.h>

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextDocument>
#include <QTimer>
#include <QUrl>

namespace {
const char* const kSuffixes[] = {"png", "svg", "emf"};

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QString row(const QString& label, const QString& value)
{
    return QStringLiteral("<tr><td>%1</td><td class=\"v\">%2</td></tr>\n").arg(escaped(label), escaped(value));
}
} // namespace

ChartReport::ChartReport(HostMainWindow& window, const QString& dataFile) : m_window(window), m_dataFile(dataFile)
{
}

// Lets the window lay out and the current tab rebuild its chart before it is drawn.
void ChartReport::settle() const
{
    QEventLoop loop;
    QTimer::singleShot(30, &loop, &QEventLoop::quit);
    loop.exec();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

bool ChartReport::renderCharts(const QString& dir, QList<Chart>& charts, QString* error)
{
    rkBase::TabWidgetWithFloatingTabs* tabs = m_window.analyser()->tabWidget();
    QStringList keys;
    QStringList titles;
    for (int i = 0; tabs && i < tabs->count(); ++i) {
        const QString key = tabs->widget(i)->objectName();
        if (key != QLatin1String("TABLE")) {
            keys << key;
            titles << tabs->tabText(i).remove(QLatin1Char('&'));
        }
    }
    for (int i = 0; i < keys.size(); ++i) {
        if (!m_window.showTab(keys[i]))
            continue;
        settle();
        if (!m_window.currentChart())
            continue;
        const Chart chart{keys[i], titles[i], keys[i].toLower()};
        for (const char* suffix : kSuffixes) {
            const QString name = chart.base + QLatin1Char('.') + QLatin1String(suffix);
            QString why;
            if (!m_window.exportChart(QDir(dir).filePath(name), &why)) {
                *error = why;
                return false;
            }
            m_files << name;
        }
        charts << chart;
        if (m_progress)
            std::fprintf(m_progress, "rk_demo_host: %s (%s) -> %s.png, .svg, .emf\n", qPrintable(chart.title),
                         qPrintable(chart.key), qPrintable(chart.base));
    }
    if (charts.isEmpty()) {
        *error = QStringLiteral("The window shows no chart to report.");
        return false;
    }
    return true;
}

QString ChartReport::statisticsHtml() const
{
    rkBase::QStereoChartWidget* net = m_window.analyser()->stereoChart();
    const QString html = net && net->statisticSummary() ? net->statisticSummary()->documentHtml() : QString();
    if (html.isEmpty())
        return QStringLiteral("<p>The stereonet has no statistics: it shows no dip and azimuth.</p>\n");
    return html + QLatin1Char('\n');
}

QString ChartReport::twoSampleHtml() const
{
    rkBase::QHistogramChartWidget* histogram = m_window.analyser()->histogramChart();
    if (!histogram || !histogram->sampleResult().valid)
        return QStringLiteral("<p>No comparison data set was chosen on the histogram, so there is no two-sample "
                              "test.</p>\n");
    const auto& binned = histogram->binnedResult();
    const auto& sample = histogram->sampleResult();
    QString html = QStringLiteral("<table>\n");
    html += row(QStringLiteral("Data set"), histogram->currentSelectedDataSetName());
    html += row(QStringLiteral("Sample sizes"), QStringLiteral("%1 / %2").arg(sample.n1).arg(sample.n2));
    html += row(QStringLiteral("Largest difference of the cumulative curves"),
                QString::number(binned.maxDifference, 'f', 2) + QLatin1Char('%'));
    html += row(QStringLiteral("Critical difference"), QString::number(binned.critical, 'f', 2) + QLatin1Char('%'));
    html += row(QStringLiteral("Verdict"), binned.passed ? QStringLiteral("passed") : QStringLiteral("failed"));
    html += row(QStringLiteral("Kolmogorov-Smirnov statistic D"), QString::number(sample.statistic, 'f', 4));
    html += row(QStringLiteral("p-value"), sample.pValue < 1e-4 ? QString::number(sample.pValue, 'e', 2)
                                                                 : QString::number(sample.pValue, 'f', 4));
    return html + QStringLiteral("</table>\n");
}

QString ChartReport::pageHtml(const QString& dir, const QList<Chart>& charts) const
{
    const QString file = QFileInfo(m_dataFile).fileName();
    const rkBase::QVertexItemModel* table = m_window.analyser()->vertexItemModel();
    const int rows = table ? table->rowCount() : 0;
    const QString date = QDate::currentDate().toString(Qt::ISODate);
    QString html = QStringLiteral(
                           "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>%1</title>\n"
                           "<style>\nbody { font-family: sans-serif; margin: 2em; color: #222; }\n"
                           "figure { display: inline-block; width: 48%; margin: 0.5em 0.5%; vertical-align: top; }\n"
                           "img { width: 100%; border: 1px solid #ccc; }\n"
                           "td { padding: 0.1em 0.8em 0.1em 0; }\ntd.v { text-align: right; }\n</style>\n</head>\n"
                           "<body>\n")
                           .arg(escaped(QStringLiteral("Report of ") + file));
    html += QStringLiteral("<h1>%1</h1>\n<table>\n").arg(escaped(file));
    html += row(QStringLiteral("Data file"), file);
    html += row(QStringLiteral("Rows"), QString::number(rows));
    html += row(QStringLiteral("Date"), date);
    html += QStringLiteral("</table>\n<h2>Charts</h2>\n");
    for (const Chart& c : charts) {
        QFile png(QDir(dir).filePath(c.base + QStringLiteral(".png")));
        const QByteArray bytes = png.open(QIODevice::ReadOnly) ? png.readAll() : QByteArray();
        const QString source = bytes.isEmpty() ? c.base + QStringLiteral(".png")
                                               : QStringLiteral("data:image/png;base64,")
                                                     + QString::fromLatin1(bytes.toBase64());
        html += QStringLiteral("<figure id=\"%1\">\n<a href=\"%2.png\"><img src=\"%4\" alt=\"%3\"></a>\n"
                               "<figcaption>%3 (<a href=\"%2.png\">PNG</a>, <a href=\"%2.svg\">SVG</a>, "
                               "<a href=\"%2.emf\">EMF</a>)</figcaption>\n</figure>\n")
                    .arg(c.key, c.base, escaped(c.title), source);
    }
    html += QStringLiteral("<h2>Stereonet statistics</h2>\n") + statisticsHtml();
    html += QStringLiteral("<h2>Histogram two-sample test</h2>\n") + twoSampleHtml();
    return html + QStringLiteral("</body>\n</html>\n");
}

bool ChartReport::write(const QString& dir, QString* error)
{
    m_files.clear();
    if (!QDir().mkpath(dir) || !QFileInfo(dir).isDir() || !QFileInfo(dir).isWritable()) {
        *error = QStringLiteral("Cannot write the report into %1.").arg(dir);
        return false;
    }
    m_window.resize(m_windowSize);
    m_window.setAttribute(Qt::WA_DontShowOnScreen, true);
    m_window.show();
    settle();
    QList<Chart> charts;
    if (!renderCharts(dir, charts, error))
        return false;
    QSaveFile page(QDir(dir).filePath(QStringLiteral("index.html")));
    if (!page.open(QIODevice::WriteOnly) || page.write(pageHtml(dir, charts).toUtf8()) < 0 || !page.commit()) {
        *error = QStringLiteral("Cannot write %1.").arg(page.fileName());
        return false;
    }
    m_files << QStringLiteral("index.html");
    if (m_progress)
        std::fprintf(m_progress, "rk_demo_host: %s\n", qPrintable(QDir(dir).filePath(QStringLiteral("index.html"))));
    return true;
}

bool ChartReport::renderPage(const QString& dir, const QString& png, int width, QString* error)
{
    QFile page(QDir(dir).filePath(QStringLiteral("index.html")));
    if (!page.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("Cannot read %1.").arg(page.fileName());
        return false;
    }
    QTextDocument document;
    document.setBaseUrl(QUrl::fromLocalFile(QDir(dir).absolutePath() + QLatin1Char('/')));
    // Rich text knows neither style widths nor inline blocks: the pictures go two to a row of a
    // table, each with its caption below.
    QString html = QString::fromUtf8(page.readAll());
    // Rich text reads no embedded pictures: each is taken from the file it links to.
    html.replace(QRegularExpression(QStringLiteral("<a href=\"([^\"]+\\.png)\"><img src=\"data:[^\"]*\"")),
                 QStringLiteral("<a href=\"\\1\"><img src=\"\\1\""));
    const int half = (width - 60) / 2;
    html.replace(QStringLiteral("<img "), QStringLiteral("<img width=\"%1\" ").arg(half));
    const QRegularExpression figure(QStringLiteral("<figure[^>]*>(.*?)</figure>\\s*"),
                                    QRegularExpression::DotMatchesEverythingOption);
    QString grid = QStringLiteral("<table cellspacing=\"6\">");
    int cell = 0;
    for (auto it = figure.globalMatch(html); it.hasNext(); ++cell) {
        const QString content = it.next().captured(1);
        grid += QString(cell % 2 ? QString() : QStringLiteral("<tr>")) + QStringLiteral("<td>") + content
              + QStringLiteral("</td>") + QString(cell % 2 ? QStringLiteral("</tr>") : QString());
    }
    grid += QStringLiteral("</table>");
    const int first = html.indexOf(QStringLiteral("<figure"));
    html.remove(figure);
    if (first >= 0)
        html.insert(first, grid);
    document.setHtml(html);
    document.setTextWidth(width);
    QImage image(document.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    document.drawContents(&painter);
    painter.end();
    if (!image.save(png, "PNG")) {
        *error = QStringLiteral("Cannot write %1.").arg(png);
        return false;
    }
    return true;
}
