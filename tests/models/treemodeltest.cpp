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

const QStringList predefinedProjects{RecordBuilder::inboxId, RecordBuilder::oneStepActionsId};

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
    // Rows are never deleted from the one store, so each test's ids carry a suffix of its own.
    int m_run = 0;

    QString id(const char* name) const { return QStringLiteral("%1#%2").arg(QLatin1String(name)).arg(m_run); }

    // The rows of this test and the pseudo-objects, without the suffix.
    QStringList visibleIds(const QAbstractItemModel& model) const
    {
        const QString suffix = id("");
        QStringList shown;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QString rowId =
                model.index(row, 0).data(TreeModel::treeItemRole).toMap().value("ID").toString();
            if (rowId.endsWith(suffix) || !rowId.contains('#'))
                shown << rowId.chopped(rowId.endsWith(suffix) ? suffix.size() : 0);
        }
        return shown;
    }

    int rowOf(const QAbstractItemModel& model, const char* name) const
    {
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.index(row, 0).data(TreeModel::treeItemRole).toMap().value("ID") == id(name))
                return row;
        }
        return -1;
    }

    QVariant dataOf(const QAbstractItemModel& model, const char* name, int role) const
    {
        return model.index(rowOf(model, name), 0).data(role);
    }

    void createProject(const QVariantMap& project)
    {
        QVERIFY(DataManager::instance()->createProjectLocally(project));
        QVERIFY(DataManager::instance()->commitChanges());
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

    void projectTreeIsDepthFirstWithPredefinedProjectsLast()
    {
        createNestedFolders();
        TreePair pair(new ProjectTreeSortModel, new TreeModel(projectTree));
        pair.sort->openItem(id("a"));
        pair.sort->openItem(id("b"));
        pair.sort->openItem(id("c"));

        QCOMPARE(visibleIds(*pair.sort), ids("a b p c q") + predefinedProjects);
        QVERIFY(dataOf(*pair.sort, "a", TreeModel::isItemOpenedRole).toBool());
        QVERIFY(dataOf(*pair.sort, "a", TreeModel::hasChildrenRole).toBool());
        QVERIFY(!dataOf(*pair.sort, "c", TreeModel::hasChildrenRole).toBool());
    }

    void reopenedParentShowsItsChildrenClosed()
    {
        createNestedFolders();
        TreePair pair(new ProjectTreeSortModel, new TreeModel(projectTree));
        pair.sort->openItem(id("a"));
        pair.sort->openItem(id("b"));
        pair.sort->closeItem(id("a"));
        QCOMPARE(visibleIds(*pair.sort), ids("a c q") + predefinedProjects);

        pair.sort->openItem(id("a"));
        QCOMPARE(visibleIds(*pair.sort), ids("a b c q") + predefinedProjects);
        QVERIFY(!dataOf(*pair.sort, "b", TreeModel::isItemOpenedRole).toBool());
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
        QCOMPARE(visibleIds(*pair.sort), ids("open moved closed target stays") + predefinedProjects);

        moveProject(id("moved"), id("closed"));
        pair.sort->update();
        QCOMPARE(visibleIds(*pair.sort), ids("open closed target stays") + predefinedProjects);
        QVERIFY(dataOf(*pair.sort, "open", TreeModel::isItemOpenedRole).toBool());
        QVERIFY(!dataOf(*pair.sort, "open", TreeModel::hasChildrenRole).toBool());

        moveProject(id("moved"), id("target"));
        pair.sort->update();
        QCOMPARE(visibleIds(*pair.sort), ids("open closed target stays moved") + predefinedProjects);
        QVERIFY(dataOf(*pair.sort, "target", TreeModel::isItemOpenedRole).toBool());
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
        QCOMPARE(visibleIds(*pair.sort), ids("a b r c q") + predefinedProjects);

        sort->moveItem(rowOf(*sort, "r"), rowOf(*sort, "b"));
        QCOMPARE(sort->savedListId, id("a"));
        QCOMPARE(sort->savedOrder, (SortingNamespace::OrderHash{{id("b"), 1}, {id("r"), 0}}));

        sort->savedListId.clear();
        sort->moveItem(rowOf(*sort, "c"), rowOf(*sort, "b"));
        QVERIFY2(sort->savedListId.isEmpty(), "a root folder cannot be dropped among a folder's children");
        sort->moveItem(rowOf(*sort, "c"), rowOf(*sort, "a"));
        QCOMPARE(sort->savedListId, "root_projects");
    }
};

NORVEL_TEST_MAIN(TreeModelTest)

#include "treemodeltest.moc"
