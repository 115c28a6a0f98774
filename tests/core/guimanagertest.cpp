#include "core/guimanager.h"
#include "core/settings.h"
#include "platform/appearanceportal.h"
#include "testlib/fakeappearanceportal.h"
#include "testlib/logcapture.h"
#include "testlib/privatesessionbus.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QAuthenticator>
#include <QDBusConnection>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

class GuiManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void darkTimeSpan_data();
    void darkTimeSpan();
    void darkDesktopSetsTheDarkAccentAndFollowingItSwitchesTheTheme();
    void onlyClicksBesideTheUndoButtonCountAsActions();
    void unknownLanguageKeepsEnglishAndWarnsTwice();
    void savedProxyCredentialsServeThreeTimesThenTheDialogAsks();

private:
    PrivateSessionBus m_bus;
};

void GuiManagerTest::init()
{
    Settings::instance()->clear();
}

void GuiManagerTest::darkTimeSpan_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("now");
    QTest::addColumn<bool>("dark");
    QTest::newRow("overnight span, late evening") << "21:00"
                                                  << "7:00"
                                                  << "22:00" << true;
    QTest::newRow("overnight span, after midnight stays light") << "21:00"
                                                                << "7:00"
                                                                << "2:00" << false;
    QTest::newRow("overnight span, midday") << "21:00"
                                            << "7:00"
                                            << "12:00" << false;
    QTest::newRow("equal times, at the time") << "9:00"
                                              << "9:00"
                                              << "9:00" << false;
    QTest::newRow("equal times, afternoon") << "9:00"
                                            << "9:00"
                                            << "15:00" << false;
    QTest::newRow("day span, inside") << "8:00"
                                      << "20:00"
                                      << "8:00" << true;
    QTest::newRow("day span, at the end") << "8:00"
                                          << "20:00"
                                          << "20:00" << false;
}

void GuiManagerTest::darkTimeSpan()
{
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QString, now);
    QFETCH(bool, dark);
    const QString format = QStringLiteral("h:m");
    QCOMPARE(GuiManager::isInDarkTimeSpan(QTime::fromString(start, format), QTime::fromString(end, format),
                                          QTime::fromString(now, format)),
             dark);
}

void GuiManagerTest::darkDesktopSetsTheDarkAccentAndFollowingItSwitchesTheTheme()
{
    FakeAppearancePortal desktop(QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("desktop")),
                                 AppearancePortal::preferDark);
    AppearancePortal appearance(QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("program")));
    Settings* settings = Settings::instance();

    GuiManager manager(&appearance);
    QCOMPARE(settings->applicationColor(), QColor(QString::fromLatin1(GuiManager::darkSystemAccentColor)));
    QVERIFY(manager.isAppInDarkMode());

    settings->setThemeSwitchType(Settings::DependsOnSystemTheme);
    QSignalSpy themeChanges(&manager, &GuiManager::appThemeChanged);
    desktop.changeColorScheme(0);
    QTRY_COMPARE(themeChanges.count(), 1);
    QCOMPARE(settings->appTheme(), Settings::LightTheme);
    QVERIFY(!manager.isAppInDarkMode());

    // Nothing differs from the desktop now, so activation changes nothing.
    manager.switchAppThemeIfNeeded();
    QCOMPARE(themeChanges.count(), 1);
}

void GuiManagerTest::onlyClicksBesideTheUndoButtonCountAsActions()
{
    AppearancePortal appearance{QDBusConnection(QString())};
    GuiManager manager(&appearance);
    QSignalSpy actions(&manager, &GuiManager::userPerformedAction);
    QObject window;
    QObject button(&window);
    QObject undoButton(&window);
    undoButton.setObjectName(QStringLiteral("UndoButton"));
    const auto press = [](QObject* target) {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(target, &event);
    };

    manager.startTrackUserActions();
    press(&undoButton);
    press(&window);
    QCOMPARE(actions.count(), 0);
    press(&button);
    QCOMPARE(actions.count(), 1);

    manager.endTrackUserActions();
    press(&button);
    QCOMPARE(actions.count(), 1);
}

void GuiManagerTest::unknownLanguageKeepsEnglishAndWarnsTwice()
{
    AppearancePortal appearance{QDBusConnection(QString())};
    GuiManager manager(&appearance);
    LogCapture log;
    Settings::instance()->setApplicationLanguage(QStringLiteral("de"));
    manager.reloadTranslations();
    QCOMPARE(log.messages(QStringLiteral("WARN")),
             QStringList({QStringLiteral("Unable to load Qt translation file!"),
                          QStringLiteral("Unable to load App translation file!")}));

    Settings::instance()->setApplicationLanguage(QStringLiteral("ru"));
    manager.reloadTranslations();
    QVERIFY(log.contains(QStringLiteral("App translation file loaded successfully!")));
    QCOMPARE(QCoreApplication::translate("SystemTray", "Quit Norvel"), QStringLiteral("Выйти из Norvel"));
}

void GuiManagerTest::savedProxyCredentialsServeThreeTimesThenTheDialogAsks()
{
    AppearancePortal appearance{QDBusConnection(QString())};
    GuiManager manager(&appearance);
    QNetworkProxy proxy(QNetworkProxy::HttpProxy, QStringLiteral("proxy.local"), 3128);
    Settings::instance()->setProxyCredentials(QStringLiteral("proxy.local:3128"), QStringLiteral("ann"),
                                              QStringLiteral("secret"));
    for (int attempt = 0; attempt < GuiManager::savedProxyCredentialAttempts; ++attempt) {
        QAuthenticator authenticator;
        manager.handleProxyAuthentication(proxy, &authenticator);
        QCOMPARE(authenticator.user(), QStringLiteral("ann"));
    }

    bool dialogShown = false;
    QTimer::singleShot(0, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        dialogShown = dialog != nullptr;
        if (dialog)
            dialog->close();
    });
    QAuthenticator authenticator;
    manager.handleProxyAuthentication(proxy, &authenticator);
    QVERIFY(dialogShown);
    QVERIFY(authenticator.user().isEmpty());
    QVERIFY(Settings::instance()->proxyCredentials(QStringLiteral("proxy.local:3128")).isEmpty());
}

NORVEL_TEST_MAIN(GuiManagerTest)
#include "guimanagertest.moc"
