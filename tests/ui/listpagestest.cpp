#include "models/sortmodel.h"
#include "services/taskhandler.h"
#include "store/predefineddatahelper.h"
#include "testlib/testenvironment.h"
#include "testlib/uiharness.h"

#include <QApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

// The list pages as a user goes through them: capture in the Norvel Box, select a range, delete and
// take it back, drag a row into place, find a task by its memo, and restore from the trash.
class ListPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typingCapturesTasks();
    void shiftSelectedRowsAreDeletedAndRestored();
    void draggedRowKeepsItsNewPlace();
    void searchFindsATaskByAWordOfItsMemo();
    void trashRestoresOneTaskAndEmptiesTheRest();
    void cleanup();

private:
    QObject* model(const QString& listName) const;
    QStringList rowNames(const QString& listName) const;
    QQuickItem* row(const QString& name) const;
    QPoint centreOf(QQuickItem* item, qreal heightRatio = 0.5) const;
    void clickRow(const QString& name, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void settle();
    void acceptQuestion();
    void typeLetters(const QString& text);
    void type(const QString& text);
    QString currentPageName() const;

    UiHarness m_ui;
};

QObject* ListPagesTest::model(const QString& listName) const
{
    return m_ui.property(listName, "model").value<QObject*>();
}

QStringList ListPagesTest::rowNames(const QString& listName) const
{
    QVariantList objects;
    QObject* listModel = model(listName);
    if (!listModel ||
        !QMetaObject::invokeMethod(listModel, "getObjectList", Q_RETURN_ARG(QVariantList, objects)))
        return {QStringLiteral("<no model>")};
    QStringList names;
    for (const QVariant& object : qAsConst(objects))
        names.append(object.toMap().value(QStringLiteral("NAME")).toString());
    return names;
}

QQuickItem* ListPagesTest::row(const QString& name) const
{
    return m_ui.item(QStringLiteral("task_") + name);
}

QPoint ListPagesTest::centreOf(QQuickItem* item, qreal heightRatio) const
{
    return item->mapToScene(QPointF(item->width() * 0.3, item->height() * heightRatio)).toPoint();
}

// Rows move into place with a 200 ms transition after every change of the list.
void ListPagesTest::settle()
{
    QTest::qWait(250);
}

void ListPagesTest::clickRow(const QString& name, Qt::KeyboardModifiers modifiers)
{
    settle();
    QQuickItem* target = row(name);
    QVERIFY2(target, qPrintable(name));
    QTest::mouseMove(m_ui.window(), centreOf(target));
    QTest::mouseClick(m_ui.window(), Qt::LeftButton, modifiers, centreOf(target));
    QTest::qWait(20);
}

// The question slides in from above the window; it is answered once it has settled.
void ListPagesTest::acceptQuestion()
{
    QTRY_VERIFY(m_ui.item(QStringLiteral("MessagePopupAcceptButton")));
    QTest::qWait(700);
    QVERIFY(m_ui.click(QStringLiteral("MessagePopupAcceptButton")));
    QTRY_VERIFY(!m_ui.item(QStringLiteral("MessagePopup")));
}

void ListPagesTest::typeLetters(const QString& text)
{
    for (const QChar letter : text)
        QTest::keyClick(m_ui.window(), letter.toLatin1());
}

void ListPagesTest::type(const QString& text)
{
    typeLetters(text);
    QTest::keyClick(m_ui.window(), Qt::Key_Return);
    QTest::qWait(20);
}

QString ListPagesTest::currentPageName() const
{
    const auto* page = m_ui.property(QStringLiteral("pageLoader"), "currentPage").value<QQuickItem*>();
    return page ? page->objectName() : QString();
}

void ListPagesTest::initTestCase()
{
    QVERIFY(m_ui.start());
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
    QVERIFY2(currentPageName() == QStringLiteral("NorvelBoxPage"), qPrintable(m_ui.qmlMessages().join('\n')));
}

void ListPagesTest::cleanup()
{
    QCOMPARE(m_ui.qmlMessages(), QStringList());
}

void ListPagesTest::typingCapturesTasks()
{
    QVERIFY(m_ui.item(QStringLiteral("placeholderMainText"))->isVisible());

    QVERIFY(m_ui.click(QStringLiteral("captureField")));
    type(QStringLiteral("Water the plants"));
    type(QStringLiteral("Pay the rent"));
    type(QStringLiteral("  "));
    type(QStringLiteral("Return the library books"));

    // Captured within one second, the three share a time stamp: their order is not the capture's.
    QTRY_COMPARE(rowNames(QStringLiteral("norvelBoxList")).size(), 3);
    QStringList names = rowNames(QStringLiteral("norvelBoxList"));
    names.sort();
    QCOMPARE(names, QStringList({QStringLiteral("Pay the rent"), QStringLiteral("Return the library books"),
                                 QStringLiteral("Water the plants")}));
    QCOMPARE(m_ui.text(QStringLiteral("captureField")), QString());
    QVERIFY(!m_ui.item(QStringLiteral("placeholderMainText")));
    QTRY_VERIFY(row(QStringLiteral("Return the library books")));
}

