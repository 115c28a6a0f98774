#include "store/databasehandler.h"
#include "core/clock.h"
#include "store/dataobjectconverter.h"
#include "testlib/logcapture.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSqlQuery>
#include <QtTest>

namespace {
const QDateTime pinnedNow = QDateTime(QDate(2024, 3, 5), QTime(9, 30), Qt::UTC);
const uint pinnedTimestamp = uint(pinnedNow.toSecsSinceEpoch());
const uint serverTimestamp = 1600000000;
const QString taskTable = QStringLiteral("task");
const QString projectTable = QStringLiteral("project");
const QString contextTable = QStringLiteral("context");

// SYNCED, LOCAL and TIMESTAMP of the context "x" in the rows given.
QList<uint> syncStateOfX(const QList<QVariantMap>& rows)
{
    const QVariantMap row = rows.value(0);
    return {row.value("synced").toUInt(), row.value("local").toUInt(), row.value("timestamp").toUInt()};
}
const QString selectX = QStringLiteral("SELECT name, synced, local, timestamp FROM context WHERE id = 'x'");
} // namespace

class DatabaseHandlerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void storedValueReadsBackWithItsType_data();
    void storedValueReadsBackWithItsType();
    void readObjectWrittenBackIsUnchanged();
    void readingAgainSharesOnlyUnchangedObjects();
    void changedTextIsReadAgain_data();
    void changedTextIsReadAgain();
    void taskRowsAreReadAgainOnlyAfterAWrite_data();
    void taskRowsAreReadAgainOnlyAfterAWrite();
    void insertSetsSyncFlagsAndTimestamp_data();
    void insertSetsSyncFlagsAndTimestamp();
    void localInsertGetsNewIdAndActiveState();
    void updateSetsSyncFlagsAndTimestampAtOnce_data();
    void updateSetsSyncFlagsAndTimestampAtOnce();
    void localWritesShareOneTransactionUntilRollbackOrCommit();
    void failedCommitRollsBackAndForgetsCreatedId();
    void keyWithoutColumnFailsTheWrite_data();
    void keyWithoutColumnFailsTheWrite();
    void runnersGiveEmptyResultsOnFailureOrWithoutRow();
};

void DatabaseHandlerTest::init()
{
    Clock::pin(pinnedNow);
}

void DatabaseHandlerTest::cleanup()
{
    Clock::unpin();
}

void DatabaseHandlerTest::storedValueReadsBackWithItsType_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("written");
    QTest::addColumn<QVariant>("expected");

    const QDateTime dueAt = wallClock(QDate(2024, 3, 5), QTime(18, 0));
    const QVariant emptyText(QStringLiteral(""));
    QTest::newRow("NAME with a quote") << taskTable << "NAME" << QVariant("Bob's") << QVariant("Bob's");
    QTest::newRow("MEMO naming a placeholder")
        << taskTable << "MEMO" << QVariant(":PARENT and :NAME") << QVariant(":PARENT and :NAME");
    QTest::newRow("DUE") << projectTable << "DUE" << QVariant(dueAt) << QVariant(dueAt);
    QTest::newRow("no DUE is empty text") << taskTable << "DUE" << QVariant() << emptyText;
    QTest::newRow("START at unix time 0 reads raw 0")
        << taskTable << "START" << QVariant(QDateTime::fromSecsSinceEpoch(0, Qt::UTC)) << QVariant(0LL);
    QTest::newRow("START as a number is no date")
        << projectTable << "START" << QVariant(1700000000) << emptyText;
    QTest::newRow("FOLDER true is 1") << projectTable << "FOLDER" << QVariant(true) << QVariant(1LL);
    QTest::newRow("task TIMESTAMP is text") << taskTable << "TIMESTAMP" << QVariant(serverTimestamp)
                                            << QVariant(QString::number(serverTimestamp));
    QTest::newRow("project TIMESTAMP is a number")
        << projectTable << "TIMESTAMP" << QVariant(serverTimestamp) << QVariant(qlonglong(serverTimestamp));
}

