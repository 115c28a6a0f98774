#include "core/guimanager.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"
#include "testlib/uiharness.h"

#include <QApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStyleHints>
#include <QtTest>

// Moving a task between lists as a user does: cut it from one project and paste it into another,
// be told off for pasting a project among tasks, drag it from a list onto a project of the tree,
// and drag it onto another day of the daily plan's calendar.
class ListClipboardTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cutTaskIsPastedIntoAnotherProjectUnderItsOldId();
    void projectIsNotPastedAmongTasks();
    void taskDraggedOntoTheTreeMovesToThatProject();
    void cutFolderComesBackWithItsProjectsAndTasks();
    void taskDraggedOntoACalendarDayIsDueThen();
    void cleanup();

private:
    QString create(const QVariantMap& record);
    QVariantMap task() const;
    bool rightClick(const QString& objectName);
    bool dragRowOnto(const QString& rowName, const QString& targetName);
    bool listShows(const QString& name) const;

    UiHarness m_ui;
    QString m_kitchenId;
    QString m_gardenId;
    QString m_taskId;
    const QString m_taskName = QStringLiteral("Fix the tap");
};

QString ListClipboardTest::create(const QVariantMap& record)
{
    DataManager* data = DataManager::instance();
    const bool created =
        record.contains("PERIOD") ? data->createTaskLocally(record) : data->createProjectLocally(record);
    return created && data->commitChanges() ? data->lastCreatedObjectId() : QString();
}

QVariantMap ListClipboardTest::task() const
{
    return DataManager::instance()->getTaskById(m_taskId);
}

bool ListClipboardTest::rightClick(const QString& objectName)
{
    // Rows of a list grow into place in 200 ms; a click before that may miss them.
    QTest::qWait(250);
    QQuickItem* target = m_ui.item(objectName);
    if (!target || !target->isVisible())
        return false;
    const QPoint point = target->mapToScene(QPointF(target->width() / 2, target->height() / 2)).toPoint();
    QTest::mouseClick(m_ui.window(), Qt::RightButton, Qt::NoModifier, point);
    // A click on the menu that opens under the pointer must not count as a double click.
    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    return true;
}

// Press, hold until the row lifts, and move in steps so that the drop targets see it enter.
bool ListClipboardTest::dragRowOnto(const QString& rowName, const QString& targetName)
{
    QTest::qWait(250);
    QQuickItem* row = m_ui.item(QStringLiteral("listRow_") + rowName);
    QQuickItem* target = m_ui.item(targetName);
    if (!row || !target)
        return false;
    const QPoint from = row->mapToScene(QPointF(row->width() / 2, row->height() / 2)).toPoint();
    const QPoint to = target->mapToScene(QPointF(target->width() / 2, target->height() / 2)).toPoint();
    QTest::mousePress(m_ui.window(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::qWait(300);
    for (int step = 1; step <= 10; ++step) {
        QTest::mouseMove(m_ui.window(), from + (to - from) * step / 10);
        QTest::qWait(20);
    }
    QTest::mouseRelease(m_ui.window(), Qt::LeftButton, Qt::NoModifier, to);
    QTest::qWait(50);
    return true;
}

bool ListClipboardTest::listShows(const QString& name) const
{
    QQuickItem* row = m_ui.item(QStringLiteral("listRow_") + name);
    return row && row->isVisible();
}

void ListClipboardTest::initTestCase()
{
    QVERIFY(m_ui.start());
    const QString home = create(RecordBuilder::folder(QStringLiteral("Home")));
    m_kitchenId = create(RecordBuilder::project(QStringLiteral("Kitchen")).inParent(home));
    m_gardenId = create(RecordBuilder::project(QStringLiteral("Garden")).inParent(home));
    m_taskId = create(RecordBuilder::task(m_taskName)
                          .inParent(m_kitchenId)
                          .dueAt(wallClock(QDate::currentDate(), QTime(18, 30))));
    QVERIFY(!m_taskId.isEmpty());

    QVERIFY(m_ui.click(QStringLiteral("ProjectsPageButton")));
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("ProjectsPage")), "updateAll");
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("ProjectsPage")), "selectItemById",
                              Q_ARG(QVariant, m_kitchenId));
    QTRY_VERIFY(listShows(m_taskName));
}

