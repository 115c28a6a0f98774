#include "store/dataobject.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class DataObjectTest : public QObject
{
    Q_OBJECT

private slots:
    void typeNamesOfQueuedCallsResolve();
};

void DataObjectTest::typeNamesOfQueuedCallsResolve()
{
    registerDataObjectMetaTypes();
    // Looked up by name first, as a queued call does: naming a type in C++ would register it on its own.
    const QByteArrayList maps{"DataObject", "DOTask", "DOProject", "DOFolder", "DOContext"};
    const QByteArrayList lists{"QList<DataObject>", "QList<DOTask>", "QList<DOProject>", "QList<DOFolder>",
                               "QList<DOContext>"};
    QHash<QByteArray, int> typeByName;
    for (const QByteArray& name : maps + lists + QByteArrayList{"TreeHierarchy", "IndicatorState"})
        typeByName.insert(name, QMetaType::type(name));

    for (const QByteArray& name : maps)
        QCOMPARE(typeByName.value(name), int(QMetaType::QVariantMap));
    for (const QByteArray& name : lists)
        QCOMPARE(typeByName.value(name), qMetaTypeId<QList<DataObject>>());
    QCOMPARE(typeByName.value("TreeHierarchy"), qMetaTypeId<TreeHierarchy>());
    QCOMPARE(typeByName.value("IndicatorState"), qMetaTypeId<IndicatorState>());
}

NORVEL_TEST_MAIN(DataObjectTest)
#include "dataobjecttest.moc"
