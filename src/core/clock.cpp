#include "clock.h"

#include <QMutex>
#include <QMutexLocker>

namespace {
QMutex pinnedMutex;
QDateTime pinnedMoment;

QDateTime pinnedValue()
{
    QMutexLocker locker(&pinnedMutex);
    return pinnedMoment;
}
} // namespace

QDateTime Clock::currentDateTime()
{
    const QDateTime pinned = pinnedValue();
    return pinned.isValid() ? pinned.toLocalTime() : QDateTime::currentDateTime();
}

QDateTime Clock::currentDateTimeUtc()
{
    const QDateTime pinned = pinnedValue();
    return pinned.isValid() ? pinned.toUTC() : QDateTime::currentDateTimeUtc();
}

QDate Clock::currentDate()
{
    return currentDateTime().date();
}

void Clock::pin(const QDateTime& moment)
{
    QMutexLocker locker(&pinnedMutex);
    pinnedMoment = moment;
}

void Clock::unpin()
{
    pin(QDateTime());
}
