#include "store/predefineddatahelper.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

class PredefinedDataHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void startsWithDefaultIds();
    void settersAnnounceRealChangesOnly();
    void unsetPutsDefaultBackAndAlwaysAnnounces();
};

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

NORVEL_TEST_MAIN(PredefinedDataHelperTest)
#include "predefineddatahelpertest.moc"
