#include "services/projecthandler.h"
#include "models/sortmodel.h"
#include "store/datamanager.h"
#include "store/predefineddatahelper.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QTimer>
#include <QtTest>

namespace {
DataManager* data()
{
    return DataManager::instance();
}

void create(const QVariantMap& record)
{
    const bool created =
        record.contains("PERIOD") ? data()->createTaskLocally(record) : data()->createProjectLocally(record);
    QVERIFY(created && data()->commitChanges());
}

int stateOf(const QVariantMap& record)
{
    return record.value("STATE").toInt();
}

// What the clipboard records at a cut: each descendant's state and each of their tasks' states.
QVariantMap recordCut(const QVariantMap& object)
{
    const QString id = object.value("ID").toString();
    const QList<DataObject> subtree =
        object.value("FOLDER").toBool() ? data()->getSubprojectsRecursive(id) : QList<DataObject>{object};
    QVariantMap children;
    for (const DataObject& entry : subtree) {
        children.insert(entry.value("ID").toString(), stateOf(entry));
        for (const DOTask& task : data()->getProjectTasks(entry.value("ID").toString()))
            children.insert(task.value("ID").toString(), stateOf(task));
    }
    return children;
}
} // namespace

class ProjectHandlerTest : public QObject
{
    Q_OBJECT

