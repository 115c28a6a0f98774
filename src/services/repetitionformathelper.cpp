#include "repetitionformathelper.h"

#include "core/clock.h"
#include "services/dateformathelper.h"

#include <QHash>
#include <QStringList>

namespace {
const QString daily = QStringLiteral("d");
const QString weekly = QStringLiteral("w");
const QString monthly = QStringLiteral("m");

QStringList ruleFields(const QString& period)
{
    return period.split(QLatin1Char(';'), Qt::KeepEmptyParts);
}

bool isRule(const QStringList& fields)
{
    return fields.size() > 1;
}

bool hasWeekdayList(const QStringList& fields)
{
    return fields.size() == 3;
}

QString repeatedWeekdayName(int weekday)
{
    switch (weekday) {
    case Qt::Monday:
        return RepetitionFormatHelper::tr("Monday", "повторения в превью");
    case Qt::Tuesday:
        return RepetitionFormatHelper::tr("Tuesday", "повторения в превью");
    case Qt::Wednesday:
        return RepetitionFormatHelper::tr("Wednesday", "повторения в превью");
    case Qt::Thursday:
        return RepetitionFormatHelper::tr("Thursday", "повторения в превью");
    case Qt::Friday:
        return RepetitionFormatHelper::tr("Friday", "повторения в превью");
    case Qt::Saturday:
        return RepetitionFormatHelper::tr("Saturday", "повторения в превью");
    case Qt::Sunday:
        return RepetitionFormatHelper::tr("Sunday", "повторения в превью");
    }
    return QString();
}

QString nextWeekdayName(int weekday)
{
    switch (weekday) {
    case Qt::Monday:
        return RepetitionFormatHelper::tr("on Monday", "следующая дата повторений");
    case Qt::Tuesday:
        return RepetitionFormatHelper::tr("on Tuesday", "следующая дата повторений");
    case Qt::Wednesday:
        return RepetitionFormatHelper::tr("on Wednesday", "следующая дата повторений");
    case Qt::Thursday:
        return RepetitionFormatHelper::tr("on Thursday", "следующая дата повторений");
    case Qt::Friday:
        return RepetitionFormatHelper::tr("on Friday", "следующая дата повторений");
    case Qt::Saturday:
        return RepetitionFormatHelper::tr("on Saturday", "следующая дата повторений");
    case Qt::Sunday:
        return RepetitionFormatHelper::tr("on Sunday", "следующая дата повторений");
    }
    return QString();
}

QString intervalPhrase(const QString& kind, int count)
{
    if (kind == daily)
        return RepetitionFormatHelper::tr("Do every %n days", "", count);
    if (kind == weekly)
        return RepetitionFormatHelper::tr("Do every %n weeks", "", count);
    if (kind == monthly)
        return RepetitionFormatHelper::tr("Do every %n months", "", count);
    return QString();
}

// " on Monday, Wednesday and Friday"; entries that name no weekday (possible only through sync) are
// left out.
QString weekdaysPhrase(const QString& list)
{
    QStringList names;
    for (const QString& entry : list.split(QLatin1Char(','))) {
        const QString name = repeatedWeekdayName(entry.toInt());
        if (!name.isEmpty())
            names.append(name);
    }
    if (names.isEmpty())
        return QString();
    QString days = names.takeLast();
    if (!names.isEmpty())
        days = RepetitionFormatHelper::tr("%1 and %2").arg(names.takeLast(), days);
    QString leadingDays;
    for (const QString& name : qAsConst(names))
        leadingDays += name + QStringLiteral(", ");
    return RepetitionFormatHelper::tr(" on %1").arg(leadingDays + days);
}

// From the last listed day the step goes `count` weeks on to the first listed day of that week,
// otherwise to the next listed day.
QDateTime nextListedWeekday(const QDateTime& date, int count, const QStringList& days)
{
    const int dayOfWeek = date.date().dayOfWeek();
    const int index = days.indexOf(QString::number(dayOfWeek));
    if (index < 0)
        return QDateTime();
    const bool lastListedDay = index == days.size() - 1;
    const qint64 step = lastListedDay ? qint64(count) * 7 - dayOfWeek + days.first().toInt()
                                      : days.at(index + 1).toInt() - dayOfWeek;
    return date.addDays(step);
}

// The first date of the rule after now, at least one step on from due; null when the rule cannot get
// there. A step depends on nothing but the weekday it starts from, so coming back to a weekday no
// later than its last visit means the walk would circle for ever (a count of 0 or below, or a list
// with repeated days from sync).
QDateTime nextDateAfterNow(const QDateTime& due, const QString& period)
{
    const QDateTime now = Clock::currentDateTimeUtc();
    QHash<int, QDateTime> lastVisits{{due.date().dayOfWeek(), due}};
    QDateTime cursor = due;
    do {
        cursor = RepetitionFormatHelper::getNearestRepetitionDate(cursor, period);
        if (!cursor.isValid())
            return QDateTime();
        const int dayOfWeek = cursor.date().dayOfWeek();
        const auto lastVisit = lastVisits.constFind(dayOfWeek);
        if (lastVisit != lastVisits.constEnd() && cursor <= *lastVisit)
            return QDateTime();
        lastVisits.insert(dayOfWeek, cursor);
    } while (cursor < now);
    return cursor;
}
} // namespace

