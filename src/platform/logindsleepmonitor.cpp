#include "logindsleepmonitor.h"

LogindSleepMonitor::LogindSleepMonitor(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
{
    if (!bus.isConnected())
        return;
    QDBusConnection(bus).connect(QStringLiteral("org.freedesktop.login1"),
                                 QStringLiteral("/org/freedesktop/login1"),
                                 QStringLiteral("org.freedesktop.login1.Manager"),
                                 QStringLiteral("PrepareForSleep"), this, SLOT(handlePrepareForSleep(bool)));
}

LogindSleepMonitor::~LogindSleepMonitor() = default;

void LogindSleepMonitor::handlePrepareForSleep(bool goingToSleep)
{
    // logind sends false once the system is back; a false without a sleep before it is no wake.
    if (goingToSleep) {
        m_sleeping = true;
        return;
    }
    if (!m_sleeping)
        return;
    m_sleeping = false;
    emit wokeUp();
}
