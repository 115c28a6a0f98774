#include "repeatedtaskhelper.h"

#include "core/clock.h"
#include "core/startup.h"
#include "store/databasehandler.h"
#include "store/objectkeys.h"
#include "store/storesettings.h"
#include "store/taskstore.h"

#include <QDateTime>
#include <QHash>
#include <QSettings>
#include <QStringList>

namespace {
const QString startReminderPrefix = QStringLiteral("start_");
const QString dueReminderPrefix = QStringLiteral("due_");

QDateTime dateTimeValue(const DOTask& task, const QString& key)
{
    return task.value(key).toDateTime().toUTC();
}

QStringList ruleFields(const QString& period)
{
    return period.split(QLatin1Char(';'), Qt::KeepEmptyParts);
}

// Anything with fewer fields is not a repeat rule, whatever its letter says.
bool isRule(const QStringList& fields)
{
    return fields.size() > 1;
}

bool monthlyWalkMatches(QDate cursor, const QDate& date, int count)
{
    // A count beyond the months left can only overshoot; QDate would take long to work that out.
    const int monthsToDate = (date.year() - cursor.year()) * 12 + date.month() - cursor.month();
    if (count > monthsToDate)
        return false;
    // Each step starts from the previous result, so a day clamped to a short month stays clamped.
    while (cursor.isValid() && cursor < date)
        cursor = cursor.addMonths(count);
    return cursor == date;
}

bool weeklyWalkMatches(QDate cursor, const QDate& date, int count)
{
    while (cursor.isValid() && cursor < date)
        cursor = cursor.addDays(qint64(count) * 7);
    return cursor == date;
}

// Visits the listed days of the anchor's week, then jumps `count` weeks on to the first listed day.
// The next step depends on the weekday alone, so coming back to a weekday no later than its last
// visit means the walk would circle for ever (duplicate or stray entries from sync): no match then.
bool weekdayWalkMatches(QDate cursor, const QDate& date, int count, const QStringList& days)
{
    QHash<int, QDate> lastVisit;
    while (cursor.isValid() && cursor < date) {
        const int dayOfWeek = cursor.dayOfWeek();
        const int index = days.indexOf(QString::number(dayOfWeek));
        // Off the list nothing moves the cursor; the repair puts the stored anchor back on it.
        if (index < 0)
            return false;
        const QDate previousVisit = lastVisit.value(dayOfWeek);
        if (previousVisit.isValid() && cursor <= previousVisit)
            return false;
        lastVisit.insert(dayOfWeek, cursor);
        const bool lastListedDay = index == days.size() - 1;
        const qint64 step = lastListedDay ? qint64(count) * 7 - dayOfWeek + days.first().toInt()
                                          : days.at(index + 1).toInt() - dayOfWeek;
        cursor = cursor.addDays(step);
    }
    return cursor == date;
}

// The weekdays of a rule's list, 1 for Monday to 7 for Sunday. Other entries can only come through
// sync; left in, they would send the repair further on at every read.
QStringList listedWeekdays(const QString& list)
{
    QStringList weekdays;
    for (const QString& entry : list.split(QLatin1Char(','))) {
        bool isNumber = false;
        const int weekday = entry.toInt(&isNumber);
        if (isNumber && weekday >= 1 && weekday <= 7)
            weekdays.append(entry);
    }
    return weekdays;
}

bool ruleMatches(const QStringList& fields, const QDate& anchor, const QDate& date)
{
    bool isNumber = false;
    const int count = fields.at(1).toInt(&isNumber);
    // The editor never writes such a count, but sync may bring one; it would divide by zero or
    // never get past the anchor.
    if (!isNumber || count < 1)
        return false;
    const QString& kind = fields.at(0);
    if (kind == QLatin1String("d"))
        return anchor.daysTo(date) % count == 0;
    if (kind == QLatin1String("m"))
        return monthlyWalkMatches(anchor, date, count);
    if (kind == QLatin1String("w") && fields.size() == 2)
        return weeklyWalkMatches(anchor, date, count);
    if (kind == QLatin1String("w") && fields.size() == 3)
        return weekdayWalkMatches(anchor, date, count, listedWeekdays(fields.at(2)));
    return false;
}

// Days forward from `dayOfWeek` to a listed weekday. Scanning from the back lets the earliest later
// day of an ascending list win, and wraps into next week only when no later day is listed.
int distanceToListedWeekday(const QStringList& days, int dayOfWeek)
{
    int distance = -1;
    for (auto day = days.crbegin(); day != days.crend(); ++day) {
        const int weekday = day->toInt();
        if (weekday > dayOfWeek)
            distance = weekday - dayOfWeek;
        else if (weekday == dayOfWeek)
            return 0;
        else if (distance == -1)
            distance = weekday + 7 - dayOfWeek;
    }
    return distance;
}

void moveDueOntoListedWeekday(DOTask& task, const QStringList& days)
{
    const QDateTime due = dateTimeValue(task, dueKey);
    const int dayOfWeek = due.date().dayOfWeek();
    if (days.contains(QString::number(dayOfWeek)))
        return;
    const int distance = distanceToListedWeekday(days, dayOfWeek);
    if (distance > 0)
        task.insert(dueKey, QDateTime(due.date().addDays(distance), due.time(), Qt::UTC));
}

QTime defaultStartTime()
{
    const QStringList parts = StoreSettings::defaultStartTime().split(QLatin1Char(':'));
    const QTime time(parts.value(0).toInt(), parts.value(1).toInt());
    return time.isValid() ? time : QTime(8, 0);
}

// A daily or weekly task may not span days: its start comes onto the due day, keeping its own time
// when that is not after the due time.
void pullStartOntoDueDay(DOTask& task)
{
    const QDateTime start = dateTimeValue(task, startKey);
    const QDateTime due = dateTimeValue(task, dueKey);
    if (start.date() == due.date())
        return;
    QTime startTime = start.time();
    if (!startTime.isValid() || startTime > due.time()) {
        const QTime fallback = defaultStartTime();
        startTime = fallback > due.time() ? QTime(0, 0) : fallback;
    }
    task.insert(startKey, QDateTime(due.date(), startTime, Qt::UTC));
}
// The reminder wishes, one key per task and kind, each a comma-joined list of NotificationType values.
class ReminderWishes
{
public:
    ReminderWishes()
        : m_settings(Startup::dataFilePath(QStringLiteral("repeated_tasks_reminders.dat")),
                     QSettings::IniFormat)
    {}

