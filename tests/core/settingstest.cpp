#include "core/settings.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QMetaProperty>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {
const QString settingsFile = QStringLiteral("settings.dat");
const QString credentialsFile = QStringLiteral("config.dat");

QMetaProperty metaProperty(const char* name)
{
    const QMetaObject& meta = Settings::staticMetaObject;
    return meta.property(meta.indexOfProperty(name));
}

// A value of the property's type that differs from its default.
QVariant otherValue(const QMetaProperty& property, const QVariant& defaultValue)
{
    const int autoByTime = Settings::AutoByTime;
    switch (property.userType()) {
    case QMetaType::Bool:
        return !defaultValue.toBool();
    case QMetaType::QString:
        return QStringLiteral("9:45");
    case QMetaType::UInt:
        return 1684315800u;
    case QMetaType::QDateTime:
        return QDateTime(QDate(2023, 5, 17), QTime(9, 30), Qt::UTC);
    case QMetaType::QColor:
        return QColor(0x12, 0x34, 0x56);
    default:
        return QVariant(property.userType(), &autoByTime);
    }
}

// Everything "settings.dat" holds on disk. QSettings objects of one process share what they read of
// a file, unsynced changes included, so the disk is only seen truly through a copy under a new name.
QVariantMap fileOnDisk(const QString& settingsPath)
{
    QTemporaryDir copyDir;
    const QString copyPath = copyDir.filePath(QStringLiteral("copy.dat"));
    QFile::copy(settingsPath, copyPath);
    QSettings copy(copyPath, QSettings::IniFormat);
    QVariantMap values;
    for (const QString& key : copy.allKeys())
        values.insert(key, copy.value(key));
    return values;
}

void writeSettingsFile(const QString& path, const QVariantMap& values)
{
    QSettings settings(path, QSettings::IniFormat);
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        settings.setValue(it.key(), it.value());
}

QVariantMap recentProject(const QString& id, const QString& name, const QString& parent)
{
    return {{QStringLiteral("ID"), id}, {QStringLiteral("NAME"), name}, {QStringLiteral("PARENT"), parent}};
}

// The recent list as "settings.dat" keeps it.
QVariantMap recentListFile(const QVariantList& projects)
{
    QVariantMap keys{{QStringLiteral("recent_projects/size"), QString::number(projects.size())}};
    for (int index = 0; index < projects.size(); ++index) {
        const QVariantMap project = projects.at(index).toMap();
        const QString prefix = QStringLiteral("recent_projects/%1/project_").arg(index + 1);
        keys.insert(prefix + "id", project.value(QStringLiteral("ID")));
        keys.insert(prefix + "name", project.value(QStringLiteral("NAME")));
        keys.insert(prefix + "parent", project.value(QStringLiteral("PARENT")));
    }
    return keys;
}

void writeCredentialsFile(const QString& path, const QStringList& credentials)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    QDataStream stream(&file);
    for (const QString& value : credentials)
        stream << value;
}

// Login, password and token, or nothing when the file holds anything else besides them.
QStringList credentialsOnDisk(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QDataStream stream(&file);
    QString login, password, token;
    stream >> login >> password >> token;
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return {};
    return {login, password, token};
}

// The permissions of owner, group and others; the "User" flags only repeat the owner's here.
QFile::Permissions permissionsBeyondUser(const QString& path)
{
    return QFile::permissions(path) &
           ~QFile::Permissions(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
}
} // namespace

class SettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void preferenceHasDefaultAndEverySetWritesThenEmits_data();
    void preferenceHasDefaultAndEverySetWritesThenEmits();
    void failedWriteKeepsSignalBack();
    void unreadableOrAbsentValuesFallBack();
    void blueFlagMakesBlueTheDefaultColour();
    void supportAddressFollowsTheLanguage();

    void recentNamesAreCutAfterFiftyCharactersAndWrittenAtNextSync();
    void unsettingRecentProjectsEmptiesFileAtOnce();

    void themeChangeSwapsRememberedColours_data();
    void themeChangeSwapsRememberedColours();

    void proxyCredentialsArePairsWithPasswordAsHexOfBase64();

    void credentialSetterRewritesPrivateFileAndAlwaysEmits_data();
    void credentialSetterRewritesPrivateFileAndAlwaysEmits();
    void resettingLoginAndPasswordWritesThemEmpty();
    void oldCredentialKeysMoveToCredentialsFile();

