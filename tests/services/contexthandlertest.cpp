#include "services/contexthandler.h"
#include "models/sortmodel.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QtTest>

namespace {
DataManager* data()
{
    return DataManager::instance();
}

void create(const QVariantMap& record)
{
    const bool created = record.contains("PERIOD")   ? data()->createTaskLocally(record)
                         : record.contains("FOLDER") ? data()->createProjectLocally(record)
                                                     : data()->createContextLocally(record);
    QVERIFY(created && data()->commitChanges());
}

QString contextOfTask(const QString& id)
{
    return data()->getTaskById(id).value("CONTEXT").toString();
}

// A context "tag" with a nested context, each carried by a task, and a project carrying the outer one.
void createTaggedTree(const QString& tag)
{
    create(RecordBuilder::context("Outer").withId(tag));
    create(RecordBuilder::context("Inner").withId(tag + "-inner").inParent(tag));
    create(RecordBuilder::task().withId(tag + "-task").withContext(tag));
    create(RecordBuilder::task().withId(tag + "-inner-task").withContext(tag + "-inner"));
    create(RecordBuilder::project("Tagged").withId(tag + "-project").withContext(tag));
}
} // namespace

class ContextHandlerTest : public QObject
{
    Q_OBJECT

    ContextHandler* m_handler = nullptr;

private slots:
    void initTestCase()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        m_handler = new ContextHandler(this);
    }

    void undoOfDeletionBringsContextsBack()
    {
        createTaggedTree("undo");
        const DOContext context = data()->getContextById("undo");

        QVERIFY(m_handler->markContextAsDeleted(context));
        QCOMPARE(contextOfTask("undo-inner-task"), QString());
        m_handler->revertContextState(context);

        QCOMPARE(QStringList({contextOfTask("undo-task"), contextOfTask("undo-inner-task"),
                              data()->getProjectById("undo-project").value("CONTEXT").toString()}),
                 QStringList({"undo", "undo-inner", "undo"}));
    }

    void pasteAfterCutRestoresTasksAndNestedContexts()
    {
        createTaggedTree("cut");
        create(RecordBuilder::context("Destination").withId("cut-destination"));
        // As the clipboard records a cut: states of the subtree, contexts of its tasks.
        QVariantMap children;
        for (const DOContext& context : data()->getSubcontextsRecursive("cut")) {
            const QString id = context.value("ID").toString();
            children.insert(id, context.value("STATE"));
            for (const DOTask& task : data()->getContextTasks(id))
                children.insert(task.value("ID").toString(), id);
        }
        const DOContext context = data()->getContextById("cut");
        QVERIFY(m_handler->markContextAsDeleted(context));
        QVERIFY(m_handler->confirmContextUpdate(context));

        m_handler->moveContext(context, "cut-destination", children);
        QVERIFY(data()->commitChanges());

        const DOContext pasted = data()->getContextById("cut");
        QCOMPARE(QVariantList({pasted.value("NAME"), pasted.value("PARENT"), pasted.value("STATE")}),
                 QVariantList({"Outer", "cut-destination", 0}));
        QCOMPARE(data()->getContextById("cut-inner").value("STATE").toInt(), 0);
        QCOMPARE(QStringList({contextOfTask("cut-task"), contextOfTask("cut-inner-task")}),
                 QStringList({"cut", "cut-inner"}));
    }

    void rootListAlwaysEndsWithNoContext_data()
    {
        QTest::addColumn<bool>("tree");
        QTest::newRow("root list") << false;
        QTest::newRow("context tree") << true;
    }

    void rootListAlwaysEndsWithNoContext()
    {
        QFETCH(bool, tree);
        auto* model = qvariant_cast<SortModel*>(tree ? m_handler->getContextTreeModel(QString())
                                                     : m_handler->getRootContextListModel());
        QVERIFY(model);
        QAbstractItemModelTester tester(model);

        const QVariantMap last = model->getObjectByIndex(model->rowCount() - 1);
        QCOMPARE(QVariantList({last.value("ID"), last.value("NAME"), last.value("ENABLED")}),
                 QVariantList({QString(), "No context", false}));
        model->requestDeletion();
    }
};

NORVEL_TEST_MAIN(ContextHandlerTest)

#include "contexthandlertest.moc"
