#pragma once

#include <QAuthenticator>
#include <QNetworkProxy>
#include <QObject>
#include <QString>

#include <memory>

// One exchange of objects with the server: everything changed since the last revision seen is
// applied in one transaction, then every local change leaves, one request per object, parents
// first. Also carries the account calls. Reports by signal only; lives on the database thread.
class SyncHandler : public QObject
{
    Q_OBJECT

public:
    explicit SyncHandler(QObject* parent = nullptr);
    ~SyncHandler() override;

public slots:
    bool start();
    void abort();
    bool registerUser(const QString& login, const QString& password);
    bool checkLogin(const QString& login, const QString& password);
    bool resetPassword(const QString& login);
    bool changePassword(const QString& login, const QString& oldPassword, const QString& newPassword);

signals:
    void started();
    void finished();
    void progressChanged(int percentage);
    void networkError();
    void serverError(int errorCode);
    void buildInProjectsUpdated();
    void proxyAuthenticationRequired(const QNetworkProxy& proxy, QAuthenticator* authenticator);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