private:
    QString settingsPath() const { return m_dir->filePath(settingsFile); }
    QString credentialsPath() const { return m_dir->filePath(credentialsFile); }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void SettingsTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void SettingsTest::preferenceHasDefaultAndEverySetWritesThenEmits_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("defaultValue");

    // Each row is named after its key in "settings.dat": "key property" pairs sharing one default.
    const auto rows = [](const QVariant& defaultValue, const char* pairs) {
        const QStringList words = QString::fromLatin1(pairs).split(' ', Qt::SkipEmptyParts);
        for (int index = 0; index + 1 < words.size(); index += 2)
            QTest::newRow(qPrintable(words.at(index))) << words.at(index + 1).toLatin1() << defaultValue;
    };
    rows(true, "show_future_tasks showFutureTasks show_completed_tasks showCompletedTasks "
               "show_completed_projects showCompletedProjects show_projects_in_daily_plan "
               "showProjectsInDailyPlan show_app_icon_badge showAppIconBadge show_welcome_screen "
               "showWelcomeScreen show_message_on_close showMessageOnClose show_calendar_on_daily_plan_page "
               "showCalendarOnDailyPlanPage show_project_tree_view showProjectTreeView "
               "show_context_tree_view showContextTreeView show_projects_tip showProjectsTip "
               "show_contexts_tip showContextsTip show_appearance_badge showAppearanceNewBadge "
               "show_method_badge showMethodNewBadge show_favorites_badge showFavoritesNewBadge");
    rows(false, "auth_request_sent authRequestSent legacy_auth_request_sent legacyAuthRequestSent "
                "subscribe_news subscribeNews subscribe_news_request_sent subscribeNewsRequestSent "
                "use_blue_as_light_theme_color useBlueAsLightThemeColor cloud_sync_enabled cloudSyncEnabled "
                "receipt_linked_to_user receiptLinkedToUser");
    rows(QString(), "ignore_update_version ignoreUpdateVersion analytics_user_id analyticsUserId "
                    "ui_scale_factor uiScaleFactor font_rendering_type fontRenderingType");
    rows(QDateTime(), "first_launch_date_time firstLaunchDateTime "
                      "legacy_first_launch_date_time legacyFirstLaunchDateTime");
    rows("8:00", "default_start_time defaultStartTime");
    rows("23:00", "default_due_time defaultDueTime");
    rows("18:00", "adt_start_time autoDarkThemeStartTime");
    rows("7:00", "adt_end_time autoDarkThemeEndTime");
    rows("1.0", "app_version appVersion");
    rows("en", "app_language applicationLanguage"); // the test environment runs in en_US
    rows(QColor("#3F51B5"), "application_color applicationColor");
    rows(QVariant::fromValue(Settings::DependsOnSystemTheme), "theme_switch_type themeSwitchType");
    rows(0u, "trash_cleanup_timestamp trashCleanupTimestamp");
}

void SettingsTest::preferenceHasDefaultAndEverySetWritesThenEmits()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, defaultValue);
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    Settings settings(m_dir->path());
    const QMetaProperty meta = metaProperty(property);
    QCOMPARE(meta.read(&settings), defaultValue);
    const QVariant value = otherValue(meta, defaultValue);
    const QVariant stored = meta.isEnumType() ? QVariant(value.toInt()) : value;
    QSignalSpy spy(&settings, meta.notifySignal());

    for (int round = 1; round <= 2; ++round) {
        // Without the file a second write of the same value can only be seen if it really happens.
        QFile::remove(settingsPath());
        QVERIFY(meta.write(&settings, value));

        QCOMPARE(spy.count(), round);
        QCOMPARE(spy.last().at(0), value);
        QCOMPARE(meta.read(&settings), value);
        QVariant onDisk = fileOnDisk(settingsPath()).value(key);
        QVERIFY(onDisk.convert(stored.userType()));
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

void SettingsTest::unreadableOrAbsentValuesFallBack()
{
    writeSettingsFile(settingsPath(),
                      {{QStringLiteral("app_theme"), QStringLiteral("dark")},
                       {QStringLiteral("theme_switch_type"), QStringLiteral("auto")},
                       {QStringLiteral("application_color"), QStringLiteral("not a colour")}});
    Settings settings(m_dir->path());

    QCOMPARE(settings.appTheme(), Settings::UndefinedTheme);
    QCOMPARE(settings.themeSwitchType(), Settings::Manual);
    QVERIFY(!settings.applicationColor().isValid());
    QVERIFY(!settings.hasCloudSyncEnabledOption());
    settings.setCloudSyncEnabled(false);
    QVERIFY(settings.hasCloudSyncEnabledOption());
}

void SettingsTest::blueFlagMakesBlueTheDefaultColour()
{
    Settings settings(m_dir->path());
    settings.setUseBlueAsLightThemeColor(true);
    QCOMPARE(settings.applicationColor(), QColor(QStringLiteral("#1E88E5")));
}

void SettingsTest::supportAddressFollowsTheLanguage()
{
    Settings settings(m_dir->path());
    QSignalSpy spy(&settings, &Settings::applicationLanguageChanged);
    settings.setApplicationLanguage(QStringLiteral("ru"));
    const QString russianAddress = settings.supportEmail();
    settings.setApplicationLanguage(QStringLiteral("de"));

    QVERIFY(russianAddress.contains(QLatin1Char('@')));
    QVERIFY(settings.supportEmail() != russianAddress);
    QCOMPARE(spy.count(), 2);
}

void SettingsTest::recentNamesAreCutAfterFiftyCharactersAndWrittenAtNextSync()
{
    const QString fifty(50, QLatin1Char('n'));
    const QVariantList stored{recentProject("p1", fifty, "p0"), recentProject("p2", fifty + "x", "")};
    writeSettingsFile(settingsPath(), recentListFile(stored));
    auto settings = std::make_unique<Settings>(m_dir->path());
    const QVariantList read{recentProject("p1", fifty, "p0"), recentProject("p2", fifty + "...", "")};
    QCOMPARE(settings->recentProjects(), read);
    QSignalSpy spy(settings.get(), &Settings::recentProjectsChanged);
    const QVariantList changed = QVariantList{recentProject("p9", "Inbox", "")} + read;

    settings->setRecentProjects(changed);
    settings->setRecentProjects(changed);

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(0).toList(), changed);
    // Killed before the next sync, the process leaves the old list behind.
    QCOMPARE(fileOnDisk(settingsPath()), recentListFile(stored));
    settings.reset();
    QCOMPARE(fileOnDisk(settingsPath()), recentListFile(changed));
}
void SettingsTest::unsettingRecentProjectsEmptiesFileAtOnce()
{
    writeSettingsFile(settingsPath(), recentListFile({recentProject("p1", "Home", "")}));
    Settings settings(m_dir->path());
    QSignalSpy spy(&settings, &Settings::recentProjectsChanged);

    QVERIFY(metaProperty("recentProjects").reset(&settings));

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(0).toList(), QVariantList());
    QCOMPARE(settings.recentProjects(), QVariantList());
    QVERIFY(!fileOnDisk(settingsPath()).contains("recent_projects/size"));
}

