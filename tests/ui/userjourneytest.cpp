#include "core/guimanager.h"
#include "core/settings.h"
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

// The way a new user goes, all by hand: capture a task, make a folder, a project and a context, give
// the task its project, context and date in the editor, find it on the daily plan of that date and
// complete it there, with its undo.
class UserJourneyTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void foldersAndProjectsAreMadeInTheTree();
    void nestedContextListsItsContextsAndTasks();
    void taskCapturedInTheBoxIsSortedInItsEditor();
    void taskDueTomorrowIsCompletedFromTheDailyPlan();
    void projectTasksAreSelectedDeletedAndReordered();
    void repeatingTaskShowsOnTheDaysOfItsRule();
    void foldersNestNoDeeperThanEightLevels();
    void cleanup();

private:
    QObject* service(const char* name) const;
    QVariantMap call(const char* serviceName, const char* method, const QVariant& argument) const;
    bool rightClick(const QString& objectName);
    bool createFromMenu(const QString& menuItem, const QString& popup, const QString& name);
    bool opened(const QString& popup) const;
    bool doubleClick(const QString& objectName);
    bool infoPopupClosed() const;
    bool pick(const QString& picker, const QStringList& rows);
    bool showDay(const QDate& date);
    QString currentListTitle() const;
    QObject* currentListPage() const;
    QStringList currentListNames() const;
    bool listShows(const QString& name) const;
    QPoint rowPoint(const QString& name, qreal heightRatio = 0.5) const;
    bool dragRowAbove(const QString& name, const QString& targetName);

    UiHarness m_ui;
    QString m_folderId;
    QString m_projectId;
    QString m_contextId;
    QString m_taskId;
    const QString m_taskName = QStringLiteral("Paint the hallway");
};

QObject* UserJourneyTest::service(const char* name) const
{
    const QQmlContext* context = GuiManager::instance()->engine()->rootContext();
    return context->contextProperty(QString::fromLatin1(name)).value<QObject*>();
}

QVariantMap UserJourneyTest::call(const char* serviceName, const char* method, const QVariant& argument) const
{
    QVariant result;
    QMetaObject::invokeMethod(service(serviceName), method, Q_RETURN_ARG(QVariant, result),
                              Q_ARG(QString, argument.toString()));
    return result.toMap();
}

bool UserJourneyTest::rightClick(const QString& objectName)
{
    QQuickItem* target = m_ui.item(objectName);
    if (!target || !target->isVisible())
        return false;
    const QPoint point = target->mapToScene(QPointF(target->width() / 2, target->height() / 2)).toPoint();
    QTest::mouseClick(m_ui.window(), Qt::RightButton, Qt::NoModifier, point);
    QTest::qWait(10);
    return true;
}

// Opens nothing itself: the menu must be showing.
bool UserJourneyTest::createFromMenu(const QString& menuItem, const QString& popup, const QString& name)
{
    if (!m_ui.click(menuItem) || !opened(popup))
        return false;
    QObject* field = m_ui.object(QStringLiteral("objectNameField"));
    if (!field)
        return false;
    field->setProperty("text", name);
    return m_ui.click(QStringLiteral("editorSaveButton")) && infoPopupClosed();
}

// Rows slide into place after a change of their list: the click waits until the row stands still.
bool UserJourneyTest::doubleClick(const QString& objectName)
{
    QQuickItem* target = m_ui.item(objectName);
    if (!target)
        return false;
    QPointF last(-1, -1);
    const bool still = QTest::qWaitFor([&] {
        const QPointF now = target->mapToScene(QPointF(target->width() * 0.75, target->height() / 2));
        const bool same = now == last;
        last = now;
        QTest::qWait(100);
        return same;
    });
    if (still)
        QTest::mouseDClick(m_ui.window(), Qt::LeftButton, Qt::NoModifier, last.toPoint());
    return still;
}

// Slid in and ready for clicks.
bool UserJourneyTest::opened(const QString& popup) const
{
    return QTest::qWaitFor([&] { return m_ui.property(popup, "opened").toBool(); });
}

bool UserJourneyTest::infoPopupClosed() const
{
    return QTest::qWaitFor([this] { return !m_ui.object(QStringLiteral("editorSaveButton")); });
}

