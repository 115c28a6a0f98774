#pragma once

#include <QColor>
#include <QDateTime>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <memory>

// Every user preference and small persistent flag of the program, read from "settings.dat" on each
// access so that no value is ever stale, plus the account credentials, which live in "config.dat".
// A setter writes and syncs the file before it emits, and emits even when the value did not change.
class Settings : public QObject
{
    Q_OBJECT

    Q_PROPERTY(
        bool showFutureTasks READ isShowFutureTasks WRITE setShowFutureTasks NOTIFY showFutureTasksChanged)
    Q_PROPERTY(bool showCompletedTasks READ isShowCompletedTasks WRITE setShowCompletedTasks NOTIFY
                   showCompletedTasksChanged)
    Q_PROPERTY(bool showCompletedProjects READ isShowCompletedProjects WRITE setShowCompletedProjects NOTIFY
                   showCompletedProjectsChanged)
    Q_PROPERTY(bool showProjectsInDailyPlan READ showProjectsInDailyPlan WRITE setShowProjectsInDailyPlan
                   NOTIFY showProjectsInDailyPlanChanged)
    Q_PROPERTY(
        bool showAppIconBadge READ showAppIconBadge WRITE setShowAppIconBadge NOTIFY showAppIconBadgeChanged)
    Q_PROPERTY(QString defaultStartTime READ defaultStartTime WRITE setDefaultStartTime NOTIFY
                   defaultStartTimeChanged)
    Q_PROPERTY(
        QString defaultDueTime READ defaultDueTime WRITE setDefaultDueTime NOTIFY defaultDueTimeChanged)
    Q_PROPERTY(bool showWelcomeScreen READ isShowWelcomeScreen WRITE setShowWelcomeScreen NOTIFY
                   showWelcomeScreenChanged)
    Q_PROPERTY(QString ignoreUpdateVersion READ ignoreUpdateVersion WRITE setIgnoreUpdateVersion NOTIFY
                   ignoreUpdateVersionChanged)
    Q_PROPERTY(bool showMessageOnClose READ showMessageOnClose WRITE setShowMessageOnClose NOTIFY
                   showMessageOnCloseChanged)
    Q_PROPERTY(
        QString analyticsUserId READ analyticsUserId WRITE setAnalyticsUserId NOTIFY analyticsUserIdChanged)
    Q_PROPERTY(QDateTime firstLaunchDateTime READ firstLaunchDateTime WRITE setFirstLaunchDateTime NOTIFY
                   firstLaunchDateTimeChanged)
    Q_PROPERTY(QDateTime legacyFirstLaunchDateTime READ legacyFirstLaunchDateTime WRITE
                   setLegacyFirstLaunchDateTime NOTIFY legacyFirstLaunchDateTimeChanged)
    Q_PROPERTY(
        bool authRequestSent READ authRequestSent WRITE setAuthRequestSent NOTIFY authRequestSentChanged)
    Q_PROPERTY(bool legacyAuthRequestSent READ legacyAuthRequestSent WRITE setLegacyAuthRequestSent NOTIFY
                   legacyAuthRequestSentChanged)
    Q_PROPERTY(bool subscribeNews READ subscribeNews WRITE setSubscribeNews NOTIFY subscribeNewsChanged)
    Q_PROPERTY(bool subscribeNewsRequestSent READ subscribeNewsRequestSent WRITE setSubscribeNewsRequestSent
                   NOTIFY subscribeNewsRequestSentChanged)
    Q_PROPERTY(QColor applicationColor READ applicationColor WRITE setApplicationColor NOTIFY
                   applicationColorChanged)
    Q_PROPERTY(bool showCalendarOnDailyPlanPage READ showCalendarOnDailyPlanPage WRITE
                   setShowCalendarOnDailyPlanPage NOTIFY showCalendarOnDailyPlanPageChanged)
    Q_PROPERTY(bool showProjectTreeView READ showProjectTreeView WRITE setShowProjectTreeView NOTIFY
                   showProjectTreeViewChanged)
    Q_PROPERTY(bool showContextTreeView READ showContextTreeView WRITE setShowContextTreeView NOTIFY
                   showContextTreeViewChanged)
    Q_PROPERTY(QString appVersion READ appVersion WRITE setAppVersion NOTIFY appVersionChanged)
    Q_PROPERTY(QString uiScaleFactor READ uiScaleFactor WRITE setUiScaleFactor NOTIFY uiScaleFactorChanged)
    Q_PROPERTY(QString applicationLanguage READ applicationLanguage WRITE setApplicationLanguage NOTIFY
                   applicationLanguageChanged)
    Q_PROPERTY(AppTheme appTheme READ appTheme WRITE setAppTheme NOTIFY appThemeChanged)
    Q_PROPERTY(ThemeSwitchType themeSwitchType READ themeSwitchType WRITE setThemeSwitchType NOTIFY
                   themeSwitchTypeChanged)
    Q_PROPERTY(QString autoDarkThemeStartTime READ autoDarkThemeStartTime WRITE setAutoDarkThemeStartTime
                   NOTIFY autoDarkThemeStartTimeChanged)
    Q_PROPERTY(QString autoDarkThemeEndTime READ autoDarkThemeEndTime WRITE setAutoDarkThemeEndTime NOTIFY
                   autoDarkThemeEndTimeChanged)
    Q_PROPERTY(
        bool showProjectsTip READ showProjectsTip WRITE setShowProjectsTip NOTIFY showProjectsTipChanged)
    Q_PROPERTY(
        bool showContextsTip READ showContextsTip WRITE setShowContextsTip NOTIFY showContextsTipChanged)
    Q_PROPERTY(bool showAppearanceNewBadge READ showAppearanceNewBadge WRITE setShowAppearanceNewBadge NOTIFY
                   showAppearanceNewBadgeChanged)
    Q_PROPERTY(bool showMethodNewBadge READ showMethodNewBadge WRITE setShowMethodNewBadge NOTIFY
                   showMethodNewBadgeChanged)
    Q_PROPERTY(bool showFavoritesNewBadge READ showFavoritesNewBadge WRITE setShowFavoritesNewBadge NOTIFY
                   showFavoritesNewBadgeChanged)
    Q_PROPERTY(QString fontRenderingType READ fontRenderingType WRITE setFontRenderingType NOTIFY
                   fontRenderingTypeChanged)
    Q_PROPERTY(bool useBlueAsLightThemeColor READ useBlueAsLightThemeColor WRITE setUseBlueAsLightThemeColor
                   NOTIFY useBlueAsLightThemeColorChanged)
    Q_PROPERTY(uint trashCleanupTimestamp READ trashCleanupTimestamp WRITE setTrashCleanupTimestamp NOTIFY
                   trashCleanupTimestampChanged)
    Q_PROPERTY(
        bool cloudSyncEnabled READ cloudSyncEnabled WRITE setCloudSyncEnabled NOTIFY cloudSyncEnabledChanged)
    // The sync server's base address; a user running a server of their own points the program at it.
    Q_PROPERTY(QString serverUrl READ serverUrl WRITE setServerUrl NOTIFY serverUrlChanged)

