#include "core/settings.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QMetaProperty>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {
const QString settingsFile = QStringLiteral("settings.dat");
const QString credentialsFile = QStringLiteral("config.dat");

struct Credentials
{
    QString login;
    QString password;
    QString token;
};

QMetaProperty metaProperty(const char* name)
{
    const QMetaObject& meta = Settings::staticMetaObject;
    return meta.property(meta.indexOfProperty(name));
}

// QSettings objects of one process share what they read of a file, unsynced changes included, so
// the disk is only seen truly through a copy under a name no one has opened yet.
QVariant valueOnDisk(const QString& settingsPath, const QString& key)
{
    QTemporaryDir copyDir;
    const QString copyPath = copyDir.filePath(QStringLiteral("copy.dat"));
    if (!QFile::copy(settingsPath, copyPath))
        return {};
    return QSettings(copyPath, QSettings::IniFormat).value(key);
}

void writeSettingsFile(const QString& path, const QVariantMap& values)
{
    QSettings settings(path, QSettings::IniFormat);
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        settings.setValue(it.key(), it.value());
}

void writeRecentProjectsFile(const QString& path, const QVariantList& projects)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.beginWriteArray(QStringLiteral("recent_projects"));
    for (int index = 0; index < projects.size(); ++index) {
        const QVariantMap project = projects.at(index).toMap();
        settings.setArrayIndex(index);
        settings.setValue(QStringLiteral("project_id"), project.value(QStringLiteral("ID")));
        settings.setValue(QStringLiteral("project_name"), project.value(QStringLiteral("NAME")));
        settings.setValue(QStringLiteral("project_parent"), project.value(QStringLiteral("PARENT")));
    }
    settings.endArray();
}

QStringList recentNamesOnDisk(const QString& settingsPath)
{
    QTemporaryDir copyDir;
    const QString copyPath = copyDir.filePath(QStringLiteral("copy.dat"));
    QFile::copy(settingsPath, copyPath);
    QSettings settings(copyPath, QSettings::IniFormat);
    QStringList names;
    const int count = settings.beginReadArray(QStringLiteral("recent_projects"));
    for (int index = 0; index < count; ++index) {
        settings.setArrayIndex(index);
        names.append(settings.value(QStringLiteral("project_name")).toString());
    }
    settings.endArray();
    return names;
}

void writeCredentialsFile(const QString& path, const Credentials& credentials)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    QDataStream stream(&file);
    stream << credentials.login << credentials.password << credentials.token;
}

QVariantMap recentProject(int id, const QString& name, int parent)
{
    return {{QStringLiteral("ID"), id}, {QStringLiteral("NAME"), name}, {QStringLiteral("PARENT"), parent}};
}
} // namespace

class SettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyPropertyAnnouncesItsChanges();
    void settingWritesFileAndEmitsEvenForUnchangedValue_data();
    void settingWritesFileAndEmitsEvenForUnchangedValue();
    void failedWriteKeepsSignalBack();
    void freshStoreHasDefaults_data();
    void freshStoreHasDefaults();
    void applicationColorDefaultFollowsBlueFlag_data();
    void applicationColorDefaultFollowsBlueFlag();
    void unreadableStoredValuesFallBack();
    void supportEmailFollowsLanguage();

    void recentProjectNamesAreCutAfterFiftyCharacters_data();
    void recentProjectNamesAreCutAfterFiftyCharacters();
    void shortenedRecentNameIsWhatLaterSetWrites();
    void settingEqualRecentProjectsDoesNothing();
    void unsettingRecentProjectsEmptiesFileAtOnce();

    void switchingThemeSwapsRememberedColours();
    void leavingUndefinedThemeForLightFilesColourAsDark();
    void settingSameThemeDoesNothing();
    void undefinedThemeTakesLightColour();

    void proxyCredentialsRoundTrip();
    void proxyPasswordIsStoredAsHexOfBase64();
    void malformedProxyEntryGivesEmptyObject_data();
    void malformedProxyEntryGivesEmptyObject();

    void credentialsFileHoldsThreeStreamedStrings();
    void credentialsFileIsReadableByOwnerOnly();
    void credentialSettersEmitEvenForUnchangedValue();
    void unsettingLoginWritesEmptyLogin();
    void storedCredentialsAreReadAtConstruction();
    void credentialsFileIsWrittenIntoMissingDataDirectory();
    void oldCredentialKeysMoveToCredentialsFile();

    void cloudSyncOptionTellsAbsentKeyFromFalse();
    void instanceIsOneParentlessObjectOnDataDirectory();

