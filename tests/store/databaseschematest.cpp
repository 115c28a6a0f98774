#include "store/databasehandler.h"
#include "testlib/logcapture.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QFile>
#include <QSqlQuery>
#include <QtTest>

namespace {
// The columns of a table, each as "name TYPE notnull default pk".
QStringList columns(TestDatabase& database, const QString& table)
{
    return database
        .committedValue("SELECT group_concat(name || ' ' || upper(type) || ' ' || \"notnull\" || ' ' || "
                        "ifnull(dflt_value, '-') || ' ' || pk, ',') FROM pragma_table_info(?)",
                        {table})
        .toString()
        .split(',', Qt::SkipEmptyParts);
}

// The indexes of a table, each as "name:unique:column", with "constraint" for a table constraint's.
QStringList indexes(TestDatabase& database, const QString& table)
{
    QStringList result =
        database
            .committedValue(
                "SELECT group_concat(CASE list.origin WHEN 'u' THEN 'constraint' ELSE list.name END "
                "|| ':' || list.\"unique\" || ':' || info.name, ',') "
                "FROM pragma_index_list(?) AS list, pragma_index_info(list.name) AS info",
                {table})
            .toString()
            .split(',', Qt::SkipEmptyParts);
    result.sort();
    return result;
}
} // namespace

class DatabaseSchemaTest : public QObject
{
    Q_OBJECT

private slots:
    void seedTableHasColumnsAndIndexesOfSchema_data();
    void seedTableHasColumnsAndIndexesOfSchema();
    void seedIsEmptyWithFileSettings();
    void openBringsOlderFileUpToDate();
    void duplicateProjectIdsLeaveProjectIdIndexOut();
    void openOfUnreachableFileStillTriesSchemaAdditions();
};

void DatabaseSchemaTest::seedTableHasColumnsAndIndexesOfSchema_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("expectedColumns");
    QTest::addColumn<QStringList>("expectedIndexes");

    QTest::newRow("task") << "task" << QStringList{"context TEXT 0 - 0",   "due INTEGER 0 - 0",
                                                   "id TEXT 1 - 0",        "memo TEXT 0 - 0",
                                                   "name TEXT 1 - 0",      "parent TEXT 1 - 0",
                                                   "period TEXT 0 - 0",    "start INTEGER 0 - 0",
                                                   "state INTEGER 1 0 0",  "task_id INTEGER 1 - 1",
                                                   "timestamp TEXT 1 - 0", "synced BOOLEAN 1 0 0",
                                                   "local BOOLEAN 1 1 0"}
                          << QStringList{"constraint:1:id", "index_uuid1:0:id"};
    // The constraint of project sits on its row number, not on the object id.
    QTest::newRow("project") << "project"
                             << QStringList{"context TEXT 0 - 0",      "due INTEGER 0 - 0",
                                            "folder BOOLEAN 1 - 0",    "id TEXT 1 - 0",
                                            "memo TEXT 0 - 0",         "name TEXT 1 - 0",
                                            "parent TEXT 0 - 0",       "project_id INTEGER 1 - 1",
                                            "start INTEGER 0 - 0",     "state INTEGER 1 0 0",
                                            "timestamp INTEGER 1 - 0", "synced BOOLEAN 1 0 0",
                                            "local BOOLEAN 1 1 0"}
                             << QStringList{"constraint:1:project_id", "index_uuid2:0:project_id"};
    QTest::newRow("context") << "context" << QStringList{"altitude REAL 0 - 0",  "context_id INTEGER 1 - 1",
                                                         "id TEXT 1 - 0",        "latitude REAL 0 - 0",
                                                         "longitude REAL 0 - 0", "memo TEXT 0 - 0",
                                                         "name TEXT 1 - 0",      "parent TEXT 0 - 0",
                                                         "state INTEGER 1 0 0",  "timestamp INTEGER 1 - 0",
                                                         "synced BOOLEAN 1 0 0", "local BOOLEAN 1 1 0"}
                             << QStringList{"constraint:1:id", "index_uuid:0:id"};
}

void DatabaseSchemaTest::seedTableHasColumnsAndIndexesOfSchema()
{
    QFETCH(QString, table);
    QFETCH(QStringList, expectedColumns);
    QFETCH(QStringList, expectedIndexes);
    TestDatabase database(TestDatabase::LeftClosed);
    QVERIFY(database.isReady());

    QCOMPARE(columns(database, table), expectedColumns);
    QCOMPARE(indexes(database, table), expectedIndexes);
    // Only AUTOINCREMENT keeps the number of a row from coming back to a later one.
    QVERIFY(database.committedValue("SELECT sql FROM sqlite_master WHERE name = ?", {table})
                .toString()
                .contains("AUTOINCREMENT"));
}

void DatabaseSchemaTest::seedIsEmptyWithFileSettings()
{
    TestDatabase database(TestDatabase::LeftClosed);

    QVariantList found;
    for (const char* query :
         {"PRAGMA page_size", "PRAGMA encoding", "PRAGMA user_version", "PRAGMA journal_mode",
          "SELECT (SELECT COUNT(*) FROM task) + (SELECT COUNT(*) FROM project) + "
          "(SELECT COUNT(*) FROM context)",
          "SELECT group_concat(name || seq) FROM sqlite_sequence"})
        found << database.committedValue(query);
    QCOMPARE(found, (QVariantList{1024, "UTF-8", 0, "delete", 0, "task0,project0,context0"}));
    QVERIFY(columns(database, "calendar_info").isEmpty());
}

void DatabaseSchemaTest::openBringsOlderFileUpToDate()
{
    TestDatabase database(TestDatabase::LeftClosed);
    QSqlQuery older(database.peerConnection());
    QVERIFY(older.exec("INSERT INTO task(id, name, parent, timestamp) VALUES('t', 'Old task', 'p', '1')"));
    QVERIFY(older.exec("INSERT INTO project(id, name, folder, timestamp) VALUES('p', 'Old project', 0, 1)"));
    QVERIFY(older.exec("INSERT INTO context(id, name, timestamp) VALUES('c', 'Old context', 1)"));
    LogCapture log;

    QVERIFY(database.handler()->openDatabase(database.filePath()));

    QCOMPARE(columns(database, "calendar_info"),
             (QStringList{"id INTEGER 1 - 1", "task_id TEXT 1 - 0", "synced BOOLEAN 1 0 0",
                          "updated BOOLEAN 1 0 0"}));
    QCOMPARE(database.committedValue("SELECT group_concat(name) FROM (SELECT name FROM task UNION ALL "
                                     "SELECT name FROM project UNION ALL SELECT name FROM context)"),
             QVariant("Old task,Old project,Old context"));
    QVERIFY(indexes(database, "task").contains("TaskStateIndex:0:state"));
    QVERIFY(indexes(database, "project").contains("ProjectIdIndex:1:id"));
    QVERIFY(indexes(database, "context").contains("ContextIdIndex:1:id"));
    QCOMPARE(database.committedValue("PRAGMA page_size"), QVariant(4096));
    const QStringList messages = log.messages();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.at(0), QStringLiteral("Connected to the database successfully."));
    QVERIFY2(messages.at(1).startsWith("Database rewritten with pages of 4096 bytes instead of 1024 in "),
             qPrintable(messages.at(1)));
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
