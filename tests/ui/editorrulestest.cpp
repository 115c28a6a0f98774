#include "store/datamanager.h"
#include "store/predefineddatahelper.h"
#include "testlib/testenvironment.h"
#include "testlib/uiharness.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

// The rules the task editor applies on its own: the repeat rule's text form and its next dates,
// the correction of a due date before the start, which reminders can still be chosen, and the
// monthly rule's refusal of the 29th to 31st, the one day of a daily or weekly task, and how the
// time edit takes typed digits.
class EditorRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void periodStringRoundTrip_data();
    void periodStringRoundTrip();
    void nextDatePreview_data();
    void nextDatePreview();
    void dueBeforeStartMovesTheStart_data();
    void dueBeforeStartMovesTheStart();
    void remindersOnlyInTheFuture();
    void monthlyRuleRefusesTheTwentyNinth();
    void dailyAndWeeklyTasksKeepToOneDay_data();
    void dailyAndWeeklyTasksKeepToOneDay();
    void timeEditTyping_data();
    void timeEditTyping();
    void cleanup();

private:
    void openEditor();
    void setDates(const QDateTime& start, const QDateTime& due);
    QObject* repetition() const { return m_ui.object(QStringLiteral("taskRepetition")); }
    QDateTime fieldDate(const QString& fieldName) const;
    void type(const QString& keys);

    UiHarness m_ui;
};

static QDateTime wall(const QDate& date, const QTime& time)
{
    return QDateTime(date, time, Qt::UTC);
}

void EditorRulesTest::initTestCase()
{
    QVERIFY(m_ui.start());
    m_ui.window()->resize(1100, 850);
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
}

void EditorRulesTest::cleanup()
{
    QCOMPARE(m_ui.qmlMessages(), QStringList());
}

void EditorRulesTest::openEditor()
{
    if (m_ui.object(QStringLiteral("TaskInfoPopup")))
        return;
    QVERIFY(m_ui.click(QStringLiteral("addButton")));
    QTRY_VERIFY(m_ui.property(QStringLiteral("TaskInfoPopup"), "opened").toBool());
}

void EditorRulesTest::setDates(const QDateTime& start, const QDateTime& due)
{
    m_ui.object(QStringLiteral("startDateField"))->setProperty("dateTime", start);
    m_ui.object(QStringLiteral("dueDateField"))->setProperty("dateTime", due);
}

void EditorRulesTest::periodStringRoundTrip_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<QString>("expected");
    QTest::newRow("every 3 days") << "d;3"
                                  << "d;3";
    QTest::newRow("every 2 weeks on days") << "w;2;1,3,5"
                                           << "w;2;1,3,5";
    QTest::newRow("monthly") << "m;1"
                             << "m;1";
    QTest::newRow("one part only") << "d"
                                   << "";
}

void EditorRulesTest::periodStringRoundTrip()
{
    QFETCH(QString, period);
    QFETCH(QString, expected);
    openEditor();
    QObject* content = m_ui.object(QStringLiteral("taskInfoContent"));
    content->setProperty("initializing", true);
    QMetaObject::invokeMethod(repetition(), "selectNone");
    QMetaObject::invokeMethod(repetition(), "initWithPeriodString", Q_ARG(QVariant, period));
    QVariant result;
    QMetaObject::invokeMethod(repetition(), "getPeriodString", Q_RETURN_ARG(QVariant, result));
    content->setProperty("initializing", false);
    QCOMPARE(result.toString(), expected);
}

void EditorRulesTest::nextDatePreview_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<int>("count");
    QTest::addColumn<QVariantList>("weekDays");
    QTest::addColumn<QDateTime>("expected");
    const QDateTime wednesday = wall(QDate(2026, 11, 25), QTime(10, 0));
    QTest::newRow("every 3 days") << "d" << 3 << QVariantList() << wednesday.addDays(3);
    QTest::newRow("every 2 months") << "m" << 2 << QVariantList() << wall(QDate(2027, 1, 25), QTime(10, 0));
    QTest::newRow("weekly") << "w" << 1 << QVariantList() << wednesday.addDays(7);
    QTest::newRow("a later day this week") << "w" << 1 << QVariantList{1, 3, 5} << wednesday.addDays(2);
    QTest::newRow("wraps to the first day, count 2")
        << "w" << 2 << QVariantList{1, 3} << wednesday.addDays(12);
    QTest::newRow("own day not chosen") << "w" << 1 << QVariantList{1} << QDateTime();
}

void EditorRulesTest::nextDatePreview()
{
    QFETCH(QString, unit);
    QFETCH(int, count);
    QFETCH(QVariantList, weekDays);
    QFETCH(QDateTime, expected);
    openEditor();
    repetition()->setProperty("unit", unit);
    repetition()->setProperty("count", count);
    repetition()->setProperty("weekDays", weekDays);
    QVariant next;
    QMetaObject::invokeMethod(repetition(), "nextDate", Q_RETURN_ARG(QVariant, next),
                              Q_ARG(QVariant, wall(QDate(2026, 11, 25), QTime(10, 0))));
    QCOMPARE(next.toDateTime().toUTC(), expected);
}

