#include "store/predefineddatahelper.h"
#include "core/settings.h"
#include "store/datamanager.h"
#include "testlib/logcapture.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"
#include "utilities/helper.h"

#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QtTest>

namespace {
QString dataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QSettings predefinedObjectsFile()
{
    return QSettings(dataDirectory() + QStringLiteral("/predefined_objects.dat"), QSettings::IniFormat);
}

QStringList recordedIds()
{
    return predefinedObjectsFile().value(QStringLiteral("predefined_ids")).toString().split(QLatin1Char(','));
}

QString nameOfProject(const QString& id)
{
    return DataManager::instance()->getProjectById(id).value(QStringLiteral("NAME")).toString();
}

QString nameOfContext(const QString& id)
{
    return DataManager::instance()->getContextById(id).value(QStringLiteral("NAME")).toString();
}
} // namespace

class PredefinedDataHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startsWithDefaultIds();
    void settersAnnounceRealChangesOnly();
    void unsetPutsDefaultBackAndAlwaysAnnounces();
    // These share one database and run in this order.
    void demoFoldersAreRecordedAndLeftOutOfTheCount();
    void demoContextsAreRecordedAndLeftOutOfTheCount();
    void demoNamesAreRussianForRussianOnly_data();
    void demoNamesAreRussianForRussianOnly();
};

void PredefinedDataHelperTest::initTestCase()
{
    QVERIFY(QDir().mkpath(dataDirectory()));
    QVERIFY(Helper::instance()->unpackDatabase());
    Settings::instance()->setApplicationLanguage(QStringLiteral("en"));
}

void PredefinedDataHelperTest::startsWithDefaultIds()
{
    PredefinedDataHelper helper;

    QCOMPARE(helper.norvelBoxId(), QString::fromLatin1(RecordBuilder::inboxId));
    QCOMPARE(helper.oneStepActionsId(), QString::fromLatin1(RecordBuilder::oneStepActionsId));
    QCOMPARE(helper.property("norvelBoxId").toString(), helper.norvelBoxId());
    QCOMPARE(helper.property("oneStepActionsId").toString(), helper.oneStepActionsId());
}

void PredefinedDataHelperTest::settersAnnounceRealChangesOnly()
{
    PredefinedDataHelper helper;
    QSignalSpy inboxSpy(&helper, &PredefinedDataHelper::norvelBoxIdChanged);
    QSignalSpy oneStepSpy(&helper, &PredefinedDataHelper::oneStepActionsIdChanged);

    helper.setNorvelBoxId(QStringLiteral("server-inbox"));
    helper.setNorvelBoxId(QStringLiteral("server-inbox"));
    helper.setOneStepActionsId(helper.oneStepActionsId());
    QVERIFY(helper.setProperty("oneStepActionsId", QStringLiteral("server-one-step")));

    QCOMPARE(inboxSpy.size(), 1);
    QCOMPARE(inboxSpy.first().first().toString(), QStringLiteral("server-inbox"));
    QCOMPARE(helper.norvelBoxId(), QStringLiteral("server-inbox"));
    QCOMPARE(oneStepSpy.size(), 1);
    QCOMPARE(oneStepSpy.first().first().toString(), QStringLiteral("server-one-step"));
}

void PredefinedDataHelperTest::unsetPutsDefaultBackAndAlwaysAnnounces()
{
    PredefinedDataHelper helper;
    helper.setNorvelBoxId(QStringLiteral("server-inbox"));
    QSignalSpy inboxSpy(&helper, &PredefinedDataHelper::norvelBoxIdChanged);
    QSignalSpy oneStepSpy(&helper, &PredefinedDataHelper::oneStepActionsIdChanged);

    helper.unsetNorvelBoxId();
    helper.unsetOneStepActionsId();

    QCOMPARE(helper.norvelBoxId(), QString::fromLatin1(RecordBuilder::inboxId));
    QCOMPARE(inboxSpy.size(), 1);
    QCOMPARE(inboxSpy.first().first().toString(), QString::fromLatin1(RecordBuilder::inboxId));
    // Already at its default, and still announced.
    QCOMPARE(oneStepSpy.size(), 1);
    QCOMPARE(oneStepSpy.first().first().toString(), QString::fromLatin1(RecordBuilder::oneStepActionsId));
}

