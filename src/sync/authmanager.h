#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

#include <memory>

// Obtains the token of the sync server's REST side (favorites, sorted lists, reminders) from the
// account's login and password, and keeps it in Settings.
class AuthManager : public QObject
{
    Q_OBJECT

public:
    // The default base address; Settings::serverUrl() may name another.
    static constexpr const char* API_URL = NORVEL_API_URL;

    static AuthManager* instance();
    ~AuthManager() override;

    // The base address in use.
    static QString apiUrl();
    // "Content-Type" and "User-Agent", in this order, for every REST call.
    static QList<QPair<QByteArray, QByteArray>> defaultHeaders();

    bool hasToken() const;
    QString token() const;

public slots:
    void requestToken();
    void logout();

signals:
    void authTokenReceived();
    void serverError(const QString& errorText);

private:
    AuthManager();
    void handleTokenReply();

    struct Private;
    std::unique_ptr<Private> d;
};
