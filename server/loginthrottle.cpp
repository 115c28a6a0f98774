#include "loginthrottle.h"

#include <algorithm>

namespace {

// Bounds the memory an attacker can make the server spend on failure records.
constexpr int mostRecords = 100000;

QString loginKey(const QString& login)
{
    return QStringLiteral("login:") + login;
}

QString addressKey(const QString& address)
{
    return QStringLiteral("address:") + address;
}

} // namespace

qint64 LoginThrottle::secondsToWait(const QString& login, const QString& address, qint64 now) const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return std::max(wait(loginKey(login), freeAttemptsPerLogin, now),
                    wait(addressKey(address), freeAttemptsPerAddress, now));
}

void LoginThrottle::recordFailure(const QString& login, const QString& address, qint64 now)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_failures.size() >= mostRecords) {
        for (auto it = m_failures.begin(); it != m_failures.end();)
            it = now - it->last > longestWaitSeconds ? m_failures.erase(it) : std::next(it);
    }
    count(loginKey(login), now);
    count(addressKey(address), now);
}

void LoginThrottle::recordSuccess(const QString& login)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_failures.remove(loginKey(login));
}

qint64 LoginThrottle::wait(const QString& key, int freeAttempts, qint64 now) const
{
    const auto it = m_failures.constFind(key);
    if (it == m_failures.constEnd() || it->count < freeAttempts)
        return 0;
    const int doublings = std::min(it->count - freeAttempts, 10);
    const qint64 lockout = std::min<qint64>(qint64(1) << doublings, longestWaitSeconds);
    return std::max<qint64>(0, it->last + lockout - now);
}

void LoginThrottle::count(const QString& key, qint64 now)
{
    Failures& failures = m_failures[key];
    // A quiet spell longer than the longest wait forgives what came before.
    if (now - failures.last > longestWaitSeconds)
        failures.count = 0;
    ++failures.count;
    failures.last = now;
}