    QStringList values(const QString& key) const
    {
        // A hand-edited file may hold the list unquoted, which reads back as a list.
        const QVariant value = m_settings.value(key);
        const QString stored = value.userType() == QMetaType::QStringList
                                   ? value.toStringList().join(QLatin1Char(','))
                                   : value.toString();
        return stored.isEmpty() ? QStringList() : stored.split(QLatin1Char(','));
    }

    void store(const QString& key, const QStringList& values)
    {
        if (values.isEmpty())
            m_settings.remove(key);
        else
            m_settings.setValue(key, values.join(QLatin1Char(',')));
        m_settings.sync();
    }

    void add(const QString& key, int type)
    {
        QStringList stored = values(key);
        if (stored.contains(QString::number(type)))
            return;
        stored.append(QString::number(type));
        store(key, stored);
    }

    // Walks the list backwards, so the order left is reversed; order means nothing here.
    void remove(const QString& key, int type)
    {
        const QStringList stored = values(key);
        QStringList left;
        for (auto value = stored.crbegin(); value != stored.crend(); ++value) {
            if (*value != QString::number(type))
                left.append(*value);
        }
        store(key, left);
    }

    QSettings& settings() { return m_settings; }

private:
    QSettings m_settings;
};

QVariantList typeList(const QStringList& values)
{
    QVariantList types;
    for (const QString& value : values)
        types.append(value.toInt());
    return types;
}
} // namespace

// What a day entry depends on besides the row itself.
struct DayEntryCircumstances
{
    QDate date;
    QDate today;
    QString defaultStartTime;

    bool operator==(const DayEntryCircumstances& other) const
    {
        return date == other.date && today == other.today && defaultStartTime == other.defaultStartTime;
    }
};

// The day entry last worked out for a row, with the map of the row it came from.
struct KnownDayEntry
{
    DOTask task;
    DayEntryCircumstances circumstances;
    DOTask entry;
    // The count of the read that last met the row.
    quint64 lastRead = 0;
};

struct RepeatedTaskHelper::Private
{
    RepeatedTaskHelper* helper = nullptr;
    DatabaseHandler* database = nullptr;
    // The store hands back the same shared map for a row that has not changed since the last read.
    // Such a row yields the entry it yielded then, and any repair it needed was written then, so
    // the entry is taken over; the same occurrence map also lets the lists see the row as unchanged.
    // By the map's identity: the address of its first value, which stays put while the entry holds
    // the map, and is shared by every copy of it.
    QHash<const void*, KnownDayEntry> knownEntries;
    quint64 readCount = 0;

