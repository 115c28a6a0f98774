#include "daylistprobe.h"

#include "utilities/helper.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

int main(int argc, char** argv)
{
    // Models read settings and the services open the application's database: keep both away from
    // the real home directory.
    QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", (home.path() + QStringLiteral("/.local/share")).toUtf8());
    qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/.config")).toUtf8());
    QStandardPaths::setTestModeEnabled(true);
    // The store's helper object reads the clipboard, so the program needs a GUI application, not a screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsSet(DayListProbe::databaseVariable)) {
        QGuiApplication app(argc, argv);
        Helper::instance();
        return DayListProbe::runInThisProcess();
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QGuiApplication app(argc, argv);
    // Made on this thread before the database thread asks for it, as at start-up.
    Helper::instance();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
