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

QString selectById(const QString& table)
{
    return QStringLiteral("SELECT * FROM %1 WHERE id = ?").arg(table);
}
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
    void insertSetsSyncFlagsAndTimestamp_data();
    void insertSetsSyncFlagsAndTimestamp();
    void insertCompletesStateAndId();
    void updateSetsSyncFlagsAndTimestamp_data();
    void updateSetsSyncFlagsAndTimestamp();
    void localInsertWaitsForCommit();
    void rollbackDiscardsLocalInsertAndForgetsItsId();
    void laterLocalWritesJoinTheOpenTransaction();
    void failedCommitRollsBackAndForgetsCreatedId();
    void keyWithoutColumnFailsTheWrite_data();
    void keyWithoutColumnFailsTheWrite();
    void insertWithExistingIdFailsOnUniqueConstraint_data();
    void insertWithExistingIdFailsOnUniqueConstraint();
    void runnersReportFailuresWithEmptyResults();
    void runnersBindMissingTextAsEmptyText();
    void selectObjectWithoutMatchIsEmpty();
    void programConnectionServesAttachedFile();
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
    const QString contextId = QStringLiteral("0c7c1b8e-52f4-4a3c-9d0e-0f1e2d3c4b5a");
    QTest::newRow("task NAME") << "task"
                               << "NAME" << QVariant("Call Anna") << QVariant("Call Anna");
    QTest::newRow("task NAME with a quote") << "task"
                                            << "NAME" << QVariant("Bob's list") << QVariant("Bob's list");
    QTest::newRow("task MEMO naming a placeholder")
        << "task"
        << "MEMO" << QVariant(":PARENT and :NAME") << QVariant(":PARENT and :NAME");
    QTest::newRow("task PARENT") << "task"
                                 << "PARENT" << QVariant(RecordBuilder::oneStepActionsId)
                                 << QVariant(RecordBuilder::oneStepActionsId);
    QTest::newRow("task CONTEXT") << "task"
                                  << "CONTEXT" << QVariant(contextId) << QVariant(contextId);
    QTest::newRow("task CONTEXT none") << "task"
                                       << "CONTEXT" << QVariant(QString()) << QVariant("");
    QTest::newRow("task PERIOD") << "task"
                                 << "PERIOD" << QVariant("every week") << QVariant("every week");
    QTest::newRow("task START") << "task"
                                << "START" << QVariant(dueAt) << QVariant(dueAt);
    QTest::newRow("task DUE") << "task"
                              << "DUE" << QVariant(dueAt) << QVariant(dueAt);
    QTest::newRow("task DUE undated is empty text") << "task"
                                                    << "DUE" << QVariant() << QVariant("");
    QTest::newRow("task START at unix time 0 reads raw 0")
        << "task"
        << "START" << QVariant(QDateTime::fromSecsSinceEpoch(0, Qt::UTC)) << QVariant(qlonglong(0));
    QTest::newRow("task STATE") << "task"
                                << "STATE" << QVariant(COMPLETED_OBJECT_STATE)
                                << QVariant(qlonglong(COMPLETED_OBJECT_STATE));
    QTest::newRow("task TIMESTAMP is text")
        << "task"
        << "TIMESTAMP" << QVariant(serverTimestamp) << QVariant(QString::number(serverTimestamp));
    QTest::newRow("task SYNCED") << "task"
                                 << "SYNCED" << QVariant() << QVariant(qlonglong(1));
    QTest::newRow("task LOCAL") << "task"
                                << "LOCAL" << QVariant() << QVariant(qlonglong(0));
    QTest::newRow("task ID with a quote") << "task"
                                          << "ID" << QVariant("it's-1") << QVariant("it's-1");
    QTest::newRow("project FOLDER true") << "project"
                                         << "FOLDER" << QVariant(true) << QVariant(qlonglong(1));
    QTest::newRow("project FOLDER false") << "project"
                                          << "FOLDER" << QVariant(false) << QVariant(qlonglong(0));
    QTest::newRow("project START as a number is no date") << "project"
                                                          << "START" << QVariant(1700000000) << QVariant("");
    QTest::newRow("project DUE") << "project"
                                 << "DUE" << QVariant(dueAt) << QVariant(dueAt);
    QTest::newRow("project TIMESTAMP is a number")
        << "project"
        << "TIMESTAMP" << QVariant(serverTimestamp) << QVariant(qlonglong(serverTimestamp));
    QTest::newRow("project TIMESTAMP given as text")
        << "project"
        << "TIMESTAMP" << QVariant(QString::number(serverTimestamp)) << QVariant(qlonglong(serverTimestamp));
    QTest::newRow("context MEMO with a quote") << "context"
                                               << "MEMO" << QVariant("Mum's") << QVariant("Mum's");
    QTest::newRow("context PARENT at root") << "context"
                                            << "PARENT" << QVariant("") << QVariant("");
    QTest::newRow("context STATE") << "context"
                                   << "STATE" << QVariant(DELETED_OBJECT_STATE)
                                   << QVariant(qlonglong(DELETED_OBJECT_STATE));
}

