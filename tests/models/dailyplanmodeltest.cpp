#include "core/clock.h"
#include "core/settings.h"
#include "models/dailyplanlistmodel.h"
#include "models/dailyplansortmodel.h"
#include "services/taskhandler.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

namespace {
const QDate today(2026, 3, 10);
constexpr int absent = -1;

QDateTime on(int dayOffset, int hour = 9)
{
    return wallClock(today.addDays(dayOffset), QTime(hour, 0));
}

// Stores a task or a project as it stands, committed.
bool store(const QVariantMap& object)
{
    DataManager* data = DataManager::instance();
    const bool created =
        object.contains("PERIOD") ? data->createTaskLocally(object) : data->createProjectLocally(object);
    return created && data->commitChanges();
}

// The group of each visible row, in the order shown.
QList<int> visibleGroups(const QAbstractItemModel& model)
{
    QList<int> groups;
    for (int row = 0; row < model.rowCount(); ++row)
        groups << model.index(row, 0).data(DailyPlanListModel::dailyPlanRole).toInt();
    return groups;
}
} // namespace

class DailyPlanModelTest : public QObject
{
    Q_OBJECT

    TaskHandler* m_handler = nullptr;

    // The day's model as the page gets it, checked by a model tester for as long as it lives.
    std::unique_ptr<DailyPlanSortModel> dayModel(const QDate& date)
    {
        auto* model = qvariant_cast<DailyPlanSortModel*>(m_handler->getDayTasks(date));
        new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest, model);
        return std::unique_ptr<DailyPlanSortModel>(model);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        Clock::pin(QDateTime(today, QTime(12, 0)));
        m_handler = new TaskHandler(this);
    }

    void init()
    {
        Settings::instance()->setShowCompletedTasks(true);
        Settings::instance()->setShowFutureTasks(true);
    }

    void cleanup()
    {
        QVERIFY(onApplicationDatabase("DELETE FROM task").isValid());
        QVERIFY(onApplicationDatabase("DELETE FROM project").isValid());
    }

    void eachObjectFallsIntoItsGroup_data()
    {
        QTest::addColumn<QVariantMap>("object");
        QTest::addColumn<int>("planDay");
        QTest::addColumn<int>("group");
        const auto task = [] { return RecordBuilder::task().withId("x"); };
        const auto project = [] { return RecordBuilder::project().withId("x"); };
        QTest::newRow("started yesterday, due tomorrow")
            << task().startingAt(on(-1)).dueAt(on(1)).build() << 0 << 2;
        QTest::newRow("due tomorrow without start") << task().dueAt(on(1)).build() << 0 << 2;
        QTest::newRow("no due, start today") << task().startingAt(on(0)).build() << 0 << 2;
        QTest::newRow("no due, start today, seen tomorrow") << task().startingAt(on(0)).build() << 1 << 2;
        QTest::newRow("due today, hour passed") << task().dueAt(on(0, 8)).build() << 0 << 0;
        QTest::newRow("completed project") << project().dueAt(on(0)).withState(2).build() << 0 << 4;
        QTest::newRow("project due today") << project().dueAt(on(0)).build() << 0 << 1;
        QTest::newRow("project started, due later")
            << project().startingAt(on(-1)).dueAt(on(1)).build() << 0 << 3;
        QTest::newRow("past day shows nothing merely available")
            << task().startingAt(on(-3)).dueAt(on(0)).build() << -1 << absent;
    }

    void eachObjectFallsIntoItsGroup()
    {
        QFETCH(QVariantMap, object);
        QFETCH(int, planDay);
        QVERIFY(store(object));

        const auto model = dayModel(today.addDays(planDay));

        const QList<int> groups = visibleGroups(*model);
        QTEST(groups.isEmpty() ? absent : groups.first(), "group");
    }

    void countersCountHiddenRowsAndTheSwitchHidesAvailableGroups_data()
    {
        QTest::addColumn<bool>("showFuture");
        QTest::addColumn<QList<int>>("shown");
        QTest::newRow("also available shown") << true << QList<int>{0, 0, 1, 2, 2, 3};
        QTest::newRow("also available hidden") << false << QList<int>{0, 0, 1};
    }

    void countersCountHiddenRowsAndTheSwitchHidesAvailableGroups()
    {
        QFETCH(bool, showFuture);
        Settings::instance()->setShowFutureTasks(showFuture);
        Settings::instance()->setShowCompletedTasks(false);
        // Stored in reverse group order, so that only sorting puts them in place.
        const QList<QVariantMap> objects{RecordBuilder::task("done").dueAt(on(0)).withState(2),
                                         RecordBuilder::project("later").startingAt(on(-1)).dueAt(on(2)),
                                         RecordBuilder::task("available").dueAt(on(3)),
                                         RecordBuilder::task("started").startingAt(on(-5)),
                                         RecordBuilder::project("project").dueAt(on(0)),
                                         RecordBuilder::task("overdue").dueAt(on(-4)),
                                         RecordBuilder::task("due").dueAt(on(0, 18))};
        for (const QVariantMap& object : objects)
            QVERIFY(store(object));

        const auto model = dayModel(today);

        QTEST(visibleGroups(*model), "shown");
        QCOMPARE(model->activeTaskCount(), 2);
        QCOMPARE(model->activeProjectCount(), 1);
        QCOMPARE(model->alsoAvailableTaskCount(), 2);
        QCOMPARE(model->alsoAvailableProjectCount(), 1);
        QCOMPARE(model->activeObjectCount(), 3);

        QSignalSpy taskCount(model.get(), &DailyPlanSortModel::activeTaskCountChanged);
        QSignalSpy projectCount(model.get(), &DailyPlanSortModel::activeProjectCountChanged);
        QVERIFY(store(RecordBuilder::task("another").dueAt(on(0))));
        model->update();
        QCOMPARE(taskCount.size(), 1);
        QCOMPARE(taskCount.first().first().toInt(), 3);
        QCOMPARE(projectCount.size(), 0);
    }

    // A refresh that moves a row into another section, without a change of state, re-sorts it there.
    void aRowWhoseGroupChangesMovesToItsSection()
    {
        QVERIFY(store(RecordBuilder::task("moved").withId("moved").dueAt(on(0))));
        QVERIFY(store(RecordBuilder::task("available").dueAt(on(3))));
        QVERIFY(store(RecordBuilder::task("due").dueAt(on(0, 18))));
        const auto model = dayModel(today);
        QCOMPARE(visibleGroups(*model), (QList<int>{0, 0, 2}));

        DOTask moved = DataManager::instance()->getTaskById("moved");
        moved.insert("DUE", on(2));
        QVERIFY(DataManager::instance()->updateTaskLocally(moved) &&
                DataManager::instance()->commitChanges());
        model->update();

        QCOMPARE(visibleGroups(*model), (QList<int>{0, 2, 2}));
        QCOMPARE(model->getObjectByIndex(1).value("ID").toString(), QStringLiteral("moved"));
        QCOMPARE(model->alsoAvailableTaskCount(), 2);
    }
};

NORVEL_TEST_MAIN(DailyPlanModelTest)

#include "dailyplanmodeltest.moc"