    static const void* identityOf(const DOTask& task)
    {
        return task.isEmpty() ? nullptr : &*task.constBegin();
    }

    // Rows that are no longer active repeating tasks.
    void forgetUnreadEntries(quint64 read)
    {
        for (auto known = knownEntries.begin(); known != knownEntries.end();) {
            if (known->lastRead != read)
                known = knownEntries.erase(known);
            else
                ++known;
        }
    }

    // The entry a stored repeating task puts into the given day, or an empty map.
    DOTask dayEntry(const DOTask& task, const QDate& date) const
    {
        if (!isRule(ruleFields(task.value(periodKey).toString())))
            return {};
        const DOTask occurrence = helper->getRepetitionTaskFromOriginalTask(task, date);
        if (!occurrence.isEmpty())
            return occurrence;
        const QDate dueDate = dateTimeValue(task, dueKey).date();
        // A task left undone stays on today even on a day its rule does not hit, so it is never lost.
        if (date == Clock::currentDate() && dueDate.isValid() && dueDate < date)
            return cloneRepetitionTask(task, date);
        if (task.value(QStringLiteral("FAKETASK")).toBool() && date == dueDate)
            return task;
        return {};
    }

    // Without a due date the rule has no anchor, so the row stops repeating.
    void clearRule(const DOTask& task) const
    {
        DOTask plain = task;
        plain.insert(periodKey, QString());
        database->tasks()->updateTaskLocally(plain);
    }

    void storeRepairedDates(const DOTask& task) const
    {
        const DOTask repaired = repairTaskDates(task);
        const bool startChanged = dateTimeValue(repaired, startKey) != dateTimeValue(task, startKey);
        const bool dueChanged = dateTimeValue(repaired, dueKey) != dateTimeValue(task, dueKey);
        if (startChanged || dueChanged)
            database->tasks()->updateTaskLocally(repaired);
    }
};

RepeatedTaskHelper* RepeatedTaskHelper::instance()
{
    static RepeatedTaskHelper* helper = new RepeatedTaskHelper(DatabaseHandler::instance());
    return helper;
}

RepeatedTaskHelper::RepeatedTaskHelper(DatabaseHandler* database, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->helper = this;
    d->database = database;
}

RepeatedTaskHelper::~RepeatedTaskHelper() = default;

QList<DOTask> RepeatedTaskHelper::getRepeatedDayTasks(const QDate& date)
{
    const DayEntryCircumstances circumstances{date, Clock::currentDate(), StoreSettings::defaultStartTime()};
    const quint64 read = ++d->readCount;
    QList<DOTask> entries;
    const QList<DOTask> tasks = d->database->tasks()->getActiveRepeatedTasks();
    for (const DOTask& task : tasks) {
        KnownDayEntry& known = d->knownEntries[Private::identityOf(task)];
        if (!known.task.isSharedWith(task) || !(known.circumstances == circumstances))
            known = {task, circumstances, d->dayEntry(task, date), read};
        known.lastRead = read;
        if (!known.entry.isEmpty())
            entries.append(known.entry);
    }
    d->forgetUnreadEntries(read);
    return entries;
}

int RepeatedTaskHelper::getRepeatedDayTaskCount(const QDate& date)
{
    return getRepeatedDayTasks(date).size();
}

bool RepeatedTaskHelper::hasRepeatedTasks(const QDate& date)
{
    const QList<DOTask> tasks = d->database->tasks()->getActiveRepeatedTasks();
    for (const DOTask& task : tasks) {
        if (!d->dayEntry(task, date).isEmpty())
            return true;
    }
    return false;
}

DOTask RepeatedTaskHelper::getRepetitionTaskFromOriginalTask(const DOTask& task, const QDate& date)
{
    const QStringList fields = ruleFields(task.value(periodKey).toString());
    if (!isRule(fields))
        return {};
    const QDateTime due = dateTimeValue(task, dueKey);
    if (due.isNull()) {
        d->clearRule(task);
        return {};
    }
    d->storeRepairedDates(task);
    // The walk starts from the dates as they were read; repaired ones count from the next read on,
    // so every read of the same row yields the same occurrences.
    if (!due.isValid() || due.date() >= date)
        return {};
    if (!ruleMatches(fields, due.date(), date))
        return {};
    return cloneRepetitionTask(task, date);
}