void DatabaseHandlerTest::storedValueReadsBackWithItsType()
{
    QFETCH(QString, table);
    QFETCH(QString, key);
    QFETCH(QVariant, written);
    QFETCH(QVariant, expected);
    TestDatabase database;
    RecordBuilder builder = table == taskTable ? RecordBuilder::task() : RecordBuilder::project();
    DataObject object =
        builder.withId("object-1").fromServer().withTimestamp(serverTimestamp).with(key, written);
    DataObjectConverter::prepareDates(object);

    QVERIFY(database.handler()->insertObject(object, table));

    const QVariant read = database.handler()->selectObject("SELECT * FROM " + table).value(key);
    QCOMPARE(read.userType(), expected.userType());
    QCOMPARE(read, expected);
    // The empty text and NULL compare equal as QVariants; the store never writes NULL.
    QVERIFY(!read.isNull());
    if (read.userType() == QMetaType::QDateTime)
        QCOMPARE(read.toDateTime().timeSpec(), Qt::UTC);
}

void DatabaseHandlerTest::readObjectWrittenBackIsUnchanged()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    DOTask task = RecordBuilder::task(QStringLiteral("Pay rent"))
                      .withMemo(QStringLiteral("Landlord's account, :DUE"))
                      .startingAt(wallClock(QDate(2024, 3, 1)))
                      .fromServer()
                      .withTimestamp(serverTimestamp);
    DataObjectConverter::prepareDates(task);
    QVERIFY(handler->insertObject(task, taskTable));
    const QString select = QStringLiteral("SELECT id, name, parent, memo, start, due, context, timestamp, "
                                          "state, synced, local, period FROM task");
    const DOTask original = handler->selectObject(select);
    QCOMPARE(original.value(QStringLiteral("MEMO")).toString(), QStringLiteral("Landlord's account, :DUE"));

    DOTask change = original;
    change.insert(QStringLiteral("SYNC"), true);
    DataObjectConverter::prepareDates(change);
    uint timestamp = 0;
    QVERIFY(handler->updateObject(change, taskTable, timestamp));

    QCOMPARE(handler->selectObject(select), original);
}

void DatabaseHandlerTest::readingAgainSharesOnlyUnchangedObjects()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    for (const char* id : {"kept", "renamed", "memo-nulled"}) {
        DOTask task =
            RecordBuilder::task(id).withId(id).withMemo("").fromServer().withTimestamp(serverTimestamp);
        DataObjectConverter::prepareDates(task);
        QVERIFY(handler->insertObject(task, taskTable));
    }
    const QString select = QStringLiteral("SELECT id, name, memo, due FROM task ORDER BY id");
    const QList<DataObject> first = handler->selectObjects(select);

    QVERIFY(handler->executeQuery("UPDATE task SET name = 'Renamed' WHERE id = 'renamed'"));
    QVERIFY(handler->executeQuery("UPDATE task SET memo = NULL WHERE id = 'memo-nulled'"));
    const QList<DataObject> second = handler->selectObjects(select);

    QCOMPARE(second.size(), 3);
    QVERIFY(second.at(0).isSharedWith(first.at(0)));
    QCOMPARE(second.at(2).value("NAME").toString(), QStringLiteral("Renamed"));
    // A NULL and the empty text compare equal as variants, yet they are different values.
    QVERIFY(second.at(1).value("MEMO").isNull());
    QVERIFY(!first.at(1).value("MEMO").isNull());
}

void DatabaseHandlerTest::changedTextIsReadAgain_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("written");
    QTest::newRow("longer") << QString("Task") << QString("Tasks");
    QTest::newRow("shorter") << QString("Tasks") << QString("Task");
    QTest::newRow("accent added") << QString("Cafe") << QString::fromUtf8("Café");
    QTest::newRow("accent removed") << QString::fromUtf8("Café") << QString("Cafe");
    QTest::newRow("other accent") << QString::fromUtf8("Café") << QString::fromUtf8("Cafè");
    QTest::newRow("same accented") << QString::fromUtf8("Café") << QString::fromUtf8("Café");
}

void DatabaseHandlerTest::changedTextIsReadAgain()
{
    QFETCH(QString, stored);
    QFETCH(QString, written);
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    DOTask task = RecordBuilder::task(stored).withId("t").fromServer().withTimestamp(serverTimestamp);
    DataObjectConverter::prepareDates(task);
    QVERIFY(handler->insertObject(task, taskTable));
    const QString select = QStringLiteral("SELECT id, name FROM task");
    const QList<DataObject> first = handler->selectObjects(select);

    QVERIFY(handler->executeQuery("UPDATE task SET name = ? WHERE id = 't'", {written}));
    const QList<DataObject> second = handler->selectObjects(select);

    QCOMPARE(second.value(0).value("NAME").toString(), written);
    QCOMPARE(second.value(0).isSharedWith(first.value(0)), stored == written);
}

