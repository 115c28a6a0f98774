#include "core/startup.h"
#include "core/clock.h"
#include "core/settings.h"
#include "testlib/testenvironment.h"
#include "utilities/helper.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QtTest>

class StartupTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void qtMessagesGoToLogUnlessSwitchedOff_data();
    void qtMessagesGoToLogUnlessSwitchedOff();
    void legacySettingsFilesAreRenamedUnlessDatExists();
    void existingDatabaseIsNotFirstLaunch();
    void missingDatabaseIsUnpackedOnFirstLaunch();

private:
    static void writeFile(const QString& path, const QByteArray& content);
    static QByteArray readFile(const QString& path);
};

void StartupTest::init()
{
    QDir().mkpath(Startup::dataDirectory());
}

void StartupTest::writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray StartupTest::readFile(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void StartupTest::qtMessagesGoToLogUnlessSwitchedOff_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("logged");
    QTest::newRow("unset") << QByteArray() << true;
    QTest::newRow("zero") << QByteArray("0") << false;
    QTest::newRow("empty") << QByteArray("") << true;
    QTest::newRow("double zero") << QByteArray("00") << true;
    QTest::newRow("one") << QByteArray("1") << true;
}

void StartupTest::qtMessagesGoToLogUnlessSwitchedOff()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, logged);
    QCOMPARE(Startup::shouldLogQtMessages(value), logged);
}

void StartupTest::legacySettingsFilesAreRenamedUnlessDatExists()
{
    const QStringList names = {QStringLiteral("settings"),  QStringLiteral("predefined_objects"),
                               QStringLiteral("calendar"),  QStringLiteral("repeated_tasks_reminders"),
                               QStringLiteral("favorites"), QStringLiteral("rate"),
                               QStringLiteral("sync"),      QStringLiteral("reminders"),
                               QStringLiteral("sorting")};
    const QString directory = Startup::dataDirectory() + QLatin1Char('/');
    for (const QString& name : names)
        writeFile(directory + name + QStringLiteral(".ini"), "old " + name.toUtf8());
    writeFile(directory + QStringLiteral("settings.dat"), "current");

    Startup::renameLegacySettingsFiles();

    QCOMPARE(readFile(directory + QStringLiteral("settings.dat")), QByteArray("current"));
    QVERIFY(QFile::exists(directory + QStringLiteral("settings.ini")));
    for (const QString& name : names.mid(1)) {
        QVERIFY2(!QFile::exists(directory + name + QStringLiteral(".ini")), qPrintable(name));
        QCOMPARE(readFile(directory + name + QStringLiteral(".dat")), "old " + name.toUtf8());
    }
    for (const QString& name : names)
        QFile::remove(directory + name + QStringLiteral(".dat"));
    QFile::remove(directory + QStringLiteral("settings.ini"));
}

void StartupTest::existingDatabaseIsNotFirstLaunch()
{
    Settings* settings = Settings::instance();
    settings->setClientLogin(QStringLiteral("user@example.com"));
    QVERIFY(Helper::instance()->unpackDatabase());
    const QDateTime now(QDate(2026, 3, 5), QTime(9, 30));
    Clock::pin(now);

    QVERIFY(!Startup::prepareDatabase());

    Clock::unpin();
    QVERIFY(settings->firstLaunchDateTime().isNull());
    QCOMPARE(settings->legacyFirstLaunchDateTime(), now);
    QVERIFY(settings->cloudSyncEnabled());
    QVERIFY(!settings->useBlueAsLightThemeColor());
}

void StartupTest::missingDatabaseIsUnpackedOnFirstLaunch()
{
    QFile::remove(Helper::instance()->databaseFilePath());
    const QDateTime now(QDate(2026, 3, 6), QTime(8, 0));
    Clock::pin(now);

    QVERIFY(Startup::prepareDatabase());

    Clock::unpin();
    const QString path = Helper::instance()->databaseFilePath();
    QVERIFY(QFile::exists(path));
    QVERIFY(QFileInfo(path).isWritable());
    Settings* settings = Settings::instance();
    QCOMPARE(settings->firstLaunchDateTime(), now);
    QCOMPARE(settings->appVersion(), QStringLiteral("1.11"));
    QVERIFY(settings->useBlueAsLightThemeColor());
    QVERIFY(!settings->showAppearanceNewBadge());
    QVERIFY(!settings->showMethodNewBadge());
    QVERIFY(!settings->showFavoritesNewBadge());
}

NORVEL_TEST_MAIN(StartupTest)
#include "startuptest.moc"