DOTask RepeatedTaskHelper::cloneRepetitionTask(const DOTask& task, const QDate& date)
{
    if (task.isEmpty())
        return task;
    DOTask occurrence = task;
    occurrence.insert(QStringLiteral("REPEATED"), true);
    const QDateTime start = dateTimeValue(task, startKey);
    const QDateTime due = dateTimeValue(task, dueKey);
    const bool hasStart = !start.isNull();
    const qint64 startToDueDays = start.date().daysTo(due.date());
    const QDateTime occurrenceStart(date.addDays(-startToDueDays), start.time(), Qt::UTC);
    const QDateTime occurrenceDue(date, due.time(), Qt::UTC);
    // Up to today the row's own dates stay beside the occurrence's, so that completing it records
    // the occurrence while the stored dates still say where the rule stands.
    const bool dueByNow = date <= Clock::currentDate();
    occurrence.insert(dueByNow ? QStringLiteral("FAKEDUE") : dueKey, occurrenceDue);
    if (hasStart)
        occurrence.insert(dueByNow ? QStringLiteral("FAKESTART") : startKey, occurrenceStart);
    return occurrence;
}

DOTask RepeatedTaskHelper::repairTaskDates(const DOTask& task)
{
    DOTask repaired = task;
    const QString period = task.value(periodKey).toString();
    const bool weekly = period.startsWith(QLatin1Char('w'));
    // Monthly rules keep their dates as they are; there is nothing to repair without a due date.
    if (!weekly && !period.startsWith(QLatin1Char('d')))
        return repaired;
    if (!dateTimeValue(task, dueKey).isValid())
        return repaired;
    const QStringList fields = ruleFields(period);
    if (weekly && fields.size() == 3)
        moveDueOntoListedWeekday(repaired, listedWeekdays(fields.at(2)));
    pullStartOntoDueDay(repaired);
    return repaired;
}

void RepeatedTaskHelper::setStartDateReminder(const QString& taskId,
                                              NotificationManager::NotificationType type)
{
    if (!taskId.isEmpty())
        ReminderWishes().add(startReminderPrefix + taskId, type);
}

bool RepeatedTaskHelper::hasStartDateReminder(const QString& taskId,
                                              NotificationManager::NotificationType type)
{
    return ReminderWishes().values(startReminderPrefix + taskId).contains(QString::number(type));
}

void RepeatedTaskHelper::removeStartDateReminder(const QString& taskId,
                                                 NotificationManager::NotificationType type)
{
    ReminderWishes().remove(startReminderPrefix + taskId, type);
}

QVariantList RepeatedTaskHelper::getStartDateReminders(const QString& taskId)
{
    return taskId.isEmpty() ? QVariantList()
                            : typeList(ReminderWishes().values(startReminderPrefix + taskId));
}

void RepeatedTaskHelper::setDueDateReminder(const QString& taskId, NotificationManager::NotificationType type)
{
    if (!taskId.isEmpty())
        ReminderWishes().add(dueReminderPrefix + taskId, type);
}

bool RepeatedTaskHelper::hasDueDateReminder(const QString& taskId, NotificationManager::NotificationType type)
{
    return ReminderWishes().values(dueReminderPrefix + taskId).contains(QString::number(type));
}

void RepeatedTaskHelper::removeDueDateReminder(const QString& taskId,
                                               NotificationManager::NotificationType type)
{
    ReminderWishes().remove(dueReminderPrefix + taskId, type);
}

QVariantList RepeatedTaskHelper::getDueDateReminders(const QString& taskId)
{
    return taskId.isEmpty() ? QVariantList() : typeList(ReminderWishes().values(dueReminderPrefix + taskId));
}

bool RepeatedTaskHelper::removeAllReminders(const QString& taskId)
{
    if (taskId.isEmpty())
        return false;
    ReminderWishes wishes;
    wishes.settings().remove(startReminderPrefix + taskId);
    wishes.settings().remove(dueReminderPrefix + taskId);
    wishes.settings().sync();
    return true;
}

QList<RepeatedReminder> RepeatedTaskHelper::getAllReminders()
{
    ReminderWishes wishes;
    QList<RepeatedReminder> reminders;
    for (const QString& key : wishes.settings().allKeys()) {
        const QStringList parts = key.split(QLatin1Char('_'));
        const int kind =
            parts.first() == QLatin1String("start") ? RepeatedReminder::Start : RepeatedReminder::Due;
        for (const QString& value : wishes.values(key))
            reminders.append(
                {parts.value(1), kind, static_cast<NotificationManager::NotificationType>(value.toInt())});
    }
    return reminders;
}

void RepeatedTaskHelper::clearReminders()
{
    ReminderWishes wishes;
    wishes.settings().clear();
    wishes.settings().sync();
}
