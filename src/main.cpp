#include "core/guimanager.h"
#include "core/logger.h"
#include "core/logmanager.h"
#include "core/startup.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFont>
#include <QLocalSocket>
#include <QSettings>

namespace {
bool anotherInstanceAnswered()
{
    QLocalSocket* socket = new QLocalSocket;
    QLOG_INFO() << "Looking for another instance of Norvel...";
    socket->connectToServer(QStringLiteral("norvel"), QIODevice::ReadWrite);
    if (!socket->waitForConnected(300))
        return false;
    QLOG_WARN() << "Another instance of Norvel found. Closing current process..";
    socket->write("show_app_window");
    return true;
}

void logImeState(const QCommandLineParser& parser, const QCommandLineOption& ime)
{
    QLOG_INFO() << "IME is " << (parser.isSet(ime) ? "enabled" : "disabled");
}
} // namespace

int main(int argc, char** argv)
{
    Startup::setFixedEnvironment();

    QCoreApplication::setOrganizationName(QStringLiteral("Kelmora"));
    QCoreApplication::setOrganizationDomain(QStringLiteral(NORVEL_ORGANIZATION_DOMAIN));
    QCoreApplication::setApplicationName(QStringLiteral("Norvel"));

    const QSettings startupSettings(Startup::settingsFilePath(), QSettings::IniFormat);
    Startup::applyScaleFactor(startupSettings);

    if (Startup::shouldLogQtMessages(qgetenv("WRITE_QT_MESSAGES_TO_LOG")))
        qInstallMessageHandler(handleQtMessages);

    QApplication app(argc, argv);
    // Docks match the launcher badge and the window to the installed norvel.desktop by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("norvel"));

    QApplication::setFont(QFont(QStringLiteral("Helvetica Neue"), 13));

    Startup::makeDirectories();
    const auto logDestination = Startup::startLogging();

    if (anotherInstanceAnswered())
        return 0;

    Startup::renameLegacySettingsFiles();
    const bool firstLaunch = Startup::prepareDatabase();

    QLOG_INFO() << "Parsing arguments from command line...";
    QCommandLineParser parser;
    const QCommandLineOption minimized(QStringLiteral("minimized"));
    const QCommandLineOption ime(QStringLiteral("ime"));
    parser.addOption(minimized);
    parser.addOption(ime);
    parser.process(app);
    logImeState(parser, ime);

    QLOG_INFO() << "Initialization of QML engine...";
    GuiManager* guiManager = GuiManager::instance();
    guiManager->initialize();
    guiManager->setContextProperty(QStringLiteral("FIRST_LAUNCH"), firstLaunch);
    guiManager->loadUi();
    // No desktop here activates an application that has no window yet, so the window shows itself.
    guiManager->showMainWindow();

    return app.exec();
}
