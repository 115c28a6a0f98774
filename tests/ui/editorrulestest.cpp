#include "store/datamanager.h"
#include "store/predefineddatahelper.h"
#include "testlib/testenvironment.h"
#include "testlib/uiharness.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

// The rules the task editor applies on its own: the repeat rule's text form and its next dates,
// the correction of a due date before the start, which reminders can still be chosen, and the
// monthly rule's refusal of the 29th to 31st.
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
    void cleanup();

private:
    void openEditor();
    void setDates(const QDateTime& start, const QDateTime& due);
    QObject* repetition() const { return m_ui.object(QStringLiteral("taskRepetition")); }

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

NORVEL_TEST_MAIN(EditorRulesTest)
#include "editorrulestest.moc"
