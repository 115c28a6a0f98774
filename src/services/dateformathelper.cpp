#include "dateformathelper.h"

#include "core/clock.h"
#include "core/settings.h"

#include <QHash>

namespace {
enum PhraseKey {
    TodayPhrase = 0,
    TomorrowPhrase = 1,
    YesterdayPhrase = 2,
    HeaderSameDayPhrase = 3,
    HeaderDuePhrase = 4,
    DueNearPhrase = 5,
    DueLaterPhrase = 6,
    StartNearPhrase = 7,
    StartLaterPhrase = 8,
    SameDayNearPhrase = 9,
    SameDayLaterPhrase = 10,
    StartLineLaterPhrase = 11,
    StartLineNearPhrase = 12,
    DueLineLaterPhrase = 13,
    DueLineNearPhrase = 14,
    MonthSameDayPhrase = 15,
    MonthSpanPhrase = 16
};

const QString russianLanguage = QStringLiteral("ru");
const QString russianLocaleName = QStringLiteral("ru_RU");

const QHash<int, QString>& englishPhrases()
{
    static const QHash<int, QString> phrases{
        {TodayPhrase, QStringLiteral("Today")},
        {TomorrowPhrase, QStringLiteral("Tomorrow")},
        {YesterdayPhrase, QStringLiteral("Yesterday")},
        {HeaderSameDayPhrase, QStringLiteral("%1, between %2 and %3")},
        {HeaderDuePhrase, QStringLiteral("%1, %2")},
        {DueNearPhrase, QStringLiteral("Do %1, before %2")},
        {DueLaterPhrase, QStringLiteral("Finish before %1, %2")},
        {StartNearPhrase, QStringLiteral("Start %1 at %2")},
        {StartLaterPhrase, QStringLiteral("Start on %1 at %2")},
        {SameDayNearPhrase, QStringLiteral("Complete %1, between %2 and %3")},
        {SameDayLaterPhrase, QStringLiteral("Complete on %1 between %2 and %3")},
        {StartLineLaterPhrase, QStringLiteral("Start on %1 at %2")},
        {StartLineNearPhrase, QStringLiteral("Start %1 at %2")},
        {DueLineLaterPhrase, QStringLiteral("Finish before %1, %2")},
        {DueLineNearPhrase, QStringLiteral("Finish %1, before %2")},
        {MonthSameDayPhrase, QStringLiteral("between %2 and %3 on %1")},
        {MonthSpanPhrase, QStringLiteral("between %1, %2 and %3, %4")}};
    return phrases;
}

// Russian has no sentence for a same-day task away from today and tomorrow: on a Russian system the
// near-day sentence is used for every same-day task instead.
const QHash<int, QString>& russianPhrases()
{
    static const QHash<int, QString> phrases{{TodayPhrase, QStringLiteral("Сегодня")},
                                             {TomorrowPhrase, QStringLiteral("Завтра")},
                                             {YesterdayPhrase, QStringLiteral("Вчера")},
                                             {HeaderSameDayPhrase, QStringLiteral("%1 с %2 до %3")},
                                             {HeaderDuePhrase, QStringLiteral("%1 до %2")},
                                             {DueNearPhrase, QStringLiteral("Закончить %1 до %2")},
                                             {DueLaterPhrase, QStringLiteral("Закончить до %1, %2")},
                                             {StartNearPhrase, QStringLiteral("Начать %1 с %2")},
                                             {StartLaterPhrase, QStringLiteral("Начать с %1, %2")},
                                             {SameDayNearPhrase, QStringLiteral("Выполнить %1 с %2 до %3")},
                                             {StartLineLaterPhrase, QStringLiteral("Начать %1, %2")},
                                             {StartLineNearPhrase, QStringLiteral("Начать %1 в %2")},
                                             {DueLineLaterPhrase, QStringLiteral("Закончить до %1, %2")},
                                             {DueLineNearPhrase, QStringLiteral("Закончить %1 до %2")},
                                             {MonthSameDayPhrase, QStringLiteral("%1 с %2 до %3")},
                                             {MonthSpanPhrase, QStringLiteral("с %1, %2 по %3, %4")}};
    return phrases;
}

// Read at every call: the language can be switched while the program runs.
QString phrase(PhraseKey key)
{
    const bool russian = Settings::instance()->applicationLanguage() == russianLanguage;
    return (russian ? russianPhrases() : englishPhrases()).value(key);
}

// A phrase with its placeholders filled; a phrase this language lacks gives an empty sentence.
template <typename... Arguments> QString sentence(PhraseKey key, const Arguments&... arguments)
{
    const QString text = phrase(key);
    return text.isEmpty() ? QString() : text.arg(arguments...);
}

bool isNear(const QDate& date)
{
    const QDate today = Clock::currentDate();
    return date == today || date == today.addDays(1);
}

bool isSameDate(const QDateTime& start, const QDateTime& due)
{
    return start.isValid() && due.isValid() && start.date() == due.date();
}
} // namespace