private:
    QString settingsPath() const { return m_dir->filePath(settingsFile); }
    QString credentialsPath() const { return m_dir->filePath(credentialsFile); }
    Credentials credentialsOnDisk() const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

void SettingsTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void SettingsTest::cleanup()
{
    m_dir.reset();
}

Credentials SettingsTest::credentialsOnDisk() const
{
    QFile file(credentialsPath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QDataStream stream(&file);
    Credentials credentials;
    stream >> credentials.login >> credentials.password >> credentials.token;
    return credentials;
}

void SettingsTest::everyPropertyAnnouncesItsChanges()
{
    const QMetaObject& meta = Settings::staticMetaObject;
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
        const QMetaProperty property = meta.property(index);
        QVERIFY2(property.hasNotifySignal() || property.isConstant(), property.name());
    }
}

void SettingsTest::settingWritesFileAndEmitsEvenForUnchangedValue_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("stored");

    const QDateTime moment(QDate(2023, 5, 17), QTime(9, 30), Qt::UTC);
    QTest::newRow("showFutureTasks") << QByteArray("showFutureTasks") << "show_future_tasks"
                                     << QVariant(false) << QVariant(false);
    QTest::newRow("showWelcomeScreen")
        << QByteArray("showWelcomeScreen") << "show_welcome_screen" << QVariant(false) << QVariant(false);
    QTest::newRow("cloudSyncEnabled")
        << QByteArray("cloudSyncEnabled") << "cloud_sync_enabled" << QVariant(true) << QVariant(true);
    QTest::newRow("receiptLinkedToUser")
        << QByteArray("receiptLinkedToUser") << "receipt_linked_to_user" << QVariant(true) << QVariant(true);
    QTest::newRow("defaultStartTime") << QByteArray("defaultStartTime") << "default_start_time"
                                      << QVariant(QStringLiteral("9:30")) << QVariant(QStringLiteral("9:30"));
    QTest::newRow("autoDarkThemeEndTime")
        << QByteArray("autoDarkThemeEndTime") << "adt_end_time" << QVariant(QStringLiteral("6:15"))
        << QVariant(QStringLiteral("6:15"));
    QTest::newRow("applicationLanguage") << QByteArray("applicationLanguage") << "app_language"
                                         << QVariant(QStringLiteral("ru")) << QVariant(QStringLiteral("ru"));
    QTest::newRow("firstLaunchDateTime") << QByteArray("firstLaunchDateTime") << "first_launch_date_time"
                                         << QVariant(moment) << QVariant(moment);
    QTest::newRow("applicationColor")
        << QByteArray("applicationColor") << "application_color" << QVariant(QColor(0x12, 0x34, 0x56))
        << QVariant(QColor(0x12, 0x34, 0x56));
    QTest::newRow("themeSwitchType") << QByteArray("themeSwitchType") << "theme_switch_type"
                                     << QVariant::fromValue(Settings::AutoByTime) << QVariant(2);
    QTest::newRow("trashCleanupTimestamp") << QByteArray("trashCleanupTimestamp") << "trash_cleanup_timestamp"
                                           << QVariant(uint(1684315800)) << QVariant(uint(1684315800));
}

