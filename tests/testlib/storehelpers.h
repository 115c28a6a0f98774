#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

class DatabaseHandler;
class TestDatabase;

// The ID of each record, in the order given, or sorted.
QStringList idsOf(const QList<QVariantMap>& records);
QStringList sortedIdsOf(const QList<QVariantMap>& records);
QSet<QString> idSetOf(const QList<QVariantMap>& records);

// The record with the given keys set to new values.
QVariantMap changed(QVariantMap record, const QVariantMap& changes);

// A data file of the application ("settings.dat", "predefined_objects.dat"), in its data directory.
QString dataFilePath(const QString& fileName);
void writeDataFile(const QString& fileName, const QString& key, const QVariant& value);
// Removes "settings.dat" and "predefined_objects.dat", so that the next test starts without them.
void removeDataFiles();

// Inserts the records into the table as they are (SYNC set makes them rows known to the server),
// with their dates stored as the stores store them. False when any insert fails.
bool insertRecords(DatabaseHandler* handler, const QString& table, const QList<QVariantMap>& records);
// One column of the row with the given id, as the fixture's connection sees it.
QVariant columnOf(const TestDatabase& database, const QString& table, const QString& id,
                  const QString& column);
// The state column of each row, in the order of the ids.
QList<int> statesOf(const TestDatabase& database, const QString& table, const QStringList& ids);

// Runs the statement on the application's database file (what DataManager works on) through a
// connection of its own, which sees and makes committed data only. Gives the first value of the
// first row, true for a statement without rows, or an invalid value when it fails.
QVariant onApplicationDatabase(const QString& statement);