void ListPagesTest::shiftSelectedRowsAreDeletedAndRestored()
{
    QObject* list = m_ui.object(QStringLiteral("norvelBoxList"));
    const QStringList names = rowNames(QStringLiteral("norvelBoxList"));
    clickRow(names.at(0));
    clickRow(names.at(1), Qt::ShiftModifier);
    QVariant selected;
    QMetaObject::invokeMethod(list, "selectedCount", Q_RETURN_ARG(QVariant, selected));
    QCOMPARE(selected.toInt(), 2);

    m_ui.pressKey(Qt::Key_Delete);
    acceptQuestion();
    QTRY_COMPARE(rowNames(QStringLiteral("norvelBoxList")), names.mid(2));

    QVERIFY(m_ui.click(QStringLiteral("UndoButton")));
    QTRY_COMPARE(rowNames(QStringLiteral("norvelBoxList")), names);
    // The rows come back with their add transition.
    QTest::qWait(300);

    // Shift+Down from the first row grows the selection; Shift+Up shrinks it before growing upwards.
    clickRow(names.at(0));
    m_ui.pressKey(Qt::Key_Down, Qt::ShiftModifier);
    m_ui.pressKey(Qt::Key_Down, Qt::ShiftModifier);
    QMetaObject::invokeMethod(list, "selectedCount", Q_RETURN_ARG(QVariant, selected));
    QCOMPARE(selected.toInt(), 3);
    m_ui.pressKey(Qt::Key_Up, Qt::ShiftModifier);
    QMetaObject::invokeMethod(list, "selectedCount", Q_RETURN_ARG(QVariant, selected));
    QCOMPARE(selected.toInt(), 2);

    // Control toggles one row; Control+A takes them all.
    clickRow(names.at(1), Qt::ControlModifier);
    QMetaObject::invokeMethod(list, "selectedCount", Q_RETURN_ARG(QVariant, selected));
    QCOMPARE(selected.toInt(), 1);
    m_ui.pressKey(Qt::Key_A, Qt::ControlModifier);
    QMetaObject::invokeMethod(list, "selectedCount", Q_RETURN_ARG(QVariant, selected));
    QCOMPARE(selected.toInt(), 3);
}

void ListPagesTest::draggedRowKeepsItsNewPlace()
{
    settle();
    const QStringList before = rowNames(QStringLiteral("norvelBoxList"));
    QQuickItem* source = row(before.at(2));
    QQuickItem* target = row(before.at(0));
    QVERIFY(source && target);

    clickRow(before.at(2));
    settle();
    const QPoint start = centreOf(source);
    QTest::mousePress(m_ui.window(), Qt::LeftButton, Qt::NoModifier, start);
    QTRY_VERIFY(m_ui.property(QStringLiteral("norvelBoxList"), "dragActive").toBool());
    // Into the upper 40% of the first row: a place above it, not a drop inside.
    const QPoint end = centreOf(target, 0.2);
    for (int step = 1; step <= 10; ++step) {
        QTest::mouseMove(m_ui.window(), start + (end - start) * step / 10);
        QTest::qWait(10);
    }
    QTest::mouseRelease(m_ui.window(), Qt::LeftButton, Qt::NoModifier, end);

    const QStringList expected{before.at(2), before.at(0), before.at(1)};
    QTRY_COMPARE(rowNames(QStringLiteral("norvelBoxList")), expected);
    QCOMPARE(m_ui.property(QStringLiteral("norvelBoxList"), "dragActive").toBool(), false);

    // A model made anew reads the dragged order back from the stored list.
    TaskHandler handler;
    std::unique_ptr<SortModel> fresh(
        handler.getProjectTasks(PredefinedDataHelper::instance()->norvelBoxId()).value<SortModel*>());
    QVERIFY(fresh);
    QStringList freshNames;
    for (const QVariant& task : fresh->getTaskList())
        freshNames << task.toMap().value(QStringLiteral("NAME")).toString();
    QCOMPARE(freshNames, expected);

    // A new task has no place of its own yet; the dragged order of the others stays.
    QVERIFY(m_ui.click(QStringLiteral("captureField")));
    type(QStringLiteral("Call the plumber"));
    QTRY_COMPARE(rowNames(QStringLiteral("norvelBoxList")).size(), 4);
    QCOMPARE(rowNames(QStringLiteral("norvelBoxList")).mid(0, 3), expected);
}

