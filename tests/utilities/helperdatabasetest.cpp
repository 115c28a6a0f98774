#include "store/databasehandler.h"
#include "store/predefineddatahelper.h"
#include "testlib/logcapture.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"
#include "utilities/helper.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QSqlDatabase>
#include <QStandardPaths>
#include <QtTest>

namespace {
QString dataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString predefinedObjectsPath()
{
    return dataDirectory() + QStringLiteral("/predefined_objects.dat");
}

int indexesOfNormalStart(DatabaseHandler* database)
{
    return database->executeCountQuery(
        QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND name IN "
                       "('TaskStateIndex', 'ProjectIdIndex', 'ContextIdIndex')"));
}
} // namespace

class HelperDatabaseTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void databasePathLiesInDataDirectory();
    void unpackedDatabaseIsWritableCopyOfSeed();
    void recreateReplacesFileAndForgetsPredefinedObjects();
    void recreateFailsWhenFileCannotBeRemoved();
};

void HelperDatabaseTest::initTestCase()
{
    QVERIFY(QDir().mkpath(dataDirectory()));
    QVERIFY(dataDirectory().startsWith(QDir::homePath()));
}

void HelperDatabaseTest::init()
{
    DatabaseHandler::instance()->disconnectDatabase();
    QFile::remove(Helper::instance()->databaseFilePath());
    QFile::remove(predefinedObjectsPath());
}

void HelperDatabaseTest::databasePathLiesInDataDirectory()
{
    LogCapture log;

    const Helper helper;

    const QString expected = dataDirectory() + QStringLiteral("/norvel_data.db");
    QCOMPARE(helper.databaseFilePath(), expected);
    QCOMPARE(log.messages(), QStringList{"Database path updated: " + expected});
}

void HelperDatabaseTest::unpackedDatabaseIsWritableCopyOfSeed()
{
    Helper* helper = Helper::instance();
    QVERIFY(!helper->databaseExists());

    QVERIFY(helper->unpackDatabase());

    QVERIFY(helper->databaseExists());
    const QFileDevice::Permissions everyoneReadsAndWrites(0x6666);
    QCOMPARE(QFile::permissions(helper->databaseFilePath()) & everyoneReadsAndWrites, everyoneReadsAndWrites);
    QFile seed(QStringLiteral(":/norvel_data.db"));
    QFile copy(helper->databaseFilePath());
    QVERIFY(seed.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadOnly));
    QCOMPARE(copy.readAll(), seed.readAll());
    // An existing file is never overwritten.
    QVERIFY(!helper->unpackDatabase());
}

void HelperDatabaseTest::recreateReplacesFileAndForgetsPredefinedObjects()
{
    Helper* helper = Helper::instance();
    DatabaseHandler* database = DatabaseHandler::instance();
    QVERIFY(helper->unpackDatabase());
    QVERIFY(database->openDatabase(helper->databaseFilePath()));
    QCOMPARE(indexesOfNormalStart(database), 3);
    QVERIFY(database->insertObject(RecordBuilder::task(), QStringLiteral("task")));
    QVERIFY(database->commitChanges());
    QSettings(predefinedObjectsPath(), QSettings::IniFormat).setValue(QStringLiteral("predefined_ids"), ",a");
    PredefinedDataHelper* predefinedData = PredefinedDataHelper::instance();
    predefinedData->setNorvelBoxId(QStringLiteral("server-inbox"));
    predefinedData->setOneStepActionsId(QStringLiteral("server-one-step"));
    LogCapture log;

    QVERIFY(helper->recreateDatabase());

    QCOMPARE(log.messages("INFO"),
             (QStringList{"Recreating the database...", "Disconnecting from database...",
                          "Resettings ids of inbox projects...", "Disconnected from database.",
                          "Connecting to new created database..."}));
    QVERIFY(log.messages("ERROR").isEmpty());
    QVERIFY(database->property("connected").toBool());
    QVERIFY(QSqlDatabase::contains(QStringLiteral("norvel_app")));
    QCOMPARE(database->executeCountQuery(QStringLiteral("SELECT COUNT(*) FROM task")), 0);
    QCOMPARE(database->executeCountQuery(
                 QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = 'calendar_info'")),
             1);
    QCOMPARE(predefinedData->norvelBoxId(), QString::fromLatin1(RecordBuilder::inboxId));
    QCOMPARE(predefinedData->oneStepActionsId(), QString::fromLatin1(RecordBuilder::oneStepActionsId));
    QSettings predefined(predefinedObjectsPath(), QSettings::IniFormat);
    QCOMPARE(predefined.allKeys(), (QStringList{"contexts_created", "folders_created"}));
    QVERIFY(!predefined.value("folders_created").toBool() && !predefined.value("contexts_created").toBool());
    // The indexes come with the next start; writes work without them.
    QCOMPARE(indexesOfNormalStart(database), 0);
    QVERIFY(database->insertObject(RecordBuilder::task(), QStringLiteral("task")));
    QVERIFY(database->commitChanges());
}

void HelperDatabaseTest::recreateFailsWhenFileCannotBeRemoved()
{
    Helper* helper = Helper::instance();
    QSettings(predefinedObjectsPath(), QSettings::IniFormat)
        .setValue(QStringLiteral("folders_created"), true);
    LogCapture log;

    QVERIFY(!helper->recreateDatabase());

    QVERIFY(!DatabaseHandler::instance()->isConnected());
    QCOMPARE(log.messages("ERROR"),
             (QStringList{"Unable to remove database file! Path: " + helper->databaseFilePath(),
                          "Unable to unpack database file!"}));
    // The seed was still put in place, but nothing else of the reset ran.
    QVERIFY(helper->databaseExists());
    QCOMPARE(QSettings(predefinedObjectsPath(), QSettings::IniFormat).value("folders_created").toBool(),
             true);
}

NORVEL_TEST_MAIN(HelperDatabaseTest)
#include "helperdatabasetest.moc"
