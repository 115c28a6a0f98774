#include "notificationmanagerprivate.h"

#include "core/clock.h"
#include "core/logmanager.h"
#include "platform/desktopnotifications.h"

#include <QHash>
#include <QSettings>
#include <QTimer>

#include <algorithm>

namespace {
const QString arrayKey = QStringLiteral("notifications");
const QString identifierKey = QStringLiteral("identifier");
const QString titleKey = QStringLiteral("title");
const QString textKey = QStringLiteral("text");
const QString momentKey = QStringLiteral("moment");
const QString actionKey = QStringLiteral("action");

// A far moment is measured again after a day rather than in one wait: a timer's interval is
// limited, and a day bounds the harm of a clock change that went unnoticed.
constexpr qint64 longestWaitMilliseconds = 24 * 3600 * 1000;

QList<UserNotification> readSchedule(const QString& filePath)
{
    QSettings settings(filePath, QSettings::IniFormat);
    QList<UserNotification> schedule;
    const int size = settings.beginReadArray(arrayKey);
    for (int index = 0; index < size; ++index) {
        settings.setArrayIndex(index);
        UserNotification notification;
        notification.identifier = settings.value(identifierKey).toString();
        notification.title = settings.value(titleKey).toString();
        notification.informativeText = settings.value(textKey).toString();
        notification.deliveryDateTime =
            QDateTime::fromString(settings.value(momentKey).toString(), Qt::ISODateWithMs);
        notification.actionButtonTitle = settings.value(actionKey).toString();
        if (notification.identifier.isEmpty() || !notification.deliveryDateTime.isValid()) {
            QLOG_WARN() << "Unreadable scheduled reminder skipped, number " << index;
            continue;
        }
        schedule.append(notification);
    }
    settings.endArray();
    return schedule;
}

void writeSchedule(const QString& filePath, const QList<UserNotification>& schedule)
{
    QSettings settings(filePath, QSettings::IniFormat);
    settings.remove(arrayKey);
    settings.beginWriteArray(arrayKey, schedule.size());
    for (int index = 0; index < schedule.size(); ++index) {
        const UserNotification& notification = schedule.at(index);
        settings.setArrayIndex(index);
        settings.setValue(identifierKey, notification.identifier);
        settings.setValue(titleKey, notification.title);
        settings.setValue(textKey, notification.informativeText);
        settings.setValue(momentKey, notification.deliveryDateTime.toUTC().toString(Qt::ISODateWithMs));
        settings.setValue(actionKey, notification.actionButtonTitle);
    }
    settings.endArray();
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        QLOG_ERROR() << "Scheduled reminders could not be written to " << filePath;
    }
}
} // namespace

struct NotificationManagerPrivate::Private
{
    QString filePath;
    DesktopNotifications* desktop = nullptr;
    QTimer* timer = nullptr;
    QList<UserNotification> schedule;
    // Shown notifications by identifier, kept for the answer to their buttons.
    QHash<QString, UserNotification> delivered;

    void save() const { writeSchedule(filePath, schedule); }

    void removeFromSchedule(const QString& identifier)
    {
        schedule.erase(std::remove_if(schedule.begin(), schedule.end(),
                                      [&](const UserNotification& notification) {
                                          return notification.identifier == identifier;
                                      }),
                       schedule.end());
    }
};

NotificationManagerPrivate::NotificationManagerPrivate(const QString& filePath, DesktopNotifications* desktop,
                                                       QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->filePath = filePath;
    d->desktop = desktop;
    desktop->setParent(this);
    d->timer = new QTimer(this);
    d->timer->setSingleShot(true);
    // A coarse timer may be off by a twentieth of its interval: minutes, for a reminder hours ahead.
    d->timer->setTimerType(Qt::PreciseTimer);
    connect(d->timer, &QTimer::timeout, this, &NotificationManagerPrivate::deliverDueNotifications);
    connect(desktop, &DesktopNotifications::actionInvoked, this,
            &NotificationManagerPrivate::handleActionInvoked);
    connect(desktop, &DesktopNotifications::closed, this,
            [this](const QString& identifier) { d->delivered.remove(identifier); });
    connect(desktop, &DesktopNotifications::showFailed, this,
            [this](const QString& identifier, const QString& error) {
                QLOG_WARN() << "Reminder delivery skipped: " << identifier << ", " << error;
                d->delivered.remove(identifier);
            });
    d->schedule = readSchedule(filePath);
    restartTimer();
}

NotificationManagerPrivate::~NotificationManagerPrivate() = default;

QList<UserNotification> NotificationManagerPrivate::scheduledNotifications() const
{
    return d->schedule;
}

void NotificationManagerPrivate::scheduleNotification(const UserNotification& notification)
{
    d->removeFromSchedule(notification.identifier);
    d->schedule.append(notification);
    d->save();
    restartTimer();
}

void NotificationManagerPrivate::removeScheduledNotification(const QString& identifier)
{
    d->removeFromSchedule(identifier);
    d->save();
    restartTimer();
}

void NotificationManagerPrivate::removeAllScheduledNotifications()
{
    d->schedule.clear();
    d->save();
    restartTimer();
}

void NotificationManagerPrivate::removeDeliveredNotification(const QString& identifier)
{
    d->delivered.remove(identifier);
    d->desktop->close(identifier);
}

void NotificationManagerPrivate::restartTimer()
{
    d->timer->stop();
    if (d->schedule.isEmpty())
        return;
    const auto earliest = std::min_element(d->schedule.cbegin(), d->schedule.cend(),
                                           [](const UserNotification& a, const UserNotification& b) {
                                               return a.deliveryDateTime < b.deliveryDateTime;
                                           });
    const qint64 wait = Clock::currentDateTimeUtc().msecsTo(earliest->deliveryDateTime);
    d->timer->start(static_cast<int>(qBound<qint64>(0, wait, longestWaitMilliseconds)));
}

void NotificationManagerPrivate::deliverDueNotifications()
{
    const QDateTime now = Clock::currentDateTimeUtc();
    QList<UserNotification> due;
    QList<UserNotification> waiting;
    for (const UserNotification& notification : qAsConst(d->schedule))
        (notification.deliveryDateTime <= now ? due : waiting).append(notification);
    d->schedule = waiting;
    if (!due.isEmpty())
        d->save();
    for (const UserNotification& notification : qAsConst(due)) {
        if (notification.deliveryDateTime.secsTo(now) > maxLatenessSeconds) {
            QLOG_INFO() << "Reminder dropped, more than a day late: " << notification.identifier;
            continue;
        }
        deliver(notification);
    }
    restartTimer();
}

void NotificationManagerPrivate::deliver(const UserNotification& notification)
{
    QLOG_INFO() << "Delivering reminder " << notification.identifier;
    d->delivered.insert(notification.identifier, notification);
    d->desktop->show(notification.identifier, notification.title, notification.informativeText,
                     notification.actionButtonTitle);
}

void NotificationManagerPrivate::handleActionInvoked(const QString& identifier, bool actionButton)
{
    // A copy: the receiver takes the notification off the delivered list.
    const UserNotification notification = d->delivered.value(identifier);
    if (notification.identifier.isEmpty())
        return;
    emit activated(notification, actionButton);
}