void SettingsTest::settingWritesFileAndEmitsEvenForUnchangedValue()
{
    QFETCH(QByteArray, property);
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(QVariant, stored);
    Settings settings(m_dir->path());
    const QMetaProperty meta = metaProperty(property);
    QVERIFY(meta.hasNotifySignal());
    QSignalSpy spy(&settings, meta.notifySignal());

    for (int round = 1; round <= 2; ++round) {
        // Without the file a second write of the same value can only be seen if it really happens.
        QFile::remove(settingsPath());
        QVERIFY(meta.write(&settings, value));

        QCOMPARE(spy.count(), round);
        QCOMPARE(spy.last().at(0), value);
        QCOMPARE(meta.read(&settings), value);
        QVariant onDisk = valueOnDisk(settingsPath(), key);
        QVERIFY2(onDisk.convert(stored.userType()), qPrintable(key));
        QCOMPARE(onDisk, stored);
    }
}

void SettingsTest::failedWriteKeepsSignalBack()
{
    // A directory where the file should be makes every sync fail.
    QVERIFY(QDir(m_dir->path()).mkdir(settingsFile));
    Settings settings(m_dir->path());
    QSignalSpy spy(&settings, &Settings::showFutureTasksChanged);

    settings.setShowFutureTasks(false);

    QCOMPARE(spy.count(), 0);
    QCOMPARE(settings.isShowFutureTasks(), false);
}

void SettingsTest::freshStoreHasDefaults_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("expected");

    const QVariant yes(true);
    const QVariant no(false);
    QTest::newRow("show_future_tasks") << QByteArray("showFutureTasks") << yes;
    QTest::newRow("show_completed_tasks") << QByteArray("showCompletedTasks") << yes;
    QTest::newRow("show_completed_projects") << QByteArray("showCompletedProjects") << yes;
    QTest::newRow("show_projects_in_daily_plan") << QByteArray("showProjectsInDailyPlan") << yes;
    QTest::newRow("show_app_icon_badge") << QByteArray("showAppIconBadge") << yes;
    QTest::newRow("default_start_time") << QByteArray("defaultStartTime") << QVariant(QStringLiteral("8:00"));
    QTest::newRow("default_due_time") << QByteArray("defaultDueTime") << QVariant(QStringLiteral("23:00"));
    QTest::newRow("show_welcome_screen") << QByteArray("showWelcomeScreen") << yes;
    QTest::newRow("ignore_update_version") << QByteArray("ignoreUpdateVersion") << QVariant(QString());
    QTest::newRow("show_message_on_close") << QByteArray("showMessageOnClose") << yes;
    QTest::newRow("analytics_user_id") << QByteArray("analyticsUserId") << QVariant(QString());
    QTest::newRow("first_launch_date_time") << QByteArray("firstLaunchDateTime") << QVariant(QDateTime());
    QTest::newRow("legacy_first_launch_date_time")
        << QByteArray("legacyFirstLaunchDateTime") << QVariant(QDateTime());
    QTest::newRow("auth_request_sent") << QByteArray("authRequestSent") << no;
    QTest::newRow("legacy_auth_request_sent") << QByteArray("legacyAuthRequestSent") << no;
    QTest::newRow("subscribe_news") << QByteArray("subscribeNews") << no;
    QTest::newRow("subscribe_news_request_sent") << QByteArray("subscribeNewsRequestSent") << no;
    QTest::newRow("show_calendar_on_daily_plan_page") << QByteArray("showCalendarOnDailyPlanPage") << yes;
    QTest::newRow("show_project_tree_view") << QByteArray("showProjectTreeView") << yes;
    QTest::newRow("show_context_tree_view") << QByteArray("showContextTreeView") << yes;
    QTest::newRow("app_version") << QByteArray("appVersion") << QVariant(QStringLiteral("1.0"));
    QTest::newRow("ui_scale_factor") << QByteArray("uiScaleFactor") << QVariant(QString());
    QTest::newRow("app_language") << QByteArray("applicationLanguage")
                                  << QVariant(QLocale::system().name().left(2));
    QTest::newRow("app_theme") << QByteArray("appTheme") << QVariant::fromValue(Settings::UndefinedTheme);
    QTest::newRow("theme_switch_type")
        << QByteArray("themeSwitchType") << QVariant::fromValue(Settings::DependsOnSystemTheme);
    QTest::newRow("adt_start_time") << QByteArray("autoDarkThemeStartTime")
                                    << QVariant(QStringLiteral("18:00"));
    QTest::newRow("adt_end_time") << QByteArray("autoDarkThemeEndTime") << QVariant(QStringLiteral("7:00"));
    QTest::newRow("show_projects_tip") << QByteArray("showProjectsTip") << yes;
    QTest::newRow("show_contexts_tip") << QByteArray("showContextsTip") << yes;
    QTest::newRow("show_appearance_badge") << QByteArray("showAppearanceNewBadge") << yes;
    QTest::newRow("show_method_badge") << QByteArray("showMethodNewBadge") << yes;
    QTest::newRow("show_favorites_badge") << QByteArray("showFavoritesNewBadge") << yes;
    QTest::newRow("font_rendering_type") << QByteArray("fontRenderingType") << QVariant(QString());
    QTest::newRow("use_blue_as_light_theme_color") << QByteArray("useBlueAsLightThemeColor") << no;
    QTest::newRow("trash_cleanup_timestamp") << QByteArray("trashCleanupTimestamp") << QVariant(uint(0));
    QTest::newRow("cloud_sync_enabled") << QByteArray("cloudSyncEnabled") << no;
    QTest::newRow("client login") << QByteArray("clientLogin") << QVariant(QString());
    QTest::newRow("recent projects") << QByteArray("recentProjects") << QVariant(QVariantList());
    QTest::newRow("start with system") << QByteArray("startAppWhenWindowsStarts") << no;
}

