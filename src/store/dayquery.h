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
    // Which day statement applies: today's brings overdue objects along, a past day shows only what
    // was due then.
    enum Kind { Today, PastDay, FutureDay };

    // A statement with its values, "?" standing for each in turn.
    struct Statement
    {
        QString text;
        QVariantList values;
    };

    explicit DayQuery(const QDate& date);

    Kind kind() const;
    uint start() const;
    uint end() const;

    // Turns every %1 of the statement into the start of the day and every %2 into the start of the
    // next day, each occurrence as its own bound value.
    Statement bind(const QString& statement) const;

    // A moment of the local clock read as if its fields were UTC, which is how it compares with
    // stored dates.
    static QDateTime asWallClock(const QDateTime& localMoment);

private:
    QDate m_date;
};
