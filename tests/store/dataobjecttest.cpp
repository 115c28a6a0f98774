#include "store/dataobject.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class DataObjectTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typeNamesOfQueuedCallsResolve_data();
    void typeNamesOfQueuedCallsResolve();
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

NORVEL_TEST_MAIN(DataObjectTest)
#include "dataobjecttest.moc"