void SettingsTest::freshStoreHasDefaults()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, expected);
    Settings settings(m_dir->path());

    QCOMPARE(metaProperty(property).read(&settings), expected);
}

void SettingsTest::applicationColorDefaultFollowsBlueFlag_data()
{
    QTest::addColumn<QVariantMap>("stored");
    QTest::addColumn<QColor>("expected");

    const QString blueKey = QStringLiteral("use_blue_as_light_theme_color");
    QTest::newRow("old installation without flag") << QVariantMap() << QColor(QStringLiteral("#3F51B5"));
    QTest::newRow("flag false") << QVariantMap{{blueKey, false}} << QColor(QStringLiteral("#3F51B5"));
    QTest::newRow("first launch sets flag")
        << QVariantMap{{blueKey, true}} << QColor(QStringLiteral("#1E88E5"));
}

void SettingsTest::applicationColorDefaultFollowsBlueFlag()
{
    QFETCH(QVariantMap, stored);
    QFETCH(QColor, expected);
    writeSettingsFile(settingsPath(), stored);
    Settings settings(m_dir->path());

    QCOMPARE(settings.applicationColor(), expected);
}

void SettingsTest::unreadableStoredValuesFallBack()
{
    writeSettingsFile(settingsPath(),
                      {{QStringLiteral("app_theme"), QStringLiteral("dark")},
                       {QStringLiteral("theme_switch_type"), QStringLiteral("auto")},
                       {QStringLiteral("application_color"), QStringLiteral("not a colour")}});
    Settings settings(m_dir->path());

    QCOMPARE(settings.appTheme(), Settings::UndefinedTheme);
    QCOMPARE(settings.themeSwitchType(), Settings::Manual);
    QVERIFY(!settings.applicationColor().isValid());
}

void SettingsTest::supportEmailFollowsLanguage()
{
    Settings settings(m_dir->path());
    settings.setApplicationLanguage(QStringLiteral("en"));
    const QString english = settings.supportEmail();
    settings.setApplicationLanguage(QStringLiteral("de"));
    const QString german = settings.supportEmail();
    settings.setApplicationLanguage(QStringLiteral("ru"));
    const QString russian = settings.supportEmail();

    QVERIFY(english.endsWith(QStringLiteral("@kelmora.com")));
    QVERIFY(russian.endsWith(QStringLiteral("@kelmora.com")));
    QCOMPARE(german, english);
    QVERIFY(russian != english);
}

