// The demo host: the analyser on the bundled sample well, or on --data FILE.csv. With
// --screenshot FILE.png it renders the window off-screen, saves it and exits, so a machine
// without a display can show what a user would see. --tab KEY brings a tab to the front first
// (a tab key such as TABLE or BARCHART), --page TITLE a page of that tab's chart (such as the
// stereo panel's "Statistic Summary"), and --select FIRST-LAST selects table rows first, as a
// selection made on a chart would. --set NAME=VALUE sets a control of the tab by object name
// (a combo box's entry, a check box or group to true or false), as a user would. With
// --export FILE it writes the current tab's chart (.emf, .png or .svg) and exits. --report DIR
// writes every chart and the statistics into DIR/index.html (ChartReport) and exits (with
// --screenshot FILE.png, rendering the page there too). --dip,
// --azimuth, --x and --y choose the attributes the nets and the cross plot show.
#include "ChartReport.h"
#include "HostMainWindow.h"

#include <DepthLineField.h>
#include <QCrossPlot.h>
#include <QScatDepthPlotWidget.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimer>

#include <cmath>
#include <cstdio>

namespace {
// "FIRST-LAST", both counted from 1; false for anything else.
bool parseRange(const QString& text, int& first, int& last)
{
    const QStringList parts = text.split(QLatin1Char('-'));
    bool ok1 = false, ok2 = false;
    if (parts.size() != 2)
        return false;
    first = parts[0].toInt(&ok1);
    last = parts[1].toInt(&ok2);
    return ok1 && ok2 && first >= 1 && first <= last;
}

// Shown off-screen so that the chart has its size, then exported once the window has settled
// (after anything queued before, such as a choice of tab).
int exportAndExit(QApplication& app, HostMainWindow& window, const QString& file)
{
    window.setAttribute(Qt::WA_DontShowOnScreen, true);
    window.show();
    QTimer::singleShot(200, &window, [&window, file] {
        QString error;
        const bool ok = window.exportChart(file, &error);
        if (!ok)
            std::fprintf(stderr, "rk_demo_host: %s\n", qPrintable(error));
        QApplication::exit(ok ? 0 : 1);
    });
    return app.exec();
}

// Selects the top nearest depth in all four tracks, as a click on it would; the gallery shows
// a picked top this way.
void pickNearestTop(rkBase::QScatDepthPlotWidget* scat, double depth)
{
    rkBase::DepthLineField* tops = scat->structuralTops();
    if (!tops || tops->lineDepths().empty())
        return;
    const auto& depths = tops->lineDepths();
    std::size_t best = 0;
    for (std::size_t i = 1; i < depths.size(); ++i)
        if (std::abs(depths[i] - depth) < std::abs(depths[best] - depth))
            best = i;
    scat->slotPickPosUpdate({int(best)});
    // The track the pick was made in is the one framed.
    scat->plot(rkBase::QScatDepthPlotWidget::DipTrack)->setActivePlotWindow(true);
}

} // namespace

