#include "store/sortedlistcleaner.h"
#include "store/contextstore.h"
#include "store/databasehandler.h"
#include "store/projectstore.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

#include <memory>

using namespace SortingNamespace;

namespace {
const QDate taskDay(2031, 5, 14);
}

class SortedListCleanerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void listsWithoutTheirObjectsAreObsolete_data();
    void listsWithoutTheirObjectsAreObsolete();

private:
    std::unique_ptr<TestDatabase> m_filled;
    std::unique_ptr<TestDatabase> m_empty;
};

void SortedListCleanerTest::initTestCase()
{
    m_filled = std::make_unique<TestDatabase>();
    m_empty = std::make_unique<TestDatabase>();
    QVERIFY(m_filled->isReady());
    QVERIFY(m_empty->isReady());
    DatabaseHandler* database = m_filled->handler();
    ProjectStore* projects = database->projects();
    QVERIFY(projects->createProjectLocally(RecordBuilder::folder().withId(QStringLiteral("folder"))));
    QVERIFY(
        projects->createProjectLocally(RecordBuilder::project().withId(QStringLiteral("done")).withState(2)));
    QVERIFY(projects->createProjectLocally(
        RecordBuilder::project().withId(QStringLiteral("deleted")).withState(1)));
    QVERIFY(
        projects->createProjectLocally(RecordBuilder::project().withId(QStringLiteral("gone")).withState(3)));
    QVERIFY(database->contexts()->createContextLocally(
        RecordBuilder::context().withId(QStringLiteral("context"))));
    QVERIFY(database->contexts()->createContextLocally(
        RecordBuilder::context().withId(QStringLiteral("deleted-context")).withState(1)));
    QVERIFY(database->tasks()->createTaskLocally(RecordBuilder::task()
                                                     .startingAt(wallClock(taskDay, QTime(9, 0)))
                                                     .dueAt(wallClock(taskDay, QTime(10, 0)))));
    QVERIFY(database->tasks()->createTaskLocally(
        RecordBuilder::task().inParent(QString::fromLatin1(RecordBuilder::oneStepActionsId))));
    QVERIFY(database->commitChanges());
}

void SortedListCleanerTest::listsWithoutTheirObjectsAreObsolete_data()
{
    QTest::addColumn<bool>("emptyDatabase");
    QTest::addColumn<QString>("listId");
    QTest::addColumn<ListType>("listType");
    QTest::addColumn<bool>("obsolete");

    QTest::newRow("active folder") << false << "folder" << ListTypeFolder << false;
    QTest::newRow("completed project") << false << "done" << ListTypeProject << false;
    QTest::newRow("deleted project") << false << "deleted" << ListTypeProject << true;
    QTest::newRow("completed and deleted project") << false << "gone" << ListTypeProject << true;
    QTest::newRow("missing folder") << false << "no-such-folder" << ListTypeFolder << true;
    QTest::newRow("active context") << false << "context" << ListTypeContext << false;
    QTest::newRow("deleted context") << false << "deleted-context" << ListTypeContext << true;
    QTest::newRow("missing context") << false << "no-such-context" << ListTypeContext << true;
    QTest::newRow("day with a task") << false << taskDay.toString(QStringLiteral("ddMMyyyy"))
                                     << ListTypeDailyPlan << false;
    QTest::newRow("day without tasks")
        << false << taskDay.addDays(-1).toString(QStringLiteral("ddMMyyyy")) << ListTypeDailyPlan << true;
    QTest::newRow("favorites of an object") << false << "no-such-object" << ListTypeFavorites << false;
    QTest::newRow("inbox with a task") << false << "norvelbox" << ListTypeProject << false;
    QTest::newRow("inbox without tasks") << true << "norvelbox" << ListTypeProject << true;
    QTest::newRow("one step actions with a task") << false << "1_step_actions" << ListTypeProject << false;
    QTest::newRow("one step actions without tasks") << true << "1_step_actions" << ListTypeProject << true;
    QTest::newRow("root projects") << false << "root_projects" << ListTypeFolder << false;
    QTest::newRow("root projects, none left") << true << "root_projects" << ListTypeFolder << true;
    QTest::newRow("root contexts") << false << "root_contexts" << ListTypeContext << false;
    QTest::newRow("root contexts, none left") << true << "root_contexts" << ListTypeContext << true;
    QTest::newRow("root favorites, no favorite") << false << "root_favorites" << ListTypeFavorites << true;
    QTest::newRow("fixed id under another type") << true << "norvelbox" << ListTypeContext << false;
}

void SortedListCleanerTest::listsWithoutTheirObjectsAreObsolete()
{
    QFETCH(bool, emptyDatabase);
    QFETCH(QString, listId);
    QFETCH(ListType, listType);
    QFETCH(bool, obsolete);
    DatabaseHandler* database = (emptyDatabase ? m_empty : m_filled)->handler();

    QCOMPARE(SortedListCleaner::isObsolete(database, listId, listType), obsolete);
}

NORVEL_TEST_MAIN(SortedListCleanerTest)
#include "sortedlistcleanertest.moc"