void EditorRulesTest::dueBeforeStartMovesTheStart_data()
{
    QTest::addColumn<QDateTime>("start");
    QTest::addColumn<QDateTime>("due");
    QTest::addColumn<QDateTime>("expected");
    const QDate day = QDate::currentDate().addDays(3);
    QTest::newRow("same day, later start")
        << wall(day, QTime(10, 0)) << wall(day, QTime(9, 0)) << wall(day, QTime(9, 0));
    QTest::newRow("day before, earlier time")
        << wall(day.addDays(1), QTime(8, 0)) << wall(day, QTime(18, 0)) << wall(day, QTime(8, 0));
    QTest::newRow("day before, later time")
        << wall(day.addDays(1), QTime(20, 0)) << wall(day, QTime(18, 0)) << wall(day, QTime(18, 0));
    QTest::newRow("in order") << wall(day, QTime(8, 0)) << wall(day, QTime(18, 0)) << wall(day, QTime(8, 0));
}

void EditorRulesTest::dueBeforeStartMovesTheStart()
{
    QFETCH(QDateTime, start);
    QFETCH(QDateTime, due);
    QFETCH(QDateTime, expected);
    openEditor();
    const QString name = QStringLiteral("Correction ") + QString::fromLatin1(QTest::currentDataTag());
    m_ui.object(QStringLiteral("taskNameField"))->setProperty("text", name);
    setDates(start, due);
    QVERIFY(m_ui.click(QStringLiteral("editorSaveButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskInfoPopup")));

    const QList<DOTask> inbox =
        DataManager::instance()->getProjectTasks(PredefinedDataHelper::instance()->norvelBoxId());
    const auto saved = std::find_if(inbox.cbegin(), inbox.cend(), [&](const DOTask& task) {
        return task.value(QStringLiteral("NAME")) == name;
    });
    QVERIFY(saved != inbox.cend());
    QCOMPARE(saved->value(QStringLiteral("START")).toDateTime().toUTC(), expected);
    QCOMPARE(saved->value(QStringLiteral("DUE")).toDateTime().toUTC(), due);
}

void EditorRulesTest::remindersOnlyInTheFuture()
{
    openEditor();
    const QDateTime now = QDateTime::currentDateTime();
    const QDateTime inTwoDaysLessAnHour = wall(now.date(), now.time()).addSecs(47 * 3600);
    setDates(QDateTime(), inTwoDaysLessAnHour);
    QVERIFY(m_ui.click(QStringLiteral("remindersTab")));
    QTRY_VERIFY(m_ui.object(QStringLiteral("dueReminder_7")));
    QVERIFY(!m_ui.object(QStringLiteral("dueReminder_8")));
    QVERIFY(!m_ui.object(QStringLiteral("startReminder_0")));
    QVERIFY(!m_ui.item(QStringLiteral("noRemindersNote"))->isVisible());

    setDates(QDateTime(), QDateTime());
    QVERIFY(m_ui.click(QStringLiteral("generalTab")));
    QVERIFY(m_ui.click(QStringLiteral("remindersTab")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("noRemindersNote"))->isVisible());
    QVERIFY(!m_ui.object(QStringLiteral("dueReminder_0")));
    QVERIFY(m_ui.click(QStringLiteral("generalTab")));
}

