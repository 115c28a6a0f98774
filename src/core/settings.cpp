#include "settings.h"

#include "core/logmanager.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>

namespace {
const QString settingsFileName = QStringLiteral("settings.dat");
const QString credentialsFileName = QStringLiteral("config.dat");

const QString showFutureTasksKey = QStringLiteral("show_future_tasks");
const QString showCompletedTasksKey = QStringLiteral("show_completed_tasks");
const QString showCompletedProjectsKey = QStringLiteral("show_completed_projects");
const QString showProjectsInDailyPlanKey = QStringLiteral("show_projects_in_daily_plan");
const QString showAppIconBadgeKey = QStringLiteral("show_app_icon_badge");
const QString defaultStartTimeKey = QStringLiteral("default_start_time");
const QString defaultDueTimeKey = QStringLiteral("default_due_time");
const QString showWelcomeScreenKey = QStringLiteral("show_welcome_screen");
const QString ignoreUpdateVersionKey = QStringLiteral("ignore_update_version");
const QString showMessageOnCloseKey = QStringLiteral("show_message_on_close");
const QString analyticsUserIdKey = QStringLiteral("analytics_user_id");
const QString firstLaunchDateTimeKey = QStringLiteral("first_launch_date_time");
const QString legacyFirstLaunchDateTimeKey = QStringLiteral("legacy_first_launch_date_time");
const QString authRequestSentKey = QStringLiteral("auth_request_sent");
const QString legacyAuthRequestSentKey = QStringLiteral("legacy_auth_request_sent");
const QString subscribeNewsKey = QStringLiteral("subscribe_news");
const QString subscribeNewsRequestSentKey = QStringLiteral("subscribe_news_request_sent");
const QString applicationColorKey = QStringLiteral("application_color");
const QString showCalendarOnDailyPlanPageKey = QStringLiteral("show_calendar_on_daily_plan_page");
const QString showProjectTreeViewKey = QStringLiteral("show_project_tree_view");
const QString showContextTreeViewKey = QStringLiteral("show_context_tree_view");
const QString appVersionKey = QStringLiteral("app_version");
const QString uiScaleFactorKey = QStringLiteral("ui_scale_factor");
const QString applicationLanguageKey = QStringLiteral("app_language");
const QString appThemeKey = QStringLiteral("app_theme");
const QString themeSwitchTypeKey = QStringLiteral("theme_switch_type");
const QString autoDarkThemeStartTimeKey = QStringLiteral("adt_start_time");
const QString autoDarkThemeEndTimeKey = QStringLiteral("adt_end_time");
const QString showProjectsTipKey = QStringLiteral("show_projects_tip");
const QString showContextsTipKey = QStringLiteral("show_contexts_tip");
const QString showAppearanceNewBadgeKey = QStringLiteral("show_appearance_badge");
const QString showMethodNewBadgeKey = QStringLiteral("show_method_badge");
const QString showFavoritesNewBadgeKey = QStringLiteral("show_favorites_badge");
const QString fontRenderingTypeKey = QStringLiteral("font_rendering_type");
const QString useBlueAsLightThemeColorKey = QStringLiteral("use_blue_as_light_theme_color");
const QString trashCleanupTimestampKey = QStringLiteral("trash_cleanup_timestamp");
const QString cloudSyncEnabledKey = QStringLiteral("cloud_sync_enabled");
const QString serverUrlKey = QStringLiteral("server_url");

const QString licenseKeyKey = QStringLiteral("license_key");
const QString purchaseDateTimeKey = QStringLiteral("purchase_date_time");
const QString purchaseRequestSentKey = QStringLiteral("purchase_request_sent");
const QString legacyPurchaseRequestSentKey = QStringLiteral("legacy_purchase_request_sent");
const QString puhpKey = QStringLiteral("puhp");
const QString hasppKey = QStringLiteral("haspp");
const QString receiptLinkedToUserKey = QStringLiteral("receipt_linked_to_user");
const QString receiptValidatedKey = QStringLiteral("receipt_validated");
const QString lastPurchasePopupShowKey = QStringLiteral("last_purchase_popup_show");

const QString lastLightThemeColorKey = QStringLiteral("last_light_theme_color");
const QString lastDarkThemeColorKey = QStringLiteral("last_dark_theme_color");

const QString recentProjectsArray = QStringLiteral("recent_projects");
const QString projectIdField = QStringLiteral("project_id");
const QString projectNameField = QStringLiteral("project_name");
const QString projectParentField = QStringLiteral("project_parent");

const QString proxyGroup = QStringLiteral("Proxy");

// Where older versions kept the credentials, before they moved to their own file.
const QString oldLoginKey = QStringLiteral("client_login");
const QString oldPasswordKey = QStringLiteral("client_pass");
const QString oldTokenKey = QStringLiteral("auth_token");

const QColor blueLightThemeColor(QStringLiteral("#1E88E5"));
const QColor indigoLightThemeColor(QStringLiteral("#3F51B5"));
const QColor defaultDarkThemeColor(QStringLiteral("#73ABFC"));

constexpr int recentProjectNameLength = 50;

constexpr const char* supportEmailRussian = "podderzhka@kelmora.com";
constexpr const char* supportEmailOther = "support@kelmora.com";

QString encodeProxyPassword(const QString& password)
{
    return QString::fromLatin1(password.toUtf8().toBase64().toHex());
}

QString decodeProxyPassword(const QString& encoded)
{
    return QString::fromUtf8(QByteArray::fromBase64(QByteArray::fromHex(encoded.toLatin1())));
}

QString shortenedProjectName(const QString& name)
{
    if (name.size() <= recentProjectNameLength)
        return name;
    return name.left(recentProjectNameLength) + QStringLiteral("...");
}
} // namespace