void SettingsTest::recentProjectNamesAreCutAfterFiftyCharacters_data()
{
    QTest::addColumn<QString>("storedName");
    QTest::addColumn<QString>("expectedName");

    const QString fifty(50, QLatin1Char('n'));
    QTest::newRow("short") << "Garden"
                           << "Garden";
    QTest::newRow("exactly 50") << fifty << fifty;
    QTest::newRow("51") << fifty + QLatin1Char('x') << fifty + QStringLiteral("...");
}

void SettingsTest::recentProjectNamesAreCutAfterFiftyCharacters()
{
    QFETCH(QString, storedName);
    QFETCH(QString, expectedName);
    writeRecentProjectsFile(settingsPath(), {recentProject(7, storedName, 3)});

    Settings settings(m_dir->path());

    const QVariantList projects = settings.recentProjects();
    QCOMPARE(projects.size(), 1);
    const QVariantMap project = projects.first().toMap();
    QCOMPARE(project.value(QStringLiteral("NAME")).toString(), expectedName);
    QCOMPARE(project.value(QStringLiteral("ID")).toInt(), 7);
    QCOMPARE(project.value(QStringLiteral("PARENT")).toInt(), 3);
}

void SettingsTest::shortenedRecentNameIsWhatLaterSetWrites()
{
    const QString longName = QString(50, QLatin1Char('n')) + QLatin1Char('x');
    writeRecentProjectsFile(settingsPath(), {recentProject(7, longName, 0)});
    auto settings = std::make_unique<Settings>(m_dir->path());
    QSignalSpy spy(settings.get(), &Settings::recentProjectsChanged);

    settings->setRecentProjects(QVariantList{recentProject(9, QStringLiteral("Inbox"), 0)} +
                                settings->recentProjects());

    QCOMPARE(spy.count(), 1);
    // The array waits for the next sync; killed before it, the process leaves the old list behind.
    QCOMPARE(recentNamesOnDisk(settingsPath()), QStringList{longName});
    settings.reset();
    QCOMPARE(recentNamesOnDisk(settingsPath()),
             (QStringList{QStringLiteral("Inbox"), QString(50, QLatin1Char('n')) + QStringLiteral("...")}));
}

void SettingsTest::settingEqualRecentProjectsDoesNothing()
{
    Settings settings(m_dir->path());
    QSignalSpy spy(&settings, &Settings::recentProjectsChanged);
    const QVariantList projects{recentProject(1, QStringLiteral("Home"), 0),
                                recentProject(2, QStringLiteral("Work"), 0)};

    settings.setRecentProjects(projects);
    settings.setRecentProjects(projects);

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(0).toList(), projects);
    QCOMPARE(settings.recentProjects(), projects);
}

void SettingsTest::unsettingRecentProjectsEmptiesFileAtOnce()
{
    writeRecentProjectsFile(settingsPath(), {recentProject(1, QStringLiteral("Home"), 0)});
    Settings settings(m_dir->path());
    QSignalSpy spy(&settings, &Settings::recentProjectsChanged);

    settings.unsetRecentProjects();

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(0).toList(), QVariantList());
    QCOMPARE(settings.recentProjects(), QVariantList());
    QCOMPARE(recentNamesOnDisk(settingsPath()), QStringList());
}

