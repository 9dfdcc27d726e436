// The whole analyser window on the sample well writing its settings and reading them back, as a
// host does at close and at the next start: the tree splitter and every chart panel, through an
// INI file in a temporary folder. Read includes what the panels redo with the values (the
// surfaces take the forms, the current chart redraws). The tab argument is the current tab: the
// table, or the stereonet, whose form is the largest. bench/anchor_settings.py writes and reads an
// INI file of the same number of keys with Python's configparser.
#include "SampleWellWindow.h"

#include <TabWidgetWithFloatingTabs.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <memory>

using namespace rkBase;

namespace {

struct Window {
    QTemporaryDir dir;
    UnitRegistry registry;
    std::unique_ptr<QDataAnalyserDialog> dialog;

    Window()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path());
        dialog = sampleWellWindow(registry);
        dialog->resize(1100, 800);
        dialog->show();
    }
};

std::unique_ptr<Window> g_window;

Window& window()
{
    if (!g_window)
        g_window = std::make_unique<Window>();
    return *g_window;
}

void showTab(QDataAnalyserDialog& d, int tab)
{
    d.tabWidget()->setCurrentWidget(d.tabWidget()->findPage(tab ? QStringLiteral("STEREOPLOT") : QStringLiteral("TABLE")));
    QCoreApplication::processEvents();
}

void BM_SaveAndReadSettings(benchmark::State& state)
{
    QDataAnalyserDialog& d = *window().dialog;
    showTab(d, int(state.range(0)));
    for (auto _ : state) {
        d.saveSettings();
        d.readSettings(QStringLiteral("attribute_analyser"));
    }
    state.counters["keys"] = QSettings().allKeys().size();
}
BENCHMARK(BM_SaveAndReadSettings)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

void BM_SaveSettings(benchmark::State& state)
{
    QDataAnalyserDialog& d = *window().dialog;
    showTab(d, 0);
    for (auto _ : state)
        d.saveSettings();
}
BENCHMARK(BM_SaveSettings)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QPA_OFFSCREEN_NO_GLX", "1");
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("rkBaseTools-bench"));
    QCoreApplication::setApplicationName(QStringLiteral("settings"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    g_window.reset();
    return 0;
}