void DatabaseHandlerTest::storedValueReadsBackWithItsType()
{
    QFETCH(QString, table);
    QFETCH(QString, key);
    QFETCH(QVariant, written);
    QFETCH(QVariant, expected);
    TestDatabase database;
    QVERIFY(database.isReady());
    RecordBuilder builder = table == "task"      ? RecordBuilder::task()
                            : table == "project" ? RecordBuilder::project()
                                                 : RecordBuilder::context();
    DataObject object =
        builder.withId(QStringLiteral("object-1")).fromServer().withTimestamp(serverTimestamp);
    if (written.isValid() || key == "START" || key == "DUE")
        object.insert(key, written);
    if (table != "context")
        DataObjectConverter::prepareDates(object);

    QVERIFY(database.handler()->insertObject(object, table));

    const QString id = key == "ID" ? written.toString() : QStringLiteral("object-1");
    const DataObject read = database.handler()->selectObject(selectById(table), {id});
    QCOMPARE(read.value(key).userType(), expected.userType());
    QCOMPARE(read.value(key), expected);
    // The empty text and NULL compare equal as QVariants; the store never writes NULL.
    QCOMPARE(read.value(key).isNull(), false);
}

void DatabaseHandlerTest::readObjectWrittenBackIsUnchanged()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    DOTask task = RecordBuilder::task(QStringLiteral("Pay rent"))
                      .withId(QStringLiteral("rent"))
                      .withMemo(QStringLiteral("Landlord's account, :DUE"))
                      .startingAt(wallClock(QDate(2024, 3, 1)))
                      .withTimestamp(serverTimestamp)
                      .fromServer();
    DataObjectConverter::prepareDates(task);
    QVERIFY(handler->insertObject(task, QStringLiteral("task")));
    const QString select =
        QStringLiteral("SELECT id, name, parent, memo, start, due, context, timestamp, state, "
                       "synced, local, period FROM task WHERE id = ?");
    const DOTask original = handler->selectObject(select, {QStringLiteral("rent")});

    DOTask change = original;
    DataObjectConverter::prepareDates(change);
    change.insert(QStringLiteral("SYNC"), true);
    uint timestamp = 0;
    QVERIFY(handler->updateObject(change, QStringLiteral("task"), timestamp));

    QCOMPARE(timestamp, serverTimestamp);
    QCOMPARE(handler->selectObject(select, {QStringLiteral("rent")}), original);
    QCOMPARE(original.value(QStringLiteral("START")).toDateTime(), wallClock(QDate(2024, 3, 1)));
    QCOMPARE(original.value(QStringLiteral("DUE")), QVariant(QStringLiteral("")));
    QCOMPARE(original.value(QStringLiteral("MEMO")).toString(), QStringLiteral("Landlord's account, :DUE"));
}

void DatabaseHandlerTest::insertSetsSyncFlagsAndTimestamp_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QVariantMap>("object");
    QTest::addColumn<int>("synced");
    QTest::addColumn<int>("local");
    QTest::addColumn<uint>("timestamp");
    QTest::addColumn<bool>("fromServer");

    const auto task = []() -> RecordBuilder { return RecordBuilder::task().withId(QStringLiteral("x")); };
    const auto context = []() -> RecordBuilder {
        return RecordBuilder::context().withId(QStringLiteral("x"));
    };
    QTest::newRow("local task") << "task" << task().build() << 0 << 1 << pinnedTimestamp << false;
    QTest::newRow("local context") << "context" << context().build() << 0 << 1 << pinnedTimestamp << false;
    QTest::newRow("local object claiming to be synced")
        << "context" << context().with("SYNCED", true).with("LOCAL", false).build() << 0 << 1
        << pinnedTimestamp << false;
    QTest::newRow("local object with its own timestamp")
        << "context" << context().withTimestamp(serverTimestamp).build() << 0 << 1 << serverTimestamp
        << false;
    QTest::newRow("server task") << "task" << task().fromServer().withTimestamp(serverTimestamp).build() << 1
                                 << 0 << serverTimestamp << true;
    QTest::newRow("server object claiming to be unsynced")
        << "context" << context().fromServer().with("SYNCED", false).with("LOCAL", true).build() << 1 << 0
        << pinnedTimestamp << true;
}