void SettingsTest::themeChangeSwapsRememberedColours_data()
{
    QTest::addColumn<QVariantMap>("stored");
    QTest::addColumn<int>("theme");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<QString>("rememberedKey");
    QTest::addColumn<QColor>("remembered");

    const QString theme = QStringLiteral("app_theme");
    const QString colour = QStringLiteral("application_color");
    const QString lastLight = QStringLiteral("last_light_theme_color");
    const QString lastDark = QStringLiteral("last_dark_theme_color");
    const QColor mine(QStringLiteral("#112233"));
    const QColor earlier(QStringLiteral("#ABCDEF"));
    QTest::newRow("light to dark for the first time")
        << QVariantMap{{theme, 1}, {colour, mine}} << int(Settings::DarkTheme) << QColor("#73ABFC")
        << lastLight << mine;
    QTest::newRow("light to dark again") << QVariantMap{{theme, 1}, {colour, mine}, {lastDark, earlier}}
                                         << int(Settings::DarkTheme) << earlier << lastLight << mine;
    QTest::newRow("dark to light") << QVariantMap{{theme, 2}, {colour, mine}, {lastLight, earlier}}
                                   << int(Settings::LightTheme) << earlier << lastDark << mine;
    // Anything but dark counts as light, so the colour of the undefined theme is filed as the dark one.
    QTest::newRow("undefined to light")
        << QVariantMap{{colour, mine}} << int(Settings::LightTheme) << QColor("#1E88E5") << lastDark << mine;
    QTest::newRow("dark to undefined") << QVariantMap{{theme, 2}, {colour, mine}, {lastLight, earlier}}
                                       << int(Settings::UndefinedTheme) << earlier << lastDark << mine;
    QTest::newRow("same theme changes nothing") << QVariantMap{{theme, 2}, {colour, mine}}
                                                << int(Settings::DarkTheme) << mine << lastLight << QColor();
}

void SettingsTest::themeChangeSwapsRememberedColours()
{
    QFETCH(QVariantMap, stored);
    QFETCH(int, theme);
    QFETCH(QColor, colour);
    QFETCH(QString, rememberedKey);
    QFETCH(QColor, remembered);
    writeSettingsFile(settingsPath(), stored);
    Settings settings(m_dir->path());
    QStringList order;
    connect(&settings, &Settings::applicationColorChanged, this, [&order] { order << "colour"; });
    connect(&settings, &Settings::appThemeChanged, this, [&order] { order << "theme"; });

    settings.setAppTheme(Settings::AppTheme(theme));

    QCOMPARE(settings.appTheme(), Settings::AppTheme(theme));
    QCOMPARE(settings.applicationColor(), colour);
    QCOMPARE(fileOnDisk(settingsPath()).value(rememberedKey).value<QColor>(), remembered);
    QCOMPARE(order, (remembered.isValid() ? QStringList{"colour", "theme"} : QStringList()));
}

