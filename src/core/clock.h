#pragma once

#include <QDate>
#include <QDateTime>

// The one place the program asks for "now". Date logic reads the time through here so that a test
// can pin it to any moment and see the daily plan, repeat rules and reminders of that day.
class Clock
{
public:
    static QDateTime currentDateTime();
    static QDateTime currentDateTimeUtc();
    static QDate currentDate();

    // Pins the clock to a moment (local, UTC or with an offset); an invalid moment lets the real clock
    // through again.
    static void pin(const QDateTime& moment);
    static void unpin();
};
