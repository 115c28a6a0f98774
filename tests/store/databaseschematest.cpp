#include "store/databasehandler.h"
#include "testlib/logcapture.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QFile>
#include <QSqlQuery>
#include <QtTest>

namespace {
// One column as PRAGMA table_info describes it: "name TYPE notnull default pk".
QString column(const QVariantMap& row)
{
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(row.value("name").toString(), row.value("type").toString().toUpper(),
             row.value("notnull").toString(),
             row.value("dflt_value").isNull() ? QStringLiteral("-") : row.value("dflt_value").toString(),
             row.value("pk").toString());
}

QStringList columns(TestDatabase& database, const QString& table)
{
    QStringList result;
    for (const QVariantMap& row : database.committedRows(QStringLiteral("PRAGMA table_info(%1)").arg(table)))
        result.append(column(row));
    return result;
}

// The indexes of a table as "name:unique:column,column".
QStringList indexes(TestDatabase& database, const QString& table)
{
    QStringList result;
    for (const QVariantMap& index :
         database.committedRows(QStringLiteral("PRAGMA index_list(%1)").arg(table))) {
        const QString name = index.value("name").toString();
        QStringList indexed;
        for (const QVariantMap& info :
             database.committedRows(QStringLiteral("PRAGMA index_info(\"%1\")").arg(name)))
            indexed.append(info.value("name").toString());
        const QString label = name.startsWith("sqlite_autoindex") ? QStringLiteral("constraint") : name;
        result.append(
            QStringLiteral("%1:%2:%3").arg(label, index.value("unique").toString(), indexed.join(',')));
    }
    result.sort();
    return result;
}

bool tableExists(TestDatabase& database, const QString& table)
{
    return database
               .committedValue("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = ?",
                               {table})
               .toInt() == 1;
}
} // namespace

class DatabaseSchemaTest : public QObject
{
    Q_OBJECT

private slots:
    void seedTableHasColumnsOfSchema_data();
    void seedTableHasColumnsOfSchema();
    void seedIndexesAndUniqueConstraints_data();
    void seedIndexesAndUniqueConstraints();
    void seedKeysNeverReuseNumbers_data();
    void seedKeysNeverReuseNumbers();
    void seedIsEmptyWithFileSettings();
    void openAddsCalendarInfoAndKeepsExistingRows();
    void openAddsIndexesForStateAndIds();
    void duplicateProjectIdsLeaveProjectIdIndexOut();
    void openOfUnreachableFileStillTriesSchemaAdditions();
};

void DatabaseSchemaTest::seedTableHasColumnsOfSchema_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("task") << "task" << QStringList{"context TEXT 0 - 0",   "due INTEGER 0 - 0",
                                                   "id TEXT 1 - 0",        "memo TEXT 0 - 0",
                                                   "name TEXT 1 - 0",      "parent TEXT 1 - 0",
                                                   "period TEXT 0 - 0",    "start INTEGER 0 - 0",
                                                   "state INTEGER 1 0 0",  "task_id INTEGER 1 - 1",
                                                   "timestamp TEXT 1 - 0", "synced BOOLEAN 1 0 0",
                                                   "local BOOLEAN 1 1 0"};
    QTest::newRow("project") << "project"
                             << QStringList{
                                    "context TEXT 0 - 0",  "due INTEGER 0 - 0",        "folder BOOLEAN 1 - 0",
                                    "id TEXT 1 - 0",       "memo TEXT 0 - 0",          "name TEXT 1 - 0",
                                    "parent TEXT 0 - 0",   "project_id INTEGER 1 - 1", "start INTEGER 0 - 0",
                                    "state INTEGER 1 0 0", "timestamp INTEGER 1 - 0",  "synced BOOLEAN 1 0 0",
                                    "local BOOLEAN 1 1 0"};
    QTest::newRow("context") << "context" << QStringList{"altitude REAL 0 - 0",  "context_id INTEGER 1 - 1",
                                                         "id TEXT 1 - 0",        "latitude REAL 0 - 0",
                                                         "longitude REAL 0 - 0", "memo TEXT 0 - 0",
                                                         "name TEXT 1 - 0",      "parent TEXT 0 - 0",
                                                         "state INTEGER 1 0 0",  "timestamp INTEGER 1 - 0",
                                                         "synced BOOLEAN 1 0 0", "local BOOLEAN 1 1 0"};
}