// Opens the picker and clicks its rows in turn; the last one is taken.
bool UserJourneyTest::pick(const QString& picker, const QStringList& rows)
{
    if (!m_ui.click(picker))
        return false;
    for (const QString& row : rows) {
        if (!m_ui.click(QStringLiteral("pickerRow_") + row))
            return false;
    }
    return QTest::qWaitFor([this] { return !m_ui.object(QStringLiteral("TreeViewPopup")); });
}

bool UserJourneyTest::showDay(const QDate& date)
{
    const QString cell = QStringLiteral("calendarDay_") + date.toString(Qt::ISODate);
    if (!m_ui.item(cell) && !m_ui.click(QStringLiteral("nextMonthButton")))
        return false;
    return m_ui.click(cell);
}

QString UserJourneyTest::currentListTitle() const
{
    const QObject* list = currentListPage();
    return list ? list->property("title").toString() : QString();
}

QObject* UserJourneyTest::currentListPage() const
{
    const auto* page = m_ui.property(QStringLiteral("pageLoader"), "currentPage").value<QQuickItem*>();
    return page ? page->property("currentListPage").value<QObject*>() : nullptr;
}

QStringList UserJourneyTest::currentListNames() const
{
    QVariantList objects;
    const QObject* list = currentListPage();
    if (list)
        QMetaObject::invokeMethod(list->property("model").value<QObject*>(), "getObjectList",
                                  Q_RETURN_ARG(QVariantList, objects));
    QStringList names;
    for (const QVariant& object : qAsConst(objects))
        names.append(object.toMap().value(QStringLiteral("NAME")).toString());
    return names;
}

QPoint UserJourneyTest::rowPoint(const QString& name, qreal heightRatio) const
{
    QQuickItem* row = m_ui.item(QStringLiteral("listRow_") + name);
    return row ? row->mapToScene(QPointF(row->width() * 0.3, row->height() * heightRatio)).toPoint()
               : QPoint();
}

// Held until the row lifts, then moved in steps into the upper part of the target: a place above it.
bool UserJourneyTest::dragRowAbove(const QString& name, const QString& targetName)
{
    QTest::qWait(250);
    const QPoint start = rowPoint(name);
    const QPoint end = rowPoint(targetName, 0.2);
    if (start.isNull() || end.isNull())
        return false;
    QTest::mousePress(m_ui.window(), Qt::LeftButton, Qt::NoModifier, start);
    if (!QTest::qWaitFor([this] { return currentListPage()->property("dragActive").toBool(); }))
        return false;
    for (int step = 1; step <= 10; ++step) {
        QTest::mouseMove(m_ui.window(), start + (end - start) * step / 10);
        QTest::qWait(10);
    }
    QTest::mouseRelease(m_ui.window(), Qt::LeftButton, Qt::NoModifier, end);
    return QTest::qWaitFor([this] { return !currentListPage()->property("dragActive").toBool(); });
}

bool UserJourneyTest::listShows(const QString& name) const
{
    QQuickItem* row = m_ui.item(QStringLiteral("listRow_") + name);
    return row && row->isVisible();
}

void UserJourneyTest::initTestCase()
{
    QVERIFY(m_ui.start());
}

void UserJourneyTest::cleanup()
{
    QCOMPARE(m_ui.qmlMessages(), QStringList());
}

