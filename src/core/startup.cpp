#include "startup.h"

#include "core/clock.h"
#include "core/logfiledestination.h"
#include "core/logmanager.h"
#include "core/settings.h"
#include "utilities/helper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>

namespace {
const char* const appVersion = NORVEL_VERSION;

void markFirstLaunch()
{
    Settings* settings = Settings::instance();
    settings->setAppVersion(QString::fromLatin1(appVersion));
    settings->setFirstLaunchDateTime(Clock::currentDateTime());
    settings->setShowAppearanceNewBadge(false);
    settings->setShowMethodNewBadge(false);
    settings->setShowFavoritesNewBadge(false);
    settings->setUseBlueAsLightThemeColor(true);
}

void upgradeOlderInstallation()
{
    Settings* settings = Settings::instance();
    if (!settings->authRequestSent() && !settings->legacyAuthRequestSent())
        settings->setLegacyFirstLaunchDateTime(Clock::currentDateTime());
    if (!settings->hasCloudSyncEnabledOption() && !settings->clientLogin().isEmpty())
        settings->setCloudSyncEnabled(true);
}
} // namespace

QString Startup::dataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString Startup::localDataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

QString Startup::logDirectory()
{
    return localDataDirectory() + QStringLiteral("/logs");
}

void Startup::setFixedEnvironment()
{
    qputenv("QT_OPENGL_BUGLIST", ":/gpu_blacklist.json");
    qputenv("QT_WEBVIEW_PLUGIN", "native");
    qputenv("QSG_RENDER_LOOP", "threaded");
}

QString Startup::dataFilePath(const QString& fileName)
{
    return dataDirectory() + QLatin1Char('/') + fileName;
}

QString Startup::settingsFilePath()
{
    return dataFilePath(QStringLiteral("settings.dat"));
}

void Startup::applyScaleFactor(const QSettings& settings)
{
    const QString scaleFactor = settings.value(QStringLiteral("ui_scale_factor")).toString();
    if (scaleFactor.isEmpty())
        QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    else
        qputenv("QT_SCALE_FACTOR", scaleFactor.toUtf8());
}

bool Startup::shouldLogQtMessages(const QByteArray& environmentValue)
{
    return qstrcmp(environmentValue.constData(), "0") != 0;
}

void Startup::makeDirectories()
{
    QDir directory;
    directory.mkpath(dataDirectory());
    directory.mkpath(localDataDirectory());
    directory.mkpath(logDirectory());
}

std::shared_ptr<LogFileDestination> Startup::startLogging()
{
    LogManager::instance().setLoggingLevel(LogManager::DebugLevel);
    QFile::remove(logDirectory() + QStringLiteral("/nv_log.txt"));
    auto destination =
        std::make_shared<LogFileDestination>(logDirectory() + QStringLiteral("/nv_log.dat"),
                                             LogFileDestination::EnableLogRotation, maxLogSizeBytes, 0);
    LogManager::instance().addDestination(destination);
    QLOG_INFO() << "Application " << appVersion << " started from " << QCoreApplication::applicationDirPath();
    return destination;
}

void Startup::renameLegacySettingsFiles()
{
    const QStringList names = {
        QStringLiteral("settings.ini"),  QStringLiteral("predefined_objects.ini"),
        QStringLiteral("calendar.ini"),  QStringLiteral("repeated_tasks_reminders.ini"),
        QStringLiteral("favorites.ini"), QStringLiteral("rate.ini"),
        QStringLiteral("sync.ini"),      QStringLiteral("reminders.ini"),
        QStringLiteral("sorting.ini")};
    const QString directory = dataDirectory() + QLatin1Char('/');
    for (QString name : names) {
        const QString oldPath = directory + name;
        QFile::rename(oldPath, directory + name.replace(QStringLiteral("ini"), QStringLiteral("dat")));
    }
}

bool Startup::prepareDatabase()
{
    QLOG_INFO() << "Checking if database is already exist...";
    if (Helper::instance()->databaseExists()) {
        upgradeOlderInstallation();
        return false;
    }
    QLOG_INFO() << "Database not found. Unpacking...";
    if (Helper::instance()->unpackDatabase())
        QLOG_INFO() << "Database unpacked successfully.";
    else
        QLOG_ERROR() << "Unable to unpack the database!";
    QLOG_INFO() << "This is the first time launch. Creating default objects in database...";
    markFirstLaunch();
    return true;
}
