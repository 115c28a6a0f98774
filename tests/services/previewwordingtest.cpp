#include "core/clock.h"
#include "core/settings.h"
#include "services/dateformathelper.h"
#include "services/reminderformathelper.h"
#include "services/repetitionformathelper.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtTest>

#include <memory>

namespace {
enum Form { Header, Section, Month, NextDate };

const QLocale en(QLocale::English, QLocale::UnitedStates);
const QLocale ru(QLocale::Russian, QLocale::Russia);

// A wall-clock moment in March 2026, or another month.
QDateTime at(int day, int hour, int month = 3)
{
    return wallClock(QDate(2026, month, day), QTime(hour, 0));
}
} // namespace

Q_DECLARE_METATYPE(Form)

class PreviewWordingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void sentencesFollowLanguageAndSystemLocale_data();
    void sentencesFollowLanguageAndSystemLocale();
    void dateFormatArrivesFromQml();
    void ruleAndReminderRead();
};

void PreviewWordingTest::init()
{
    // Friday 6 March, 11:00 in UTC.
    Clock::pin(QDateTime(QDate(2026, 3, 6), QTime(12, 0), Qt::LocalTime));
}

void PreviewWordingTest::cleanup()
{
    Clock::unpin();
    Settings::instance()->setApplicationLanguage(QStringLiteral("en"));
}

void PreviewWordingTest::sentencesFollowLanguageAndSystemLocale_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<Form>("form");
    QTest::addColumn<QDateTime>("start");
    QTest::addColumn<QDateTime>("due");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("period");
    const auto row = [](const char* tag, const char* language, const QLocale& locale, Form form,
                        const QDateTime& start, const QDateTime& due, const char* text,
                        const char* period = "") {
        QTest::newRow(tag) << QString(language) << locale << form << start << due << QString::fromUtf8(text)
                           << QString(period);
    };
    const QDateTime none;

    row("header, same day", "en", en, Header, at(6, 9), at(6, 18), "Today, between 9:00 AM and 6:00 PM");
    row("header names yesterday", "en", en, Header, none, at(5, 18), "Yesterday, 6:00 PM");
    row("header ru", "ru", en, Header, at(7, 9), at(7, 18), "Завтра с 9:00 AM до 6:00 PM");
    row("section keeps capital", "en", en, Section, at(6, 9), at(6, 18),
        "Complete Today, between 9:00 AM and 6:00 PM");
    row("section, yesterday unnamed", "en", en, Section, none, at(5, 18),
        "Finish before Thursday, March 5, 2026, 6:00 PM");
    row("section, same later day", "en", en, Section, at(10, 9), at(10, 18),
        "Complete on Tuesday, March 10, 2026 between 9:00 AM and 6:00 PM");
    row("section, two days", "en", en, Section, at(6, 9), at(10, 18),
        "Start Today at 9:00 AM\nFinish before Tuesday, March 10, 2026, 6:00 PM");
    row("section ru, two days", "ru", en, Section, at(5, 9), at(7, 18),
        "Начать Thursday, March 5, 2026, 9:00 AM\nЗакончить Завтра до 6:00 PM");
    row("section ru, same later day has no phrase", "ru", en, Section, at(10, 9), at(10, 18), "");
    row("section ru, Russian system", "ru", ru, Section, none, at(7, 18), "Закончить завтра до 18:00");
    row("section, Russian system", "en", ru, Section, at(10, 9), at(10, 18),
        "Complete вторник, 10 марта 2026 г., between 09:00 and 18:00");
    row("month, same later day", "en", en, Month, at(10, 9), at(10, 18),
        "between 9:00 AM and 6:00 PM on Tuesday, March 10, 2026");
    row("month ru, two days", "ru", ru, Month, at(10, 9), at(12, 18),
        "с вторник, 10 марта 2026 г., 09:00 по четверг, 12 марта 2026 г., 18:00");
    // The next date is the first after now, at least one step on from the due date.
    row("next, hour passed", "en", en, NextDate, at(6, 7), at(6, 8), "Tomorrow, between 7:00 AM and 8:00 AM",
        "d;1");
    row("next from the past", "en", en, NextDate, at(25, 9, 2), at(25, 18, 2),
        "Today, between 9:00 AM and 6:00 PM", "d;3");
    row("next, weekday list", "en", en, NextDate, at(6, 9), at(6, 18),
        "on Monday, 3/9/26, between 9:00 AM and 6:00 PM", "w;1;1,5");
    row("next, weeks", "en", en, NextDate, at(6, 9), at(6, 18), "3/13/26, between 9:00 AM and 6:00 PM",
        "w;1");
    row("next, months keep stored dates", "en", en, NextDate, at(10, 9), at(10, 18),
        "between 9:00 AM and 6:00 PM on Tuesday, March 10, 2026", "m;1");
    row("next, due off the list", "en", en, NextDate, at(3, 9), at(3, 18), "", "w;1;1");
    row("next, count of zero", "en", en, NextDate, at(6, 9), at(6, 18), "", "d;0");
}

void PreviewWordingTest::sentencesFollowLanguageAndSystemLocale()
{
    QFETCH(QString, language);
    QFETCH(QLocale, locale);
    QFETCH(Form, form);
    QFETCH(QDateTime, start);
    QFETCH(QDateTime, due);
    QFETCH(QString, text);
    QFETCH(QString, period);
    Settings::instance()->setApplicationLanguage(language);
    const DateFormatHelper dates(locale);

    const QString sentence =
        form == Header    ? dates.formatDatesForPreviewHeader(start, due)
        : form == Section ? dates.formatDatesForPreviewSection(start, due)
        : form == Month   ? dates.formatMonthRepetitionDates(start, due)
                          : RepetitionFormatHelper(locale).formatNextDateForPreview(period, start, due);

    QCOMPARE(sentence, text);
}

void PreviewWordingTest::dateFormatArrivesFromQml()
{
    DateFormatHelper helper(en);
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("DateFormatHelper"), &helper);
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\nQtObject { property string text: DateFormatHelper.formatDate("
                      "new Date(2026, 2, 10), false, Locale.ShortFormat) }",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());

    QCOMPARE(object->property("text").toString(), QStringLiteral("3/10/26"));
}

void PreviewWordingTest::ruleAndReminderRead()
{
    const RepetitionFormatHelper rules(en);
    const ReminderFormatHelper reminders;

    QCOMPARE(rules.formatRepetitionForPreview("w;2;1,3,5,6"),
             QStringLiteral("Do every 2 weeks on Monday, Wednesday, Friday and Saturday"));
    QCOMPARE(reminders.formatReminderForPreviewSection(NotificationManager::AtTimeOfEvent, false),
             QStringLiteral("When task is overdue"));
    // Each type reads the phrase one longer than its own lead; two days, past the list, keeps the last.
    QCOMPARE(reminders.formatReminderForPreviewSection(NotificationManager::FiveMinutes, true),
             QStringLiteral("15 min before start"));
    QCOMPARE(reminders.formatReminderForPreviewSection(NotificationManager::TwoDays, false),
             QStringLiteral("2 days before deadline"));
    QCOMPARE(reminders.formatReminderForPreviewSection(NotificationManager::NotificationType(9), true),
             QString());
}

NORVEL_TEST_MAIN(PreviewWordingTest)
#include "previewwordingtest.moc"
