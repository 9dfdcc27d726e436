// The demo host: the analyser on the bundled sample well, or on --data FILE.csv. With
// --screenshot FILE.png it renders the window off-screen, saves it and exits, so a machine
// without a display can show what a user would see.
#include "HostMainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("rkBaseTools"));
    QApplication::setApplicationName(QStringLiteral("demo-host"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("rkBaseTools demo host"));
    parser.addHelpOption();
    QCommandLineOption data(QStringLiteral("data"), QStringLiteral("CSV file to load."), QStringLiteral("FILE.csv"));
    QCommandLineOption shot(QStringLiteral("screenshot"), QStringLiteral("Render the window to FILE.png and exit."),
                            QStringLiteral("FILE.png"));
    parser.addOption(data);
    parser.addOption(shot);
    parser.process(app);

    HostMainWindow window;
    const QString file = parser.isSet(data) ? parser.value(data) : QStringLiteral(RK_SAMPLE_DATA);
    const bool headless = parser.isSet(shot);
    if (!window.openCsv(file, headless) && headless)
        return 1;
    if (headless) {
        window.setAttribute(Qt::WA_DontShowOnScreen, true);
        window.show();
        QTimer::singleShot(200, [&window, &parser, &shot] {
            const bool ok = window.grab().save(parser.value(shot));
            QApplication::exit(ok ? 0 : 1);
        });
        return app.exec();
    }
    window.show();
    return app.exec();
}
