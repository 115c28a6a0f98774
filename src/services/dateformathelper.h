#pragma once

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QObject>
#include <QTime>

#include <memory>

// Writes the dates of the task preview as sentences. The sentences come from two fixed phrase tables
// rather than from translations, since Russian needs its own word order and prepositions: the
// application's language picks the table, the system locale writes the dates and times put into it.
// Dates arrive as the wall clock the user chose and are written as they are, in no time zone.
class DateFormatHelper : public QObject
{
    Q_OBJECT

public:
    explicit DateFormatHelper(QObject* parent = nullptr);
    // Writes dates and times as systemLocale does, in place of the system's own locale.
    explicit DateFormatHelper(const QLocale& systemLocale, QObject* parent = nullptr);
    ~DateFormatHelper() override;

    // "Today", "Tomorrow" and, if allowed, "Yesterday" for those days; the locale's date otherwise.
    Q_INVOKABLE QString formatDate(const QDate& date, bool allowYesterday, QLocale::FormatType format) const;
    Q_INVOKABLE QLocale getCurrentLocale() const;
    Q_INVOKABLE QString formatTimeToLocal(const QTime& time) const;

    // One line for the preview's title: the due date with the time span when both fall on one day.
    Q_INVOKABLE QString formatDatesForPreviewHeader(const QDateTime& start, const QDateTime& due) const;
    // The full sentence of the preview's date section; two lines when start and due differ in date.
    Q_INVOKABLE QString formatDatesForPreviewSection(const QDateTime& start, const QDateTime& due) const;
    // The dates of a monthly repeating task.
    Q_INVOKABLE QString formatMonthRepetitionDates(const QDateTime& start, const QDateTime& due) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

Q_DECLARE_METATYPE(QLocale::FormatType)
