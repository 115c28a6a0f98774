#include "storehelpers.h"

#include "store/databasehandler.h"
#include "store/dataobjectconverter.h"
#include "testdatabase.h"
#include "utilities/helper.h"

#include <QFile>
#include <QSettings>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>

QStringList idsOf(const QList<QVariantMap>& records)
{
    QStringList ids;
    for (const QVariantMap& record : records)
        ids.append(record.value(QStringLiteral("ID")).toString());
    return ids;
}

QStringList sortedIdsOf(const QList<QVariantMap>& records)
{
    QStringList ids = idsOf(records);
    ids.sort();
    return ids;
}

QSet<QString> idSetOf(const QList<QVariantMap>& records)
{
    const QStringList ids = idsOf(records);
    return QSet<QString>(ids.cbegin(), ids.cend());
}

QVariantMap changed(QVariantMap record, const QVariantMap& changes)
{
    for (auto change = changes.cbegin(); change != changes.cend(); ++change)
        record.insert(change.key(), change.value());
    return record;
}

QString dataFilePath(const QString& fileName)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1Char('/') + fileName;
}

void writeDataFile(const QString& fileName, const QString& key, const QVariant& value)
{
    QSettings settings(dataFilePath(fileName), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
}

void removeDataFiles()
{
    QFile::remove(dataFilePath(QStringLiteral("settings.dat")));
    QFile::remove(dataFilePath(QStringLiteral("predefined_objects.dat")));
}

bool insertRecords(DatabaseHandler* handler, const QString& table, const QList<QVariantMap>& records)
{
    for (QVariantMap record : records) {
        if (record.contains(QStringLiteral("START")) || record.contains(QStringLiteral("DUE")))
            DataObjectConverter::prepareDates(record);
        if (!handler->insertObject(record, table))
            return false;
    }
    return true;
}

QVariant columnOf(const TestDatabase& database, const QString& table, const QString& id,
                  const QString& column)
{
    return database.value(QStringLiteral("SELECT %1 FROM %2 WHERE id = ?").arg(column, table), {id});
}

QList<int> statesOf(const TestDatabase& database, const QString& table, const QStringList& ids)
{
    QList<int> states;
    for (const QString& id : ids)
        states.append(columnOf(database, table, id, QStringLiteral("state")).toInt());
    return states;
}

QVariant onApplicationDatabase(const QString& statement)
{
    const QString name = QStringLiteral("application_peer");
    if (!QSqlDatabase::contains(name))
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name)
            .setDatabaseName(Helper::instance()->databaseFilePath());
    QSqlQuery query(QSqlDatabase::database(name));
    if (!query.exec(statement))
        return QVariant();
    return query.next() ? query.value(0) : QVariant(true);
}
