#include "helper.h"

#include "core/logmanager.h"
#include "store/databasehandler.h"
#include "store/predefineddatahelper.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>

namespace {
QString dataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

void forgetPredefinedObjects()
{
    QSettings predefinedObjects(dataDirectory() + QStringLiteral("/predefined_objects.dat"),
                                QSettings::IniFormat);
    predefinedObjects.clear();
    predefinedObjects.setValue(QStringLiteral("folders_created"), false);
    predefinedObjects.setValue(QStringLiteral("contexts_created"), false);
    predefinedObjects.sync();
}
} // namespace

struct Helper::Private
{
    QString databaseFilePath;
};

Helper::Helper(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->databaseFilePath = dataDirectory() + QStringLiteral("/norvel_data.db");
    QLOG_INFO() << "Database path updated: " << d->databaseFilePath;
}

Helper::~Helper() = default;

Helper* Helper::instance()
{
    static Helper* helper = new Helper;
    return helper;
}

QString Helper::databaseFilePath() const
{
    return d->databaseFilePath;
}

bool Helper::databaseExists() const
{
    return QFile::exists(d->databaseFilePath);
}

bool Helper::unpackDatabase()
{
    if (!QFile::copy(QStringLiteral(":/norvel_data.db"), d->databaseFilePath))
        return false;
    QFile::setPermissions(d->databaseFilePath, QFileDevice::Permissions(0x6666));
    return true;
}

bool Helper::recreateDatabase()
{
    DatabaseHandler* database = DatabaseHandler::instance();
    QLOG_INFO() << "Recreating the database...";
    database->disconnectDatabase();

    QLOG_INFO() << "Resettings ids of inbox projects...";
    PredefinedDataHelper::instance()->unsetNorvelBoxId();
    PredefinedDataHelper::instance()->unsetOneStepActionsId();
    QLOG_INFO() << "Disconnected from database.";

    if (!QFile::remove(d->databaseFilePath)) {
        QLOG_ERROR() << "Unable to remove database file! Path: " << d->databaseFilePath;
        unpackDatabase();
        QLOG_ERROR() << "Unable to unpack database file!";
        return false;
    }
    if (!unpackDatabase())
        return false;

    QLOG_INFO() << "Connecting to new created database...";
    if (!database->connectDatabase(d->databaseFilePath)) {
        QLOG_ERROR() << "Unable to connect to the database!";
        return database->isConnected();
    }

    forgetPredefinedObjects();
    // The indexes of a normal start are left to the next start.
    database->createCalendarInfoTable();
    return database->isConnected();
}
