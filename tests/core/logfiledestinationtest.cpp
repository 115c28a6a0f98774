#include "core/logfiledestination.h"
#include "core/logger.h"
#include "core/logmanager.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

class LogFileDestinationTest : public QObject
{
    Q_OBJECT

private slots:
    void rotationAtSizeLimitKeepsOneFile();
    void rotationKeepsRequestedNumberOfOldLogs();
    void lostLogDirectoryDoesNotStopLogging();
    void linesBelowLoggerLevelAreDropped();
    void qtMessagesGoToLogAtTheirLevel_data();
    void qtMessagesGoToLogAtTheirLevel();
    void qmlLoggerMarksItsLines();
};

namespace {
QByteArray readAll(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

// What a log file without rotation receives while the given lines are logged.
QByteArray loggedBy(const std::function<void()>& logLines)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("test.log"));
    auto destination =
        std::make_shared<LogFileDestination>(path, LogFileDestination::DisableLogRotation, 0, 0);
    LogManager::instance().addDestination(destination);
    logLines();
    LogManager::instance().removeDestination(destination);
    return readAll(path);
}
} // namespace

void LogFileDestinationTest::rotationAtSizeLimitKeepsOneFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("nv_log.dat"));
    LogFileDestination destination(path, LogFileDestination::EnableLogRotation, 100, 0);

    destination.write(QString(60, QLatin1Char('a')));
    destination.write(QString(60, QLatin1Char('b')));

    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("nv_log.dat")});
    QCOMPARE(readAll(path), QByteArray(60, 'b') + '\n');
}

void LogFileDestinationTest::rotationKeepsRequestedNumberOfOldLogs()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("nv_log.dat"));
    LogFileDestination destination(path, LogFileDestination::EnableLogRotation, 10, 2);

    for (const char letter : {'a', 'b', 'c', 'd'})
        destination.write(QString(8, QLatin1Char(letter)));

    QCOMPARE(readAll(path), QByteArray("dddddddd\n"));
    QCOMPARE(readAll(path + QStringLiteral(".1")), QByteArray("cccccccc\n"));
    QCOMPARE(readAll(path + QStringLiteral(".2")), QByteArray("bbbbbbbb\n"));
    QVERIFY(!QFile::exists(path + QStringLiteral(".3")));
}

void LogFileDestinationTest::lostLogDirectoryDoesNotStopLogging()
{
    QTemporaryDir dir;
    const QString logDirectory = dir.filePath(QStringLiteral("logs"));
    QVERIFY(QDir().mkpath(logDirectory));
    auto destination = std::make_shared<LogFileDestination>(logDirectory + QStringLiteral("/nv_log.dat"),
                                                            LogFileDestination::EnableLogRotation, 100, 0);
    LogManager::instance().addDestination(destination);
    const QtMessageHandler previousHandler = qInstallMessageHandler(handleQtMessages);
    QVERIFY(QDir(logDirectory).removeRecursively());

    // Rotation cannot reopen the file; Qt's complaint about it must not come back into the lock.
    QLOG_INFO() << QString(120, QLatin1Char('x'));
    QLOG_INFO() << "still logging";

    qInstallMessageHandler(previousHandler);
    LogManager::instance().removeDestination(destination);
    QVERIFY(!destination->isOpen());
}

void LogFileDestinationTest::linesBelowLoggerLevelAreDropped()
{
    LogManager::instance().setLoggingLevel(LogManager::InfoLevel);

    const QByteArray log = loggedBy([] {
        QLOG_DEBUG() << "hidden";
        QLOG_INFO() << "Application "
                    << "1.11"
                    << " started";
    });

    LogManager::instance().setLoggingLevel(LogManager::DebugLevel);
    QVERIFY(!log.contains("hidden"));
    QVERIFY2(log.contains("INFO ") && log.endsWith("Application 1.11 started\n"), log.constData());
}

void LogFileDestinationTest::qtMessagesGoToLogAtTheirLevel_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("levelName");
    QTest::newRow("debug") << int(QtDebugMsg) << QByteArray("DEBUG");
    QTest::newRow("info") << int(QtInfoMsg) << QByteArray("INFO ");
    QTest::newRow("warning") << int(QtWarningMsg) << QByteArray("WARN ");
    QTest::newRow("critical") << int(QtCriticalMsg) << QByteArray("ERROR");
}

void LogFileDestinationTest::qtMessagesGoToLogAtTheirLevel()
{
    QFETCH(int, type);
    QFETCH(QByteArray, levelName);

    const QByteArray log = loggedBy([type] {
        handleQtMessages(static_cast<QtMsgType>(type), QMessageLogContext(), QStringLiteral("from Qt"));
    });

    QVERIFY2(log.startsWith(levelName) && log.endsWith(" from Qt\n"), log.constData());
}

void LogFileDestinationTest::qmlLoggerMarksItsLines()
{
    const QByteArray log = loggedBy([] { Logger().warning(QStringLiteral("page failed")); });
    QVERIFY2(log.startsWith("WARN ") && log.endsWith(" QML side: page failed\n"), log.constData());
}

NORVEL_TEST_MAIN(LogFileDestinationTest)
#include "logfiledestinationtest.moc"