void DatabaseSchemaTest::seedTableHasColumnsOfSchema()
{
    QFETCH(QString, table);
    QFETCH(QStringList, expected);
    TestDatabase database(TestDatabase::LeftClosed);
    QVERIFY(database.isReady());

    QCOMPARE(columns(database, table), expected);
}

void DatabaseSchemaTest::seedIndexesAndUniqueConstraints_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("task") << "task" << QStringList{"constraint:1:id", "index_uuid1:0:id"};
    // The constraint of project sits on its row number, not on the object id.
    QTest::newRow("project") << "project"
                             << QStringList{"constraint:1:project_id", "index_uuid2:0:project_id"};
    QTest::newRow("context") << "context" << QStringList{"constraint:1:id", "index_uuid:0:id"};
}

void DatabaseSchemaTest::seedIndexesAndUniqueConstraints()
{
    QFETCH(QString, table);
    QFETCH(QStringList, expected);
    TestDatabase database(TestDatabase::LeftClosed);

    QCOMPARE(indexes(database, table), expected);
}

void DatabaseSchemaTest::seedKeysNeverReuseNumbers_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("insert");

    QTest::newRow("task") << "task"
                          << "task_id"
                          << "INSERT INTO task(id, name, parent, timestamp) VALUES(?, 'n', 'p', '1')";
    QTest::newRow("project") << "project"
                             << "project_id"
                             << "INSERT INTO project(id, name, folder, timestamp) VALUES(?, 'n', 0, 1)";
    QTest::newRow("context") << "context"
                             << "context_id"
                             << "INSERT INTO context(id, name, timestamp) VALUES(?, 'n', 1)";
}

void DatabaseSchemaTest::seedKeysNeverReuseNumbers()
{
    QFETCH(QString, table);
    QFETCH(QString, key);
    QFETCH(QString, insert);
    TestDatabase database(TestDatabase::LeftClosed);
    QSqlQuery query(database.peerConnection());
    QVERIFY(query.prepare(insert));
    query.addBindValue("first");
    QVERIFY(query.exec());
    QVERIFY(query.exec(QStringLiteral("DELETE FROM %1").arg(table)));

    QVERIFY(query.prepare(insert));
    query.addBindValue("second");
    QVERIFY(query.exec());

    // Only AUTOINCREMENT keeps a deleted row's number from coming back.
    QCOMPARE(database.committedValue(QStringLiteral("SELECT %1 FROM %2").arg(key, table)).toInt(), 2);
}

void DatabaseSchemaTest::seedIsEmptyWithFileSettings()
{
    TestDatabase database(TestDatabase::LeftClosed);

    QCOMPARE(database.committedValue("PRAGMA page_size").toInt(), 1024);
    QCOMPARE(database.committedValue("PRAGMA encoding").toString(), QStringLiteral("UTF-8"));
    QCOMPARE(database.committedValue("PRAGMA user_version").toInt(), 0);
    QCOMPARE(database.committedValue("PRAGMA journal_mode").toString(), QStringLiteral("delete"));
    QCOMPARE(database.committedValue("SELECT COUNT(*) FROM task").toInt() +
                 database.committedValue("SELECT COUNT(*) FROM project").toInt() +
                 database.committedValue("SELECT COUNT(*) FROM context").toInt(),
             0);
    QVERIFY(!tableExists(database, "calendar_info"));
    const QList<QVariantMap> sequences =
        database.committedRows("SELECT name, seq FROM sqlite_sequence ORDER BY name");
    QCOMPARE(sequences.size(), 3);
    for (const QVariantMap& sequence : sequences)
        QCOMPARE(sequence.value("seq").toInt(), 0);
}

