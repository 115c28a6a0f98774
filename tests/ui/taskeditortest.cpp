#include "core/clock.h"
#include "core/guimanager.h"
#include "core/settings.h"
#include "reminders/notificationmanager.h"
#include "store/datamanager.h"
#include "store/predefineddatahelper.h"
#include "testlib/testenvironment.h"
#include "testlib/uiharness.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

// One journey through the task editor and the preview as a user takes it: a weekly task with dates
// and a reminder, its due date moved in the preview, deleted and restored, then completed for good.
class TaskEditorTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void newTaskWithDatesRuleAndReminderIsStored();
    void previewMovesTheDueDateAndTheStartAlong();
    void restoreBringsBackADeletedTask();
    void expiredOfferCompletesTheRepeatingTask();
    void editorSpeaksRussian();
    void fileMenuCreatesATaskForTheSelectedDay();
    void sortingPopupReordersTheList();
    void cleanup();

private:
    QVariantMap storedTask() const;
    void pickDay(const QString& fieldName, const QString& dayButton);
    void openPreview();
    void capture(const QString& name);
    QStringList inboxNames() const;
    QQuickItem* menuItem(const QString& label) const;

    UiHarness m_ui;
    QString m_taskId;
};

static QDateTime wallClock(const QVariant& value)
{
    return value.toDateTime().toUTC();
}

QVariantMap TaskEditorTest::storedTask() const
{
    return DataManager::instance()->getTaskById(m_taskId);
}

void TaskEditorTest::pickDay(const QString& fieldName, const QString& dayButton)
{
    QVERIFY(m_ui.click(fieldName));
    QVERIFY(m_ui.click(dayButton));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("DateTimeEditPopup")));
}

void TaskEditorTest::openPreview()
{
    GuiManager::instance()->showTaskById(m_taskId);
    QTRY_VERIFY(m_ui.item(QStringLiteral("TaskPreviewPopup")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("TaskPreviewPopup"))->isVisible());
}

void TaskEditorTest::initTestCase()
{
    QVERIFY(m_ui.start());
    // The editor's general tab fits a window of ordinary size without scrolling.
    m_ui.window()->resize(1100, 850);
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
}

void TaskEditorTest::cleanup()
{
    QCOMPARE(m_ui.qmlMessages(), QStringList());
}

