#include "models/searchsortfiltermodel.h"
#include "core/settings.h"
#include "models/listmodel.h"
#include "models/searchhelper.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QTranslator>
#include <QtTest>

namespace {

using Records = QList<QVariantMap>;

QStringList ids(const char* spaced)
{
    return QString::fromLatin1(spaced).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList visibleIds(const QAbstractItemModel& model)
{
    QStringList shown;
    for (int row = 0; row < model.rowCount(); ++row)
        shown << model.index(row, 0).data(ListModel::listItemRole).toMap().value("ID").toString();
    return shown;
}

// A search model over records that it owns, watched by model testers.
struct SearchPair
{
    SearchPair(bool namesOnly, const Records& records)
        : model(namesOnly)
    {
        model.setSourceModel(new ListModel([records] { return records; }, &model));
    }

    SearchSortFilterModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

const Records searchedRecords{RecordBuilder::task("Buy milk").withId("t-name"),
                              RecordBuilder::task("Errand").withId("t-memo").withMemo("Milk and bread"),
                              RecordBuilder::task("Milk the cow").withId("t-done").withState(2),
                              RecordBuilder::project("Milk farm").withId("p-done").withState(2),
                              RecordBuilder::project("Dairy").withId("p-memo").withMemo("milk"),
                              RecordBuilder::folder("MILKY way").withId("f"),
                              RecordBuilder::context("Shop").withId("c")};

// Stands in for the Russian catalogue, which the interface loads at start.
class RussianTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* sourceText, const char*, int) const override
    {
        if (QByteArray(context) == "SearchSortFilterModel" && QByteArray(sourceText) == "No context")
            return QStringLiteral("Без контекста");
        return QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class SearchSortFilterModelTest : public QObject
{
    Q_OBJECT

private slots:
    void matchesNamesAndMemosWithoutExcludedCompletedObjects_data()
    {
        QTest::addColumn<bool>("namesOnly");
        QTest::addColumn<bool>("excludeTasks");
        QTest::addColumn<bool>("excludeProjects");
        QTest::addColumn<QString>("searchString");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("name or memo, any case")
            << false << false << false << "milk" << ids("f p-memo p-done t-name t-memo t-done");
        QTest::newRow("names only in pickers")
            << true << false << false << "MILK" << ids("f p-done t-name t-done");
        QTest::newRow("completed tasks excluded")
            << false << true << false << "milk" << ids("f p-memo p-done t-name t-memo");
        QTest::newRow("completed projects excluded")
            << false << false << true << "milk" << ids("f p-memo t-name t-memo t-done");
        QTest::newRow("empty string matches all")
            << true << false << false << "" << ids("f p-memo p-done c t-name t-memo t-done");
    }

    void matchesNamesAndMemosWithoutExcludedCompletedObjects()
    {
        QFETCH(bool, namesOnly);
        QFETCH(QString, searchString);
        SearchPair pair(namesOnly, searchedRecords);
        QFETCH(bool, excludeTasks);
        pair.model.setExcludeCompletedTasks(excludeTasks);
        QFETCH(bool, excludeProjects);
        pair.model.setExcludeCompletedProjects(excludeProjects);
        pair.model.setSearchString(searchString);

        QTEST(visibleIds(pair.model), "expected");
    }

    void followsRefreshesOfTheSource()
    {
        Records records{RecordBuilder::task("Tea b").withId("b"), RecordBuilder::task("Tea c").withId("c"),
                        RecordBuilder::task("Tea d").withId("d")};
        SearchSortFilterModel model(true);
        model.setSourceModel(new ListModel([&records] { return records; }, &model));
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setSearchString("tea");

        records.removeAt(0);
        records[1].insert("NAME", "Coffee");
        records.append(RecordBuilder::task("Tea a").withId("a"));
        records.append(RecordBuilder::task("Green tea").withId("g").withState(2));
        static_cast<ListModel*>(model.sourceModel())->update();
        QCOMPARE(visibleIds(model), ids("a c g"));

        records.clear();
        static_cast<ListModel*>(model.sourceModel())->update();
        QCOMPARE(model.rowCount(), 0);
    }

    void noContextMatchesByItsTranslatedName()
    {
        RussianTranslator russian;
        QCoreApplication::installTranslator(&russian);
        SearchPair pair(true, {RecordBuilder::context("No context").withId("")});

        pair.model.setSearchString("без конт");
        QCOMPARE(pair.model.rowCount(), 1);
        pair.model.setSearchString("No context");
        QCOMPARE(pair.model.rowCount(), 0);
        QCoreApplication::removeTranslator(&russian);
    }

    void ordersByKindThenStartingHitsThenName()
    {
        SearchPair pair(false, {RecordBuilder::task("Call about meeting").withId("t-call"),
                                RecordBuilder::task("Meet again").withId("t-done").withState(2),
                                RecordBuilder::task("meeting notes").withId("t-notes"),
                                RecordBuilder::task("Meeting agenda").withId("t-agenda"),
                                RecordBuilder::task("Meeting agenda").withId("t-agenda-copy"),
                                RecordBuilder::context("meet").withId("c"),
                                RecordBuilder::project("Team meeting").withId("p"),
                                RecordBuilder::folder("Meetings").withId("f")});
        pair.model.setSearchString("MEET");

        QCOMPARE(visibleIds(pair.model), ids("f p c t-agenda t-agenda-copy t-notes t-call t-done"));
    }

    void highlightsHitsOutsideMarkup_data()
    {
        QTest::addColumn<QString>("color");
        QTest::addColumn<QString>("searchString");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        const auto marked = [](const char* hit, const char* color = "#ff0000") {
            return QStringLiteral("<font color=\"%1\"><b>%2</b></font>").arg(color, hit);
        };
        QTest::newRow("every hit, case kept") << "#ff0000"
                                              << "ab"
                                              << "Ab ab" << marked("Ab") + " " + marked("ab");
        QTest::newRow("link text only, never the tags")
            << "#ff0000"
            << "a"
            << R"(<a href="http://a.com">a.com</a>)"
            << R"(<a href="http://a.com">)" + marked("a") + ".com</a>";
        QTest::newRow("entities and line breaks untouched") << "#ff0000"
                                                            << "lt"
                                                            << "a&lt;b<br>lt"
                                                            << "a&lt;b<br>" + marked("lt");
        QTest::newRow("dark grey theme colour replaced") << "#424242"
                                                         << "x"
                                                         << "x" << marked("x", "#3f51b5");
        QTest::newRow("empty search string") << "#ff0000"
                                             << ""
                                             << "<b>x</b>"
                                             << "<b>x</b>";
    }

    void highlightsHitsOutsideMarkup()
    {
        QFETCH(QString, color);
        Settings::instance()->setApplicationColor(QColor(color));
        QFETCH(QString, searchString);
        QFETCH(QString, text);

        QTEST(SearchHelper().highlightSearchString(searchString, text), "expected");
    }

    void helperRebuildsDeletedModelWithLastStringAndSettings()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        DataManager* data = DataManager::instance();
        QVERIFY(data->createTaskLocally(RecordBuilder::task("Errand").withMemo("Pick up parcel")));
        QVERIFY(data->createTaskLocally(RecordBuilder::task("Old parcel").withState(2)));
        QVERIFY(data->commitChanges());
        Settings::instance()->setShowCompletedTasks(false);
        SearchHelper helper;
        helper.setSearchString("parcel");

        auto* model = helper.model().value<SearchSortFilterModel*>();
        QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model->rowCount(), 1);
        QCOMPARE(helper.model().value<SearchSortFilterModel*>(), model);

        model->requestDeletion();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Settings::instance()->setShowCompletedTasks(true);
        auto* rebuilt = helper.model().value<SearchSortFilterModel*>();
        QCOMPARE(rebuilt->searchString(), "parcel");
        QCOMPARE(rebuilt->rowCount(), 2);
        rebuilt->requestDeletion();
    }
};

NORVEL_TEST_MAIN(SearchSortFilterModelTest)

#include "searchsortfiltermodeltest.moc"