void SettingsTest::switchingThemeSwapsRememberedColours()
{
    const QColor lightColor(QStringLiteral("#3F51B5"));
    const QColor chosenDarkColor(QStringLiteral("#112233"));
    writeSettingsFile(settingsPath(), {{QStringLiteral("app_theme"), int(Settings::LightTheme)}});
    Settings settings(m_dir->path());
    QStringList order;
    connect(&settings, &Settings::applicationColorChanged, this, [&order] { order << "colour"; });
    connect(&settings, &Settings::appThemeChanged, this, [&order] { order << "theme"; });

    settings.setAppTheme(Settings::DarkTheme);
    QCOMPARE(settings.appTheme(), Settings::DarkTheme);
    QCOMPARE(settings.applicationColor(), QColor(QStringLiteral("#73ABFC")));
    QCOMPARE(valueOnDisk(settingsPath(), QStringLiteral("last_light_theme_color")).value<QColor>(),
             lightColor);
    QCOMPARE(order, (QStringList{"colour", "theme"}));

    settings.setApplicationColor(chosenDarkColor);
    settings.setAppTheme(Settings::LightTheme);
    QCOMPARE(settings.applicationColor(), lightColor);
    QCOMPARE(valueOnDisk(settingsPath(), QStringLiteral("last_dark_theme_color")).value<QColor>(),
             chosenDarkColor);

    settings.setAppTheme(Settings::DarkTheme);
    QCOMPARE(settings.applicationColor(), chosenDarkColor);
}

void SettingsTest::leavingUndefinedThemeForLightFilesColourAsDark()
{
    const QColor customColor(QStringLiteral("#ABCDEF"));
    Settings settings(m_dir->path());
    settings.setApplicationColor(customColor);
    QSignalSpy themeSpy(&settings, &Settings::appThemeChanged);

    settings.setAppTheme(Settings::LightTheme);

    QCOMPARE(themeSpy.count(), 1);
    QCOMPARE(settings.applicationColor(), QColor(QStringLiteral("#1E88E5")));
    QCOMPARE(valueOnDisk(settingsPath(), QStringLiteral("last_dark_theme_color")).value<QColor>(),
             customColor);
    settings.setAppTheme(Settings::DarkTheme);
    QCOMPARE(settings.applicationColor(), customColor);
}

void SettingsTest::settingSameThemeDoesNothing()
{
    writeSettingsFile(settingsPath(), {{QStringLiteral("app_theme"), int(Settings::DarkTheme)}});
    Settings settings(m_dir->path());
    QSignalSpy themeSpy(&settings, &Settings::appThemeChanged);
    QSignalSpy colourSpy(&settings, &Settings::applicationColorChanged);

    settings.setAppTheme(Settings::DarkTheme);

    QCOMPARE(themeSpy.count(), 0);
    QCOMPARE(colourSpy.count(), 0);
    QVERIFY(!valueOnDisk(settingsPath(), QStringLiteral("last_light_theme_color")).isValid());
}

void SettingsTest::undefinedThemeTakesLightColour()
{
    const QColor darkColor(QStringLiteral("#202830"));
    writeSettingsFile(settingsPath(), {{QStringLiteral("app_theme"), int(Settings::DarkTheme)},
                                       {QStringLiteral("application_color"), darkColor},
                                       {QStringLiteral("last_light_theme_color"), QColor(Qt::red)}});
    Settings settings(m_dir->path());

    settings.setAppTheme(Settings::UndefinedTheme);

    QCOMPARE(settings.appTheme(), Settings::UndefinedTheme);
    QCOMPARE(settings.applicationColor(), QColor(Qt::red));
    QCOMPARE(valueOnDisk(settingsPath(), QStringLiteral("last_dark_theme_color")).value<QColor>(), darkColor);
}

void SettingsTest::proxyCredentialsRoundTrip()
{
    const QString proxyKey = QStringLiteral("proxy.example.org:3128");
    Settings settings(m_dir->path());

    settings.setProxyCredentials(proxyKey, QStringLiteral("doe, jane"), QStringLiteral("pässwort€"));
    const QJsonObject stored = Settings(m_dir->path()).proxyCredentials(proxyKey);
    settings.removeProxyCredentials(proxyKey);

    QCOMPARE(stored.value(QStringLiteral("username")).toString(), QStringLiteral("doe, jane"));
    QCOMPARE(stored.value(QStringLiteral("password")).toString(), QStringLiteral("pässwort€"));
    QCOMPARE(stored.size(), 2);
    QVERIFY(settings.proxyCredentials(proxyKey).isEmpty());
}