    ProjectHandler* m_handler = nullptr;

private slots:
    void initTestCase()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        m_handler = new ProjectHandler(this);
        create(RecordBuilder::folder("Home").withId("home"));
        create(RecordBuilder::folder("Kitchen").withId("kitchen").inParent("home"));
        create(RecordBuilder::project("Leaf").withId("leaf").inParent("kitchen"));
    }

    void pasteAfterCutLeavesEarlierTrashInTrash_data()
    {
        QTest::addColumn<bool>("cutFolder");
        QTest::newRow("project") << false;
        QTest::newRow("folder holding the project") << true;
    }

    void pasteAfterCutLeavesEarlierTrashInTrash()
    {
        QFETCH(bool, cutFolder);
        const QString tag = QTest::currentDataTag();
        const QVariantMap folder = RecordBuilder::folder("Errands").withId(tag + "folder");
        const QVariantMap project = RecordBuilder::project().withId(tag + "project").inParent(tag + "folder");
        create(RecordBuilder::folder("Destination").withId(tag + "destination"));
        create(folder);
        create(project);
        create(RecordBuilder::task().withId(tag + "active").inParent(tag + "project"));
        create(RecordBuilder::task().withId(tag + "trashed").inParent(tag + "project").withState(1));

        const QVariantMap cut = changed(cutFolder ? folder : project, {{"STATE", 0}});
        const QVariantMap children = recordCut(cut);
        QVERIFY(m_handler->markProjectAsDeleted(cut));
        QVERIFY(m_handler->confirmProjectUpdate(cut));
        if (cutFolder)
            m_handler->moveFolder(cut, tag + "destination", children);
        else
            m_handler->moveProject(cut, tag + "destination", children);
        QVERIFY(data()->commitChanges());

        const DOProject pasted = data()->getProjectById(cut.value("ID").toString());
        QCOMPARE(QVariantList({pasted.value("NAME"), pasted.value("PARENT")}),
                 QVariantList({cut.value("NAME"), tag + "destination"}));
        QCOMPARE(QList<int>({stateOf(pasted), stateOf(data()->getProjectById(tag + "project")),
                             stateOf(data()->getTaskById(tag + "active")),
                             stateOf(data()->getTaskById(tag + "trashed"))}),
                 QList<int>({0, 0, 0, 1}));
    }

    void cloneOfFolderCopiesNestedTreeUnderNewIds()
    {
        create(RecordBuilder::folder("Garden").withId("garden"));
        create(RecordBuilder::folder("Beds").withId("beds").inParent("garden").withTimestamp(1000));
        create(RecordBuilder::project("Roses").withId("roses").inParent("beds").withTimestamp(1000));
        create(RecordBuilder::task("Prune").withId("prune").inParent("roses"));

        QVERIFY(m_handler->cloneFolder(changed(data()->getProjectById("garden"), {{"PARENT", "copies"}})));
        QVERIFY(data()->commitChanges());

        // One child per level, each a new row: new id, and stamped now rather than with the original's time.
        QString parentId = "copies";
        for (const QString name : {"Garden", "Beds", "Roses"}) {
            const QList<DataObject> children = data()->getNestedObjects(parentId);
            QCOMPARE(children.size(), 1);
            QCOMPARE(children[0].value("NAME").toString(), name);
            QVERIFY(children[0].value("TIMESTAMP").toUInt() > 1000);
            parentId = children[0].value("ID").toString();
            QVERIFY(parentId != name.toLower());
        }
        const QList<DOTask> tasks = data()->getProjectTasks(parentId);
        QCOMPARE(tasks.size(), 1);
        QVERIFY(tasks[0].value("ID") != "prune");
    }

    void undoOfProjectCompletionBringsRepeatRuleBack()
    {
        const QVariantMap project = RecordBuilder::project("Chores").withId("chores");
        create(project);
        create(RecordBuilder::task("Water").withId("water").inParent("chores").repeating("d;1"));

        QVERIFY(m_handler->markProjectAsCompleted(project));
        const DOTask completed = data()->getTaskById("water");
        QCOMPARE(QVariantList({stateOf(completed), completed.value("PERIOD")}), QVariantList({2, ""}));

        m_handler->revertProjectState(project);
        const DOTask restored = data()->getTaskById("water");
        QCOMPARE(QVariantList({stateOf(restored), restored.value("PERIOD")}), QVariantList({0, "d;1"}));
        QCOMPARE(stateOf(data()->getProjectById("chores")), 0);
        QVERIFY(!data()->findChild<QTimer*>("delayedSyncTimer")->isActive());
    }

    void rootListAlwaysEndsWithSingleActions_data()
    {
        QTest::addColumn<QByteArray>("factory");
        QTest::newRow("root list") << QByteArray("getRootObjects");
        QTest::newRow("project tree") << QByteArray("getProjectTreeModel");
        QTest::newRow("tree with the inbox") << QByteArray("getProjectTreeModelWithNorvelBox");
    }

    void rootListAlwaysEndsWithSingleActions()
    {
        QFETCH(QByteArray, factory);
        QVariant handedOut;
        QVERIFY(QMetaObject::invokeMethod(m_handler, factory, Q_RETURN_ARG(QVariant, handedOut)));
        auto* model = qvariant_cast<SortModel*>(handedOut);
        QVERIFY(model);
        QAbstractItemModelTester tester(model);

        const QVariantMap last = model->getObjectByIndex(model->rowCount() - 1);
        QCOMPARE(last.value("ID").toString(), RecordBuilder::oneStepActionsId);
        QCOMPARE(last.value("NAME").toString(), "One Step Actions");
        model->requestDeletion();
    }

    void nameChainNamesParentsOutermostFirst_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QVariantList>("chain");
        QTest::newRow("inbox") << RecordBuilder::inboxId << QVariantList{"Norvel Box"};
        QTest::newRow("single actions")
            << RecordBuilder::oneStepActionsId << QVariantList{"One Step Actions"};
        QTest::newRow("unknown id") << "nowhere" << QVariantList();
        QTest::newRow("nested project") << "leaf" << QVariantList{"Home", "Kitchen", "Leaf"};
    }

    void nameChainNamesParentsOutermostFirst()
    {
        QFETCH(QString, id);
        QTEST(m_handler->getProjectNameChain(id), "chain");
    }

    void pseudoObjectsFollowServerIds()
    {
        PredefinedDataHelper::instance()->setOneStepActionsId("server-one-step");
        QCOMPARE(m_handler->getProjectNameChain("server-one-step"), QVariantList{"One Step Actions"});
        auto* model = qvariant_cast<SortModel*>(m_handler->getRootObjects());
        QVERIFY(model->getIndexByObjectId("server-one-step") >= 0);
        model->requestDeletion();
        PredefinedDataHelper::instance()->unsetOneStepActionsId();
    }
};

NORVEL_TEST_MAIN(ProjectHandlerTest)

#include "projecthandlertest.moc"
