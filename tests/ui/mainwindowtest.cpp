#include "core/guimanager.h"
#include "core/settings.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"
#include "testlib/uiharness.h"

#include <QApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

// One journey through the main window as a user takes it: the side panel, each page, the history
// of a tree page, both themes, both languages and closing the window.
class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startShowsDailyPlanAndCountsTheInbox();
    void eachSidePanelEntryOpensItsPage_data();
    void eachSidePanelEntryOpensItsPage();
    void menuShortcutOpensPage();
    void taskFromANotificationOpensInTheDailyPlan();
    void backAndForwardWalkTheFolderHistory();
    void themeSwitchRepaintsTheWindow();
    void languageSwitchRetranslatesAtOnce();
    void closingKeepsTheWindowReachable();
    void cleanup();

private:
    QString currentPageName() const;

    UiHarness m_ui;
};

QString MainWindowTest::currentPageName() const
{
    const auto* page = m_ui.property(QStringLiteral("pageLoader"), "currentPage").value<QQuickItem*>();
    return page ? page->objectName() : QString();
}

void MainWindowTest::initTestCase()
{
    QVERIFY(m_ui.start());
    QVERIFY(m_ui.window()->isVisible());
}

void MainWindowTest::cleanup()
{
    QCOMPARE(m_ui.qmlMessages(), QStringList());
}

void MainWindowTest::startShowsDailyPlanAndCountsTheInbox()
{
    QCOMPARE(currentPageName(), QStringLiteral("DailyPlanPage"));
    QCOMPARE(m_ui.text(QStringLiteral("DailyPlanPageButton")), QStringLiteral("Daily Plan"));
    const QQmlContext* context = GuiManager::instance()->engine()->rootContext();
    QCOMPARE(context->contextProperty(QStringLiteral("DEFAULT_OBJECT_STATE")), QVariant(0));
    QCOMPARE(context->contextProperty(QStringLiteral("FIRST_LAUNCH")), QVariant(true));
    QVERIFY(!m_ui.item(QStringLiteral("NorvelBoxPageButtonCounters"))->isVisible());

    QVERIFY(DataManager::instance()->createTaskLocally(
        RecordBuilder::task(QStringLiteral("Call the bank"))
            .withId(QStringLiteral("bank-call"))
            .inParent(QString::fromLatin1(RecordBuilder::inboxId))));
    QVERIFY(DataManager::instance()->commitChanges());
    QMetaObject::invokeMethod(m_ui.object(QStringLiteral("sidePanel")), "updateUI");

    QVERIFY(m_ui.item(QStringLiteral("NorvelBoxPageButtonCounters"))->isVisible());
    QCOMPARE(m_ui.text(QStringLiteral("NorvelBoxPageButtonCount")), QStringLiteral("1"));
    QVERIFY(!m_ui.item(QStringLiteral("NorvelBoxPageButtonOverdueCount"))->isVisible());
}

void MainWindowTest::eachSidePanelEntryOpensItsPage_data()
{
    QTest::addColumn<QString>("pageName");
    for (const char* page : {"NorvelBoxPage", "DailyPlanPage", "ProjectsPage", "ContextsPage",
                             "FavoritesPage", "MethodPage", "SettingsPage"})
        QTest::newRow(page) << QString::fromLatin1(page);
}

void MainWindowTest::eachSidePanelEntryOpensItsPage()
{
    QFETCH(QString, pageName);
    QVERIFY(m_ui.click(pageName + QStringLiteral("Button")));
    QCOMPARE(currentPageName(), pageName);
    QCOMPARE(m_ui.object(pageName + QStringLiteral("Button"))->property("selected").toBool(), true);
}