void EditorRulesTest::monthlyRuleRefusesTheTwentyNinth()
{
    openEditor();
    setDates(wall(QDate(2027, 1, 29), QTime(8, 0)), wall(QDate(2027, 1, 29), QTime(18, 0)));
    QVERIFY(m_ui.click(QStringLiteral("repetitionExpander")));
    QTest::qWait(50); // the rows it shows are laid out on the next frame
    QVERIFY(m_ui.click(QStringLiteral("repetitionUnit_m")));
    QTRY_VERIFY(m_ui.property(QStringLiteral("MessagePopup"), "opened").toBool());
    QCOMPARE(m_ui.text(QStringLiteral("MessagePopupTitle")), QStringLiteral("Warning"));
    QCOMPARE(repetition()->property("active").toBool(), false);
    QVERIFY(m_ui.click(QStringLiteral("MessagePopupAcceptButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("MessagePopup")));
    QVERIFY(m_ui.click(QStringLiteral("editorCancelButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskInfoPopup")));
}

QDateTime EditorRulesTest::fieldDate(const QString& fieldName) const
{
    return m_ui.property(fieldName, "dateTime").toDateTime().toUTC();
}

// Digits as they are; "^", "v" and ">" are the Up, Down and Right keys.
void EditorRulesTest::type(const QString& keys)
{
    const QHash<QChar, Qt::Key> arrows{{'^', Qt::Key_Up}, {'v', Qt::Key_Down}, {'>', Qt::Key_Right}};
    for (const QChar key : keys) {
        if (arrows.contains(key))
            QTest::keyClick(m_ui.window(), arrows.value(key));
        else
            QTest::keyClick(m_ui.window(), key.toLatin1());
    }
}

void EditorRulesTest::dailyAndWeeklyTasksKeepToOneDay_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QDateTime>("start");
    QTest::addColumn<QDateTime>("expectedStart");
    const QDate day = QDate::currentDate().addDays(4);
    QTest::newRow("daily: the start moves to the due's day")
        << "d" << wall(day.addDays(-2), QTime(10, 0)) << wall(day, QTime(10, 0));
    QTest::newRow("weekly without a start: the default time on the due's day")
        << "w" << QDateTime() << wall(day, QTime(8, 0));
}

void EditorRulesTest::dailyAndWeeklyTasksKeepToOneDay()
{
    QFETCH(QString, unit);
    QFETCH(QDateTime, start);
    QFETCH(QDateTime, expectedStart);
    const QDate day = QDate::currentDate().addDays(4);
    openEditor();
    setDates(start, wall(day, QTime(18, 0)));
    QVERIFY(m_ui.click(QStringLiteral("repetitionExpander")));
    QTest::qWait(50);
    QVERIFY(m_ui.click(QStringLiteral("repetitionUnit_") + unit));
    QTRY_VERIFY(m_ui.item(QStringLiteral("oneDateForm"))->isVisible());
    QVERIFY(!m_ui.item(QStringLiteral("startDateField"))->isVisible());
    QCOMPARE(fieldDate(QStringLiteral("startDateField")), expectedStart);

    // The end time typed in the one-date form becomes the due time on the same day.
    QObject* endTime = m_ui.object(QStringLiteral("oneDateEndTime"));
    endTime->setProperty("twelveHourMode", false);
    QTest::qWait(50); // the fields move once the AM/PM field has gone
    QVERIFY(m_ui.click(endTime->findChild<QQuickItem*>(QStringLiteral("hoursEdit"))));
    type(QStringLiteral("20"));
    QCOMPARE(fieldDate(QStringLiteral("dueDateField")), wall(day, QTime(20, 0)));
    QCOMPARE(fieldDate(QStringLiteral("startDateField")), expectedStart);
    QVERIFY(m_ui.click(QStringLiteral("editorCancelButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskInfoPopup")));
}

// Keys go to the hour field; ">" walks to the minutes.
void EditorRulesTest::timeEditTyping_data()
{
    QTest::addColumn<bool>("twelveHours");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("time24");
    const auto row = [](const char* tag, bool twelve, const char* keys, const char* shown,
                        const char* time24) {
        QTest::newRow(tag) << twelve << QString(keys) << QString(shown) << QString(time24);
    };
    row("3 then 5: the 5 is dropped", false, "35", "03:30", "03:30");
    row("2 then 5: 5 replaces", false, "25", "05:30", "05:30");
    row("hours stop at 23", false, "23^", "23:30", "23:30");
    row("12h: a first 0 is ignored", true, "011", "11:30 AM", "11:30");
    row("12h: 12 AM is midnight", true, "12", "12:30 AM", "00:30");
    row("minutes: 7 then 2 replaces", false, ">72", "10:02", "10:02");
    row("minutes stop at 0", false, ">0v", "10:00", "10:00");
}

void EditorRulesTest::timeEditTyping()
{
    QFETCH(bool, twelveHours);
    QFETCH(QString, keys);
    QFETCH(QString, shown);
    QFETCH(QString, time24);
    openEditor();
    QVERIFY(m_ui.click(QStringLiteral("startDateField")));
    QTRY_VERIFY(m_ui.object(QStringLiteral("timeEdit")));
    QObject* timeEdit = m_ui.object(QStringLiteral("timeEdit"));
    timeEdit->setProperty("twelveHourMode", twelveHours);
    QMetaObject::invokeMethod(timeEdit, "init", Q_ARG(QVariant, 10), Q_ARG(QVariant, 30));
    QTest::qWait(50);
    QVERIFY(m_ui.click(QStringLiteral("hoursEdit")));
    type(keys);
    // A single digit gets its leading zero when the typing second is over.
    QTRY_COMPARE(timeEdit->property("text").toString(), shown);
    QCOMPARE(timeEdit->property("time24String").toString(), time24);
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("DateTimeEditPopup")), "destroyPopup");
    QTRY_VERIFY(!m_ui.object(QStringLiteral("DateTimeEditPopup")));
}

NORVEL_TEST_MAIN(EditorRulesTest)
#include "editorrulestest.moc"
