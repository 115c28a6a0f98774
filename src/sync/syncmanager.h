#pragma once

#include <QAuthenticator>
#include <QDateTime>
#include <QNetworkProxy>
#include <QObject>
#include <QString>

#include <memory>

class SyncHandler;

// The account and sync front on the database thread: starts runs of the sync handler, keeps the
// busy flags of the account calls, turns server codes into messages for the user, records the last
// good sync and ends the session when the password was changed on another device.
class SyncManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    Q_PROPERTY(bool checkLoginActive READ isCheckLoginActive NOTIFY checkLoginActiveChanged)
    Q_PROPERTY(bool registrationActive READ isRegistrationActive NOTIFY registrationActiveChanged)
    Q_PROPERTY(bool resetPasswordActive READ resetPasswordActive NOTIFY resetPasswordActiveChanged)
    Q_PROPERTY(bool changePasswordActive READ changePasswordActive NOTIFY changePasswordActiveChanged)
    Q_PROPERTY(bool loggedIn READ isLoggedIn NOTIFY loggedInChanged)
    Q_PROPERTY(int syncProgress READ syncProgress NOTIFY progressChanged)
    Q_PROPERTY(QDateTime lastSyncDateTime READ lastSyncDateTime NOTIFY lastSyncDateTimeChanged)

public:
    // Made on the database thread, which it then belongs to.
    static SyncManager* instance();
    ~SyncManager() override;

    SyncHandler* syncHandler() const;
    int syncProgress() const;

    Q_INVOKABLE void registerUser(const QString& login, const QString& password);
    Q_INVOKABLE void checkLogin(const QString& login, const QString& password);
    Q_INVOKABLE void logout();
    Q_INVOKABLE void resetPassword(const QString& login);
    // Both passwords as typed.
    Q_INVOKABLE void changePassword(const QString& oldPassword, const QString& newPassword);
    Q_INVOKABLE bool isCheckLoginActive() const;
    Q_INVOKABLE bool isActive() const;
    Q_INVOKABLE bool isLoggedIn() const;
    Q_INVOKABLE bool isRegistrationActive() const;
    Q_INVOKABLE bool resetPasswordActive() const;
    Q_INVOKABLE bool changePasswordActive() const;
    Q_INVOKABLE QDateTime lastSyncDateTime();

public slots:
    void start();
    void abort();
    // As start(), without messages for the user.
    void startSilent();

signals:
    void userIsAboutToLogout();
    void activeChanged(bool active);
    void progressChanged(int progress);
    void checkLoginActiveChanged(bool active);
    void loggedInChanged(bool loggedIn);
    void checkLoginSuccessful();
    void resetPasswordSuccessful();
    void changePasswordSuccessful();
    void passwordChangedOutside();
    void registrationActiveChanged(bool active);
    void userRegistered();
    void networkError(int code);
    void serverError(const QString& title, const QString& displayMessage, int code);
    void resetPasswordActiveChanged(bool active);
    void changePasswordActiveChanged(bool active);
    void lastSyncDateTimeChanged(const QDateTime& lastSyncDateTime);
    void proxyAuthenticationRequired(const QNetworkProxy& proxy, QAuthenticator* authenticator);

private:
    SyncManager();
    void setActive(bool active);
    void updateLoggedIn();
    void loadBuiltInProjectIds();
    void handleSyncFinished();
    void handleProgressChanged(int progress);
    void handleNetworkError();
    void handleServerError(int code, const QString& text);

    struct Private;
    std::unique_ptr<Private> d;
};

// Crosses from the database thread to the interface, which fills the credentials in.
Q_DECLARE_METATYPE(QAuthenticator*)
