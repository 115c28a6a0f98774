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
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QtTest>

class HelperDatabaseTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void databasePathLiesInDataDirectory();
    void unpackedDatabaseIsWritableCopyOfSeed();
    void unpackKeepsExistingFile();
    void recreateReplacesFileAndForgetsPredefinedObjects();
    void recreatedFileGetsItsIndexesAtNextOpen();
    void recreateFailsWhenFileCannotBeRemoved();

private:
    static QString dataDirectory();
    static QString predefinedObjectsPath();
    // Reads through a short-lived connection of its own.
    static QVariant valueInFile(const QString& filePath, const QString& statement);
    static QStringList indexNames(const QString& filePath);
};

QString HelperDatabaseTest::dataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString HelperDatabaseTest::predefinedObjectsPath()
{
    return dataDirectory() + QStringLiteral("/predefined_objects.dat");
}

QVariant HelperDatabaseTest::valueInFile(const QString& filePath, const QString& statement)
{
    const QString connectionName = QStringLiteral("helper_test_reader");
    QVariant value;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        database.setDatabaseName(filePath);
        if (database.open()) {
            QSqlQuery query(database);
            if (query.exec(statement) && query.next())
                value = query.value(0);
        }
    }
    QSqlDatabase::removeDatabase(connectionName);
    return value;
}

QStringList HelperDatabaseTest::indexNames(const QString& filePath)
{
    return valueInFile(filePath,
                       QStringLiteral("SELECT group_concat(name, ' ') FROM sqlite_master WHERE type = "
                                      "'index' AND name NOT LIKE 'sqlite_%'"))
        .toString()
        .split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

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
    QVERIFY(DatabaseHandler::instance()->connectDatabase(helper->databaseFilePath()));
    QVERIFY(DatabaseHandler::instance()->insertObject(RecordBuilder::context(), QStringLiteral("context")));
    QVERIFY(DatabaseHandler::instance()->commitChanges());
}

void HelperDatabaseTest::unpackKeepsExistingFile()
{
    Helper* helper = Helper::instance();
    QFile existing(helper->databaseFilePath());
    QVERIFY(existing.open(QIODevice::WriteOnly));
    existing.write("not a seed");
    existing.close();

    QVERIFY(!helper->unpackDatabase());

    QVERIFY(existing.open(QIODevice::ReadOnly));
    QCOMPARE(existing.readAll(), QByteArray("not a seed"));
}

void HelperDatabaseTest::recreateReplacesFileAndForgetsPredefinedObjects()
{
    Helper* helper = Helper::instance();
    DatabaseHandler* database = DatabaseHandler::instance();
    QVERIFY(helper->unpackDatabase());
    QVERIFY(database->openDatabase(helper->databaseFilePath()));
    QVERIFY(database->insertObject(RecordBuilder::task(), QStringLiteral("task")));
    QVERIFY(database->commitChanges());
    {
        QSettings predefined(predefinedObjectsPath(), QSettings::IniFormat);
        predefined.setValue(QStringLiteral("folders_created"), true);
        predefined.setValue(QStringLiteral("contexts_created"), true);
        predefined.setValue(QStringLiteral("predefined_ids"), QStringLiteral(",a,b"));
        predefined.setValue(QStringLiteral("1"), QStringLiteral("a"));
    }
    PredefinedDataHelper* predefinedData = PredefinedDataHelper::instance();
    predefinedData->setNorvelBoxId(QStringLiteral("server-inbox"));
    predefinedData->setOneStepActionsId(QStringLiteral("server-one-step"));
    QSignalSpy inboxSpy(predefinedData, &PredefinedDataHelper::norvelBoxIdChanged);
    LogCapture log;

    QVERIFY(helper->recreateDatabase());

    QVERIFY(database->isConnected());
    QCOMPARE(database->executeCountQuery(QStringLiteral("SELECT COUNT(*) FROM task")), 0);
    QCOMPARE(database->executeCountQuery(
                 QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = 'calendar_info'")),
             1);
    QCOMPARE(predefinedData->norvelBoxId(), QString::fromLatin1(RecordBuilder::inboxId));
    QCOMPARE(predefinedData->oneStepActionsId(), QString::fromLatin1(RecordBuilder::oneStepActionsId));
    QCOMPARE(inboxSpy.size(), 1);
    QSettings predefined(predefinedObjectsPath(), QSettings::IniFormat);
    QCOMPARE(predefined.allKeys(), (QStringList{"contexts_created", "folders_created"}));
    QCOMPARE(predefined.value(QStringLiteral("folders_created")).toBool(), false);
    QCOMPARE(predefined.value(QStringLiteral("contexts_created")).toBool(), false);
    QCOMPARE(log.messages("INFO"),
             (QStringList{"Recreating the database...", "Disconnecting from database...",
                          "Resettings ids of inbox projects...", "Disconnected from database.",
                          "Connecting to new created database..."}));
    QVERIFY(log.messages("ERROR").isEmpty());
}

void HelperDatabaseTest::recreatedFileGetsItsIndexesAtNextOpen()
{
    Helper* helper = Helper::instance();
    DatabaseHandler* database = DatabaseHandler::instance();
    QVERIFY(helper->unpackDatabase());
    QVERIFY(database->openDatabase(helper->databaseFilePath()));
    QVERIFY(indexNames(helper->databaseFilePath()).contains("TaskStateIndex"));

    QVERIFY(helper->recreateDatabase());

    const QStringList indexesAfterReset = indexNames(helper->databaseFilePath());
    QVERIFY(!indexesAfterReset.contains("TaskStateIndex"));
    QVERIFY(!indexesAfterReset.contains("ProjectIdIndex"));
    QVERIFY(!indexesAfterReset.contains("ContextIdIndex"));
    QVERIFY(database->insertObject(RecordBuilder::task(), QStringLiteral("task")));
    QVERIFY(database->commitChanges());

    QVERIFY(database->openDatabase(helper->databaseFilePath()));
    const QStringList indexesAfterOpen = indexNames(helper->databaseFilePath());
    QVERIFY(indexesAfterOpen.contains("TaskStateIndex"));
    QVERIFY(indexesAfterOpen.contains("ProjectIdIndex"));
    QVERIFY(indexesAfterOpen.contains("ContextIdIndex"));
    QCOMPARE(database->executeCountQuery(QStringLiteral("SELECT COUNT(*) FROM task")), 1);
}

void HelperDatabaseTest::recreateFailsWhenFileCannotBeRemoved()
{
    Helper* helper = Helper::instance();
    {
        QSettings predefined(predefinedObjectsPath(), QSettings::IniFormat);
        predefined.setValue(QStringLiteral("folders_created"), true);
    }
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
