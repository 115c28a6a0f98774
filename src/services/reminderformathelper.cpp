#include "reminderformathelper.h"

#include <QStringList>

namespace {
// Built at each call so that a language switched at run time is followed.
QStringList leadPhrases()
{
    return {ReminderFormatHelper::tr("5 min before %1"),   ReminderFormatHelper::tr("15 min before %1"),
            ReminderFormatHelper::tr("30 min before %1"),  ReminderFormatHelper::tr("1 hour before %1"),
            ReminderFormatHelper::tr("2 hours before %1"), ReminderFormatHelper::tr("3 hours before %1"),
            ReminderFormatHelper::tr("1 day before %1"),   ReminderFormatHelper::tr("2 days before %1")};
}
} // namespace

ReminderFormatHelper::ReminderFormatHelper(QObject* parent)
    : QObject(parent)
{}

ReminderFormatHelper::~ReminderFormatHelper() = default;

QString ReminderFormatHelper::formatReminderForPreviewSection(NotificationManager::NotificationType type,
                                                              bool isStart) const
{
    if (type == NotificationManager::AtTimeOfEvent)
        return isStart ? tr("When task is active") : tr("When task is overdue");
    if (type < NotificationManager::AtTimeOfEvent || type > NotificationManager::TwoDays)
        return QString();
    // The preview reads the phrase at the type's own value, which is one longer than the type's lead:
    // five minutes shows the fifteen-minute phrase. Two days, one past the end, keeps the longest one.
    const QStringList phrases = leadPhrases();
    const QString phrase = phrases.at(qMin(int(type), phrases.size() - 1));
    return phrase.arg(isStart ? tr("start") : tr("deadline"));
}