void DatabaseSchemaTest::openAddsCalendarInfoAndKeepsExistingRows()
{
    TestDatabase database(TestDatabase::LeftClosed);
    QSqlQuery older(database.peerConnection());
    QVERIFY(older.exec("INSERT INTO task(id, name, parent, timestamp) VALUES('t', 'Old task', 'p', '1')"));
    QVERIFY(older.exec("INSERT INTO project(id, name, folder, timestamp) VALUES('p', 'Old project', 0, 1)"));
    QVERIFY(older.exec("INSERT INTO context(id, name, timestamp) VALUES('c', 'Old context', 1)"));
    LogCapture log;

    QVERIFY(database.handler()->openDatabase(database.filePath()));

    QVERIFY(tableExists(database, "calendar_info"));
    QCOMPARE(columns(database, "calendar_info"),
             (QStringList{"id INTEGER 1 - 1", "task_id TEXT 1 - 0", "synced BOOLEAN 1 0 0",
                          "updated BOOLEAN 1 0 0"}));
    QCOMPARE(database.committedValue("SELECT name FROM task").toString(), QStringLiteral("Old task"));
    QCOMPARE(database.committedValue("SELECT name FROM project").toString(), QStringLiteral("Old project"));
    QCOMPARE(database.committedValue("SELECT name FROM context").toString(), QStringLiteral("Old context"));
    QCOMPARE(log.messages(), QStringList{"Connected to the database successfully."});
    QVERIFY(database.handler()->isConnected());
}

void DatabaseSchemaTest::openAddsIndexesForStateAndIds()
{
    TestDatabase database;

    QVERIFY(indexes(database, "task").contains("TaskStateIndex:0:state"));
    QVERIFY(indexes(database, "project").contains("ProjectIdIndex:1:id"));
    QVERIFY(indexes(database, "context").contains("ContextIdIndex:1:id"));
}

void DatabaseSchemaTest::duplicateProjectIdsLeaveProjectIdIndexOut()
{
    TestDatabase database(TestDatabase::LeftClosed);
    QSqlQuery older(database.peerConnection());
    QVERIFY(older.exec("INSERT INTO project(id, name, folder, timestamp) VALUES('twin', 'One', 0, 1)"));
    QVERIFY(older.exec("INSERT INTO project(id, name, folder, timestamp) VALUES('twin', 'Two', 0, 1)"));
    LogCapture log;

    QVERIFY(database.handler()->openDatabase(database.filePath()));

    const QStringList errors = log.messages("ERROR");
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("SQL query error: UNIQUE constraint failed: project.id"),
             qPrintable(errors.first()));
    QVERIFY(!indexes(database, "project").join(' ').contains("ProjectIdIndex"));
    QVERIFY(indexes(database, "context").contains("ContextIdIndex:1:id"));
    QVERIFY(indexes(database, "task").contains("TaskStateIndex:0:state"));
    QVERIFY(tableExists(database, "calendar_info"));
}

void DatabaseSchemaTest::openOfUnreachableFileStillTriesSchemaAdditions()
{
    TestDatabase database(TestDatabase::LeftClosed);
    LogCapture log;

    QVERIFY(!database.handler()->openDatabase(database.directoryPath() + "/missing/norvel_data.db"));

    QVERIFY(!database.handler()->isConnected());
    const QStringList errors = log.messages("ERROR");
    QCOMPARE(errors.size(), 5);
    QCOMPARE(errors.at(0), QStringLiteral("Unable to connect to the database!"));
    QVERIFY2(errors.at(1).startsWith("Unable to create calendar_info table: Reason: "),
             qPrintable(errors.at(1)));
    for (int i = 2; i < errors.size(); ++i)
        QVERIFY2(errors.at(i).startsWith("SQL query error: "), qPrintable(errors.at(i)));
}

NORVEL_TEST_MAIN(DatabaseSchemaTest)
#include "databaseschematest.moc"
