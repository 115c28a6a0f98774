#include "testenvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QLocale>
#include <QStandardPaths>

#include <ctime>

TestEnvironment::TestEnvironment()
    : m_home(QDir::tempPath() + QStringLiteral("/norvel-test-home-XXXXXX"))
{
    const QString home = m_home.path();
    qputenv("HOME", home.toUtf8());
    qputenv("XDG_DATA_HOME", (home + QStringLiteral("/.local/share")).toUtf8());
    qputenv("XDG_CONFIG_HOME", (home + QStringLiteral("/.config")).toUtf8());
    qputenv("XDG_CACHE_HOME", (home + QStringLiteral("/.cache")).toUtf8());
    // The program's own session-bus users (reminders, the badge) must never reach the desktop of whoever
    // runs the tests; tests that need a bus start a private one.
    qputenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + home + QStringLiteral("/no-session-bus")).toUtf8());
    qputenv("TZ", timeZone);
    tzset();
    qputenv("LC_ALL", "en_US.UTF-8");
    qputenv("LANG", "en_US.UTF-8");
    qputenv("QT_HASH_SEED", "0");
    qSetGlobalQHashSeed(0);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
}

TestEnvironment::~TestEnvironment() = default;

void TestEnvironment::applyToApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Kelmora"));
    QCoreApplication::setOrganizationDomain(QStringLiteral(NORVEL_ORGANIZATION_DOMAIN));
    QCoreApplication::setApplicationName(QStringLiteral("Norvel"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

QString TestEnvironment::homePath() const
{
    return m_home.path();
}
