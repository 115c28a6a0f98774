#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QVariantList>

// One day of the daily plan. Stored dates are the wall clock the user chose, labelled UTC, so a day
// runs from the user's midnight to the next one with no time-zone arithmetic.
class DayQuery
{
public:
    // A statement with its values, "?" standing for each in turn.
    struct Statement
    {
        QString text;
        QVariantList values;
    };

    explicit DayQuery(const QDate& date);

    // The one of the three day conditions that applies to this day: today's brings overdue objects
    // along, a past day's shows only what was due then.
    const QString& condition(const QString& today, const QString& pastDay, const QString& futureDay) const;
    uint start() const;
    uint end() const;

    // Turns every %1 of the statement into the start of the day and every %2 into the start of the
    // next day, each occurrence as its own bound value.
    Statement bind(const QString& statement) const;

    // A moment of the local clock read as if its fields were UTC, which is how it compares with
    // stored dates.
    static QDateTime asWallClock(const QDateTime& localMoment);

private:
    enum Kind { Today, PastDay, FutureDay };
    Kind kind() const;

    QDate m_date;
};