struct RepetitionFormatHelper::Private
{
    explicit Private(const QLocale& systemLocale)
        : dates(systemLocale)
    {}

    DateFormatHelper dates;
};

RepetitionFormatHelper::RepetitionFormatHelper(QObject* parent)
    : RepetitionFormatHelper(QLocale::system(), parent)
{}

RepetitionFormatHelper::RepetitionFormatHelper(const QLocale& systemLocale, QObject* parent)
    : QObject(parent)
    , d(new Private(systemLocale))
{}

RepetitionFormatHelper::~RepetitionFormatHelper() = default;

QString RepetitionFormatHelper::formatRepetitionForPreview(const QString& period) const
{
    const QStringList fields = ruleFields(period);
    if (!isRule(fields))
        return QString();
    const QString interval = intervalPhrase(fields.at(0), fields.at(1).toInt());
    if (interval.isEmpty() || !hasWeekdayList(fields))
        return interval;
    return interval + weekdaysPhrase(fields.at(2));
}

QString RepetitionFormatHelper::formatNextDateForPreview(const QString& period, const QDateTime& start,
                                                         const QDateTime& due) const
{
    const QStringList fields = ruleFields(period);
    if (!isRule(fields))
        return QString();
    const QString& kind = fields.at(0);
    if (kind == monthly)
        return d->dates.formatMonthRepetitionDates(start, due);
    if (kind != daily && kind != weekly)
        return QString();

    const QDateTime next = nextDateAfterNow(due, period);
    if (!next.isValid())
        return QString();
    // Without a start the occurrence has no time span to show, only its due time.
    const QDateTime nextStart = start.isValid() ? QDateTime(next.date(), start.time()) : QDateTime();
    const QString dates = d->dates.formatDatesForPreviewHeader(nextStart, next);
    if (kind == weekly && hasWeekdayList(fields))
        return nextWeekdayName(next.date().dayOfWeek()) + QStringLiteral(", ") + dates;
    return dates;
}

QDateTime RepetitionFormatHelper::getNearestRepetitionDate(const QDateTime& date, const QString& period)
{
    const QStringList fields = ruleFields(period);
    if (!isRule(fields))
        return QDateTime();
    const QString& kind = fields.at(0);
    const int count = fields.at(1).toInt();
    if (kind == daily)
        return date.addDays(count);
    if (kind == monthly)
        return date.addMonths(count);
    if (kind == weekly && hasWeekdayList(fields))
        return nextListedWeekday(date, count, fields.at(2).split(QLatin1Char(',')));
    if (kind == weekly)
        return date.addDays(qint64(count) * 7);
    return QDateTime();
}