void UserJourneyTest::foldersAndProjectsAreMadeInTheTree()
{
    QVERIFY(m_ui.click(QStringLiteral("ProjectsPageButton")));
    QCOMPARE(currentListTitle(), QStringLiteral("Projects"));

    QVERIFY(m_ui.click(QStringLiteral("treeMenuButton")));
    QVERIFY(m_ui.click(QStringLiteral("projectMenuAddFolder")));
    QVERIFY(opened(QStringLiteral("FolderInfoPopup")));
    QCOMPARE(m_ui.text(QStringLiteral("editorTitle")), QStringLiteral("New folder"));
    QVERIFY(m_ui.click(QStringLiteral("editorSaveButton")));
    QVERIFY(opened(QStringLiteral("MessagePopup")));
    QCOMPARE(m_ui.text(QStringLiteral("MessagePopupTitle")), QStringLiteral("Save Error"));
    QCOMPARE(m_ui.property(QStringLiteral("MessagePopup"), "messageText").toString(),
             QStringLiteral("Please input folder name"));
    QVERIFY(m_ui.click(QStringLiteral("MessagePopupAcceptButton")));
    QTRY_VERIFY(!m_ui.item(QStringLiteral("MessagePopup")));
    m_ui.object(QStringLiteral("objectNameField"))->setProperty("text", QStringLiteral("Home"));
    // A second click on the same spot would be a double click, which a button does not take.
    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    QVERIFY(m_ui.click(QStringLiteral("editorSaveButton")));
    QVERIFY(infoPopupClosed());
    QTRY_VERIFY(m_ui.item(QStringLiteral("treeRow_Home")));
    QVERIFY(listShows(QStringLiteral("Home")));

    QVERIFY(rightClick(QStringLiteral("treeRow_Home")));
    QVERIFY(createFromMenu(QStringLiteral("projectMenuAddProject"), QStringLiteral("ProjectInfoPopup"),
                           QStringLiteral("Renovation")));
    QVERIFY(m_ui.click(QStringLiteral("treeRow_Home")));
    QCOMPARE(currentListTitle(), QStringLiteral("Home"));
    QTRY_VERIFY(listShows(QStringLiteral("Renovation")));

    QVERIFY(m_ui.click(QStringLiteral("treeRowArrow_Home")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("treeRow_Renovation")));
    const QVariantMap project = m_ui.item(QStringLiteral("treeRow_Renovation"))->property("object").toMap();
    m_projectId = project.value(QStringLiteral("ID")).toString();
    m_folderId = project.value(QStringLiteral("PARENT")).toString();
    QVERIFY(!m_folderId.isEmpty());

    // A copy pasted into the root is a second project of that name outside the folder.
    QVERIFY(rightClick(QStringLiteral("treeRow_Renovation")));
    QVERIFY(m_ui.click(QStringLiteral("projectMenuCopy")));
    QVERIFY(m_ui.click(QStringLiteral("treeMenuButton")));
    // The menu opens under the pointer: an early click on its last row would be a double click.
    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    QVERIFY(m_ui.click(QStringLiteral("projectMenuPaste")));
    QVERIFY(m_ui.click(QStringLiteral("backButton")));
    QCOMPARE(currentListTitle(), QStringLiteral("Projects"));
    QTRY_VERIFY(listShows(QStringLiteral("Renovation")));
}

void UserJourneyTest::nestedContextListsItsContextsAndTasks()
{
    QVERIFY(m_ui.click(QStringLiteral("ContextsPageButton")));
    QVERIFY(m_ui.click(QStringLiteral("treeMenuButton")));
    QVERIFY(createFromMenu(QStringLiteral("contextMenuAddContext"), QStringLiteral("ContextInfoPopup"),
                           QStringLiteral("Errands")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("treeRow_Errands")));
    QVERIFY(rightClick(QStringLiteral("treeRow_Errands")));
    QCOMPARE(m_ui.property(QStringLiteral("contextMenuAddContext"), "label").toString(),
             QStringLiteral("Add nested context"));
    QVERIFY(createFromMenu(QStringLiteral("contextMenuAddContext"), QStringLiteral("ContextInfoPopup"),
                           QStringLiteral("Hardware store")));
    QVERIFY(rightClick(QStringLiteral("treeRow_Errands")));
    QVERIFY(m_ui.click(QStringLiteral("contextMenuEdit")));
    QVERIFY(opened(QStringLiteral("ContextInfoPopup")));
    QCOMPARE(m_ui.text(QStringLiteral("editorTitle")), QStringLiteral("Edit"));
    QCOMPARE(m_ui.text(QStringLiteral("objectNameField")), QStringLiteral("Errands"));
    QVERIFY(m_ui.click(QStringLiteral("editorCancelButton")));
    QVERIFY(infoPopupClosed());

    m_contextId =
        m_ui.item(QStringLiteral("treeRow_Errands"))->property("object").toMap().value("ID").toString();
    QVERIFY(m_ui.click(QStringLiteral("treeRow_Errands")));
    QCOMPARE(currentListTitle(), QStringLiteral("Errands"));
    QTRY_VERIFY(listShows(QStringLiteral("Hardware store")));
}

