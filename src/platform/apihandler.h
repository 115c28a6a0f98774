#pragma once

#include <QAuthenticator>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QPair>
#include <QString>
#include <QVariantMap>

#include <memory>

class ApiOperation;

// The client of the sync server's revision protocol and account calls (docs/protocol.md). Every call
// returns a running operation that the caller owns; everything happens on the thread the handler
// lives on, through its event loop, so a nested QEventLoop is enough to wait for one.
class ApiHandler : public QObject
{
    Q_OBJECT

public:
    // extraKeys go with every request, e.g. {"PLATFORM", "OSX"}, {"VERSION", "1.11"}.
    explicit ApiHandler(const QList<QPair<QString, QString>>& extraKeys, QObject* parent = nullptr);
    ~ApiHandler() override;

    void setClientLogin(const QString& login);
    void setClientPassword(const QString& password);

    ApiOperation* getChanges(int revision, QObject* parent = nullptr);
    ApiOperation* createContext(const QVariantMap& object, int revision, QObject* parent = nullptr);
    ApiOperation* updateContext(const QVariantMap& object, int revision, QObject* parent = nullptr);
    ApiOperation* createProject(const QVariantMap& object, int revision, QObject* parent = nullptr);
    ApiOperation* updateProject(const QVariantMap& object, int revision, QObject* parent = nullptr);
    ApiOperation* createTask(const QVariantMap& object, int revision, QObject* parent = nullptr);
    ApiOperation* updateTask(const QVariantMap& object, int revision, QObject* parent = nullptr);

    // login and password as the account pages give them: the password already in its MD5 form.
    ApiOperation* registerUser(const QString& login, const QString& password, QObject* parent = nullptr);
    ApiOperation* checkLogin(const QString& login, const QString& password, QObject* parent = nullptr);
    ApiOperation* resetPassword(const QString& login, QObject* parent = nullptr);
    // Both passwords as typed; they leave in their MD5 form.
    ApiOperation* changePassword(const QString& login, const QString& oldPassword, const QString& newPassword,
                                 QObject* parent = nullptr);

signals:
    void proxyAuthenticationRequired(const QNetworkProxy& proxy, QAuthenticator* authenticator);

private:
    ApiOperation* sendObject(const QString& kind, const QString& action, const QVariantMap& object,
                             int revision, QObject* parent);
    ApiOperation* post(const QString& path, QVariantMap body, bool withCredentials, QObject* parent);

    struct Private;
    std::unique_ptr<Private> d;
};