void TaskEditorTest::newTaskWithDatesRuleAndReminderIsStored()
{
    QVERIFY(m_ui.click(QStringLiteral("addButton")));
    QTRY_VERIFY(m_ui.property(QStringLiteral("TaskInfoPopup"), "opened").toBool());
    QCOMPARE(m_ui.text(QStringLiteral("editorTitle")), QStringLiteral("New task"));

    QVERIFY(m_ui.click(QStringLiteral("editorSaveButton")));
    QTRY_VERIFY(m_ui.property(QStringLiteral("MessagePopup"), "opened").toBool());
    QCOMPARE(m_ui.text(QStringLiteral("MessagePopupTitle")), QStringLiteral("Save Error"));
    QVERIFY(m_ui.click(QStringLiteral("MessagePopupAcceptButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("MessagePopup")));

    QVERIFY(m_ui.click(QStringLiteral("taskNameField")));
    for (const QChar& character : QStringLiteral("Weekly review"))
        QTest::keyClick(m_ui.window(), character.toLatin1());
    pickDay(QStringLiteral("startDateField"), QStringLiteral("tomorrowButton"));
    pickDay(QStringLiteral("dueDateField"), QStringLiteral("tomorrowButton"));
    QVERIFY(m_ui.click(QStringLiteral("repetitionExpander")));
    QTest::qWait(50); // the rows it shows are laid out on the next frame
    QVERIFY(m_ui.click(QStringLiteral("repetitionUnit_w")));
    QCOMPARE(m_ui.text(QStringLiteral("repetitionCountText")), QStringLiteral("Every 1 week"));

    QVERIFY(m_ui.click(QStringLiteral("remindersTab")));
    QTest::qWait(50);
    QVERIFY(m_ui.click(QStringLiteral("dueReminder_4")));
    QVERIFY(m_ui.click(QStringLiteral("editorSaveButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskInfoPopup")));

    const QList<DOTask> inbox =
        DataManager::instance()->getProjectTasks(PredefinedDataHelper::instance()->norvelBoxId());
    for (const DOTask& task : inbox) {
        if (task.value(QStringLiteral("NAME")) == QStringLiteral("Weekly review"))
            m_taskId = task.value(QStringLiteral("ID")).toString();
    }
    QVERIFY(!m_taskId.isEmpty());
    const QDate tomorrow = QDate::currentDate().addDays(1);
    const QVariantMap task = storedTask();
    QCOMPARE(task.value(QStringLiteral("PERIOD")).toString(), QStringLiteral("w;1"));
    QCOMPARE(wallClock(task.value(QStringLiteral("START"))), QDateTime(tomorrow, QTime(8, 0), Qt::UTC));
    QCOMPARE(wallClock(task.value(QStringLiteral("DUE"))), QDateTime(tomorrow, QTime(23, 0), Qt::UTC));
    QVERIFY(DataManager::instance()->hasScheduledReminders(m_taskId));
    QVERIFY(DataManager::instance()->hasDueRepeatedReminder(m_taskId, NotificationManager::Hour));
    QVERIFY(!DataManager::instance()->hasStartRepeatedReminder(m_taskId, NotificationManager::Hour));
}

void TaskEditorTest::previewMovesTheDueDateAndTheStartAlong()
{
    openPreview();
    QCOMPARE(m_ui.text(QStringLiteral("previewTitle")), QStringLiteral("Weekly review"));
    QVERIFY(m_ui.item(QStringLiteral("previewRemindersSection"))->isVisible());

    const QDate target = QDate::currentDate().addDays(2);
    QVERIFY(m_ui.click(QStringLiteral("previewRepetitionSection")));
    if (target.month() != QDate::currentDate().addDays(1).month())
        QVERIFY(m_ui.click(QStringLiteral("nextMonthButton")));
    QVERIFY(m_ui.click(QStringLiteral("calendarDay_") + QString::number(target.day())));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("DateTimeEditPopup")));

    const QVariantMap task = storedTask();
    QCOMPARE(wallClock(task.value(QStringLiteral("DUE"))), QDateTime(target, QTime(23, 0), Qt::UTC));
    QCOMPARE(wallClock(task.value(QStringLiteral("START"))), QDateTime(target, QTime(8, 0), Qt::UTC));
    QVERIFY(DataManager::instance()->hasScheduledReminders(m_taskId));

    // Out of the inbox into another project and back, each by the picker.
    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    const QList<QPair<QString, QString>> moves{{"One Step Actions", predefined->oneStepActionsId()},
                                               {"Norvel Box", predefined->norvelBoxId()}};
    for (const auto& [row, project] : moves) {
        QVERIFY(m_ui.click(QStringLiteral("previewMoveAction")));
        QVERIFY(m_ui.click(QStringLiteral("pickerRow_") + row));
        QTRY_COMPARE(storedTask().value(QStringLiteral("PARENT")).toString(), project);
    }
}

void TaskEditorTest::restoreBringsBackADeletedTask()
{
    QVERIFY(m_ui.click(QStringLiteral("previewDeleteButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskPreviewPopup")));
    // Restore is clicked where it stands once the row has faded in.
    QTRY_COMPARE(m_ui.property(QStringLiteral("undoRow"), "opacity").toReal(), 1.0);
    QCOMPARE(m_ui.text(QStringLiteral("undoLabel")), QStringLiteral("You deleted a task"));
    QVERIFY(storedTask().value(QStringLiteral("STATE")).toInt() & 1);

    QVERIFY(m_ui.click(QStringLiteral("UndoButton")));
    QCOMPARE(storedTask().value(QStringLiteral("STATE")).toInt(), 0);
    QTRY_VERIFY(!m_ui.item(QStringLiteral("undoRow"))->isVisible());
}

void TaskEditorTest::expiredOfferCompletesTheRepeatingTask()
{
    const QDateTime due = wallClock(storedTask().value(QStringLiteral("DUE")));
    openPreview();
    QVERIFY(m_ui.click(QStringLiteral("previewCompleteButton")));
    QTRY_COMPARE(m_ui.text(QStringLiteral("undoLabel")), QStringLiteral("You completed a task 👍"));
    QTRY_VERIFY(m_ui.item(QStringLiteral("undoRow"))->isVisible());
    QVERIFY(DataManager::instance()->hasPendingChanges());
    QTRY_VERIFY_WITH_TIMEOUT(!m_ui.item(QStringLiteral("undoRow"))->isVisible(), 12000);

    QCOMPARE(wallClock(storedTask().value(QStringLiteral("DUE"))), due.addDays(7));
    QCOMPARE(storedTask().value(QStringLiteral("STATE")).toInt(), 0);
    QVERIFY(DataManager::instance()->hasScheduledReminders(m_taskId));
    QVERIFY(!DataManager::instance()->hasPendingChanges());
}

void TaskEditorTest::editorSpeaksRussian()
{
    Settings::instance()->setApplicationLanguage(QStringLiteral("ru"));
    GuiManager::instance()->reloadTranslations();
    QVERIFY(m_ui.click(QStringLiteral("addButton")));
    QTRY_VERIFY(m_ui.property(QStringLiteral("TaskInfoPopup"), "opened").toBool());
    QCOMPARE(m_ui.text(QStringLiteral("editorTitle")), QStringLiteral("Новая задача"));
    QVERIFY(m_ui.click(QStringLiteral("repetitionExpander")));
    QTRY_COMPARE(m_ui.text(QStringLiteral("repetitionCountText")), QStringLiteral("Каждый 1 день"));

    QVERIFY(m_ui.click(QStringLiteral("editorCancelButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskInfoPopup")));
    Settings::instance()->setApplicationLanguage(QStringLiteral("en"));
    GuiManager::instance()->reloadTranslations();
}

void TaskEditorTest::capture(const QString& name)
{
    QVERIFY(m_ui.click(QStringLiteral("captureField")));
    for (const QChar& character : name)
        QTest::keyClick(m_ui.window(), character.toLatin1());
    QTest::keyClick(m_ui.window(), Qt::Key_Return);
}

QStringList TaskEditorTest::inboxNames() const
{
    QVariantList objects;
    auto* model = m_ui.property(QStringLiteral("norvelBoxList"), "model").value<QObject*>();
    QMetaObject::invokeMethod(model, "getObjectList", Q_RETURN_ARG(QVariantList, objects));
    QStringList names;
    for (const QVariant& object : qAsConst(objects))
        names.append(object.toMap().value(QStringLiteral("NAME")).toString());
    return names;
}

// Entries of list menus carry their text only; an open menu is drawn in the window's overlay.
QQuickItem* TaskEditorTest::menuItem(const QString& label) const
{
    QList<QQuickItem*> pending{m_ui.window()->contentItem()};
    while (!pending.isEmpty()) {
        QQuickItem* candidate = pending.takeFirst();
        if (candidate->property("label").toString() == label && candidate->isVisible())
            return candidate;
        pending.append(candidate->childItems());
    }
    return nullptr;
}

void TaskEditorTest::fileMenuCreatesATaskForTheSelectedDay()
{
    QVERIFY(m_ui.click(QStringLiteral("DailyPlanPageButton")));
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("fileMenu")), "open");
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("createMenu")), "open");
    QVERIFY(m_ui.click(QStringLiteral("addNewTaskMenuItem")));
    QTRY_VERIFY(m_ui.property(QStringLiteral("TaskInfoPopup"), "opened").toBool());
    const QDate selectedDay =
        m_ui.property(QStringLiteral("DailyPlanPage"), "selectedDate").toDateTime().date();
    QCOMPARE(m_ui.property(QStringLiteral("dueDateField"), "dateTime").toDateTime().toUTC(),
             QDateTime(selectedDay, QTime(23, 0), Qt::UTC));
    QCOMPARE(m_ui.property(QStringLiteral("taskInfoContent"), "projectId").toString(),
             PredefinedDataHelper::instance()->oneStepActionsId());
    QVERIFY(m_ui.click(QStringLiteral("editorCancelButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskInfoPopup")));
}