void DatabaseHandlerTest::insertSetsSyncFlagsAndTimestamp()
{
    QFETCH(QString, table);
    QFETCH(QVariantMap, object);
    QFETCH(int, synced);
    QFETCH(int, local);
    QFETCH(uint, timestamp);
    QFETCH(bool, fromServer);
    TestDatabase database;

    QVERIFY(database.handler()->insertObject(object, table));

    const QString select =
        QStringLiteral("SELECT synced, local, timestamp FROM %1 WHERE id = 'x'").arg(table);
    const QVariantMap row = database.rows(select).value(0);
    QCOMPARE(row.value("synced").toInt(), synced);
    QCOMPARE(row.value("local").toInt(), local);
    QCOMPARE(row.value("timestamp").toUInt(), timestamp);
    // Only a local insert opens a transaction; a server object is in the file at once here, since no
    // sync batch is open around it.
    QCOMPARE(database.committedRows(select).size(), fromServer ? 1 : 0);
    QCOMPARE(database.handler()->lastCreatedObjectId(), fromServer ? QString() : QStringLiteral("x"));
}

void DatabaseHandlerTest::insertCompletesStateAndId()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    LogCapture log;

    QVERIFY(
        handler->insertObject(RecordBuilder::context(QStringLiteral("Errands")), QStringLiteral("context")));
    QVERIFY(handler->insertObject(RecordBuilder::context(QStringLiteral("Old"))
                                      .withState(DELETED_OBJECT_STATE)
                                      .withId(QStringLiteral("old"))
                                      .fromServer(),
                                  QStringLiteral("context")));

    const QString newId = handler->lastCreatedObjectId();
    QCOMPARE(newId.size(), 36);
    QCOMPARE(database.value("SELECT name FROM context WHERE id = ?", {newId}).toString(),
             QStringLiteral("Errands"));
    QCOMPARE(database.value("SELECT state FROM context WHERE id = ?", {newId}).toInt(), DEFAULT_OBJECT_STATE);
    QCOMPARE(database.value("SELECT state FROM context WHERE id = 'old'").toInt(), DELETED_OBJECT_STATE);
    QCOMPARE(log.messages("INFO"),
             (QStringList{"Creating an object in database...", "Begin transaction: true",
                          "Creating an object in database...(Sync object)"}));
}

void DatabaseHandlerTest::updateSetsSyncFlagsAndTimestamp_data()
{
    QTest::addColumn<bool>("storedLocally");
    QTest::addColumn<QVariantMap>("update");
    QTest::addColumn<int>("synced");
    QTest::addColumn<int>("local");
    QTest::addColumn<uint>("timestamp");

    const uint laterServerTimestamp = serverTimestamp + 500;
    const auto change = []() -> RecordBuilder {
        return RecordBuilder::context(QStringLiteral("Renamed")).withId(QStringLiteral("x"));
    };
    QTest::newRow("local change of a synced object")
        << false << change().build() << 0 << 0 << pinnedTimestamp;
    QTest::newRow("local change of a never sent object")
        << true << change().build() << 0 << 1 << pinnedTimestamp;
    QTest::newRow("local change ignores the map's timestamp")
        << false << change().withTimestamp(laterServerTimestamp).build() << 0 << 0 << pinnedTimestamp;
    QTest::newRow("server change keeps its timestamp")
        << true << change().fromServer().withTimestamp(laterServerTimestamp).build() << 1 << 1
        << laterServerTimestamp;
}

