#include "dayquery.h"

#include "core/clock.h"

#include <QRegularExpression>

namespace {
QDateTime wallClockMidnight(const QDate& date)
{
    return QDateTime(date, QTime(0, 0), Qt::UTC);
}
} // namespace

DayQuery::DayQuery(const QDate& date)
    : m_date(date)
{}

DayQuery::Kind DayQuery::kind() const
{
    const QDate today = Clock::currentDate();
    if (m_date == today)
        return Today;
    return m_date < today ? PastDay : FutureDay;
}

const QString& DayQuery::condition(const QString& today, const QString& pastDay,
                                   const QString& futureDay) const
{
    switch (kind()) {
    case Today:
        return today;
    case PastDay:
        return pastDay;
    case FutureDay:
        break;
    }
    return futureDay;
}

uint DayQuery::start() const
{
    return uint(wallClockMidnight(m_date).toSecsSinceEpoch());
}

uint DayQuery::end() const
{
    return uint(wallClockMidnight(m_date.addDays(1)).toSecsSinceEpoch());
}

DayQuery::Statement DayQuery::bind(const QString& statement) const
{
    static const QRegularExpression marker(QStringLiteral("%([12])"));
    const QVariantList bounds{start(), end()};
    Statement bound;
    int copiedUpTo = 0;
    auto matches = marker.globalMatch(statement);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        bound.text += statement.midRef(copiedUpTo, match.capturedStart() - copiedUpTo) + QLatin1Char('?');
        bound.values.append(bounds.at(match.captured(1).toInt() - 1));
        copiedUpTo = match.capturedEnd();
    }
    bound.text += statement.midRef(copiedUpTo);
    return bound;
}

QDateTime DayQuery::asWallClock(const QDateTime& localMoment)
{
    return QDateTime(localMoment.date(), localMoment.time(), Qt::UTC);
}