void ListPagesTest::searchFindsATaskByAWordOfItsMemo()
{
    clickRow(QStringLiteral("Pay the rent"));
    QQuickItem* memoButton =
        row(QStringLiteral("Pay the rent"))->findChild<QQuickItem*>(QStringLiteral("memoButton"));
    QVERIFY(m_ui.click(memoButton));
    QTRY_VERIFY(m_ui.item(QStringLiteral("memoEditor")));
    type(QStringLiteral("Transfer before Friday"));
    QTRY_COMPARE(m_ui.text(QStringLiteral("memoEditor")), QString());

    QVERIFY(m_ui.click(QStringLiteral("searchField")));
    typeLetters(QStringLiteral("friday"));
    QTRY_COMPARE(currentPageName(), QStringLiteral("SearchPage"));
    QTRY_COMPARE(rowNames(QStringLiteral("searchList")), QStringList({QStringLiteral("Pay the rent")}));

    // The Norvel Box keeps its hidden rows under the search page: the visible row is the result.
    QQuickItem* found = nullptr;
    QTRY_VERIFY((found = row(QStringLiteral("Pay the rent"))) && found->isVisible());
    const auto* memo = found->findChild<QQuickItem*>(QStringLiteral("taskMemoLabel"));
    QVERIFY(memo->isVisible());
    QVERIFY2(memo->property("text").toString().contains(QStringLiteral("<b>Friday</b>")),
             qPrintable(memo->property("text").toString()));

    // The user opens what was found: a double click on its name shows the task in the preview.
    settle();
    QTest::mouseDClick(m_ui.window(), Qt::LeftButton, Qt::NoModifier, centreOf(found, 0.25));
    QTRY_VERIFY(m_ui.item(QStringLiteral("TaskPreviewPopup")));
    QCOMPARE(m_ui.text(QStringLiteral("previewTitle")), QStringLiteral("Pay the rent"));
    QTRY_VERIFY(
        m_ui.property(QStringLiteral("previewMemo"), "text").toString().contains(QStringLiteral("Friday")));
    QTest::qWait(400);
    QVERIFY(m_ui.click(QStringLiteral("previewCloseButton")));
    QTRY_VERIFY(!m_ui.item(QStringLiteral("TaskPreviewPopup")));

    // Emptying the field ends the search and returns to the list it started from.
    QVERIFY(m_ui.click(QStringLiteral("searchField")));
    m_ui.pressKey(Qt::Key_A, Qt::ControlModifier);
    m_ui.pressKey(Qt::Key_Backspace);
    QTRY_COMPARE(currentPageName(), QStringLiteral("NorvelBoxPage"));
}

void ListPagesTest::trashRestoresOneTaskAndEmptiesTheRest()
{
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
    for (const QString& name : {QStringLiteral("Water the plants"), QStringLiteral("Call the plumber")}) {
        clickRow(name);
        m_ui.pressKey(Qt::Key_Delete);
        QTRY_VERIFY(!rowNames(QStringLiteral("norvelBoxList")).contains(name));
    }

    QVERIFY(m_ui.click(QStringLiteral("trashButton")));
    QCOMPARE(currentPageName(), QStringLiteral("TrashPage"));
    QTRY_COMPARE(rowNames(QStringLiteral("trashList")).size(), 2);
    QVERIFY(m_ui.item(QStringLiteral("trashTab_tasks")));
    QVERIFY(row(QStringLiteral("Water the plants"))->findChild<QQuickItem*>(QStringLiteral("daysLeftLabel")));
    QCOMPARE(row(QStringLiteral("Water the plants"))
                 ->findChild<QQuickItem*>(QStringLiteral("daysLeftLabel"))
                 ->property("text")
                 .toString(),
             QStringLiteral("14 days"));

    settle();
    QTest::mouseMove(m_ui.window(), centreOf(row(QStringLiteral("Water the plants"))));
    QVERIFY(m_ui.click(QStringLiteral("restoreButton_Water the plants")));
    QTRY_COMPARE(rowNames(QStringLiteral("trashList")), QStringList({QStringLiteral("Call the plumber")}));

    QVERIFY(m_ui.click(QStringLiteral("emptyTrashButton")));
    acceptQuestion();
    QTRY_VERIFY(!m_ui.item(QStringLiteral("trashList")));
    QVERIFY(!m_ui.item(QStringLiteral("trashTab_tasks")));

    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
    QTRY_VERIFY(rowNames(QStringLiteral("norvelBoxList")).contains(QStringLiteral("Water the plants")));
    QVERIFY(!rowNames(QStringLiteral("norvelBoxList")).contains(QStringLiteral("Call the plumber")));
}

NORVEL_TEST_MAIN(ListPagesTest)
#include "listpagestest.moc"
