#pragma once

#include <QColor>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QObject>
#include <QSystemTrayIcon>
#include <QTime>
#include <QVariant>

#include <memory>

class AppearancePortal;
class QAuthenticator;
class QQmlApplicationEngine;
class QWindow;

// Owns the QML engine and the main window: publishes the services and constants that the QML files
// read, installs the translations, loads main.qml and afterwards serves the interface with window
// control, theme switching, the tracking of user actions during an undo offer and the proxy dialog.
class GuiManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isAppInDarkMode READ isAppInDarkMode WRITE setAppInDarkMode NOTIFY appThemeChanged)

public:
    static constexpr int proxyDialogTimeoutMilliseconds = 29000;
    // Saved proxy credentials are handed out this many times before the user is asked again.
    static constexpr int savedProxyCredentialAttempts = 3;
    static constexpr const char* darkSystemAccentColor = "#73ABFC";
    static constexpr const char* lightSystemAccentColor = "#3F51B5";

    // Follows the desktop's appearance through the session bus.
    static GuiManager* instance();
    explicit GuiManager(AppearancePortal* appearance, QObject* parent = nullptr);
    ~GuiManager() override;

    // Registers the QML types, publishes the context and installs the translations; once only.
    void initialize();
    // Loads main.qml; its window stays hidden until something shows it.
    void loadUi();
    // Both do nothing before initialize().
    void setContextProperty(const QString& name, QObject* object);
    void setContextProperty(const QString& name, const QVariant& value);

    QQmlApplicationEngine* engine() const;
    QWindow* mainWindow() const;
    bool isAppInDarkMode() const;
    bool isRateHandlingEnabled() const;
    // Without a tray icon a closed window is minimised instead of hidden, so it can be found again.
    Q_INVOKABLE bool hasTrayIcon() const;

    // The dark span of the automatic theme: from start up to end, or up to midnight when end comes
    // before start.
    static bool isInDarkTimeSpan(const QTime& start, const QTime& end, const QTime& now);

    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    void showMainWindow();
    void showMainWindowMinimized();
    void hideMainWindow();
    void activateWindow();
    bool isWindowsFullScreen() const;
    bool isWindowActive() const;
    void suspendRateHandlings();
    void continueRateHandlings();
    void shakeWindow();
    void reloadTranslations();
    void setWaitingAppCursor();
    void setDefaultAppCursor();
    void setTitleBarColor(const QColor& color);
    void setDefaultYesButtonForQuestionDialog();
    void setAppInDarkMode(bool dark);
    void switchAppThemeIfNeeded();
    void startTrackUserActions();
    void endTrackUserActions();
    void handleProxyAuthentication(const QNetworkProxy& proxy, QAuthenticator* authenticator);
    void showTaskById(const QString& taskId);
    void onTrayActivated(QSystemTrayIcon::ActivationReason reason);

signals:
    void windowDidShow();
    void appThemeChanged();
    void userPerformedAction();

private:
    void reconcileApplicationColor();
    void registerQmlTypes();
    void publishServices();
    void connectNotifications();
    void publishConstants();
    // Stands in for a service that a later part of the program provides: QML finds an object under
    // the name, with no methods yet, so reads give undefined and calls must wait for the real one.
    QObject* publishSeat(const QString& name);
    void followSystemAppearance(bool dark);
    void toggleMainWindow();
    void createTrayIcon();
    void updateTrayIcon();
    QJsonObject showProxyDialog(const QString& proxyKey);

    struct Private;
    std::unique_ptr<Private> d;
};
