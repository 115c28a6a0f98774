#include "services/dateformathelper.h"
#include "core/clock.h"
#include "core/settings.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtTest>

#include <memory>

namespace {
enum Form { Header, Section, Month };

// Friday; tomorrow is Saturday 7 March, yesterday Thursday 5 March.
const QDateTime now(QDate(2026, 3, 6), QTime(12, 0), Qt::LocalTime);
const QLocale englishSystem(QLocale::English, QLocale::UnitedStates);
const QLocale russianSystem(QLocale::Russian, QLocale::Russia);

QDateTime at(int day, int hour)
{
    return wallClock(QDate(2026, 3, day), QTime(hour, 0));
}
} // namespace

Q_DECLARE_METATYPE(Form)

class DateFormatHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void sentencesFollowLanguageAndSystemLocale_data();
    void sentencesFollowLanguageAndSystemLocale();
    void qmlPassesDatesAndFormat();
};

void DateFormatHelperTest::init()
{
    Clock::pin(now);
}

void DateFormatHelperTest::cleanup()
{
    Clock::unpin();
    Settings::instance()->setApplicationLanguage(QStringLiteral("en"));
}

void DateFormatHelperTest::sentencesFollowLanguageAndSystemLocale_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<Form>("form");
    QTest::addColumn<QDateTime>("start");
    QTest::addColumn<QDateTime>("due");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* tag, const char* language, const QLocale& locale, Form form,
                        const QDateTime& start, const QDateTime& due, const char* text) {
        QTest::newRow(tag) << QString(language) << locale << form << start << due << QString::fromUtf8(text);
    };
    const QDateTime none;
    const QLocale en = englishSystem;
    const QLocale ru = russianSystem;

    row("header, same day today", "en", en, Header, at(6, 9), at(6, 18),
        "Today, between 9:00 AM and 6:00 PM");
    row("header names yesterday", "en", en, Header, none, at(5, 18), "Yesterday, 6:00 PM");
    row("header, two days: due in short form", "en", en, Header, at(9, 9), at(10, 18), "3/10/26, 6:00 PM");
    row("header, start without due", "en", en, Header, at(6, 9), none, "");
    row("header ru, same day tomorrow", "ru", en, Header, at(7, 9), at(7, 18), "Завтра с 9:00 AM до 6:00 PM");
    row("header ru, due only", "ru", en, Header, none, at(10, 18), "3/10/26 до 6:00 PM");

    row("section, same day today keeps capital", "en", en, Section, at(6, 9), at(6, 18),
        "Complete Today, between 9:00 AM and 6:00 PM");
    row("section, due tomorrow", "en", en, Section, none, at(7, 18), "Do Tomorrow, before 6:00 PM");
    row("section, due after tomorrow", "en", en, Section, none, at(8, 18),
        "Finish before Sunday, March 8, 2026, 6:00 PM");
    row("section does not name yesterday", "en", en, Section, none, at(5, 18),
        "Finish before Thursday, March 5, 2026, 6:00 PM");
    row("section, start on a later day", "en", en, Section, at(10, 9), none,
        "Start on Tuesday, March 10, 2026 at 9:00 AM");
    row("section, same later day", "en", en, Section, at(10, 9), at(10, 18),
        "Complete on Tuesday, March 10, 2026 between 9:00 AM and 6:00 PM");
    row("section, two days", "en", en, Section, at(6, 9), at(10, 18),
        "Start Today at 9:00 AM\nFinish before Tuesday, March 10, 2026, 6:00 PM");
    row("section ru, two days", "ru", en, Section, at(5, 9), at(7, 18),
        "Начать Thursday, March 5, 2026, 9:00 AM\nЗакончить Завтра до 6:00 PM");
    row("section ru, same later day has no sentence", "ru", en, Section, at(10, 9), at(10, 18), "");
    row("section ru on a Russian system lowers tomorrow", "ru", ru, Section, none, at(7, 18),
        "Закончить завтра до 18:00");
    row("section ru on a Russian system, start tomorrow", "ru", ru, Section, at(7, 9), none,
        "Начать завтра с 09:00");
    row("section on a Russian system, same later day", "en", ru, Section, at(10, 9), at(10, 18),
        "Complete вторник, 10 марта 2026 г., between 09:00 and 18:00");

    row("month, same later day", "en", en, Month, at(10, 9), at(10, 18),
        "between 9:00 AM and 6:00 PM on Tuesday, March 10, 2026");
    row("month ru, same later day", "ru", en, Month, at(10, 9), at(10, 18),
        "Tuesday, March 10, 2026 с 9:00 AM до 6:00 PM");
    row("month, same day tomorrow reads as header", "en", en, Month, at(7, 9), at(7, 18),
        "Tomorrow, between 9:00 AM and 6:00 PM");
    row("month ru on a Russian system, two days", "ru", ru, Month, at(10, 9), at(12, 18),
        "с вторник, 10 марта 2026 г., 09:00 по четверг, 12 марта 2026 г., 18:00");
    row("month without start reads as header", "en", en, Month, none, at(10, 18), "3/10/26, 6:00 PM");
}

void DateFormatHelperTest::sentencesFollowLanguageAndSystemLocale()
{
    QFETCH(QString, language);
    QFETCH(QLocale, locale);
    QFETCH(Form, form);
    QFETCH(QDateTime, start);
    QFETCH(QDateTime, due);
    QFETCH(QString, text);
    Settings::instance()->setApplicationLanguage(language);
    const DateFormatHelper helper(locale);

    switch (form) {
    case Header:
        QCOMPARE(helper.formatDatesForPreviewHeader(start, due), text);
        break;
    case Section:
        QCOMPARE(helper.formatDatesForPreviewSection(start, due), text);
        break;
    case Month:
        QCOMPARE(helper.formatMonthRepetitionDates(start, due), text);
        break;
    }
}

void DateFormatHelperTest::qmlPassesDatesAndFormat()
{
    DateFormatHelper helper(englishSystem);
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("DateFormatHelper"), &helper);
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\n"
                      "QtObject {\n"
                      "  property string tomorrow: DateFormatHelper.formatDate(new Date(2026, 2, 7), false,"
                      " Locale.LongFormat)\n"
                      "  property string later: DateFormatHelper.formatDate(new Date(2026, 2, 10), false,"
                      " Locale.ShortFormat)\n"
                      "  property string locale: DateFormatHelper.getCurrentLocale().name\n"
                      "}",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));

    QCOMPARE(object->property("tomorrow").toString(), QStringLiteral("Tomorrow"));
    QCOMPARE(object->property("later").toString(), QStringLiteral("3/10/26"));
    QCOMPARE(object->property("locale").toString(), QStringLiteral("en_US"));
}

NORVEL_TEST_MAIN(DateFormatHelperTest)
#include "dateformathelpertest.moc"
