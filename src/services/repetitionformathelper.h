#pragma once

#include <QDateTime>
#include <QLocale>
#include <QObject>

#include <memory>

// Writes a task's repeat rule and its next date for the task preview.
class RepetitionFormatHelper : public QObject
{
    Q_OBJECT

public:
    explicit RepetitionFormatHelper(QObject* parent = nullptr);
    // Writes dates and times as systemLocale does, in place of the system's own locale.
    explicit RepetitionFormatHelper(const QLocale& systemLocale, QObject* parent = nullptr);
    ~RepetitionFormatHelper() override;

    // "Do every 2 weeks on Monday and Thursday"; empty for a text that is not a rule.
    Q_INVOKABLE QString formatRepetitionForPreview(const QString& period) const;
    // The first date of the rule after now, at least one step on from due, written as the preview's
    // header does; a weekly rule with a weekday list names the weekday first. A monthly rule shows
    // start and due themselves.
    Q_INVOKABLE QString formatNextDateForPreview(const QString& period, const QDateTime& start,
                                                 const QDateTime& due) const;
    // One step of the rule from date; null when the rule has none from there (not a rule, an unknown
    // kind, or a weekday that its list does not hold).
    Q_INVOKABLE static QDateTime getNearestRepetitionDate(const QDateTime& date, const QString& period);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