void DatabaseHandlerTest::updateSetsSyncFlagsAndTimestamp()
{
    QFETCH(bool, storedLocally);
    QFETCH(QVariantMap, update);
    QFETCH(int, synced);
    QFETCH(int, local);
    QFETCH(uint, timestamp);
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    RecordBuilder stored =
        RecordBuilder::context().withId(QStringLiteral("x")).withTimestamp(serverTimestamp);
    QVERIFY(handler->insertObject(storedLocally ? stored : stored.fromServer(), QStringLiteral("context")));
    QVERIFY(!storedLocally || handler->commitChanges());

    uint writtenTimestamp = 0;
    QVERIFY(handler->updateObject(update, QStringLiteral("context"), writtenTimestamp));

    QCOMPARE(writtenTimestamp, timestamp);
    // An update opens no transaction: another connection sees it at once.
    const QVariantMap row =
        database.committedRows("SELECT name, synced, local, timestamp FROM context WHERE id = 'x'").value(0);
    QCOMPARE(row.value("name").toString(), QStringLiteral("Renamed"));
    QCOMPARE(row.value("synced").toInt(), synced);
    QCOMPARE(row.value("local").toInt(), local);
    QCOMPARE(row.value("timestamp").toUInt(), timestamp);
}

void DatabaseHandlerTest::localInsertWaitsForCommit()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    LogCapture log;

    QVERIFY(handler->insertObject(RecordBuilder::task(QStringLiteral("Draft")), QStringLiteral("task")));
    const QString id = handler->lastCreatedObjectId();
    QCOMPARE(database.committedValue("SELECT COUNT(*) FROM task").toInt(), 0);

    QVERIFY(handler->commitChanges());

    QCOMPARE(database.committedValue("SELECT name FROM task WHERE id = ?", {id}).toString(),
             QStringLiteral("Draft"));
    QCOMPARE(handler->lastCreatedObjectId(), id);
    QVERIFY(log.contains("Changes successfully saved into DB."));
}

void DatabaseHandlerTest::rollbackDiscardsLocalInsertAndForgetsItsId()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    LogCapture log;
    QVERIFY(handler->insertObject(RecordBuilder::project(QStringLiteral("Move")), QStringLiteral("project")));

    QVERIFY(handler->rollbackChanges());

    QCOMPARE(handler->lastCreatedObjectId(), QString());
    QCOMPARE(database.value("SELECT COUNT(*) FROM project").toInt(), 0);
    QCOMPARE(log.messages("WARN"), QStringList{"Rollback successfully completed."});
}

void DatabaseHandlerTest::laterLocalWritesJoinTheOpenTransaction()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    LogCapture log;
    QVERIFY(
        handler->insertObject(RecordBuilder::context(QStringLiteral("First")), QStringLiteral("context")));

    QVERIFY(
        handler->insertObject(RecordBuilder::context(QStringLiteral("Second")), QStringLiteral("context")));
    QVERIFY(handler->rollbackChanges());

    QVERIFY(log.contains("Begin transaction: true"));
    QVERIFY(log.contains("Begin transaction: false"));
    QCOMPARE(database.value("SELECT COUNT(*) FROM context").toInt(), 0);
}

void DatabaseHandlerTest::failedCommitRollsBackAndForgetsCreatedId()
{
    TestDatabase database(TestDatabase::OpenedAsAtStart, QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
    DatabaseHandler* handler = database.handler();
    QVERIFY(handler->insertObject(RecordBuilder::task(QStringLiteral("Locked out")), QStringLiteral("task")));
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
    QCOMPARE(log.messages("ERROR"),
             QStringList{"Unable to save changes into DB. Error description: database is locked"});
    QVERIFY(log.contains("Rollback successfully completed."));
    QCOMPARE(database.value("SELECT COUNT(*) FROM task").toInt(), 0);
    QCOMPARE(database.committedValue("SELECT COUNT(*) FROM task").toInt(), 0);
}

void DatabaseHandlerTest::keyWithoutColumnFailsTheWrite_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("fromServer");
    QTest::addColumn<bool>("update");

    for (const char* key : {"FAVORITE", "SREMINDERS", "EREMINDERS"}) {
        QTest::addRow("%s in a local insert", key) << key << false << false;
        QTest::addRow("%s in a server insert", key) << key << true << false;
        QTest::addRow("%s in an update", key) << key << false << true;
    }
}

void DatabaseHandlerTest::keyWithoutColumnFailsTheWrite()
{
    QFETCH(QString, key);
    QFETCH(bool, fromServer);
    QFETCH(bool, update);
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    QVERIFY(handler->insertObject(RecordBuilder::task().withId("t").fromServer(), QStringLiteral("task")));
    RecordBuilder task = RecordBuilder::task(QStringLiteral("Changed")).withId("t").with(key, true);
    if (fromServer)
        task.fromServer();
    LogCapture log;

    uint timestamp = 0;
    const bool written = update ? handler->updateObject(task, QStringLiteral("task"), timestamp)
                                : handler->insertObject(task.withId("u"), QStringLiteral("task"));

    QVERIFY(!written);
    const QStringList errors = log.messages("ERROR");
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("SQL query error: ") && errors.first().contains(key),
             qPrintable(errors.first()));
    QCOMPARE(handler->lastCreatedObjectId(), QString());
    QCOMPARE(database.value("SELECT name FROM task").toString(), QStringLiteral("Task"));
}

