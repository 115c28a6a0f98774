#include "store/dataobject.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QThread>
#include <QtTest>

namespace {
// Emits from a worker thread, as the database thread does towards the interface.
class Sender : public QObject
{
    Q_OBJECT

public:
    void send(const IndicatorState& state, const TreeHierarchy& tree, const QList<DOTask>& tasks)
    {
        emit sent(state, tree, tasks);
    }

signals:
    void sent(IndicatorState state, TreeHierarchy tree, QList<DOTask> tasks);
};
} // namespace

class DataObjectTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typeNamesOfQueuedCallsResolve_data();
    void typeNamesOfQueuedCallsResolve();
    void valuesCrossThreadsIntact();
};

void DataObjectTest::initTestCase()
{
    registerDataObjectMetaTypes();
}

void DataObjectTest::typeNamesOfQueuedCallsResolve_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("type");

    for (const char* name : {"DataObject", "DOTask", "DOProject", "DOFolder", "DOContext"})
        QTest::newRow(name) << QByteArray(name) << int(QMetaType::QVariantMap);
    for (const char* name :
         {"QList<DataObject>", "QList<DOTask>", "QList<DOProject>", "QList<DOFolder>", "QList<DOContext>"})
        QTest::newRow(name) << QByteArray(name) << qMetaTypeId<QList<DataObject>>();
    QTest::newRow("TreeHierarchy") << QByteArray("TreeHierarchy") << qMetaTypeId<TreeHierarchy>();
    QTest::newRow("IndicatorState") << QByteArray("IndicatorState") << qMetaTypeId<IndicatorState>();
}

void DataObjectTest::typeNamesOfQueuedCallsResolve()
{
    QFETCH(QByteArray, name);
    QFETCH(int, type);

    QCOMPARE(QMetaType::type(name), type);
}

void DataObjectTest::valuesCrossThreadsIntact()
{
    QThread worker;
    Sender sender;
    sender.moveToThread(&worker);
    worker.start();
    IndicatorState received;
    TreeHierarchy receivedTree;
    QList<DOTask> receivedTasks;
    QObject receiver;
    connect(&sender, &Sender::sent, &receiver,
            [&](IndicatorState state, TreeHierarchy tree, QList<DOTask> tasks) {
                received = state;
                receivedTree = tree;
                receivedTasks = tasks;
            });
    const DOTask task{{QStringLiteral("ID"), QStringLiteral("t1")}};

    QMetaObject::invokeMethod(&sender, [&] {
        sender.send(IndicatorState{true, false, true}, TreeHierarchy{{{"t1", task}}, {task}}, {task});
    });

    QTRY_COMPARE(receivedTasks, QList<DOTask>{task});
    worker.quit();
    worker.wait();
    QCOMPARE(received.hasActiveTasks, true);
    QCOMPARE(received.hasOverdueTasks, false);
    QCOMPARE(received.hasRepeatedTasks, true);
    QCOMPARE(receivedTree.objectById.value("t1"), task);
    QCOMPARE(receivedTree.rootObjects, QList<DataObject>{task});
}

NORVEL_TEST_MAIN(DataObjectTest)
#include "dataobjecttest.moc"