void SettingsTest::proxyCredentialsArePairsWithPasswordAsHexOfBase64()
{
    const QString proxyKey = QStringLiteral("proxy:8080");
    Settings settings(m_dir->path());

    settings.setProxyCredentials(proxyKey, QStringLiteral("doe, jane"), QStringLiteral("pässwort€"));

    QCOMPARE(fileOnDisk(settingsPath()).value("Proxy/proxy:8080").toStringList(),
             (QStringList{QStringLiteral("doe, jane"), QStringLiteral("634d4f6b63334e3362334a30346f4b73")}));
    QCOMPARE(
        Settings(m_dir->path()).proxyCredentials(proxyKey),
        (QJsonObject{{"username", QStringLiteral("doe, jane")}, {"password", QStringLiteral("pässwort€")}}));
    writeSettingsFile(settingsPath(),
                      {{"Proxy/one", QStringList{"jane"}}, {"Proxy/three", QStringList{"a", "b", "c"}}});
    QCOMPARE(settings.proxyCredentials(QStringLiteral("one")), QJsonObject());
    QCOMPARE(settings.proxyCredentials(QStringLiteral("three")), QJsonObject());
}

void SettingsTest::credentialSetterRewritesPrivateFileAndAlwaysEmits_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("position");

    QTest::newRow("clientLogin") << QByteArray("clientLogin") << 0;
    QTest::newRow("clientPassword") << QByteArray("clientPassword") << 1;
    QTest::newRow("authToken") << QByteArray("authToken") << 2;
}

void SettingsTest::credentialSetterRewritesPrivateFileAndAlwaysEmits()
{
    QFETCH(QByteArray, property);
    QFETCH(int, position);
    // A file left by an older version, with the usual permissions.
    QStringList credentials{QStringLiteral("alice"), QStringLiteral("s3cret"), QStringLiteral("tok")};
    writeCredentialsFile(credentialsPath(), credentials);
    QFile::setPermissions(credentialsPath(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    Settings settings(m_dir->path());
    const QMetaProperty meta = metaProperty(property);
    QCOMPARE(meta.read(&settings).toString(), credentials.at(position));
    QSignalSpy spy(&settings, meta.notifySignal());
    credentials[position] = QStringLiteral("changed");

    QVERIFY(meta.write(&settings, credentials.at(position)));
    QCOMPARE(permissionsBeyondUser(credentialsPath()), QFile::ReadOwner | QFile::WriteOwner);
    // The same value again, into a data directory that has gone meanwhile.
    QVERIFY(QDir(m_dir->path()).removeRecursively());
    QVERIFY(meta.write(&settings, credentials.at(position)));

    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.last().at(0).toString(), QStringLiteral("changed"));
    QCOMPARE(credentialsOnDisk(credentialsPath()), credentials);
    QCOMPARE(permissionsBeyondUser(credentialsPath()), QFile::ReadOwner | QFile::WriteOwner);
}

void SettingsTest::resettingLoginAndPasswordWritesThemEmpty()
{
    writeCredentialsFile(credentialsPath(), {QStringLiteral("alice"), QStringLiteral("s3cret"), "tok"});
    Settings settings(m_dir->path());
    QSignalSpy loginSpy(&settings, &Settings::clientLoginChanged);

    QVERIFY(metaProperty("clientLogin").reset(&settings));
    QCOMPARE(credentialsOnDisk(credentialsPath()), (QStringList{QString(), "s3cret", "tok"}));
    QVERIFY(metaProperty("clientPassword").reset(&settings));

    QCOMPARE(loginSpy.count(), 1);
    QCOMPARE(settings.clientLogin(), QString());
    QCOMPARE(credentialsOnDisk(credentialsPath()), (QStringList{QString(), QString(), "tok"}));
}

void SettingsTest::oldCredentialKeysMoveToCredentialsFile()
{
    // The login in the old file is empty, so the one already moved earlier stays.
    writeCredentialsFile(credentialsPath(), {QStringLiteral("bob"), QStringLiteral("old"), QString()});
    writeSettingsFile(settingsPath(), {{QStringLiteral("client_login"), QString()},
                                       {QStringLiteral("client_pass"), QStringLiteral("new")},
                                       {QStringLiteral("auth_token"), QStringLiteral("tok")}});

    Settings settings(m_dir->path());

    const QStringList moved{QStringLiteral("bob"), QStringLiteral("new"), QStringLiteral("tok")};
    QCOMPARE((QStringList{settings.clientLogin(), settings.clientPassword(), settings.authToken()}), moved);
    QCOMPARE(credentialsOnDisk(credentialsPath()), moved);
    QCOMPARE(fileOnDisk(settingsPath()).keys(), QStringList{"client_login"});
}

NORVEL_TEST_MAIN(SettingsTest)
#include "settingstest.moc"