    // Kept for the premium check only; nothing in this class interprets them.
    Q_PROPERTY(QString licenseKey READ licenseKey WRITE setLicenseKey NOTIFY licenseKeyChanged)
    Q_PROPERTY(QDateTime purchaseDateTime READ purchaseDateTime WRITE setPurchaseDateTime NOTIFY
                   purchaseDateTimeChanged)
    Q_PROPERTY(bool purchaseRequestSent READ purchaseRequestSent WRITE setPurchaseRequestSent NOTIFY
                   purchaseRequestSentChanged)
    Q_PROPERTY(bool legacyPurchaseRequestSent READ legacyPurchaseRequestSent WRITE
                   setLegacyPurchaseRequestSent NOTIFY legacyPurchaseRequestSentChanged)
    Q_PROPERTY(bool puhp READ puhp WRITE setPuhp NOTIFY puhpChanged)
    Q_PROPERTY(bool haspp READ haspp WRITE setHaspp NOTIFY hasppChanged)
    Q_PROPERTY(bool receiptLinkedToUser READ receiptLinkedToUser WRITE setReceiptLinkedToUser NOTIFY
                   receiptLinkedToUserChanged)
    Q_PROPERTY(
        bool receiptValidated READ receiptValidated WRITE setReceiptValidated NOTIFY receiptValidatedChanged)
    Q_PROPERTY(QDateTime lastPurchasePopupShow READ lastPurchasePopupShow WRITE setLastPurchasePopupShow
                   NOTIFY lastPurchasePopupShowChanged)