void DatabaseHandlerTest::taskRowsAreReadAgainOnlyAfterAWrite_data()
{
    QTest::addColumn<QString>("write");
    QTest::addColumn<bool>("rollBack");
    QTest::addColumn<bool>("byOtherConnection");
    QTest::addColumn<QStringList>("namesRead");
    const QString renameB = QStringLiteral("UPDATE task SET name = 'B2' WHERE id = 'b'");
    QTest::newRow("nothing written") << QString() << false << false << QStringList{"A", "B", "C"};
    QTest::newRow("row renamed") << renameB << false << false << QStringList{"A", "B2", "C"};
    QTest::newRow("rename rolled back") << renameB << true << false << QStringList{"A", "B", "C"};
    QTest::newRow("renamed elsewhere") << renameB << false << true << QStringList{"A", "B2", "C"};
    QTest::newRow("row deleted") << QString("DELETE FROM task WHERE id = 'b'") << false << false
                                 << QStringList{"A", "C"};
    QTest::newRow("all deleted, one added")
        << QString(
               "DELETE FROM task; INSERT INTO task(id, name, parent, timestamp) VALUES('d', 'D', 'p', '1')")
        << false << false << QStringList{"D"};
}

// Reads go through the cache of task rows, which only a write to a row may bring up to date.
void DatabaseHandlerTest::taskRowsAreReadAgainOnlyAfterAWrite()
{
    QFETCH(QString, write);
    QFETCH(bool, rollBack);
    QFETCH(bool, byOtherConnection);
    QFETCH(QStringList, namesRead);
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    for (const char* name : {"A", "B", "C"}) {
        DOTask task = RecordBuilder::task(name).withId(QString(name).toLower()).fromServer();
        DataObjectConverter::prepareDates(task);
        QVERIFY(handler->insertObject(task, taskTable));
    }
    const QString columns = QStringLiteral("id, name, parent");
    const QString condition = QStringLiteral("WHERE parent <> '' ORDER BY id");
    const QList<DataObject> first = handler->selectTaskRows(columns, condition);
    // Read once more inside the transaction, so that the rolled-back row is in the cache.
    QVERIFY(handler->beginTransaction());
    for (const QString& statement : write.split(QLatin1String("; "), Qt::SkipEmptyParts)) {
        if (byOtherConnection) {
            QSqlDatabase other =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            other.setDatabaseName(database.filePath());
            QVERIFY(handler->commitChanges() && other.open() && QSqlQuery(other).exec(statement));
        } else {
            QVERIFY(handler->executeQuery(statement));
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    handler->selectTaskRows(columns, condition);
    QVERIFY(rollBack ? handler->rollbackChanges() : handler->commitChanges() || byOtherConnection);
    const QList<DataObject> second = handler->selectTaskRows(columns, condition);

    // A rollback or a write elsewhere does not say which rows it changed.
    const bool rowsKept = !rollBack && !byOtherConnection;
    QStringList names;
    for (const DataObject& task : second) {
        names.append(task.value("NAME").toString());
        const auto before = std::find_if(first.begin(), first.end(), [&task](const DataObject& earlier) {
            return earlier.value("ID") == task.value("ID");
        });
        const bool unchanged = before != first.end() && *before == task;
        QCOMPARE(task.isSharedWith(before != first.end() ? *before : DataObject()), unchanged && rowsKept);
    }
    QCOMPARE(names, namesRead);
}

void DatabaseHandlerTest::insertSetsSyncFlagsAndTimestamp_data()
{
    QTest::addColumn<QVariantMap>("object");
    QTest::addColumn<QList<uint>>("syncState");
    QTest::addColumn<bool>("fromServer");

    const auto x = [] { return RecordBuilder::context().withId(QStringLiteral("x")); };
    using State = QList<uint>;
    QTest::newRow("local, claiming to be synced")
        << x().with("SYNCED", true).with("LOCAL", false).build() << State{0, 1, pinnedTimestamp} << false;
    QTest::newRow("local, with a timestamp of its own")
        << x().withTimestamp(serverTimestamp).build() << State{0, 1, serverTimestamp} << false;
    QTest::newRow("from server") << x().fromServer().withTimestamp(serverTimestamp).build()
                                 << State{1, 0, serverTimestamp} << true;
    QTest::newRow("from server, claiming to be unsynced")
        << x().fromServer().with("SYNCED", false).with("LOCAL", true).build() << State{1, 0, pinnedTimestamp}
        << true;
}

void DatabaseHandlerTest::insertSetsSyncFlagsAndTimestamp()
{
    QFETCH(QVariantMap, object);
    QFETCH(bool, fromServer);
    TestDatabase database;

    QVERIFY(database.handler()->insertObject(object, contextTable));

    QTEST(syncStateOfX(database.rows(selectX)), "syncState");
    // Only a local insert opens a transaction; a server object joins the one sync holds, none here.
    QCOMPARE(database.committedRows(selectX).size(), fromServer ? 1 : 0);
    QCOMPARE(database.handler()->lastCreatedObjectId(), fromServer ? QString() : QStringLiteral("x"));
}

void DatabaseHandlerTest::localInsertGetsNewIdAndActiveState()
{
    TestDatabase database;
    LogCapture log;

    QVERIFY(database.handler()->insertObject(RecordBuilder::context(), contextTable));
    QVERIFY(database.handler()->insertObject(
        RecordBuilder::context().withId("old").withState(DELETED_OBJECT_STATE).fromServer(), contextTable));

    const QString newId = database.handler()->lastCreatedObjectId();
    QCOMPARE(newId.size(), 36);
    QCOMPARE(database.rows("SELECT id, state FROM context ORDER BY context_id"),
             (QList<QVariantMap>{{{"id", newId}, {"state", DEFAULT_OBJECT_STATE}},
                                 {{"id", "old"}, {"state", DELETED_OBJECT_STATE}}}));
    QCOMPARE(log.messages("INFO"),
             (QStringList{"Creating an object in database...", "Begin transaction: true",
                          "Creating an object in database...(Sync object)"}));
}

void DatabaseHandlerTest::updateSetsSyncFlagsAndTimestampAtOnce_data()
{
    QTest::addColumn<bool>("storedLocally");
    QTest::addColumn<QVariantMap>("update");
    QTest::addColumn<QList<uint>>("syncState");

    const uint later = serverTimestamp + 500;
    const auto x = [] {
        return RecordBuilder::context(QStringLiteral("Renamed")).withId(QStringLiteral("x"));
    };
    using State = QList<uint>;
    QTest::newRow("local change of a never sent object")
        << true << x().build() << State{0, 1, pinnedTimestamp};
    QTest::newRow("local change of a synced object ignores the map's timestamp")
        << false << x().withTimestamp(later).build() << State{0, 0, pinnedTimestamp};
    QTest::newRow("server change keeps its timestamp")
        << true << x().fromServer().withTimestamp(later).build() << State{1, 1, later};
}

void DatabaseHandlerTest::updateSetsSyncFlagsAndTimestampAtOnce()
{
    QFETCH(bool, storedLocally);
    QFETCH(QVariantMap, update);
    QFETCH(QList<uint>, syncState);
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    RecordBuilder stored =
        RecordBuilder::context().withId(QStringLiteral("x")).withTimestamp(serverTimestamp);
    QVERIFY(handler->insertObject(storedLocally ? stored : stored.fromServer(), contextTable));
    QVERIFY(!storedLocally || handler->commitChanges());

    uint writtenTimestamp = 0;
    QVERIFY(handler->updateObject(update, contextTable, writtenTimestamp));

    QCOMPARE(writtenTimestamp, syncState.last());
    // An update opens no transaction: another connection sees it at once.
    const QList<QVariantMap> rows = database.committedRows(selectX);
    QCOMPARE(rows.value(0).value("name").toString(), QStringLiteral("Renamed"));
    QCOMPARE(syncStateOfX(rows), syncState);
}

void DatabaseHandlerTest::localWritesShareOneTransactionUntilRollbackOrCommit()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    LogCapture log;
    QVERIFY(handler->insertObject(RecordBuilder::context(QStringLiteral("First")), contextTable));
    QVERIFY(handler->insertObject(RecordBuilder::context(QStringLiteral("Second")), contextTable));

    QVERIFY(handler->rollbackChanges());

    QCOMPARE(handler->lastCreatedObjectId(), QString());
    QCOMPARE(database.value("SELECT COUNT(*) FROM context").toInt(), 0);
    QVERIFY(handler->insertObject(RecordBuilder::context(QStringLiteral("Kept")), contextTable));
    const QString id = handler->lastCreatedObjectId();
    QVERIFY(handler->commitChanges());
    QCOMPARE(handler->lastCreatedObjectId(), id);
    QCOMPARE(database.committedValue("SELECT name FROM context WHERE id = ?", {id}).toString(), "Kept");
    const QString creating = QStringLiteral("Creating an object in database...");
    QCOMPARE(log.messages(),
             (QStringList{creating, "Begin transaction: true", creating, "Begin transaction: false",
                          "Rollback successfully completed.", creating, "Begin transaction: true",
                          "Changes successfully saved into DB."}));
}

void DatabaseHandlerTest::failedCommitRollsBackAndForgetsCreatedId()
{
    TestDatabase database(TestDatabase::OpenedAsAtStart, QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
    DatabaseHandler* handler = database.handler();
    QVERIFY(handler->insertObject(RecordBuilder::task(QStringLiteral("Locked out")), taskTable));
    QVERIFY(!handler->lastCreatedObjectId().isEmpty());
    LogCapture log;

    bool committed = true;
    {
        // A reader in the middle of its rows keeps a shared lock that the commit cannot get past.
        QSqlQuery reader(database.peerConnection());
        QVERIFY(reader.exec(QStringLiteral("SELECT name FROM sqlite_master")));
        QVERIFY(reader.next());
        committed = handler->commitChanges();
    }

    QVERIFY(!committed);
    QCOMPARE(handler->lastCreatedObjectId(), QString());
    QCOMPARE(log.messages(),
             (QStringList{"Unable to save changes into DB. Error description: database is locked",
                          "Rollback successfully completed."}));
    QCOMPARE(database.value("SELECT COUNT(*) FROM task").toInt(), 0);
}

void DatabaseHandlerTest::keyWithoutColumnFailsTheWrite_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("fromServer");
    QTest::addColumn<bool>("update");

    QTest::newRow("FAVORITE in a local insert") << "FAVORITE" << false << false;
    QTest::newRow("SREMINDERS in a server insert") << "SREMINDERS" << true << false;
    QTest::newRow("EREMINDERS in an update") << "EREMINDERS" << false << true;
}

void DatabaseHandlerTest::keyWithoutColumnFailsTheWrite()
{
    QFETCH(QString, key);
    QFETCH(bool, fromServer);
    QFETCH(bool, update);
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    QVERIFY(handler->insertObject(RecordBuilder::task().withId("t").fromServer(), taskTable));
    RecordBuilder task =
        RecordBuilder::task(QStringLiteral("Changed")).withId(update ? "t" : "u").with(key, true);
    if (fromServer)
        task.fromServer();
    LogCapture log;

    uint timestamp = 0;
    QVERIFY(update ? !handler->updateObject(task, taskTable, timestamp)
                   : !handler->insertObject(task, taskTable));

    const QStringList errors = log.messages("ERROR");
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("SQL query error: "), qPrintable(errors.first()));
    QCOMPARE(handler->lastCreatedObjectId(), QString());
    QCOMPARE(database.rows("SELECT name FROM task"), (QList<QVariantMap>{{{"name", "Task"}}}));
}

void DatabaseHandlerTest::runnersGiveEmptyResultsOnFailureOrWithoutRow()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    const QString broken = QStringLiteral("SELECT name FROM nowhere");
    const QString noRow = QStringLiteral("SELECT state FROM task");
    LogCapture log;

    QVERIFY(!handler->executeQuery(broken));
    QVERIFY(handler->executeListQuery(broken).isEmpty());
    QVERIFY(handler->executeRecordQuery(broken).isEmpty());
    QCOMPARE(handler->executeCountQuery(broken), 0);
    QVERIFY(handler->selectObjects(broken).isEmpty());
    QVERIFY(handler->executeRecordQuery(noRow).isEmpty());
    QVERIFY(handler->selectObject(noRow).isEmpty());
    QCOMPARE(handler->executeCountQuery(noRow), 0);

    const QString noTable = QStringLiteral("no such table: nowhere Unable to execute statement");
    QCOMPARE(log.messages("ERROR"), QStringList{"SQL query error: " + noTable} +
                                        QVector<QString>(4, "SQL List query error: " + noTable).toList());
}

NORVEL_TEST_MAIN(DatabaseHandlerTest)
#include "databasehandlertest.moc"