void UserJourneyTest::taskCapturedInTheBoxIsSortedInItsEditor()
{
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
    QVERIFY(m_ui.click(QStringLiteral("captureField")));
    for (const QChar letter : m_taskName)
        QTest::keyClick(m_ui.window(), letter.toLatin1());
    m_ui.pressKey(Qt::Key_Return);
    QTRY_VERIFY(m_ui.item(QStringLiteral("task_") + m_taskName));
    m_taskId =
        m_ui.item(QStringLiteral("task_") + m_taskName)->property("task").toMap().value("ID").toString();
    QVERIFY(doubleClick(QStringLiteral("task_") + m_taskName));
    QVERIFY(m_ui.click(QStringLiteral("previewEditButton")));
    QVERIFY(opened(QStringLiteral("TaskInfoPopup")));
    QVERIFY(m_ui.click(QStringLiteral("metadataTab")));

    // A folder row only opens; the project inside it is taken.
    QVERIFY(pick(QStringLiteral("projectPicker"), {QStringLiteral("Home"), QStringLiteral("Renovation")}));
    QCOMPARE(m_ui.text(QStringLiteral("projectPickerText")), QStringLiteral("Home > Renovation"));
    // The search field has the keys: Return takes the first match.
    QVERIFY(m_ui.click(QStringLiteral("contextPicker")));
    for (const QChar letter : QStringLiteral("err"))
        QTest::keyClick(m_ui.window(), letter.toLatin1());
    QTRY_VERIFY(m_ui.item(QStringLiteral("pickerSearchRow_Errands")));
    m_ui.pressKey(Qt::Key_Return);
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TreeViewPopup")));
    QCOMPARE(m_ui.text(QStringLiteral("contextPickerText")), QStringLiteral("Errands"));

    // The fixed rows follow a language switch while the picker is open.
    QVERIFY(m_ui.click(QStringLiteral("projectPicker")));
    QVERIFY(m_ui.item(QStringLiteral("pickerRow_One Step Actions")));
    Settings::instance()->setApplicationLanguage(QStringLiteral("ru"));
    GuiManager::instance()->reloadTranslations();
    QTRY_VERIFY(m_ui.item(QStringLiteral("pickerRow_Одношаговые действия")));
    Settings::instance()->setApplicationLanguage(QStringLiteral("en"));
    GuiManager::instance()->reloadTranslations();
    m_ui.pressKey(Qt::Key_Escape);
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TreeViewPopup")));

    QVERIFY(m_ui.click(QStringLiteral("generalTab")));
    QVERIFY(m_ui.click(QStringLiteral("dueDateField")));
    QVERIFY(m_ui.click(QStringLiteral("tomorrowButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("DateTimeEditPopup")));
    QVERIFY(m_ui.click(QStringLiteral("editorSaveButton")));
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskInfoPopup")));

    const QVariantMap task = call("TaskHandler", "getTaskById", m_taskId);
    QCOMPARE(task.value(QStringLiteral("PARENT")).toString(), m_projectId);
    QCOMPARE(task.value(QStringLiteral("CONTEXT")).toString(), m_contextId);
    QCOMPARE(task.value(QStringLiteral("DUE")).toDateTime().toUTC().date(), QDate::currentDate().addDays(1));
    QTRY_VERIFY(!listShows(m_taskName));

    // The root holds a copy of the project by the same name: the folder's list leads to the right one.
    QVERIFY(m_ui.click(QStringLiteral("ProjectsPageButton")));
    QVERIFY(m_ui.click(QStringLiteral("treeRow_Home")));
    QTRY_VERIFY(listShows(QStringLiteral("Renovation")));
    QVERIFY(doubleClick(QStringLiteral("listRow_Renovation")));
    QTRY_COMPARE(currentListTitle(), QStringLiteral("Renovation"));
    QTRY_VERIFY(listShows(m_taskName));
}

void UserJourneyTest::taskDueTomorrowIsCompletedFromTheDailyPlan()
{
    QVERIFY(m_ui.click(QStringLiteral("DailyPlanPageButton")));
    // Today is already selected: the button only brings its month into view.
    QVERIFY(m_ui.click(QStringLiteral("todayButton")));
    QCOMPARE(m_ui.property(QStringLiteral("DailyPlanPage"), "backStackDepth").toInt(), 1);
    QVERIFY(m_ui.click(QStringLiteral("tomorrowButton")));
    QTRY_VERIFY(listShows(m_taskName));
    QVERIFY(m_ui.text(QStringLiteral("sectionTitle_0")).endsWith(QStringLiteral("1 task")));
    // The rows grow into place in 200 ms: a click before that misses them.
    QTest::qWait(250);
    QVERIFY(m_ui.click(QStringLiteral("completeBox_") + m_taskName));
    QTRY_VERIFY(m_ui.item(QStringLiteral("sectionTitle_4")));
    QVERIFY(m_ui.text(QStringLiteral("sectionTitle_4")).endsWith(QStringLiteral("Completed")));

    QVERIFY(m_ui.click(QStringLiteral("UndoButton")));
    QTRY_COMPARE(call("TaskHandler", "getTaskById", m_taskId).value(QStringLiteral("STATE")).toInt(), 0);
    QTRY_VERIFY(!m_ui.item(QStringLiteral("sectionTitle_4")));

    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    QVERIFY(m_ui.click(QStringLiteral("completeBox_") + m_taskName));
    QTRY_VERIFY(m_ui.item(QStringLiteral("sectionTitle_4")));
    QCOMPARE(call("TaskHandler", "getTaskById", m_taskId).value(QStringLiteral("STATE")).toInt(), 2);

    // A collapsed section hides its rows, and stays collapsed on another day and back.
    QVERIFY(m_ui.click(QStringLiteral("sectionHeader_4")));
    QTRY_VERIFY(!listShows(m_taskName));
    QVERIFY(m_ui.click(QStringLiteral("todayButton")));
    QVERIFY(m_ui.click(QStringLiteral("backButton")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("sectionTitle_4")));
    QVERIFY(!listShows(m_taskName));
    QTest::qWait(250);
    QVERIFY(m_ui.click(QStringLiteral("sectionHeader_4")));
    QTRY_VERIFY(listShows(m_taskName));
}

// Three tasks of the project, due on one day: two are taken away at once and brought back, and a
// drag gives the project's list, then the day's, an order of their own that is kept.
void UserJourneyTest::projectTasksAreSelectedDeletedAndReordered()
{
    const QDate day = QDate::currentDate().addDays(4);
    QHash<QString, QString> ids;
    for (const QString& name : {QStringLiteral("Sand the door"), QStringLiteral("Prime the wall"),
                                QStringLiteral("Hang the lamp")}) {
        QVERIFY(DataManager::instance()->createTaskLocally(
            RecordBuilder::task(name).inParent(m_projectId).dueAt(wallClock(day, QTime(10, 0)))));
        QVERIFY(DataManager::instance()->commitChanges());
        ids.insert(name, DataManager::instance()->lastCreatedObjectId());
    }
    QVERIFY(m_ui.click(QStringLiteral("ProjectsPageButton")));
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("ProjectsPage")), "updateAll");
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("ProjectsPage")), "selectItemById",
                              Q_ARG(QVariant, m_projectId));
    QTRY_VERIFY(listShows(QStringLiteral("Hang the lamp")));
    const QStringList before = currentListNames().mid(0, 3);

    QTest::qWait(250);
    QTest::mouseClick(m_ui.window(), Qt::LeftButton, Qt::NoModifier, rowPoint(before.at(0)));
    QTest::mouseClick(m_ui.window(), Qt::LeftButton, Qt::ShiftModifier, rowPoint(before.at(1)));
    m_ui.pressKey(Qt::Key_Delete);
    QTRY_VERIFY(m_ui.item(QStringLiteral("MessagePopupAcceptButton")));
    QTest::qWait(700);
    QVERIFY(m_ui.click(QStringLiteral("MessagePopupAcceptButton")));
    QTRY_VERIFY(!currentListNames().contains(before.at(0)));
    QVERIFY(!currentListNames().contains(before.at(1)));
    QVERIFY(m_ui.click(QStringLiteral("UndoButton")));
    QTRY_COMPARE(currentListNames().mid(0, 3), before);

    QVERIFY(dragRowAbove(before.at(2), before.at(0)));
    const QStringList dragged{before.at(2), before.at(0), before.at(1)};
    QTRY_COMPARE(currentListNames().mid(0, 3), dragged);
    SortedListInfo stored =
        DataManager::instance()->getSortedListInfo(m_projectId, SortingNamespace::ListTypeProject);
    QCOMPARE(stored.sortingType, SortingNamespace::ManualType);
    QVERIFY(stored.orderHash.value(ids.value(dragged.at(0))) <
            stored.orderHash.value(ids.value(dragged.at(1))));
    QVERIFY(stored.orderHash.value(ids.value(dragged.at(1))) <
            stored.orderHash.value(ids.value(dragged.at(2))));

    QVERIFY(m_ui.click(QStringLiteral("DailyPlanPageButton")));
    QVERIFY(showDay(day));
    QTRY_COMPARE(currentListNames().size(), 3);
    const QStringList planned = currentListNames();
    QVERIFY(dragRowAbove(planned.at(1), planned.at(0)));
    QTRY_COMPARE(currentListNames(), QStringList({planned.at(1), planned.at(0), planned.at(2)}));
    stored = DataManager::instance()->getSortedListInfo(day.toString(QStringLiteral("ddMMyyyy")),
                                                        SortingNamespace::ListTypeDailyPlan);
    QCOMPARE(stored.sortingType, SortingNamespace::ManualType);
    QVERIFY(stored.orderHash.value(ids.value(planned.at(1))) <
            stored.orderHash.value(ids.value(planned.at(0))));
}

