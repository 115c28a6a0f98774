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
    // The application's helpers follow the clipboard, which needs a GUI application, not a screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QGuiApplication app(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