void SettingsTest::proxyPasswordIsStoredAsHexOfBase64()
{
    Settings settings(m_dir->path());

    settings.setProxyCredentials(QStringLiteral("proxy:8080"), QStringLiteral("jane"),
                                 QStringLiteral("pässwort€"));

    const QStringList stored = valueOnDisk(settingsPath(), QStringLiteral("Proxy/proxy:8080")).toStringList();
    QCOMPARE(stored,
             (QStringList{QStringLiteral("jane"), QStringLiteral("634d4f6b63334e3362334a30346f4b73")}));
}

void SettingsTest::malformedProxyEntryGivesEmptyObject_data()
{
    QTest::addColumn<QVariant>("entry");

    QTest::newRow("single string") << QVariant(QStringLiteral("jane"));
    QTest::newRow("one entry") << QVariant(QStringList{QStringLiteral("jane")});
    QTest::newRow("three entries") << QVariant(
        QStringList{QStringLiteral("jane"), QStringLiteral("70"), QStringLiteral("extra")});
}

void SettingsTest::malformedProxyEntryGivesEmptyObject()
{
    QFETCH(QVariant, entry);
    writeSettingsFile(settingsPath(), {{QStringLiteral("Proxy/proxy:8080"), entry}});
    Settings settings(m_dir->path());

    QCOMPARE(settings.proxyCredentials(QStringLiteral("proxy:8080")), QJsonObject());
}