    Q_PROPERTY(QString clientLogin READ clientLogin WRITE setClientLogin RESET unsetClientLogin NOTIFY
                   clientLoginChanged)
    Q_PROPERTY(QString clientPassword READ clientPassword WRITE setClientPassword RESET unsetClientPassword
                   NOTIFY clientPasswordChanged)
    Q_PROPERTY(QString authToken READ authToken WRITE setAuthToken NOTIFY authTokenChanged)
    Q_PROPERTY(QVariantList recentProjects READ recentProjects WRITE setRecentProjects RESET
                   unsetRecentProjects NOTIFY recentProjectsChanged)
    // The address follows the language, so it changes with it.
    Q_PROPERTY(QString supportEmail READ supportEmail NOTIFY applicationLanguageChanged)
    Q_PROPERTY(bool startAppWhenWindowsStarts READ startAppWhenWindowsStarts WRITE
                   setStartAppWhenWindowsStarts NOTIFY startAppWhenWindowsStartsChanged)

public:
    enum AppTheme { UndefinedTheme = 0, LightTheme = 1, DarkTheme = 2 };
    Q_ENUM(AppTheme)

    enum ThemeSwitchType { Manual = 0, DependsOnSystemTheme = 1, AutoByTime = 2 };
    Q_ENUM(ThemeSwitchType)

    // The program's one instance, on the files of the standard data directory.
    static Settings* instance();

    // Works on "settings.dat" and "config.dat" inside dataDirectory; the program goes through instance().
    explicit Settings(const QString& dataDirectory, QObject* parent = nullptr);
    ~Settings() override;

    bool isShowFutureTasks() const;
    bool isShowCompletedTasks() const;
    bool isShowCompletedProjects() const;
    bool showProjectsInDailyPlan() const;
    bool showAppIconBadge() const;
    QString defaultStartTime() const;
    QString defaultDueTime() const;
    bool isShowWelcomeScreen() const;
    QString ignoreUpdateVersion() const;
    bool showMessageOnClose() const;
    QString analyticsUserId() const;
    QDateTime firstLaunchDateTime() const;
    QDateTime legacyFirstLaunchDateTime() const;
    bool authRequestSent() const;
    bool legacyAuthRequestSent() const;
    bool subscribeNews() const;
    bool subscribeNewsRequestSent() const;
    QColor applicationColor() const;
    bool showCalendarOnDailyPlanPage() const;
    bool showProjectTreeView() const;
    bool showContextTreeView() const;
    QString appVersion() const;
    QString uiScaleFactor() const;
    QString applicationLanguage() const;
    AppTheme appTheme() const;
    ThemeSwitchType themeSwitchType() const;
    QString autoDarkThemeStartTime() const;
    QString autoDarkThemeEndTime() const;
    bool showProjectsTip() const;
    bool showContextsTip() const;
    bool showAppearanceNewBadge() const;
    bool showMethodNewBadge() const;
    bool showFavoritesNewBadge() const;
    QString fontRenderingType() const;
    bool useBlueAsLightThemeColor() const;
    uint trashCleanupTimestamp() const;
    bool cloudSyncEnabled() const;
    QString serverUrl() const;

