#include "models/treemodel.h"
#include "models/contexttreesortmodel.h"
#include "models/foldertreemodel.h"
#include "models/foldertreesortmodel.h"
#include "models/projecttreesortmodel.h"
#include "store/datamanager.h"
#include "store/treehierarchybuilder.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QtTest>

namespace {

using Records = QList<QVariantMap>;

QStringList ids(const char* spaced)
{
    return QString::fromLatin1(spaced).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// Without the suffix that keeps the ids of each test apart in the one store.
QStringList visibleIds(const QAbstractItemModel& model)
{
    QStringList shown;
    for (int row = 0; row < model.rowCount(); ++row)
        shown << model.index(row, 0)
                     .data(TreeModel::treeItemRole)
                     .toMap()
                     .value("ID")
                     .toString()
                     .section('#', 0, 0);
    return shown;
}

QVariantMap pseudoObject(const QString& id, const QString& name, bool folder)
{
    return {{"ID", id}, {"NAME", name}, {"LEVEL", 0}, {"FOLDER", folder}};
}

// The trees as the services hand them out: the store's tree with the pseudo-objects among the roots.
TreeHierarchy projectTree()
{
    TreeHierarchy tree = DataManager::instance()->getProjectTree();
    tree.rootObjects << pseudoObject(RecordBuilder::oneStepActionsId, "One Step Actions", false)
                     << pseudoObject(RecordBuilder::inboxId, "Norvel Box", false);
    return tree;
}

TreeHierarchy folderTree()
{
    TreeHierarchy tree = DataManager::instance()->getProjectTree();
    tree.rootObjects << pseudoObject(QString(), "No folder", true);
    return tree;
}

TreeHierarchy contextTree()
{
    TreeHierarchy tree = DataManager::instance()->getContextTree();
    tree.rootObjects << QVariantMap{{"ID", QString()}, {"NAME", "No context"}, {"LEVEL", 0}};
    return tree;
}

// A sort model over its tree model, both watched by model testers.
struct TreePair
{
    TreePair(TreeSortModel* sortModel, TreeModel* treeModel)
        : sort(sortModel)
        , treeTester(treeModel, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        sort->setSourceModel(treeModel);
        sortTester = std::make_unique<QAbstractItemModelTester>(
            sort.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    }
    ~TreePair() { delete sort->sourceModel(); }

    std::unique_ptr<TreeSortModel> sort;
    QAbstractItemModelTester treeTester;
    std::unique_ptr<QAbstractItemModelTester> sortTester;
};

// Records the orders that a drag stores instead of sending them to the store.
class RecordingProjectTreeSortModel : public ProjectTreeSortModel
{
public:
    QString savedListId;
    SortingNamespace::OrderHash savedOrder;

protected:
    void saveSortedListInfo(const QString& listId, const SortingNamespace::OrderHash& order) override
    {
        savedListId = listId;
        savedOrder = order;
    }
};

} // namespace

class TreeModelTest : public QObject
{
    Q_OBJECT

private:
    int m_run = 0;
    QStringList m_createdProjects;

    QString id(const char* name) const { return QStringLiteral("%1#%2").arg(QLatin1String(name)).arg(m_run); }

    QStringList m_createdContexts;

    void createProject(const QVariantMap& project)
    {
        QVERIFY(DataManager::instance()->createProjectLocally(project));
        QVERIFY(DataManager::instance()->commitChanges());
        m_createdProjects << project.value("ID").toString();
    }

    void moveProject(const QString& id, const QString& parentId)
    {
        QVariantMap project = DataManager::instance()->getProjectById(id);
        project.insert("PARENT", parentId);
        QVERIFY(DataManager::instance()->updateProjectLocally(project));
        QVERIFY(DataManager::instance()->commitChanges());
    }

    // Folders a > b > p, with folder c and project q at the root.
    void createNestedFolders()
    {
        createProject(RecordBuilder::folder("A").withId(id("a")).withTimestamp(1));
        createProject(RecordBuilder::folder("B").withId(id("b")).inParent(id("a")).withTimestamp(2));
        createProject(RecordBuilder::project("P").withId(id("p")).inParent(id("b")).withTimestamp(3));
        createProject(RecordBuilder::folder("C").withId(id("c")).withTimestamp(4));
        createProject(RecordBuilder::project("Q").withId(id("q")).withTimestamp(0));
    }

private slots:
    void initTestCase() { QVERIFY(TestDatabase::unpackApplicationDatabase()); }
    void init() { ++m_run; }

    // Every test starts from a store whose trees hold nothing.
    void cleanup()
    {
        DataManager* data = DataManager::instance();
        for (const QString& id : qAsConst(m_createdProjects))
            QVERIFY(data->updateProjectLocally(changed(data->getProjectById(id), 1)));
        for (const QString& id : qAsConst(m_createdContexts))
            QVERIFY(data->updateContextLocally(changed(data->getContextById(id), 1)));
        if (!m_createdProjects.isEmpty() || !m_createdContexts.isEmpty())
            QVERIFY(data->commitChanges());
        m_createdProjects.clear();
        m_createdContexts.clear();
    }

    void projectTreeIsDepthFirstWithPredefinedProjectsLast()
    {
        createNestedFolders();
        TreePair pair(new ProjectTreeSortModel, new TreeModel(projectTree));
        pair.sort->openItem(id("a"));
        pair.sort->openItem(id("b"));
        pair.sort->openItem(id("c"));

        QCOMPARE(visibleIds(*pair.sort), QStringList({"a", "b", "p", "c", "q", RecordBuilder::inboxId,
                                                      RecordBuilder::oneStepActionsId}));
        QVERIFY(pair.sort->index(0, 0).data(TreeModel::isItemOpenedRole).toBool());
        QVERIFY(pair.sort->index(0, 0).data(TreeModel::hasChildrenRole).toBool());
        QVERIFY(!pair.sort->index(3, 0).data(TreeModel::hasChildrenRole).toBool());
    }

    void reopenedParentShowsItsChildrenClosed()
    {
        createNestedFolders();
        TreePair pair(new ProjectTreeSortModel, new TreeModel(projectTree));
        pair.sort->openItem(id("a"));
        pair.sort->openItem(id("b"));
        pair.sort->closeItem(id("a"));
        QCOMPARE(visibleIds(*pair.sort).mid(0, 2), ids("a c"));

        pair.sort->openItem(id("a"));
        QCOMPARE(visibleIds(*pair.sort).mid(0, 3), ids("a b c"));
        QVERIFY(!pair.sort->index(1, 0).data(TreeModel::isItemOpenedRole).toBool());
    }

    void hasChildrenIgnoresCompletedChildrenAndProjectsInFolderPicker_data()
    {
        QTest::addColumn<bool>("folderPicker");
        QTest::addColumn<Records>("children");
        QTest::addColumn<bool>("hasChildren");

        const auto child = [](const char* id, RecordBuilder record) {
            return record.withId(id).inParent("root").withLevel(1).build();
        };
        const QVariantMap project = child("p", RecordBuilder::project());
        const QVariantMap completed = child("d", RecordBuilder::project().withState(2));
        const QVariantMap folder = child("f", RecordBuilder::folder());
        QTest::newRow("all children completed") << false << Records{completed} << false;
        QTest::newRow("one child not completed") << false << Records{completed, project} << true;
        QTest::newRow("no children") << false << Records{} << false;
        QTest::newRow("folder picker, projects only") << true << Records{project} << false;
        QTest::newRow("folder picker, a folder among them") << true << Records{project, folder} << true;
    }

    void hasChildrenIgnoresCompletedChildrenAndProjectsInFolderPicker()
    {
        QFETCH(bool, folderPicker);
        QFETCH(Records, children);
        const Records rows = Records{RecordBuilder::folder().withId("root").withLevel(0)} + children;
        const auto hierarchy = [rows] { return TreeHierarchyBuilder::build(rows); };
        std::unique_ptr<TreeModel> model(folderPicker ? new FolderTreeModel(hierarchy)
                                                      : new TreeModel(hierarchy));
        QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);

        QTEST(model->index(0).data(TreeModel::hasChildrenRole).toBool(), "hasChildren");
    }

    void refreshKeepsOpenRowsAndPlacesMovedProject()
    {
        createProject(RecordBuilder::folder("Open").withId(id("open")).withTimestamp(1));
        createProject(RecordBuilder::folder("Closed").withId(id("closed")).withTimestamp(2));
        createProject(RecordBuilder::folder("Target").withId(id("target")).withTimestamp(3));
        createProject(
            RecordBuilder::project("Moved").withId(id("moved")).inParent(id("open")).withTimestamp(4));
        createProject(
            RecordBuilder::project("Stays").withId(id("stays")).inParent(id("target")).withTimestamp(5));
        TreePair pair(new ProjectTreeSortModel, new TreeModel(projectTree));
        pair.sort->openItem(id("open"));
        pair.sort->openItem(id("target"));
        QCOMPARE(visibleIds(*pair.sort).mid(0, 5), ids("open moved closed target stays"));

        moveProject(id("moved"), id("closed"));
        pair.sort->update();
        QCOMPARE(visibleIds(*pair.sort).mid(0, 4), ids("open closed target stays"));
        QVERIFY(pair.sort->index(0, 0).data(TreeModel::isItemOpenedRole).toBool());
        QVERIFY(!pair.sort->index(0, 0).data(TreeModel::hasChildrenRole).toBool());

        moveProject(id("moved"), id("target"));
        pair.sort->update();
        QCOMPARE(visibleIds(*pair.sort).mid(0, 5), ids("open closed target stays moved"));
        QVERIFY(pair.sort->index(2, 0).data(TreeModel::isItemOpenedRole).toBool());
    }

    void folderPickerHidesFolderAndItsSubtree()
    {
        createNestedFolders();
        createProject(RecordBuilder::folder("D").withId(id("d")).inParent(id("b")).withTimestamp(5));
        TreePair pair(new FolderTreeSortModel, new FolderTreeModel(folderTree));
        pair.sort->openItem(id("a"));
        QCOMPARE(visibleIds(*pair.sort), QStringList({"", "a", "b", "c"}));

        static_cast<FolderTreeSortModel*>(pair.sort.get())->setFilteredObjectId(id("b"));
        pair.sort->openItem(id("b"));
        QCOMPARE(visibleIds(*pair.sort), QStringList({"", "a", "c"}));
    }

    void contextPickerHidesContextAndKeepsNoContextLast()
    {
        DataManager* data = DataManager::instance();
        for (const QVariantMap& context :
             {RecordBuilder::context("Home").withId(id("home")).withTimestamp(2).build(),
              RecordBuilder::context("Garage")
                  .withId(id("garage"))
                  .inParent(id("home"))
                  .withTimestamp(3)
                  .build(),
              RecordBuilder::context("Office").withId(id("office")).withTimestamp(1).build()}) {
            QVERIFY(data->createContextLocally(context));
            m_createdContexts << context.value("ID").toString();
        }
        QVERIFY(data->commitChanges());
        TreePair pair(new ContextTreeSortModel, new TreeModel(contextTree));
        pair.sort->openItem(id("home"));
        QCOMPARE(visibleIds(*pair.sort), QStringList({"office", "home", "garage", ""}));

        TreePair picker(new ContextTreeSortModel, new TreeModel(contextTree));
        static_cast<ContextTreeSortModel*>(picker.sort.get())->setFilteredObjectId(id("home"));

        QCOMPARE(visibleIds(*picker.sort), QStringList({"office", ""}));
    }

    void dragStoresOrderOfTheLevelUnderTheParent()
    {
        createNestedFolders();
        createProject(RecordBuilder::project("R").withId(id("r")).inParent(id("a")).withTimestamp(5));
        TreePair pair(new RecordingProjectTreeSortModel, new TreeModel(projectTree));
        auto* sort = static_cast<RecordingProjectTreeSortModel*>(pair.sort.get());
        pair.sort->openItem(id("a"));
        QCOMPARE(visibleIds(*pair.sort).mid(0, 4), ids("a b r c"));

        sort->moveItem(2, 1);
        QCOMPARE(sort->savedListId, id("a"));
        QCOMPARE(sort->savedOrder, (SortingNamespace::OrderHash{{id("b"), 1}, {id("r"), 0}}));

        sort->savedListId.clear();
        sort->moveItem(3, 1);
        QVERIFY2(sort->savedListId.isEmpty(), "a root folder cannot be dropped among a folder's children");
        sort->moveItem(3, 0);
        QCOMPARE(sort->savedListId, "root_projects");
    }

private:
    static QVariantMap changed(QVariantMap record, int state)
    {
        record.insert("STATE", state);
        return record;
    }
};

NORVEL_TEST_MAIN(TreeModelTest)

#include "treemodeltest.moc"
