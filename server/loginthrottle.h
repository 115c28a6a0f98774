#pragma once

#include <QHash>
#include <QString>

#include <mutex>

// Slows down guessing: after a few failed logins for one e-mail address, or many from one network
// address, further attempts are refused unseen for a time that doubles with each failure.
class LoginThrottle
{
public:
    static constexpr int freeAttemptsPerLogin = 5;
    static constexpr int freeAttemptsPerAddress = 50;
    static constexpr qint64 longestWaitSeconds = 900;

    // 0 when an attempt may be checked now, else the seconds to wait.
    qint64 secondsToWait(const QString& login, const QString& address, qint64 now) const;
    void recordFailure(const QString& login, const QString& address, qint64 now);
    void recordSuccess(const QString& login);

private:
    struct Failures
    {
        int count = 0;
        qint64 last = 0;
    };

    qint64 wait(const QString& key, int freeAttempts, qint64 now) const;
    void count(const QString& key, qint64 now);

    mutable std::mutex m_mutex;
    QHash<QString, Failures> m_failures;
};
