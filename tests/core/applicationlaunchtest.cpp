#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>

// Starts the real application the way a user does and reads what it leaves on disk.
class ApplicationLaunchTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void firstStartUnpacksDatabaseAndLogs();
    void secondStartFindsDatabase();

private:
    // Runs the application until its log holds the given line, then ends it.
    void launchUntilLogged(const QByteArray& line, int occurrences);
    QByteArray log() const;

    QString m_dataDirectory;
};

void ApplicationLaunchTest::initTestCase()
{
    m_dataDirectory = qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/Kelmora/Norvel");
    QVERIFY(!QDir(m_dataDirectory).exists());
}

QByteArray ApplicationLaunchTest::log() const
{
    QFile file(m_dataDirectory + QStringLiteral("/logs/nv_log.dat"));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void ApplicationLaunchTest::launchUntilLogged(const QByteArray& line, int occurrences)
{
    QProcess application;
    application.setProgram(QStringLiteral(NORVEL_APPLICATION_PATH));
    application.setProcessChannelMode(QProcess::ForwardedChannels);
    application.start();
    QVERIFY(application.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(log().count(line) >= occurrences, 20000);
    QCOMPARE(application.state(), QProcess::Running);
    application.terminate();
    QVERIFY(application.waitForFinished());
}

void ApplicationLaunchTest::firstStartUnpacksDatabaseAndLogs()
{
    launchUntilLogged("Connected to the database successfully.", 1);

    const QByteArray firstLog = log();
    QVERIFY(firstLog.contains("Application 1.11 started from "));
    QVERIFY(firstLog.contains("Database not found. Unpacking..."));
    QVERIFY(firstLog.contains("Database unpacked successfully."));
    QVERIFY(QFile::exists(m_dataDirectory + QStringLiteral("/settings.dat")));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("launch"));
    database.setDatabaseName(m_dataDirectory + QStringLiteral("/norvel_data.db"));
    QVERIFY(database.open());
    // The tables the program adds after connecting may not be there yet when it is ended.
    QSqlQuery tables(
        QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name IN ('task', 'project', 'context')"),
        database);
    QVERIFY(tables.next());
    QCOMPARE(tables.value(0).toInt(), 3);
}

void ApplicationLaunchTest::secondStartFindsDatabase()
{
    launchUntilLogged("Connected to the database successfully.", 2);

    const QByteArray bothLogs = log();
    QCOMPARE(bothLogs.count("Application 1.11 started from "), 2);
    QCOMPARE(bothLogs.count("Checking if database is already exist..."), 2);
    QCOMPARE(bothLogs.count("Database not found. Unpacking..."), 1);
}

NORVEL_TEST_MAIN(ApplicationLaunchTest)
#include "applicationlaunchtest.moc"