int main(int argc, char** argv)
{
    // A script's export needs no screen.
    for (int i = 1; i < argc; ++i)
        if (qstrcmp(argv[i], "--export") == 0 || qstrncmp(argv[i], "--export=", 9) == 0
            || qstrcmp(argv[i], "--report") == 0 || qstrncmp(argv[i], "--report=", 9) == 0)
            if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
                qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("rkBaseTools"));
    QApplication::setApplicationName(QStringLiteral("demo-host"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("rkBaseTools demo host"));
    parser.addHelpOption();
    QCommandLineOption data(QStringLiteral("data"), QStringLiteral("CSV file to load."), QStringLiteral("FILE.csv"));
    QCommandLineOption shot(QStringLiteral("screenshot"), QStringLiteral("Render the window to FILE.png and exit."),
                            QStringLiteral("FILE.png"));
    QCommandLineOption tab(QStringLiteral("tab"), QStringLiteral("Show the tab of this key (TABLE, BARCHART, ...)."),
                           QStringLiteral("KEY"));
    QCommandLineOption select(QStringLiteral("select"), QStringLiteral("Select table rows FIRST to LAST (from 1)."),
                              QStringLiteral("FIRST-LAST"));
    parser.addOption(data);
    parser.addOption(shot);
    parser.addOption(tab);
    parser.addOption(select);
    QCommandLineOption page(QStringLiteral("page"), QStringLiteral("Show the page of this title in the tab's chart."),
                            QStringLiteral("TITLE"));
    parser.addOption(page);
    QCommandLineOption set(QStringLiteral("set"),
                           QStringLiteral("Set a control of the tab by object name, as a user would (repeatable)."),
                           QStringLiteral("NAME=VALUE"));
    parser.addOption(set);
    QCommandLineOption exportChart(QStringLiteral("export"),
                                   QStringLiteral("Export the current tab's chart to FILE (.emf, .png or .svg) and exit."),
                                   QStringLiteral("FILE"));
    parser.addOption(exportChart);
    QCommandLineOption scat(QStringLiteral("scat"), QStringLiteral("Open the SCAT window on the well (with --screenshot: "
                                                                   "render that window)."));
    parser.addOption(scat);
    QCommandLineOption pick(QStringLiteral("pick"), QStringLiteral("With --scat: pick the top nearest this depth."),
                            QStringLiteral("DEPTH"));
    parser.addOption(pick);
    QCommandLineOption scenario(QStringLiteral("scenario"), QStringLiteral("With --scat: import this scenario file."),
                                QStringLiteral("FILE.txt"));
    parser.addOption(scenario);
    QCommandLineOption report(QStringLiteral("report"),
                              QStringLiteral("Write every chart and the statistics into DIR/index.html and exit."),
                              QStringLiteral("DIR"));
    parser.addOption(report);
    QCommandLineOption dip(QStringLiteral("dip"), QStringLiteral("The dip attribute of the nets."), QStringLiteral("NAME"));
    QCommandLineOption azimuth(QStringLiteral("azimuth"), QStringLiteral("The azimuth attribute of the nets."),
                               QStringLiteral("NAME"));
    QCommandLineOption xAxis(QStringLiteral("x"), QStringLiteral("The cross plot's horizontal attribute."),
                             QStringLiteral("NAME"));
    QCommandLineOption yAxis(QStringLiteral("y"), QStringLiteral("The cross plot's vertical attribute."),
                             QStringLiteral("NAME"));
    parser.addOptions({dip, azimuth, xAxis, yAxis});
    parser.process(app);

    HostMainWindow window;
    const QString file = parser.isSet(data) ? parser.value(data) : QStringLiteral(RK_SAMPLE_DATA);
    const bool headless = parser.isSet(shot) || parser.isSet(exportChart) || parser.isSet(report);
    if (!window.openCsv(file, headless) && headless) {
        std::fprintf(stderr, "rk_demo_host: cannot read %s\n", qPrintable(file));
        return 1;
    }
    QString columnError;
    if (!window.chooseColumns(parser.value(dip), parser.value(azimuth), parser.value(xAxis), parser.value(yAxis),
                              &columnError)) {
        std::fprintf(stderr, "rk_demo_host: %s\n", qPrintable(columnError));
        return 2;
    }
    if (parser.isSet(select)) {
        int first = 0, last = 0;
        if (!parseRange(parser.value(select), first, last) || !window.selectRows(first, last)) {
            std::fprintf(stderr, "--select %s: no rows of the sheet in that range\n", qPrintable(parser.value(select)));
            return 2;
        }
    }
    if (parser.isSet(tab) && !window.showTab(parser.value(tab))) {
        std::fprintf(stderr, "--tab %s: this window has no tab of that key\n", qPrintable(parser.value(tab)));
        return 2;
    }
    for (const QString& assignment : parser.values(set)) {
        const int eq = assignment.indexOf(QLatin1Char('='));
        if (eq <= 0 || !window.setControl(assignment.left(eq), assignment.mid(eq + 1))) {
            std::fprintf(stderr, "--set %s: the current tab has no such control or value\n", qPrintable(assignment));
            return 2;
        }
    }
    if (parser.isSet(page) && !window.showChartPage(parser.value(page))) {
        std::fprintf(stderr, "--page %s: the current tab has no page of that title\n", qPrintable(parser.value(page)));
        return 2;
    }
    if (parser.isSet(exportChart))
        return exportAndExit(app, window, parser.value(exportChart));
    if (parser.isSet(report)) {
        ChartReport writer(window, file);
        QString error;
        // With --screenshot, the page as a reader sees it.
        if (!writer.write(parser.value(report), &error)
            || (parser.isSet(shot) && !ChartReport::renderPage(parser.value(report), parser.value(shot), 1000, &error))) {
            std::fprintf(stderr, "rk_demo_host: %s\n", qPrintable(error));
            return 1;
        }
        return 0;
    }
    if (parser.isSet(scat)) {
        rkBase::QScatDepthPlotWidget* scatWindow = window.scatWindow();
        if (!scatWindow) {
            std::fprintf(stderr, "--scat: the sheet has no dip, azimuth and Measured Depth columns\n");
            return 2;
        }
        if (parser.isSet(scenario))
            scatWindow->importScenario(parser.value(scenario));
        if (headless) {
            scatWindow->setAttribute(Qt::WA_DontShowOnScreen, true);
            scatWindow->show();
            const double depth = parser.isSet(pick) ? parser.value(pick).toDouble() : -1.0;
            QTimer::singleShot(200, [scatWindow, &parser, &shot, depth] {
                if (depth >= 0.0)
                    pickNearestTop(scatWindow, depth);
                QTimer::singleShot(100, [scatWindow, &parser, &shot] {
                    const bool ok = scatWindow->grab().save(parser.value(shot), "PNG", 0);
                    QApplication::exit(ok ? 0 : 1);
                });
            });
            return app.exec();
        }
        window.show();
        window.showScatWindow();
        return app.exec();
    }
    if (headless) {
        window.setAttribute(Qt::WA_DontShowOnScreen, true);
        window.show();
        QTimer::singleShot(200, [&window, &parser, &shot] {
            // The highest compression: screenshots go into the repository's gallery.
            const bool ok = window.grab().save(parser.value(shot), "PNG", 0);
            QApplication::exit(ok ? 0 : 1);
        });
        return app.exec();
    }
    window.show();
    return app.exec();
}
