#include "store/sortedlistcleaner.h"
#include "store/databasehandler.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

using namespace SortingNamespace;

namespace {
const QDate taskDay(2031, 5, 14);
}

class SortedListCleanerTest : public QObject
{
    Q_OBJECT

    TestDatabase m_filled;
    TestDatabase m_empty;

private slots:
    void initTestCase()
    {
        QVERIFY(m_filled.isReady() && m_empty.isReady());
        DatabaseHandler* database = m_filled.handler();
        QVERIFY(insertRecords(database, "project",
                              {RecordBuilder::folder().withId("folder"),
                               RecordBuilder::project().withId("done").withState(2),
                               RecordBuilder::project().withId("deleted").withState(1)}));
        QVERIFY(insertRecords(database, "context",
                              {RecordBuilder::context().withId("context"),
                               RecordBuilder::context().withId("deleted-context").withState(1)}));
        QVERIFY(insertRecords(database, "task",
                              {RecordBuilder::task()
                                   .startingAt(wallClock(taskDay, QTime(9, 0)))
                                   .dueAt(wallClock(taskDay, QTime(10, 0))),
                               RecordBuilder::task().inParent(RecordBuilder::oneStepActionsId)}));
        QVERIFY(database->commitChanges());
    }

    void listsWithoutTheirObjectsAreObsolete_data()
    {
        QTest::addColumn<bool>("emptyDatabase");
        QTest::addColumn<QString>("listId");
        QTest::addColumn<ListType>("listType");
        QTest::addColumn<bool>("obsolete");

        QTest::newRow("active folder") << false << "folder" << ListTypeFolder << false;
        QTest::newRow("completed project") << false << "done" << ListTypeProject << false;
        QTest::newRow("deleted project") << false << "deleted" << ListTypeProject << true;
        QTest::newRow("missing folder") << false << "no-such-folder" << ListTypeFolder << true;
        QTest::newRow("active context") << false << "context" << ListTypeContext << false;
        QTest::newRow("deleted context") << false << "deleted-context" << ListTypeContext << true;
        QTest::newRow("day with a task")
            << false << taskDay.toString("ddMMyyyy") << ListTypeDailyPlan << false;
        QTest::newRow("day without tasks")
            << false << taskDay.addDays(-1).toString("ddMMyyyy") << ListTypeDailyPlan << true;
        QTest::newRow("favorites of an object") << false << "no-such-object" << ListTypeFavorites << false;
        QTest::newRow("inbox with a task") << false << "norvelbox" << ListTypeProject << false;
        QTest::newRow("inbox without tasks") << true << "norvelbox" << ListTypeProject << true;
        QTest::newRow("one step actions with a task")
            << false << "1_step_actions" << ListTypeProject << false;
        QTest::newRow("one step actions without tasks") << true << "1_step_action" << ListTypeProject << true;
        QTest::newRow("root projects, none left") << true << "root_projects" << ListTypeFolder << true;
        QTest::newRow("root contexts, none left") << true << "root_contexts" << ListTypeContext << true;
        QTest::newRow("root favorites, no favorite")
            << false << "root_favorites" << ListTypeFavorites << true;
        QTest::newRow("fixed id under another type") << true << "norvelbox" << ListTypeContext << false;
    }

    void listsWithoutTheirObjectsAreObsolete()
    {
        QFETCH(bool, emptyDatabase);
        QFETCH(QString, listId);
        QFETCH(ListType, listType);

        QTEST(SortedListCleaner::isObsolete((emptyDatabase ? m_empty : m_filled).handler(), listId, listType),
              "obsolete");
    }
};

NORVEL_TEST_MAIN(SortedListCleanerTest)
#include "sortedlistcleanertest.moc"
