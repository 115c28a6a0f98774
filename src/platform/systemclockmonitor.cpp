#include "systemclockmonitor.h"

#include "core/logmanager.h"

#include <QSocketNotifier>

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <sys/timerfd.h>
#include <unistd.h>

SystemClockMonitor::SystemClockMonitor(QObject* parent)
    : QObject(parent)
{
    m_descriptor = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (m_descriptor < 0 || !arm()) {
        QLOG_WARN() << "Changes of the system clock go unnoticed, errno " << errno;
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = -1;
        return;
    }
    auto* notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SystemClockMonitor::handleActivated);
}

SystemClockMonitor::~SystemClockMonitor()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

namespace {
// 2200-01-01 UTC.
constexpr time_t farFuture = 7258118400;
} // namespace

// An absolute timer that far ahead never expires; a setting of the clock cancels it, which makes
// the descriptor readable with ECANCELED.
bool SystemClockMonitor::arm()
{
    itimerspec never{};
    never.it_value.tv_sec = farFuture;
    return timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) == 0;
}

void SystemClockMonitor::handleActivated()
{
    uint64_t expirations = 0;
    const ssize_t result = ::read(m_descriptor, &expirations, sizeof expirations);
    if (result >= 0 || errno != ECANCELED)
        return;
    arm();
    emit clockChanged();
}