void DatabaseHandlerTest::insertWithExistingIdFailsOnUniqueConstraint_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QVariantMap>("object");

    QTest::newRow("task") << "task" << RecordBuilder::task().withId("same").build();
    QTest::newRow("project, through ProjectIdIndex")
        << "project" << RecordBuilder::project().withId("same").build();
    QTest::newRow("context") << "context" << RecordBuilder::context().withId("same").build();
}

void DatabaseHandlerTest::insertWithExistingIdFailsOnUniqueConstraint()
{
    QFETCH(QString, table);
    QFETCH(QVariantMap, object);
    TestDatabase database;
    QVERIFY(database.handler()->insertObject(object, table));
    LogCapture log;

    QVERIFY(!database.handler()->insertObject(object, table));

    const QStringList errors = log.messages("ERROR");
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("SQL query error: UNIQUE constraint failed: " + table + ".id"),
             qPrintable(errors.first()));
    QCOMPARE(database.value("SELECT COUNT(*) FROM " + table).toInt(), 1);
}

void DatabaseHandlerTest::runnersReportFailuresWithEmptyResults()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    const QString broken = QStringLiteral("SELECT name FROM nowhere");
    LogCapture log;

    QVERIFY(!handler->executeQuery(broken));
    QVERIFY(handler->executeListQuery(broken).isEmpty());
    QVERIFY(handler->executeRecordQuery(broken).isEmpty());
    QCOMPARE(handler->executeCountQuery(broken), 0);
    QVERIFY(handler->selectObjects(broken).isEmpty());

    const QStringList errors = log.messages("ERROR");
    QCOMPARE(errors.size(), 5);
    QVERIFY2(errors.at(0).startsWith("SQL query error: no such table: nowhere"), qPrintable(errors.at(0)));
    for (int i = 1; i < errors.size(); ++i)
        QVERIFY2(errors.at(i).startsWith("SQL List query error: no such table: nowhere"),
                 qPrintable(errors.at(i)));
}

void DatabaseHandlerTest::runnersBindMissingTextAsEmptyText()
{
    TestDatabase database;
    DatabaseHandler* handler = database.handler();
    QVERIFY(handler->insertObject(RecordBuilder::context(QStringLiteral("Root")).fromServer(), "context"));

    QVERIFY(handler->executeQuery("UPDATE context SET memo = ?, state = ? WHERE parent = ?",
                                  {QString(), true, QString()}));

    QCOMPARE(handler->executeCountQuery("SELECT COUNT(*) FROM context WHERE memo = '' AND state = 1"), 1);
    QCOMPARE(handler->executeCountQuery("SELECT COUNT(*) FROM context WHERE memo IS NULL"), 0);
}

void DatabaseHandlerTest::selectObjectWithoutMatchIsEmpty()
{
    TestDatabase database;

    QVERIFY(database.handler()->selectObject(selectById("task"), {"missing"}).isEmpty());
    QVERIFY(database.handler()->executeRecordQuery(selectById("task"), {"missing"}).isEmpty());
    QCOMPARE(database.handler()->executeCountQuery("SELECT state FROM task"), 0);
}

void DatabaseHandlerTest::programConnectionServesAttachedFile()
{
    DatabaseHandler* program = DatabaseHandler::instance();
    {
        TestDatabase database(TestDatabase::LeftClosed);
        QVERIFY(database.attachSingleton());
        QVERIFY(QSqlDatabase::contains(QStringLiteral("norvel_app")));
        QVERIFY(program->property("connected").toBool());

        QVERIFY(program->insertObject(RecordBuilder::context(QStringLiteral("Shared")),
                                      QStringLiteral("context")));
        QVERIFY(program->commitChanges());

        QCOMPARE(database.committedValue("SELECT name FROM context").toString(), QStringLiteral("Shared"));
        QCOMPARE(database.committedValue("SELECT COUNT(*) FROM sqlite_master WHERE name = 'calendar_info'")
                     .toInt(),
                 1);
    }
    QVERIFY(!program->isConnected());
}

NORVEL_TEST_MAIN(DatabaseHandlerTest)
#include "databasehandlertest.moc"