void MainWindowTest::menuShortcutOpensPage()
{
    m_ui.pressKey(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(currentPageName(), QStringLiteral("NorvelBoxPage"));
    m_ui.pressKey(Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(currentPageName(), QStringLiteral("DailyPlanPage"));
}

void MainWindowTest::taskFromANotificationOpensInTheDailyPlan()
{
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
    GuiManager::instance()->showTaskById(QStringLiteral("no-such-task"));
    QTest::qWait(20);
    QCOMPARE(currentPageName(), QStringLiteral("NorvelBoxPage"));

    GuiManager::instance()->showTaskById(QStringLiteral("bank-call"));
    QTRY_COMPARE(currentPageName(), QStringLiteral("DailyPlanPage"));
    QTRY_VERIFY(m_ui.item(QStringLiteral("TaskPreviewPopup")));
    QCOMPARE(m_ui.text(QStringLiteral("previewTitle")), QStringLiteral("Call the bank"));
    m_ui.pressKey(Qt::Key_Escape);
    QTRY_VERIFY(!m_ui.object(QStringLiteral("TaskPreviewPopup")));
}

void MainWindowTest::backAndForwardWalkTheFolderHistory()
{
    QVERIFY(m_ui.click(QStringLiteral("ProjectsPageButton")));
    QVERIFY(!m_ui.item(QStringLiteral("backButton"))->isEnabled());
    const QString rootTitle = m_ui.text(QStringLiteral("levelListTitle"));

    auto* tree = m_ui.property(QStringLiteral("ProjectsPage"), "treeModel").value<QObject*>();
    QVariantMap first;
    QMetaObject::invokeMethod(tree, "getObjectByIndex", Q_RETURN_ARG(QVariantMap, first), Q_ARG(int, 0));
    const QString folder = first.value(QStringLiteral("NAME")).toString();
    QVERIFY2(!folder.isEmpty(), "the demo folders are made on the first visit");
    QVERIFY(m_ui.click(QStringLiteral("treeRow_") + folder));
    QCOMPARE(m_ui.text(QStringLiteral("levelListTitle")), folder);

    QVERIFY(m_ui.click(QStringLiteral("backButton")));
    QCOMPARE(m_ui.text(QStringLiteral("levelListTitle")), rootTitle);
    QVERIFY(!m_ui.item(QStringLiteral("backButton"))->isEnabled());

    QVERIFY(m_ui.click(QStringLiteral("forwardButton")));
    QCOMPARE(m_ui.text(QStringLiteral("levelListTitle")), folder);
    QVERIFY(!m_ui.item(QStringLiteral("forwardButton"))->isEnabled());

    // The projects page is cached: its history survives a visit elsewhere.
    QVERIFY(m_ui.click(QStringLiteral("NorvelBoxPageButton")));
    QVERIFY(m_ui.click(QStringLiteral("ProjectsPageButton")));
    QCOMPARE(m_ui.text(QStringLiteral("levelListTitle")), folder);
    QVERIFY(m_ui.item(QStringLiteral("backButton"))->isEnabled());
}

void MainWindowTest::themeSwitchRepaintsTheWindow()
{
    GuiManager* manager = GuiManager::instance();
    QCOMPARE(m_ui.property(QStringLiteral("sidePanel"), "color").value<QColor>(), QColor(Qt::white));

    manager->setAppInDarkMode(true);
    QCOMPARE(Settings::instance()->appTheme(), Settings::DarkTheme);
    QCOMPARE(m_ui.property(QStringLiteral("sidePanel"), "color").value<QColor>(),
             QColor(QStringLiteral("#1E2022")));
    QCOMPARE(m_ui.window()->color(), QColor(QStringLiteral("#1E2022")));

    manager->setAppInDarkMode(false);
    QCOMPARE(m_ui.property(QStringLiteral("sidePanel"), "color").value<QColor>(), QColor(Qt::white));
    QCOMPARE(m_ui.window()->color(), QColor(QStringLiteral("#FFFFFE")));
}

void MainWindowTest::languageSwitchRetranslatesAtOnce()
{
    Settings::instance()->setApplicationLanguage(QStringLiteral("ru"));
    GuiManager::instance()->reloadTranslations();
    QCOMPARE(m_ui.text(QStringLiteral("DailyPlanPageButton")), QStringLiteral("План на день"));
    QCOMPARE(m_ui.text(QStringLiteral("syncStatusLabel")),
             QStringLiteral("Синхронизация ещё не выполнялась"));

    Settings::instance()->setApplicationLanguage(QStringLiteral("en"));
    GuiManager::instance()->reloadTranslations();
    QCOMPARE(m_ui.text(QStringLiteral("DailyPlanPageButton")), QStringLiteral("Daily Plan"));
}

void MainWindowTest::closingKeepsTheWindowReachable()
{
    QVERIFY(!GuiManager::instance()->hasTrayIcon());
    m_ui.pressKey(Qt::Key_W, Qt::ControlModifier);
    QTRY_COMPARE(m_ui.window()->visibility(), QWindow::Minimized);

    GuiManager::instance()->showMainWindow();
    QTRY_VERIFY(m_ui.window()->visibility() != QWindow::Minimized);
    QVERIFY(m_ui.window()->isVisible());
}

NORVEL_TEST_MAIN(MainWindowTest)
#include "mainwindowtest.moc"