struct Settings::Private
{
    QString clientLogin;
    QString clientPassword;
    QString authToken;
    std::unique_ptr<QSettings> settings;
    QVariantList recentProjects;
    QString dataDirectory;

    QString credentialsPath() const { return dataDirectory + QLatin1Char('/') + credentialsFileName; }
};

Settings* Settings::instance()
{
    static Settings* settings = nullptr;
    if (!settings) {
        QLOG_INFO() << "Initialization of app settings...";
        settings = new Settings(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    }
    return settings;
}

Settings::Settings(const QString& dataDirectory, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->dataDirectory = dataDirectory;
    readCredentials();
    d->settings = std::make_unique<QSettings>(dataDirectory + QLatin1Char('/') + settingsFileName,
                                              QSettings::IniFormat);
    readRecentProjects();
    moveOldCredentials();
}

Settings::~Settings() = default;

QVariant Settings::value(const QString& key, const QVariant& defaultValue) const
{
    return d->settings->value(key, defaultValue);
}

bool Settings::writeValue(const QString& key, const QVariant& value)
{
    d->settings->setValue(key, value);
    d->settings->sync();
    return d->settings->status() == QSettings::NoError;
}

void Settings::readCredentials()
{
    QFile file(d->credentialsPath());
    if (!file.open(QIODevice::ReadOnly))
        return;
    QDataStream stream(&file);
    stream >> d->clientLogin >> d->clientPassword >> d->authToken;
}

void Settings::writeCredentials() const
{
    QDir().mkpath(d->dataDirectory);
    QSaveFile file(d->credentialsPath());
    if (!file.open(QIODevice::WriteOnly))
        return;
    // The file holds the account password in the clear: no one but the user may read it.
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QDataStream stream(&file);
    stream << d->clientLogin << d->clientPassword << d->authToken;
    file.commit();
}

void Settings::readRecentProjects()
{
    const int count = d->settings->beginReadArray(recentProjectsArray);
    for (int index = 0; index < count; ++index) {
        d->settings->setArrayIndex(index);
        d->recentProjects.append(QVariantMap{
            {QStringLiteral("ID"), d->settings->value(projectIdField)},
            {QStringLiteral("NAME"), shortenedProjectName(d->settings->value(projectNameField).toString())},
            {QStringLiteral("PARENT"), d->settings->value(projectParentField)},
        });
    }
    d->settings->endArray();
}

void Settings::moveOldCredentials()
{
    bool moved = false;
    const auto moveKey = [this, &moved](const QString& key, QString& target) {
        const QString oldValue = d->settings->value(key).toString();
        if (oldValue.isEmpty())
            return;
        target = oldValue;
        d->settings->remove(key);
        moved = true;
    };
    moveKey(oldLoginKey, d->clientLogin);
    moveKey(oldPasswordKey, d->clientPassword);
    moveKey(oldTokenKey, d->authToken);
    if (!moved)
        return;
    writeCredentials();
    d->settings->sync();
}

bool Settings::isShowFutureTasks() const
{
    return value(showFutureTasksKey, true).toBool();
}

bool Settings::isShowCompletedTasks() const
{
    return value(showCompletedTasksKey, true).toBool();
}

bool Settings::isShowCompletedProjects() const
{
    return value(showCompletedProjectsKey, true).toBool();
}

bool Settings::showProjectsInDailyPlan() const
{
    return value(showProjectsInDailyPlanKey, true).toBool();
}

bool Settings::showAppIconBadge() const
{
    return value(showAppIconBadgeKey, true).toBool();
}

QString Settings::defaultStartTime() const
{
    return value(defaultStartTimeKey, QStringLiteral("8:00")).toString();
}

QString Settings::defaultDueTime() const
{
    return value(defaultDueTimeKey, QStringLiteral("23:00")).toString();
}

bool Settings::isShowWelcomeScreen() const
{
    return value(showWelcomeScreenKey, true).toBool();
}

QString Settings::ignoreUpdateVersion() const
{
    return value(ignoreUpdateVersionKey).toString();
}

bool Settings::showMessageOnClose() const
{
    return value(showMessageOnCloseKey, true).toBool();
}

QString Settings::analyticsUserId() const
{
    return value(analyticsUserIdKey).toString();
}

QDateTime Settings::firstLaunchDateTime() const
{
    return value(firstLaunchDateTimeKey).toDateTime();
}

QDateTime Settings::legacyFirstLaunchDateTime() const
{
    return value(legacyFirstLaunchDateTimeKey).toDateTime();
}

bool Settings::authRequestSent() const
{
    return value(authRequestSentKey, false).toBool();
}

bool Settings::legacyAuthRequestSent() const
{
    return value(legacyAuthRequestSentKey, false).toBool();
}

bool Settings::subscribeNews() const
{
    return value(subscribeNewsKey, false).toBool();
}

bool Settings::subscribeNewsRequestSent() const
{
    return value(subscribeNewsRequestSentKey, false).toBool();
}

QColor Settings::applicationColor() const
{
    const QColor defaultColor = useBlueAsLightThemeColor() ? blueLightThemeColor : indigoLightThemeColor;
    return value(applicationColorKey, defaultColor).value<QColor>();
}

bool Settings::showCalendarOnDailyPlanPage() const
{
    return value(showCalendarOnDailyPlanPageKey, true).toBool();
}

bool Settings::showProjectTreeView() const
{
    return value(showProjectTreeViewKey, true).toBool();
}

bool Settings::showContextTreeView() const
{
    return value(showContextTreeViewKey, true).toBool();
}

QString Settings::appVersion() const
{
    return value(appVersionKey, QStringLiteral("1.0")).toString();
}

QString Settings::uiScaleFactor() const
{
    return value(uiScaleFactorKey).toString();
}

QString Settings::applicationLanguage() const
{
    return value(applicationLanguageKey, QLocale::system().name().left(2)).toString();
}

Settings::AppTheme Settings::appTheme() const
{
    return static_cast<AppTheme>(value(appThemeKey, UndefinedTheme).toInt());
}

Settings::ThemeSwitchType Settings::themeSwitchType() const
{
    return static_cast<ThemeSwitchType>(value(themeSwitchTypeKey, DependsOnSystemTheme).toInt());
}

QString Settings::autoDarkThemeStartTime() const
{
    return value(autoDarkThemeStartTimeKey, QStringLiteral("18:00")).toString();
}

QString Settings::autoDarkThemeEndTime() const
{
    return value(autoDarkThemeEndTimeKey, QStringLiteral("7:00")).toString();
}

bool Settings::showProjectsTip() const
{
    return value(showProjectsTipKey, true).toBool();
}

bool Settings::showContextsTip() const
{
    return value(showContextsTipKey, true).toBool();
}

bool Settings::showAppearanceNewBadge() const
{
    return value(showAppearanceNewBadgeKey, true).toBool();
}

bool Settings::showMethodNewBadge() const
{
    return value(showMethodNewBadgeKey, true).toBool();
}

bool Settings::showFavoritesNewBadge() const
{
    return value(showFavoritesNewBadgeKey, true).toBool();
}

QString Settings::fontRenderingType() const
{
    return value(fontRenderingTypeKey).toString();
}

bool Settings::useBlueAsLightThemeColor() const
{
    return value(useBlueAsLightThemeColorKey, false).toBool();
}

uint Settings::trashCleanupTimestamp() const
{
    return value(trashCleanupTimestampKey, 0).toUInt();
}

bool Settings::cloudSyncEnabled() const
{
    return value(cloudSyncEnabledKey, false).toBool();
}

QString Settings::serverUrl() const
{
    return value(serverUrlKey, QStringLiteral(NORVEL_API_URL)).toString();
}

QString Settings::licenseKey() const
{
    return value(licenseKeyKey).toString();
}

QDateTime Settings::purchaseDateTime() const
{
    return value(purchaseDateTimeKey).toDateTime();
}

bool Settings::purchaseRequestSent() const
{
    return value(purchaseRequestSentKey, false).toBool();
}

bool Settings::legacyPurchaseRequestSent() const
{
    return value(legacyPurchaseRequestSentKey, false).toBool();
}

bool Settings::puhp() const
{
    return value(puhpKey, false).toBool();
}

bool Settings::haspp() const
{
    return value(hasppKey, false).toBool();
}

bool Settings::receiptLinkedToUser() const
{
    return value(receiptLinkedToUserKey, false).toBool();
}

bool Settings::receiptValidated() const
{
    return value(receiptValidatedKey, false).toBool();
}

QDateTime Settings::lastPurchasePopupShow() const
{
    return value(lastPurchasePopupShowKey).toDateTime();
}

QString Settings::clientLogin() const
{
    return d->clientLogin;
}

QString Settings::clientPassword() const
{
    return d->clientPassword;
}

QString Settings::authToken() const
{
    return d->authToken;
}

QVariantList Settings::recentProjects() const
{
    return d->recentProjects;
}

QString Settings::supportEmail() const
{
    const bool russian = applicationLanguage() == QLatin1String("ru");
    return QString::fromLatin1(russian ? supportEmailRussian : supportEmailOther);
}

bool Settings::startAppWhenWindowsStarts() const
{
    return false;
}

bool Settings::hasCloudSyncEnabledOption() const
{
    return d->settings->contains(cloudSyncEnabledKey);
}

void Settings::setProxyCredentials(const QString& proxyKey, const QString& username, const QString& password)
{
    d->settings->beginGroup(proxyGroup);
    d->settings->setValue(proxyKey, QVariantList{username, encodeProxyPassword(password)});
    d->settings->endGroup();
    d->settings->sync();
}

QJsonObject Settings::proxyCredentials(const QString& proxyKey) const
{
    d->settings->beginGroup(proxyGroup);
    const QVariant stored = d->settings->value(proxyKey);
    d->settings->endGroup();
    const QVariantList entries = stored.toList();
    if (entries.size() != 2)
        return {};
    return QJsonObject{
        {QStringLiteral("username"), entries.at(0).toString()},
        {QStringLiteral("password"), decodeProxyPassword(entries.at(1).toString())},
    };
}

void Settings::removeProxyCredentials(const QString& proxyKey)
{
    d->settings->beginGroup(proxyGroup);
    d->settings->remove(proxyKey);
    d->settings->endGroup();
}

void Settings::clear()
{
    d->settings->clear();
    d->settings->sync();
}

void Settings::setShowFutureTasks(bool show)
{
    if (writeValue(showFutureTasksKey, show))
        emit showFutureTasksChanged(show);
}

void Settings::setShowCompletedTasks(bool show)
{
    if (writeValue(showCompletedTasksKey, show))
        emit showCompletedTasksChanged(show);
}

void Settings::setShowCompletedProjects(bool show)
{
    if (writeValue(showCompletedProjectsKey, show))
        emit showCompletedProjectsChanged(show);
}

void Settings::setShowProjectsInDailyPlan(bool show)
{
    if (writeValue(showProjectsInDailyPlanKey, show))
        emit showProjectsInDailyPlanChanged(show);
}

void Settings::setShowAppIconBadge(bool show)
{
    if (writeValue(showAppIconBadgeKey, show))
        emit showAppIconBadgeChanged(show);
}

void Settings::setDefaultStartTime(const QString& time)
{
    if (writeValue(defaultStartTimeKey, time))
        emit defaultStartTimeChanged(time);
}

void Settings::setDefaultDueTime(const QString& time)
{
    if (writeValue(defaultDueTimeKey, time))
        emit defaultDueTimeChanged(time);
}

void Settings::setShowWelcomeScreen(bool show)
{
    if (writeValue(showWelcomeScreenKey, show))
        emit showWelcomeScreenChanged(show);
}

void Settings::setIgnoreUpdateVersion(const QString& version)
{
    if (writeValue(ignoreUpdateVersionKey, version))
        emit ignoreUpdateVersionChanged(version);
}

void Settings::setShowMessageOnClose(bool show)
{
    if (writeValue(showMessageOnCloseKey, show))
        emit showMessageOnCloseChanged(show);
}

void Settings::setAnalyticsUserId(const QString& userId)
{
    if (writeValue(analyticsUserIdKey, userId))
        emit analyticsUserIdChanged(userId);
}

void Settings::setFirstLaunchDateTime(const QDateTime& dateTime)
{
    if (writeValue(firstLaunchDateTimeKey, dateTime))
        emit firstLaunchDateTimeChanged(dateTime);
}

void Settings::setLegacyFirstLaunchDateTime(const QDateTime& dateTime)
{
    if (writeValue(legacyFirstLaunchDateTimeKey, dateTime))
        emit legacyFirstLaunchDateTimeChanged(dateTime);
}

void Settings::setAuthRequestSent(bool sent)
{
    if (writeValue(authRequestSentKey, sent))
        emit authRequestSentChanged(sent);
}

void Settings::setLegacyAuthRequestSent(bool sent)
{
    if (writeValue(legacyAuthRequestSentKey, sent))
        emit legacyAuthRequestSentChanged(sent);
}

void Settings::setSubscribeNews(bool subscribe)
{
    if (writeValue(subscribeNewsKey, subscribe))
        emit subscribeNewsChanged(subscribe);
}

void Settings::setSubscribeNewsRequestSent(bool sent)
{
    if (writeValue(subscribeNewsRequestSentKey, sent))
        emit subscribeNewsRequestSentChanged(sent);
}

void Settings::setApplicationColor(const QColor& color)
{
    if (writeValue(applicationColorKey, color))
        emit applicationColorChanged(color);
}

void Settings::setShowCalendarOnDailyPlanPage(bool show)
{
    if (writeValue(showCalendarOnDailyPlanPageKey, show))
        emit showCalendarOnDailyPlanPageChanged(show);
}

void Settings::setShowProjectTreeView(bool show)
{
    if (writeValue(showProjectTreeViewKey, show))
        emit showProjectTreeViewChanged(show);
}

void Settings::setShowContextTreeView(bool show)
{
    if (writeValue(showContextTreeViewKey, show))
        emit showContextTreeViewChanged(show);
}

void Settings::setAppVersion(const QString& version)
{
    if (writeValue(appVersionKey, version))
        emit appVersionChanged(version);
}

void Settings::setUiScaleFactor(const QString& factor)
{
    if (writeValue(uiScaleFactorKey, factor))
        emit uiScaleFactorChanged(factor);
}

void Settings::setApplicationLanguage(const QString& language)
{
    if (writeValue(applicationLanguageKey, language))
        emit applicationLanguageChanged(language);
}

void Settings::setAppTheme(Settings::AppTheme theme)
{
    if (theme == appTheme())
        return;
    if (!writeValue(appThemeKey, static_cast<int>(theme)))
        return;
    // Each side remembers the colour the user last had in it. Anything but dark counts as light, so
    // leaving the undefined theme files the current colour as the dark one.
    if (theme == DarkTheme) {
        d->settings->setValue(lastLightThemeColorKey, applicationColor());
        setApplicationColor(value(lastDarkThemeColorKey, defaultDarkThemeColor).value<QColor>());
    } else {
        d->settings->setValue(lastDarkThemeColorKey, applicationColor());
        setApplicationColor(value(lastLightThemeColorKey, blueLightThemeColor).value<QColor>());
    }
    emit appThemeChanged(theme);
}

void Settings::setThemeSwitchType(Settings::ThemeSwitchType type)
{
    if (writeValue(themeSwitchTypeKey, static_cast<int>(type)))
        emit themeSwitchTypeChanged(type);
}

void Settings::setAutoDarkThemeStartTime(const QString& time)
{
    if (writeValue(autoDarkThemeStartTimeKey, time))
        emit autoDarkThemeStartTimeChanged(time);
}

void Settings::setAutoDarkThemeEndTime(const QString& time)
{
    if (writeValue(autoDarkThemeEndTimeKey, time))
        emit autoDarkThemeEndTimeChanged(time);
}

void Settings::setShowProjectsTip(bool show)
{
    if (writeValue(showProjectsTipKey, show))
        emit showProjectsTipChanged(show);
}

void Settings::setShowContextsTip(bool show)
{
    if (writeValue(showContextsTipKey, show))
        emit showContextsTipChanged(show);
}

void Settings::setShowAppearanceNewBadge(bool show)
{
    if (writeValue(showAppearanceNewBadgeKey, show))
        emit showAppearanceNewBadgeChanged(show);
}

void Settings::setShowMethodNewBadge(bool show)
{
    if (writeValue(showMethodNewBadgeKey, show))
        emit showMethodNewBadgeChanged(show);
}

void Settings::setShowFavoritesNewBadge(bool show)
{
    if (writeValue(showFavoritesNewBadgeKey, show))
        emit showFavoritesNewBadgeChanged(show);
}

void Settings::setFontRenderingType(const QString& type)
{
    if (writeValue(fontRenderingTypeKey, type))
        emit fontRenderingTypeChanged(type);
}

void Settings::setUseBlueAsLightThemeColor(bool use)
{
    if (writeValue(useBlueAsLightThemeColorKey, use))
        emit useBlueAsLightThemeColorChanged(use);
}

void Settings::setTrashCleanupTimestamp(uint timestamp)
{
    if (writeValue(trashCleanupTimestampKey, timestamp))
        emit trashCleanupTimestampChanged(timestamp);
}

void Settings::setCloudSyncEnabled(bool enabled)
{
    if (writeValue(cloudSyncEnabledKey, enabled))
        emit cloudSyncEnabledChanged(enabled);
}

void Settings::setServerUrl(const QString& url)
{
    if (writeValue(serverUrlKey, url))
        emit serverUrlChanged(url);
}

void Settings::setLicenseKey(const QString& key)
{
    if (writeValue(licenseKeyKey, key))
        emit licenseKeyChanged(key);
}

void Settings::setPurchaseDateTime(const QDateTime& dateTime)
{
    if (writeValue(purchaseDateTimeKey, dateTime))
        emit purchaseDateTimeChanged(dateTime);
}

void Settings::setPurchaseRequestSent(bool sent)
{
    if (writeValue(purchaseRequestSentKey, sent))
        emit purchaseRequestSentChanged(sent);
}

void Settings::setLegacyPurchaseRequestSent(bool sent)
{
    if (writeValue(legacyPurchaseRequestSentKey, sent))
        emit legacyPurchaseRequestSentChanged(sent);
}

void Settings::setPuhp(bool flag)
{
    if (writeValue(puhpKey, flag))
        emit puhpChanged(flag);
}

void Settings::setHaspp(bool flag)
{
    if (writeValue(hasppKey, flag))
        emit hasppChanged(flag);
}

void Settings::setReceiptLinkedToUser(bool linked)
{
    if (writeValue(receiptLinkedToUserKey, linked))
        emit receiptLinkedToUserChanged(linked);
}

void Settings::setReceiptValidated(bool validated)
{
    if (writeValue(receiptValidatedKey, validated))
        emit receiptValidatedChanged(validated);
}

void Settings::setLastPurchasePopupShow(const QDateTime& dateTime)
{
    if (writeValue(lastPurchasePopupShowKey, dateTime))
        emit lastPurchasePopupShowChanged(dateTime);
}

void Settings::setClientLogin(const QString& login)
{
    d->clientLogin = login;
    writeCredentials();
    emit clientLoginChanged(login);
}

void Settings::setClientPassword(const QString& password)
{
    d->clientPassword = password;
    writeCredentials();
    emit clientPasswordChanged(password);
}

void Settings::setAuthToken(const QString& token)
{
    d->authToken = token;
    writeCredentials();
    emit authTokenChanged(token);
}

void Settings::unsetClientLogin()
{
    setClientLogin(QString());
}

void Settings::unsetClientPassword()
{
    setClientPassword(QString());
}

void Settings::setRecentProjects(const QVariantList& projects)
{
    if (projects == d->recentProjects)
        return;
    d->recentProjects = projects;
    emit recentProjectsChanged(projects);
    d->settings->beginWriteArray(recentProjectsArray);
    for (int index = 0; index < projects.size(); ++index) {
        const QVariantMap project = projects.at(index).toMap();
        d->settings->setArrayIndex(index);
        d->settings->setValue(projectIdField, project.value(QStringLiteral("ID")));
        d->settings->setValue(projectNameField, project.value(QStringLiteral("NAME")));
        d->settings->setValue(projectParentField, project.value(QStringLiteral("PARENT")));
    }
    d->settings->endArray();
}

void Settings::unsetRecentProjects()
{
    d->settings->remove(recentProjectsArray);
    d->settings->sync();
    d->recentProjects.clear();
    emit recentProjectsChanged(d->recentProjects);
}

void Settings::setStartAppWhenWindowsStarts(bool) {}