void PredefinedDataHelperTest::demoFoldersAreRecordedAndLeftOutOfTheCount()
{
    PredefinedDataHelper helper;
    QVERIFY(!helper.predefinedFoldersCreated());

    helper.createPredefinedFolders();

    QVERIFY(helper.predefinedFoldersCreated());
    QVERIFY(!helper.predefinedContextsCreated());
    const QStringList ids = recordedIds();
    // The first recording starts from an empty list, which leaves a leading comma.
    QCOMPARE(ids.size(), 4);
    QCOMPARE(ids.first(), QString());
    QCOMPARE(QStringList({nameOfProject(ids[1]), nameOfProject(ids[2]), nameOfProject(ids[3])}),
             QStringList({"Business", "Personal", "Side projects"}));
    const QSettings file = predefinedObjectsFile();
    QCOMPARE(file.value(QStringLiteral("1")).toString(), ids[1]);
    QCOMPARE(file.value(QStringLiteral("2")).toString(), ids[2]);
    // The third folder has no seed number: it is in the list only.
    QCOMPARE(file.allKeys().filter(QRegularExpression(QStringLiteral("^\\d+$"))).size(), 2);
    QCOMPARE(DataManager::instance()->getAllFolders().size(), 3);
    QCOMPARE(DataManager::instance()->getProjectCount(), 0);
}

void PredefinedDataHelperTest::demoContextsAreRecordedAndLeftOutOfTheCount()
{
    PredefinedDataHelper helper;
    const QStringList folderIds = recordedIds();
    QVERIFY(!helper.predefinedContextsCreated());

    helper.createPredefinedContexts();

    QVERIFY(helper.predefinedContextsCreated());
    const QStringList ids = recordedIds();
    QCOMPARE(ids.mid(0, folderIds.size()), folderIds);
    const QStringList contextIds = ids.mid(folderIds.size());
    QCOMPARE(contextIds.size(), 6);
    const QSettings file = predefinedObjectsFile();
    const QStringList seedNumbers = {"300", "301", "303", "302", "304", "305"};
    for (int i = 0; i < seedNumbers.size(); ++i)
        QCOMPARE(file.value(seedNumbers[i]).toString(), contextIds[i]);
    QCOMPARE(nameOfContext(contextIds.first()), QStringLiteral("@home (demo context)"));
    QCOMPARE(nameOfContext(contextIds.last()), QStringLiteral("Online (demo context)"));
    QCOMPARE(DataManager::instance()->getContextCount(), 0);

    QVERIFY(DataManager::instance()->createContextLocally(RecordBuilder::context(QStringLiteral("@desk"))));
    QVERIFY(DataManager::instance()->commitChanges());
    QCOMPARE(DataManager::instance()->getContextCount(), 1);
}

void PredefinedDataHelperTest::demoNamesAreRussianForRussianOnly_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("folderNames");
    QTest::addColumn<QString>("firstContextName");

    const QStringList english = {"Business", "Personal", "Side projects"};
    QTest::newRow("ru") << "ru"
                        << QStringList({QString::fromUtf8("Работа"), QString::fromUtf8("Личное"),
                                        QString::fromUtf8("Сайд-проекты")})
                        << QString::fromUtf8("Дома (демо-контекст)");
    QTest::newRow("de") << "de" << english << "@home (demo context)";
    QTest::newRow("en") << "en" << english << "@home (demo context)";
}

void PredefinedDataHelperTest::demoNamesAreRussianForRussianOnly()
{
    QFETCH(QString, language);
    QFETCH(QStringList, folderNames);
    QFETCH(QString, firstContextName);
    Settings::instance()->setApplicationLanguage(language);
    PredefinedDataHelper helper;
    LogCapture log;

    helper.createPredefinedFolders();
    helper.createPredefinedContexts();

    Settings::instance()->setApplicationLanguage(QStringLiteral("en"));
    const QSettings file = predefinedObjectsFile();
    const QStringList ids = recordedIds();
    QCOMPARE(QStringList({nameOfProject(file.value(QStringLiteral("1")).toString()),
                          nameOfProject(file.value(QStringLiteral("2")).toString()),
                          nameOfProject(ids.at(ids.size() - 7))}),
             folderNames);
    QCOMPARE(nameOfContext(file.value(QStringLiteral("300")).toString()), firstContextName);
    const QString russian =
        language == QLatin1String("ru") ? QStringLiteral("true") : QStringLiteral("false");
    QCOMPARE(log.messages(QStringLiteral("INFO"))
                 .count(QStringLiteral("Is current app lang is Russian: ") + russian),
             2);
}

NORVEL_TEST_MAIN(PredefinedDataHelperTest)
#include "predefineddatahelpertest.moc"
