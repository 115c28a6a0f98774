#include "utilities/clipboard.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

namespace {
DataManager* data()
{
    return DataManager::instance();
}

void create(const QVariantMap& record)
{
    bool created = false;
    if (record.contains("PERIOD"))
        created = data()->createTaskLocally(record);
    else if (record.contains("FOLDER"))
        created = data()->createProjectLocally(record);
    else
        created = data()->createContextLocally(record);
    QVERIFY(created && data()->commitChanges());
}

QVariantMap stored(const QVariantMap& record)
{
    const QString id = record.value("ID").toString();
    if (record.contains("PERIOD"))
        return data()->getTaskById(id);
    if (record.contains("FOLDER"))
        return data()->getProjectById(id);
    return data()->getContextById(id);
}
} // namespace

class ClipboardTest : public QObject
{
    Q_OBJECT

    Clipboard* clipboard = Clipboard::instance();

private slots:
    void initTestCase()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        create(RecordBuilder::folder("Home").withId("home"));
        create(RecordBuilder::folder("Kitchen").withId("kitchen").inParent("home"));
        create(RecordBuilder::project("Paint").withId("paint").inParent("kitchen"));
        create(RecordBuilder::task("Buy brushes").withId("brushes").inParent("paint").withContext("shop"));
        create(RecordBuilder::task("Sand walls").withId("sand").inParent("paint").withState(2));
        create(RecordBuilder::context("Errands").withId("errands"));
        create(RecordBuilder::context("Shop").withId("shop").inParent("errands"));
    }

    void init() { clipboard->setObject({}); }

    void copyStripsAndFlags_data()
    {
        QTest::addColumn<QVariantMap>("object");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("keepsId");
        QTest::newRow("task loses its id")
            << stored(RecordBuilder::task().withId("brushes")) << "task" << false;
        QTest::newRow("project keeps its id")
            << stored(RecordBuilder::project().withId("paint")) << "project" << true;
        QTest::newRow("folder keeps its id")
            << stored(RecordBuilder::folder().withId("kitchen")) << "folder" << true;
        QTest::newRow("context keeps its id")
            << stored(RecordBuilder::context().withId("shop")) << "context" << true;
    }

    void copyStripsAndFlags()
    {
        QFETCH(QVariantMap, object);
        QFETCH(QString, kind);
        QFETCH(bool, keepsId);
        QVERIFY(!object.value("NAME").toString().isEmpty());
        object.insert("LEVEL", 1);
        object.insert("CHILDREN", QVariantList{});

        clipboard->setObject(object);

        const QVariantMap copy = clipboard->object();
        QCOMPARE(copy.contains("ID"), keepsId);
        for (const char* key : {"STATE", "LEVEL", "CHILDREN", "TIMESTAMP"})
            QVERIFY2(!copy.contains(key), key);
        QCOMPARE(copy.value("SYNCED"), QVariant(false));
        QCOMPARE(copy.value("LOCAL"), QVariant(true));
        QCOMPARE(copy.value("NAME"), object.value("NAME"));
        QVERIFY(clipboard->extraInfo().isEmpty());
        const QMap<QString, bool> flags{{"task", clipboard->containsTask()},
                                        {"project", clipboard->containsProject()},
                                        {"folder", clipboard->containsFolder()},
                                        {"context", clipboard->containsContext()}};
        for (auto it = flags.cbegin(); it != flags.cend(); ++it)
            QVERIFY2(it.value() == (it.key() == kind), qPrintable(it.key()));
    }

    void cutRecordsWhatPasteRestores_data()
    {
        QTest::addColumn<QVariantMap>("object");
        QTest::addColumn<QVariantMap>("children");
        QTest::newRow("task") << stored(RecordBuilder::task().withId("brushes")) << QVariantMap{};
        QTest::newRow("project with an active and a completed task")
            << stored(RecordBuilder::project().withId("paint")) << QVariantMap{{"brushes", 0}, {"sand", 2}};
        QTest::newRow("folder with its subtree")
            << stored(RecordBuilder::folder().withId("home"))
            << QVariantMap{{"kitchen", 0}, {"paint", 0}, {"brushes", 0}, {"sand", 2}};
        // A task of a context gets its context back, since deleting the context emptied it.
        QTest::newRow("context with its nested context and task")
            << stored(RecordBuilder::context().withId("errands"))
            << QVariantMap{{"shop", 0}, {"brushes", "shop"}};
    }

    void cutRecordsWhatPasteRestores()
    {
        QFETCH(QVariantMap, object);
        QFETCH(QVariantMap, children);

        clipboard->setCutObject(object);

        const QVariantMap info = clipboard->extraInfo();
        QCOMPARE(info.value("obj_id"), object.value("ID"));
        QCOMPARE(info.value("state").toInt(), 0);
        QCOMPARE(info.contains("children"), !object.contains("PERIOD"));
        QVariantMap recorded = info.value("children").toMap();
        for (auto it = recorded.begin(); it != recorded.end(); ++it)
            it.value() = it.value().toString();
        for (auto it = children.begin(); it != children.end(); ++it)
            it.value() = it.value().toString();
        QCOMPARE(recorded, children);
    }

    void repeatedCopyIsSilentButCopyAfterCutForgetsTheCut()
    {
        const QVariantMap task = stored(RecordBuilder::task().withId("brushes"));
        clipboard->setCutObject(task);
        QVERIFY(!clipboard->extraInfo().isEmpty());
        QSignalSpy changes(clipboard, &Clipboard::objectChanged);

        clipboard->setObject(task);
        clipboard->setObject(task);

        QCOMPARE(changes.count(), 1);
        QVERIFY(clipboard->extraInfo().isEmpty());

        clipboard->setObject({});
        QVERIFY(!clipboard->object().contains("NAME"));
        QVERIFY(!clipboard->containsTask());
    }
};

NORVEL_TEST_MAIN(ClipboardTest)
#include "clipboardtest.moc"
