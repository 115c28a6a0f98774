#include "sync/sortingmanager.h"
#include "core/clock.h"
#include "core/settings.h"
#include "platform/apihandler.h"
#include "platform/apioperation.h"
#include "sync/authmanager.h"
#include "testlib/serverprocess.h"
#include "testlib/storehelpers.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QJsonObject>
#include <QSettings>
#include <QUuid>
#include <QtTest>

using namespace SortingNamespace;

namespace {

const QString secret = QStringLiteral("5f4dcc3b5aa765d61d8327deb882cf99");
const QDateTime start(QDate(2031, 5, 14), QTime(12, 0), Qt::UTC);

// Opens the merge to the test, which plays the server's answers.
class MergingSortingManager : public SortingManager
{
public:
    using SortingManager::handleServerObjects;
};

QJsonObject serverRecord(const QString& listId, const QString& listType, int secondsFromStart)
{
    return {{"list_id", listId},
            {"list_type", listType},
            {"group_by_date", true},
            {"sorting_type", "timestamp_desc"},
            {"last_changed", start.addSecs(secondsFromStart).toString(Qt::ISODate)}};
}

int pendingRecordCount(const QString& key)
{
    return QSettings(dataFilePath("sorting.dat"), QSettings::IniFormat).value(key).toJsonArray().size();
}

bool runSync(SortingManager& manager)
{
    QSignalSpy completed(&manager, &BaseSyncManager::completed);
    manager.sync();
    return completed.wait(20000) && !manager.inProgress();
}

} // namespace

class SortingManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Clock::unpin();
        SortingManager().clearAll();
    }

    void listsAndPendingChangesOutliveTheManager()
    {
        {
            SortingManager manager;
            manager.setManualSortedList("garden", ListTypeProject, {{"a", 1}, {"", 0}});
            manager.setSortedList("home", ListTypeContext, AlphabeticalType, false);
            manager.deleteSortedList("garden", ListTypeFolder);
            manager.deleteSortedList("home", ListTypeContext);
        }
        const SortingManager reopened;

        QCOMPARE(reopened.getSortedListInfo("garden", ListTypeProject).orderHash, (OrderHash{{"a", 1}}));
        // Unknown, and deleted: both read as unsorted.
        QCOMPARE(reopened.getSortingType("garden", ListTypeFolder), TimestampAscType);
        QVERIFY(reopened.getGroupByDateParam("home", ListTypeContext));
        QCOMPARE(pendingRecordCount("objects_to_send"), 1);
        QCOMPARE(pendingRecordCount("objects_to_delete"), 1);
    }

    void serverRecordsAreMerged_data()
    {
        QTest::addColumn<QString>("deletedType");
        QTest::addColumn<int>("serverAt");
        QTest::addColumn<SortingType>("expected");
        // The local list is alphabetical as of `start` and deleted, if at all, 10 seconds later; the
        // server's record is descending by time.
        QTest::newRow("deleted locally, newer on the server: back") << "project" << 20 << TimestampDescType;
        QTest::newRow("older on the server: ignored") << "" << -10 << AlphabeticalType;
        QTest::newRow("equal times: the server wins") << "" << 0 << TimestampDescType;
        QTest::newRow("id deleted under another type after the server's change")
            << "folder" << 5 << AlphabeticalType;
    }

    void serverRecordsAreMerged()
    {
        QFETCH(QString, deletedType);
        QFETCH(int, serverAt);
        MergingSortingManager manager;
        // A list that only the server's first answer knows, and the second no longer does.
        manager.handleServerObjects({serverRecord("gone", "context", 0)});
        Clock::pin(start);
        manager.setSortedList("list", ListTypeProject, AlphabeticalType, false);
        manager.setSortedList("list", ListTypeFolder, AlphabeticalType, false);
        if (!deletedType.isEmpty()) {
            Clock::pin(start.addSecs(10));
            manager.deleteSortedList("list", deletedType == "project" ? ListTypeProject : ListTypeFolder);
        }

        manager.handleServerObjects({serverRecord("list", "project", serverAt)});

        QTEST(manager.getSortingType("list", ListTypeProject), "expected");
        QVERIFY(!manager.hasSortedListInfo("gone", ListTypeContext));
    }

    void roundTripWithTheServer()
    {
        ServerProcess server;
        QVERIFY(server.start());
        QVERIFY(registerAccount(server));
        SortingManager manager;
        manager.setManualSortedList("garden", ListTypeProject, {{"a", 0}, {"b", 1}});
        manager.setSortedList("home", ListTypeContext, AlphabeticalType, false);
        QVERIFY(runSync(manager));
        manager.setSortedList("home", ListTypeContext, AlphabeticalType, false);
        QCOMPARE(pendingRecordCount("objects_to_send"), 0);
        manager.deleteSortedList("home", ListTypeContext);
        QVERIFY(runSync(manager));

        // What comes back to a manager that knows nothing is the server's own state.
        manager.clearAll();
        QVERIFY(runSync(manager));
        QCOMPARE(manager.getSortedListInfo("garden", ListTypeProject).orderHash,
                 (OrderHash{{"a", 0}, {"b", 1}}));
        QVERIFY(!manager.hasSortedListInfo("home", ListTypeContext));
    }

private:
    static bool registerAccount(const ServerProcess& server)
    {
        Settings* settings = Settings::instance();
        settings->setServerUrl(server.baseUrl());
        const QString login = QUuid::createUuid().toString(QUuid::WithoutBraces) + "@example.org";
        ApiHandler api({});
        std::unique_ptr<ApiOperation> registration(api.registerUser(login, secret));
        QSignalSpy finished(registration.get(), &ApiOperation::finished);
        if (!finished.wait(20000) || registration->errorCode() != -1)
            return false;
        settings->setClientLogin(login);
        settings->setClientPassword(secret);
        AuthManager::instance()->logout();
        return true;
    }
};

NORVEL_TEST_MAIN(SortingManagerTest)

#include "sortingmanagertest.moc"
