#include "store/predefineddatahelper.h"
#include "core/settings.h"
#include "store/datamanager.h"
#include "testlib/logcapture.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QtTest>

namespace {
QSettings predefinedObjectsFile()
{
    return QSettings(dataFilePath("predefined_objects.dat"), QSettings::IniFormat);
}

QStringList recordedIds()
{
    return predefinedObjectsFile().value("predefined_ids").toString().split(QLatin1Char(','));
}

QString nameOf(const QString& id)
{
    const DataObject project = DataManager::instance()->getProjectById(id);
    return (project.isEmpty() ? DataManager::instance()->getContextById(id) : project)
        .value("NAME")
        .toString();
}
} // namespace

class PredefinedDataHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        Settings::instance()->setApplicationLanguage("en");
    }

    // Runs first of the tests that create demo objects, on a database without any.
    void demoObjectsAreRecordedOnceAndLeftOutOfTheCounts()
    {
        PredefinedDataHelper helper;
        QVERIFY(!helper.predefinedFoldersCreated() && !helper.predefinedContextsCreated());

        helper.createPredefinedFolders();
        QVERIFY(helper.predefinedFoldersCreated() && !helper.predefinedContextsCreated());
        helper.createPredefinedContexts();
        QVERIFY(helper.predefinedContextsCreated());

        // The first recording starts from an empty list, which leaves a leading comma.
        const QStringList ids = recordedIds();
        QCOMPARE(ids.size(), 1 + 3 + 6);
        QCOMPARE(ids.first(), QString());
        QCOMPARE(
            QStringList({nameOf(ids[1]), nameOf(ids[2]), nameOf(ids[3]), nameOf(ids[4]), nameOf(ids[9])}),
            QStringList(
                {"Business", "Personal", "Side projects", "@home (demo context)", "Online (demo context)"}));
        // Folders 1 and 2 and the contexts have seed numbers; the third folder is in the list only.
        const QSettings file = predefinedObjectsFile();
        const QStringList seedNumbers = {"1", "2", "300", "301", "303", "302", "304", "305"};
        const QStringList seeded = QStringList{ids[1], ids[2]} + ids.mid(4);
        for (int i = 0; i < seedNumbers.size(); ++i)
            QCOMPARE(file.value(seedNumbers[i]).toString(), seeded[i]);
        QCOMPARE(file.allKeys().filter(QRegularExpression("^\\d+$")).size(), seedNumbers.size());

        QCOMPARE(DataManager::instance()->getAllFolders().size(), 3);
        QCOMPARE(DataManager::instance()->getProjectCount(), 0);
        QCOMPARE(DataManager::instance()->getContextCount(), 0);
        QVERIFY(DataManager::instance()->createContextLocally(RecordBuilder::context("@desk")));
        QVERIFY(DataManager::instance()->commitChanges());
        QCOMPARE(DataManager::instance()->getContextCount(), 1);
    }

    void demoNamesAreRussianForRussianOnly_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("names");

        QTest::newRow("ru") << "ru"
                            << QStringList({QString::fromUtf8("Работа"), QString::fromUtf8("Личное"),
                                            QString::fromUtf8("Сайд-проекты"),
                                            QString::fromUtf8("Дома (демо-контекст)")});
        QTest::newRow("de") << "de"
                            << QStringList({"Business", "Personal", "Side projects", "@home (demo context)"});
    }

    void demoNamesAreRussianForRussianOnly()
    {
        QFETCH(QString, language);
        Settings::instance()->setApplicationLanguage(language);
        PredefinedDataHelper helper;
        LogCapture log;

        helper.createPredefinedFolders();
        helper.createPredefinedContexts();

        Settings::instance()->setApplicationLanguage("en");
        const QSettings file = predefinedObjectsFile();
        const QStringList ids = recordedIds();
        QTEST(QStringList({nameOf(file.value("1").toString()), nameOf(file.value("2").toString()),
                           nameOf(ids.at(ids.size() - 7)), nameOf(file.value("300").toString())}),
              "names");
        const QString russian = language == "ru" ? "true" : "false";
        QCOMPARE(log.messages("INFO").count("Is current app lang is Russian: " + russian), 2);
    }
};

NORVEL_TEST_MAIN(PredefinedDataHelperTest)
#include "predefineddatahelpertest.moc"