void TaskEditorTest::sortingPopupReordersTheList()
{
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
    Clock::pin(QDateTime::currentDateTime().addSecs(-3600));
    capture(QStringLiteral("Zeta plan"));
    Clock::unpin();
    capture(QStringLiteral("Alpha plan"));
    QTRY_VERIFY(inboxNames().contains(QStringLiteral("Alpha plan")));
    QVERIFY(inboxNames().indexOf(QStringLiteral("Zeta plan")) <
            inboxNames().indexOf(QStringLiteral("Alpha plan")));

    QVERIFY(m_ui.click(QStringLiteral("listMenuButton")));
    QTRY_VERIFY(menuItem(QStringLiteral("Sort")));
    QVERIFY(m_ui.click(menuItem(QStringLiteral("Sort"))));
    QTRY_VERIFY(m_ui.property(QStringLiteral("SortingPopup"), "opened").toBool());
    QVERIFY(m_ui.property(QStringLiteral("groupByDateBox"), "checked").toBool());
    QVERIFY(m_ui.click(QStringLiteral("sortAlphabetically")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("SortingPopup")));

    QVERIFY(DataManager::instance()->hasSortedListInfo(QStringLiteral("norvelbox"),
                                                       SortingNamespace::ListTypeProject));
    QTRY_VERIFY(inboxNames().indexOf(QStringLiteral("Alpha plan")) <
                inboxNames().indexOf(QStringLiteral("Zeta plan")));
}

NORVEL_TEST_MAIN(TaskEditorTest)
#include "taskeditortest.moc"