struct DateFormatHelper::Private
{
    QLocale systemLocale;
};

DateFormatHelper::DateFormatHelper(QObject* parent)
    : DateFormatHelper(QLocale::system(), parent)
{}

DateFormatHelper::DateFormatHelper(const QLocale& systemLocale, QObject* parent)
    : QObject(parent)
    , d(new Private{systemLocale})
{
    // QML hands over Locale.LongFormat and its kin as numbers; they reach formatDate only through a
    // type known by the name in its signature.
    qRegisterMetaType<QLocale::FormatType>("QLocale::FormatType");
}

DateFormatHelper::~DateFormatHelper() = default;

QString DateFormatHelper::formatDate(const QDate& date, bool allowYesterday, QLocale::FormatType format) const
{
    const QDate today = Clock::currentDate();
    if (date == today)
        return phrase(TodayPhrase);
    if (date == today.addDays(1))
        return phrase(TomorrowPhrase);
    if (allowYesterday && date == today.addDays(-1))
        return phrase(YesterdayPhrase);
    return d->systemLocale.toString(date, format);
}

QLocale DateFormatHelper::getCurrentLocale() const
{
    return d->systemLocale;
}

QString DateFormatHelper::formatTimeToLocal(const QTime& time) const
{
    return d->systemLocale.toString(time, QLocale::ShortFormat);
}

QString DateFormatHelper::formatDatesForPreviewHeader(const QDateTime& start, const QDateTime& due) const
{
    const QString dueDate = formatDate(due.date(), true, QLocale::ShortFormat);
    const QString dueTime = formatTimeToLocal(due.time());
    if (isSameDate(start, due))
        return sentence(HeaderSameDayPhrase, dueDate, formatTimeToLocal(start.time()), dueTime);
    if (due.isValid())
        return sentence(HeaderDuePhrase, dueDate, dueTime);
    return QString();
}

QString DateFormatHelper::formatDatesForPreviewSection(const QDateTime& start, const QDateTime& due) const
{
    // The system locale decides, not the application's language: on a Russian system "Завтра" must
    // read "завтра" inside a sentence, whichever table is in use.
    const bool russianSystem = d->systemLocale.name() == russianLocaleName;
    const auto dateText = [&](const QDateTime& dateTime) {
        const QString text = formatDate(dateTime.date(), false, QLocale::LongFormat);
        return russianSystem ? text.toLower() : text;
    };
    const QString startDate = dateText(start);
    const QString startTime = formatTimeToLocal(start.time());
    const QString dueDate = dateText(due);
    const QString dueTime = formatTimeToLocal(due.time());

    if (!start.isValid() && due.isValid())
        return sentence(isNear(due.date()) ? DueNearPhrase : DueLaterPhrase, dueDate, dueTime);
    if (start.isValid() && !due.isValid())
        return sentence(isNear(start.date()) ? StartNearPhrase : StartLaterPhrase, startDate, startTime);
    if (!start.isValid())
        return QString();
    if (isSameDate(start, due)) {
        const PhraseKey key = russianSystem || isNear(due.date()) ? SameDayNearPhrase : SameDayLaterPhrase;
        return sentence(key, startDate, startTime, dueTime);
    }
    const QString startLine =
        sentence(isNear(start.date()) ? StartLineNearPhrase : StartLineLaterPhrase, startDate, startTime);
    const QString dueLine =
        sentence(isNear(due.date()) ? DueLineNearPhrase : DueLineLaterPhrase, dueDate, dueTime);
    return QStringLiteral("%1\n%2").arg(startLine, dueLine);
}

QString DateFormatHelper::formatMonthRepetitionDates(const QDateTime& start, const QDateTime& due) const
{
    // Without a due date there is no second date to write, and the header has nothing to say either.
    if (!start.isValid() || !due.isValid())
        return formatDatesForPreviewHeader(start, due);
    if (isSameDate(start, due) && isNear(due.date()))
        return formatDatesForPreviewHeader(start, due);
    const QString startDate = formatDate(start.date(), false, QLocale::LongFormat);
    const QString startTime = formatTimeToLocal(start.time());
    const QString dueTime = formatTimeToLocal(due.time());
    if (isSameDate(start, due))
        return sentence(MonthSameDayPhrase, startDate, startTime, dueTime);
    return sentence(MonthSpanPhrase, startDate, startTime, formatDate(due.date(), false, QLocale::LongFormat),
                    dueTime);
}