    QString licenseKey() const;
    QDateTime purchaseDateTime() const;
    bool purchaseRequestSent() const;
    bool legacyPurchaseRequestSent() const;
    bool puhp() const;
    bool haspp() const;
    bool receiptLinkedToUser() const;
    bool receiptValidated() const;
    QDateTime lastPurchasePopupShow() const;

    QString clientLogin() const;
    QString clientPassword() const;
    QString authToken() const;
    QVariantList recentProjects() const;
    QString supportEmail() const;
    bool startAppWhenWindowsStarts() const;

    // Tells a key that was never written from one that holds false.
    Q_INVOKABLE bool hasCloudSyncEnabledOption() const;

    // proxyKey names one proxy by host and port. The password is only encoded, not protected.
    Q_INVOKABLE void setProxyCredentials(const QString& proxyKey, const QString& username,
                                         const QString& password);
    // {"username", "password"}, or an empty object when nothing usable is stored.
    Q_INVOKABLE QJsonObject proxyCredentials(const QString& proxyKey) const;
    Q_INVOKABLE void removeProxyCredentials(const QString& proxyKey);

    void clear();

public slots:
    void setShowFutureTasks(bool show);
    void setShowCompletedTasks(bool show);
    void setShowCompletedProjects(bool show);
    void setShowProjectsInDailyPlan(bool show);
    void setShowAppIconBadge(bool show);
    void setDefaultStartTime(const QString& time);
    void setDefaultDueTime(const QString& time);
    void setShowWelcomeScreen(bool show);
    void setIgnoreUpdateVersion(const QString& version);
    void setShowMessageOnClose(bool show);
    void setAnalyticsUserId(const QString& userId);
    void setFirstLaunchDateTime(const QDateTime& dateTime);
    void setLegacyFirstLaunchDateTime(const QDateTime& dateTime);
    void setAuthRequestSent(bool sent);
    void setLegacyAuthRequestSent(bool sent);
    void setSubscribeNews(bool subscribe);
    void setSubscribeNewsRequestSent(bool sent);
    void setApplicationColor(const QColor& color);
    void setShowCalendarOnDailyPlanPage(bool show);
    void setShowProjectTreeView(bool show);
    void setShowContextTreeView(bool show);
    void setAppVersion(const QString& version);
    void setUiScaleFactor(const QString& factor);
    void setApplicationLanguage(const QString& language);
    // Switching between dark and light also swaps applicationColor for the one last used in the
    // theme being entered.
    void setAppTheme(Settings::AppTheme theme);
    void setThemeSwitchType(Settings::ThemeSwitchType type);
    void setAutoDarkThemeStartTime(const QString& time);
    void setAutoDarkThemeEndTime(const QString& time);
    void setShowProjectsTip(bool show);
    void setShowContextsTip(bool show);
    void setShowAppearanceNewBadge(bool show);
    void setShowMethodNewBadge(bool show);
    void setShowFavoritesNewBadge(bool show);
    void setFontRenderingType(const QString& type);
    void setUseBlueAsLightThemeColor(bool use);
    void setTrashCleanupTimestamp(uint timestamp);
    void setCloudSyncEnabled(bool enabled);
    void setServerUrl(const QString& url);

    void setLicenseKey(const QString& key);
    void setPurchaseDateTime(const QDateTime& dateTime);
    void setPurchaseRequestSent(bool sent);
    void setLegacyPurchaseRequestSent(bool sent);
    void setPuhp(bool flag);
    void setHaspp(bool flag);
    void setReceiptLinkedToUser(bool linked);
    void setReceiptValidated(bool validated);
    void setLastPurchasePopupShow(const QDateTime& dateTime);

