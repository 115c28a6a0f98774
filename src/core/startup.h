#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class LogFileDestination;
class QSettings;

// The steps of start-up that come before the interface: environment, logging, the move of old
// settings files and the database file. main() runs them in order; each is testable on its own.
class Startup
{
public:
    static constexpr qint64 maxLogSizeBytes = 20971520;

    static QString dataDirectory();
    // A file of the program's own in the data directory.
    static QString dataFilePath(const QString& fileName);
    static QString localDataDirectory();
    static QString logDirectory();

    // Variables that only take effect when set before the application object exists.
    static void setFixedEnvironment();
    // settings.dat as start-up reads it before Settings may exist.
    static QString settingsFilePath();
    // Applies the stored scale factor, or high-DPI scaling when none is stored.
    static void applyScaleFactor(const QSettings& settings);
    static bool shouldLogQtMessages(const QByteArray& environmentValue);
    static void makeDirectories();
    // Returns the file destination, which must stay alive as long as the log is written.
    static std::shared_ptr<LogFileDestination> startLogging();
    // Renames the .ini files of older versions to .dat; an existing .dat wins.
    static void renameLegacySettingsFiles();
    // Unpacks the database on a first launch, or upgrades the settings of an older installation.
    // Returns whether this is the first launch.
    static bool prepareDatabase();
};