void UserJourneyTest::repeatingTaskShowsOnTheDaysOfItsRule()
{
    const QDate first = QDate::currentDate().addDays(2);
    const QVariantMap task = RecordBuilder::task(QStringLiteral("Water the plants"))
                                 .inParent(QString::fromLatin1(RecordBuilder::inboxId))
                                 .dueAt(wallClock(first, QTime(9, 0)))
                                 .repeating(QStringLiteral("w;1"));
    bool created = false;
    QMetaObject::invokeMethod(service("TaskHandler"), "createTask", Q_RETURN_ARG(bool, created),
                              Q_ARG(QVariantMap, task));
    QVERIFY(created);

    QVERIFY(showDay(first.addDays(7)));
    QTRY_VERIFY(listShows(QStringLiteral("Water the plants")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("calendarDay_") + first.addDays(7).toString(Qt::ISODate))
                    ->findChild<QQuickItem*>(QStringLiteral("dayIndicator"))
                    ->isVisible());
    QVERIFY(showDay(first.addDays(8)));
    QTRY_VERIFY(m_ui.property(QStringLiteral("emptyListText"), "visible").toBool());
    QVERIFY(!listShows(QStringLiteral("Water the plants")));
}

void UserJourneyTest::foldersNestNoDeeperThanEightLevels()
{
    QVERIFY(m_ui.click(QStringLiteral("ProjectsPageButton")));
    QString parent = m_folderId;
    for (int level = 2; level <= 8; ++level) {
        const QVariantMap folder =
            RecordBuilder::folder(QStringLiteral("Level %1").arg(level)).inParent(parent);
        QVERIFY(DataManager::instance()->createProjectLocally(folder));
        parent = DataManager::instance()->lastCreatedObjectId();
    }
    QVERIFY(DataManager::instance()->commitChanges());
    // Written past the service, so the page is told to read anew.
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("ProjectsPage")), "updateAll");
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("ProjectsPage")), "selectItemById",
                              Q_ARG(QVariant, parent));
    QTRY_VERIFY(m_ui.item(QStringLiteral("treeRow_Level 8")));
    QVERIFY(rightClick(QStringLiteral("treeRow_Level 7")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("projectMenuAddProject")));
    QVERIFY(m_ui.property(QStringLiteral("projectMenuAddFolder"), "visible").toBool());
    m_ui.pressKey(Qt::Key_Escape);
    QVERIFY(rightClick(QStringLiteral("treeRow_Level 8")));
    QTRY_VERIFY(m_ui.item(QStringLiteral("projectMenuAddProject")));
    QVERIFY(!m_ui.property(QStringLiteral("projectMenuAddFolder"), "visible").toBool());
    m_ui.pressKey(Qt::Key_Escape);
}

NORVEL_TEST_MAIN(UserJourneyTest)
#include "userjourneytest.moc"
