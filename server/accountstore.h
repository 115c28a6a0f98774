#pragma once

#include "loginthrottle.h"
#include "resultcode.h"

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QString>

#include <mutex>

class Mailer;

// Accounts, keyed by e-mail address. The secret a client sends (the MD5 form of the password) is
// stored only as a slow salted hash; to keep every sync request from paying that price, a secret once
// verified is remembered in memory under a key of this process, for as long as the stored hash stands.
class AccountStore
{
public:
    struct Login
    {
        int code = ResultCode::Success;
        QString text;
        qint64 accountId = 0;
    };

    explicit AccountStore(const Mailer* mailer);

    Outcome registerAccount(const QString& email, const QString& secret, bool russian);
    // Failures count towards the throttle of the address and the client's network address.
    Login authenticate(const QString& email, const QString& secret, const QString& remoteAddress);
    Outcome changePassword(const QString& email, const QString& oldSecret, const QString& newSecret,
                           const QString& remoteAddress);
    // Mails a one-hour link that, once opened, gives the account a new random password.
    Outcome requestPasswordReset(const QString& email, const QString& confirmationUrl);
    // The new password, or empty when the link is unknown, used or expired.
    QString confirmPasswordReset(const QByteArray& token);

    // A new REST token for the account; only its digest is stored.
    QByteArray issueToken(qint64 accountId);
    // 0 for an unknown token.
    qint64 accountForToken(const QByteArray& token);

    static QString normalizedEmail(const QString& email);
    static bool isValidEmail(const QString& email);
    static bool isValidSecret(const QString& secret);

private:
    bool verify(qint64 accountId, const QByteArray& storedHash, const QString& secret);
    bool storePassword(qint64 accountId, const QString& secret);

    const Mailer* m_mailer;
    LoginThrottle m_throttle;
    std::mutex m_cacheMutex;
    // Account id to the stored hash and this process's digest of the secret that matched it.
    QHash<qint64, QPair<QByteArray, QByteArray>> m_verified;
};