    void setClientLogin(const QString& login);
    void setClientPassword(const QString& password);
    void setAuthToken(const QString& token);
    void unsetClientLogin();
    void unsetClientPassword();
    // Each entry is a map with "ID", "NAME" and "PARENT".
    void setRecentProjects(const QVariantList& projects);
    void unsetRecentProjects();
    // Starting with the system is not offered on this platform: the setter ignores its argument.
    void setStartAppWhenWindowsStarts(bool start);

signals:
    void showFutureTasksChanged(bool showFutureTasks);
    void showCompletedTasksChanged(bool showCompletedTasks);
    void showCompletedProjectsChanged(bool showCompletedProjects);
    void showProjectsInDailyPlanChanged(bool showProjectsInDailyPlan);
    void showAppIconBadgeChanged(bool showAppIconBadge);
    void defaultStartTimeChanged(const QString& defaultStartTime);
    void defaultDueTimeChanged(const QString& defaultDueTime);
    void showWelcomeScreenChanged(bool showWelcomeScreen);
    void ignoreUpdateVersionChanged(const QString& ignoreUpdateVersion);
    void showMessageOnCloseChanged(bool showMessageOnClose);
    void analyticsUserIdChanged(const QString& analyticsUserId);
    void firstLaunchDateTimeChanged(const QDateTime& firstLaunchDateTime);
    void legacyFirstLaunchDateTimeChanged(const QDateTime& legacyFirstLaunchDateTime);
    void authRequestSentChanged(bool authRequestSent);
    void legacyAuthRequestSentChanged(bool legacyAuthRequestSent);
    void subscribeNewsChanged(bool subscribeNews);
    void subscribeNewsRequestSentChanged(bool subscribeNewsRequestSent);
    void applicationColorChanged(const QColor& applicationColor);
    void showCalendarOnDailyPlanPageChanged(bool showCalendarOnDailyPlanPage);
    void showProjectTreeViewChanged(bool showProjectTreeView);
    void showContextTreeViewChanged(bool showContextTreeView);
    void appVersionChanged(const QString& appVersion);
    void uiScaleFactorChanged(const QString& uiScaleFactor);
    void applicationLanguageChanged(const QString& applicationLanguage);
    void appThemeChanged(Settings::AppTheme appTheme);
    void themeSwitchTypeChanged(Settings::ThemeSwitchType themeSwitchType);
    void autoDarkThemeStartTimeChanged(const QString& autoDarkThemeStartTime);
    void autoDarkThemeEndTimeChanged(const QString& autoDarkThemeEndTime);
    void showProjectsTipChanged(bool showProjectsTip);
    void showContextsTipChanged(bool showContextsTip);
    void showAppearanceNewBadgeChanged(bool showAppearanceNewBadge);
    void showMethodNewBadgeChanged(bool showMethodNewBadge);
    void showFavoritesNewBadgeChanged(bool showFavoritesNewBadge);
    void fontRenderingTypeChanged(const QString& fontRenderingType);
    void useBlueAsLightThemeColorChanged(bool useBlueAsLightThemeColor);
    void trashCleanupTimestampChanged(uint trashCleanupTimestamp);
    void cloudSyncEnabledChanged(bool cloudSyncEnabled);
    void serverUrlChanged(const QString& serverUrl);

    void licenseKeyChanged(const QString& licenseKey);
    void purchaseDateTimeChanged(const QDateTime& purchaseDateTime);
    void purchaseRequestSentChanged(bool purchaseRequestSent);
    void legacyPurchaseRequestSentChanged(bool legacyPurchaseRequestSent);
    void puhpChanged(bool puhp);
    void hasppChanged(bool haspp);
    void receiptLinkedToUserChanged(bool receiptLinkedToUser);
    void receiptValidatedChanged(bool receiptValidated);
    void lastPurchasePopupShowChanged(const QDateTime& lastPurchasePopupShow);

    void clientLoginChanged(const QString& clientLogin);
    void clientPasswordChanged(const QString& clientPassword);
    void authTokenChanged(const QString& authToken);
    void recentProjectsChanged(const QVariantList& recentProjects);
    void startAppWhenWindowsStartsChanged(bool startAppWhenWindowsStarts);

private:
    QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;
    // True when the value reached the disk, which is when a setter may announce it.
    bool writeValue(const QString& key, const QVariant& value);

    void readCredentials();
    void writeCredentials() const;
    void readRecentProjects();
    void moveOldCredentials();

    struct Private;
    std::unique_ptr<Private> d;
};