void SettingsTest::credentialsFileHoldsThreeStreamedStrings()
{
    Settings settings(m_dir->path());

    settings.setClientLogin(QStringLiteral("alice"));
    settings.setClientPassword(QStringLiteral("s3cret"));
    settings.setAuthToken(QStringLiteral("tok"));

    QFile file(credentialsPath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    // No header: the file starts with the byte length of the login in UTF-16.
    QCOMPARE(file.peek(4), QByteArray("\x00\x00\x00\x0a", 4));
    QDataStream stream(&file);
    QString login, password, token;
    stream >> login >> password >> token;
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
    QCOMPARE(login, QStringLiteral("alice"));
    QCOMPARE(password, QStringLiteral("s3cret"));
    QCOMPARE(token, QStringLiteral("tok"));
}

void SettingsTest::credentialsFileIsReadableByOwnerOnly()
{
    // A file left by an older version with the usual permissions is tightened on the next write.
    writeCredentialsFile(credentialsPath(), {QStringLiteral("alice"), {}, {}});
    QFile::setPermissions(credentialsPath(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    Settings settings(m_dir->path());

    settings.setClientPassword(QStringLiteral("s3cret"));

    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    const QFile::Permissions permissions = QFile::permissions(credentialsPath());
    QCOMPARE(permissions & others, QFile::Permissions());
    QCOMPARE(permissions & (QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner),
             QFile::ReadOwner | QFile::WriteOwner);
    QCOMPARE(credentialsOnDisk().login, QStringLiteral("alice"));
}

void SettingsTest::credentialSettersEmitEvenForUnchangedValue()
{
    Settings settings(m_dir->path());
    QSignalSpy loginSpy(&settings, &Settings::clientLoginChanged);
    QSignalSpy tokenSpy(&settings, &Settings::authTokenChanged);

    settings.setClientLogin(QStringLiteral("alice"));
    settings.setClientLogin(QStringLiteral("alice"));
    settings.setAuthToken(QStringLiteral("tok"));
    QFile::remove(credentialsPath());
    settings.setAuthToken(QStringLiteral("tok"));

    QCOMPARE(loginSpy.count(), 2);
    QCOMPARE(tokenSpy.count(), 2);
    QCOMPARE(credentialsOnDisk().login, QStringLiteral("alice"));
    QCOMPARE(credentialsOnDisk().token, QStringLiteral("tok"));
}

void SettingsTest::unsettingLoginWritesEmptyLogin()
{
    writeCredentialsFile(credentialsPath(), {QStringLiteral("alice"), QStringLiteral("s3cret"), {}});
    Settings settings(m_dir->path());
    QSignalSpy loginSpy(&settings, &Settings::clientLoginChanged);

    QVERIFY(metaProperty("clientLogin").reset(&settings));
    settings.unsetClientPassword();

    QCOMPARE(loginSpy.count(), 1);
    QCOMPARE(loginSpy.first().at(0).toString(), QString());
    QCOMPARE(settings.clientLogin(), QString());
    QCOMPARE(credentialsOnDisk().login, QString());
    QCOMPARE(credentialsOnDisk().password, QString());
}

void SettingsTest::storedCredentialsAreReadAtConstruction()
{
    writeCredentialsFile(credentialsPath(),
                         {QStringLiteral("alice"), QStringLiteral("s3cret"), QStringLiteral("tok")});

    Settings settings(m_dir->path());

    QCOMPARE(settings.clientLogin(), QStringLiteral("alice"));
    QCOMPARE(settings.clientPassword(), QStringLiteral("s3cret"));
    QCOMPARE(settings.authToken(), QStringLiteral("tok"));
}

void SettingsTest::credentialsFileIsWrittenIntoMissingDataDirectory()
{
    const QString dataDirectory = m_dir->filePath(QStringLiteral("not/yet/there"));
    Settings settings(dataDirectory);

    settings.setClientLogin(QStringLiteral("alice"));

    QVERIFY(QFile::exists(dataDirectory + QLatin1Char('/') + credentialsFile));
    QCOMPARE(Settings(dataDirectory).clientLogin(), QStringLiteral("alice"));
}

void SettingsTest::oldCredentialKeysMoveToCredentialsFile()
{
    // The login in the old file is empty, so the one already moved earlier stays.
    writeCredentialsFile(credentialsPath(), {QStringLiteral("bob"), QStringLiteral("old"), {}});
    writeSettingsFile(settingsPath(), {{QStringLiteral("client_login"), QString()},
                                       {QStringLiteral("client_pass"), QStringLiteral("new")},
                                       {QStringLiteral("auth_token"), QStringLiteral("tok")}});

    Settings settings(m_dir->path());

    QCOMPARE(settings.clientLogin(), QStringLiteral("bob"));
    QCOMPARE(settings.clientPassword(), QStringLiteral("new"));
    QCOMPARE(settings.authToken(), QStringLiteral("tok"));
    const Credentials onDisk = credentialsOnDisk();
    QCOMPARE(onDisk.login, QStringLiteral("bob"));
    QCOMPARE(onDisk.password, QStringLiteral("new"));
    QCOMPARE(onDisk.token, QStringLiteral("tok"));
    QVERIFY(!valueOnDisk(settingsPath(), QStringLiteral("client_pass")).isValid());
    QVERIFY(!valueOnDisk(settingsPath(), QStringLiteral("auth_token")).isValid());
}

void SettingsTest::cloudSyncOptionTellsAbsentKeyFromFalse()
{
    Settings settings(m_dir->path());
    QVERIFY(!settings.hasCloudSyncEnabledOption());

    settings.setCloudSyncEnabled(false);

    QVERIFY(settings.hasCloudSyncEnabledOption());
    QVERIFY(!settings.cloudSyncEnabled());
}

void SettingsTest::instanceIsOneParentlessObjectOnDataDirectory()
{
    const QString dataDirectory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    Settings* settings = Settings::instance();

    settings->setAuthToken(QStringLiteral("tok"));

    QCOMPARE(Settings::instance(), settings);
    QCOMPARE(settings->parent(), nullptr);
    QVERIFY(QFile::exists(dataDirectory + QLatin1Char('/') + credentialsFile));
}

NORVEL_TEST_MAIN(SettingsTest)
#include "settingstest.moc"