void ListClipboardTest::cleanup()
{
    QCOMPARE(m_ui.qmlMessages(), QStringList());
}

void ListClipboardTest::cutTaskIsPastedIntoAnotherProjectUnderItsOldId()
{
    QVERIFY(rightClick(QStringLiteral("listRow_") + m_taskName));
    QVERIFY(m_ui.click(QStringLiteral("taskMenuCut")));
    QTRY_VERIFY(!listShows(m_taskName));
    QCOMPARE(task().value("STATE").toInt(), 1);

    QVERIFY(m_ui.click(QStringLiteral("treeRow_Garden")));
    m_ui.pressKey(Qt::Key_V, Qt::ControlModifier);
    QTRY_VERIFY(listShows(m_taskName));
    QCOMPARE(task().value("PARENT").toString(), m_gardenId);
    QCOMPARE(task().value("STATE").toInt(), 0);

    // The cut object was used up: the list menu no longer offers a paste.
    QVERIFY(m_ui.click(QStringLiteral("levelListMenuButton")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("levelListMenuPaste")));
    QVERIFY(!m_ui.property(QStringLiteral("levelListMenuPaste"), "enabled").toBool());
    m_ui.pressKey(Qt::Key_Escape);
}

void ListClipboardTest::projectIsNotPastedAmongTasks()
{
    QVERIFY(rightClick(QStringLiteral("treeRow_Kitchen")));
    QVERIFY(m_ui.click(QStringLiteral("projectMenuCopy")));
    m_ui.pressKey(Qt::Key_V, Qt::ControlModifier);
    QTRY_VERIFY(m_ui.item(QStringLiteral("MessagePopup")));
    QCOMPARE(m_ui.text(QStringLiteral("MessagePopupTitle")), QStringLiteral("Paste error"));
    QCOMPARE(m_ui.property(QStringLiteral("MessagePopup"), "messageText").toString(),
             QStringLiteral("One can paste only tasks into this list."));
    QTest::qWait(700);
    QVERIFY(m_ui.click(QStringLiteral("MessagePopupAcceptButton")));
    QTRY_VERIFY(!m_ui.item(QStringLiteral("MessagePopup")));
}

void ListClipboardTest::taskDraggedOntoTheTreeMovesToThatProject()
{
    QVERIFY(dragRowOnto(m_taskName, QStringLiteral("treeRow_Kitchen")));
    QTRY_COMPARE(task().value("PARENT").toString(), m_kitchenId);
    QTRY_VERIFY(!listShows(m_taskName));
}

void ListClipboardTest::cutFolderComesBackWithItsProjectsAndTasks()
{
    QVERIFY(rightClick(QStringLiteral("treeRow_Home")));
    QVERIFY(m_ui.click(QStringLiteral("projectMenuCut")));
    QTRY_VERIFY(!m_ui.item(QStringLiteral("treeRow_Home")));
    QCOMPARE(task().value("STATE").toInt(), 1);

    QVERIFY(m_ui.click(QStringLiteral("treeMenuButton")));
    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    QVERIFY(m_ui.click(QStringLiteral("projectMenuPaste")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("treeRow_Home")));
    // The root list shows it as a folder again, with a folder's menu.
    QTRY_VERIFY(m_ui.item(QStringLiteral("folder_Home")));
    QCOMPARE(task().value("STATE").toInt(), 0);
    QCOMPARE(DataManager::instance()->getProjectById(m_kitchenId).value("STATE").toInt(), 0);
}

void ListClipboardTest::taskDraggedOntoACalendarDayIsDueThen()
{
    QVERIFY(m_ui.click(QStringLiteral("DailyPlanPageButton")));
    QTRY_VERIFY(listShows(m_taskName));
    QVERIFY(m_ui.text(QStringLiteral("sectionTitle_0")).endsWith(QStringLiteral("1 task")));

    // Tomorrow: an earlier day would keep the task on today's plan as overdue.
    const QDate target = QDate::currentDate().addDays(1);
    QVERIFY(dragRowOnto(m_taskName, QStringLiteral("calendarDay_") + target.toString(Qt::ISODate)));
    QTRY_COMPARE(task().value("DUE").toDateTime(), wallClock(target, QTime(18, 30)));
}

NORVEL_TEST_MAIN(ListClipboardTest)
#include "listclipboardtest.moc"
