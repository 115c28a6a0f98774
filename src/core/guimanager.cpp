#include "guimanager.h"

#include "core/clock.h"
#include "core/colorediconprovider.h"
#include "core/logger.h"
#include "core/logmanager.h"
#include "core/proxyauthdialog.h"
#include "core/settings.h"
#include "core/wheeleventsredirector.h"
#include "models/searchhelper.h"
#include "platform/appearanceportal.h"
#include "platform/hardwaremanager.h"
#include "platform/systemtray.h"
#include "reminders/notificationmanager.h"
#include "services/contexthandler.h"
#include "services/dateformathelper.h"
#include "services/projecthandler.h"
#include "services/reminderformathelper.h"
#include "services/repetitionformathelper.h"
#include "services/taskhandler.h"
#include "store/datamanager.h"
#include "store/predefineddatahelper.h"
#include "sync/sortingnamespace.h"
#include "sync/syncmanager.h"
#include "utilities/clipboard.h"
#include "utilities/helper.h"
#include "utilities/urlhelper.h"

#include <QApplication>
#include <QAuthenticator>
#include <QHash>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>
#include <QTimer>

#include <QTranslator>
#include <QtQml>
#include <memory>

namespace {
const char* const appVersion = NORVEL_VERSION;
const QString undoButtonName = QStringLiteral("UndoButton");
const QString timeFormat = QStringLiteral("h:m");

// Kept even when loading or installing fails, so that the next reload removes it like any other.
QTranslator* installTranslation(const QString& path, const char* success, const char* failure)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(path) && QCoreApplication::installTranslator(translator))
        QLOG_INFO() << success;
    else
        QLOG_WARN() << failure;
    return translator;
}

void removeTranslation(QTranslator*& translator)
{
    if (!translator)
        return;
    QCoreApplication::removeTranslator(translator);
    translator->deleteLater();
    translator = nullptr;
}
} // namespace

struct GuiManager::Private
{
    AppearancePortal* appearance = nullptr;
    QQmlApplicationEngine* engine = nullptr;
    QPointer<QQuickWindow> window;
    QTranslator* qtTranslator = nullptr;
    QTranslator* appTranslator = nullptr;
    bool rateHandlingEnabled = true;
    QHash<QString, int> proxyAuthAttempts;
    SystemTray* tray = nullptr;
};

GuiManager* GuiManager::instance()
{
    static GuiManager* const manager = new GuiManager(AppearancePortal::instance());
    return manager;
}

GuiManager::GuiManager(AppearancePortal* appearance, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->appearance = appearance;
    connect(appearance, &AppearancePortal::darkChanged, this, &GuiManager::followSystemAppearance);
    reconcileApplicationColor();
}

GuiManager::~GuiManager() = default;

void GuiManager::reconcileApplicationColor()
{
    Settings* settings = Settings::instance();
    if (settings->appTheme() != Settings::UndefinedTheme)
        return;
    const QColor darkAccent(QString::fromLatin1(darkSystemAccentColor));
    if (d->appearance->isDark())
        settings->setApplicationColor(darkAccent);
    else if (settings->applicationColor() == darkAccent)
        settings->setApplicationColor(QColor(QString::fromLatin1(lightSystemAccentColor)));
}

void GuiManager::initialize()
{
    if (d->engine)
        return;
    registerQmlTypes();
    d->engine = new QQmlApplicationEngine(this);
    d->engine->addImageProvider(
        QString::fromLatin1(ColoredIconProvider::providerId),
        new ColoredIconProvider([this] { return isAppInDarkMode(); },
                                [] { return Settings::instance()->applicationColor(); }));
    publishServices();
    publishConstants();
    connectNotifications();
    reloadTranslations();
}

// The notification manager answers on the database thread; the window is this thread's business.
void GuiManager::connectNotifications()
{
    NotificationManager* notifications = NotificationManager::instance();
    connect(notifications, &NotificationManager::taskRequested, this, &GuiManager::showTaskById,
            Qt::QueuedConnection);
    connect(notifications, &NotificationManager::mainWindowRequested, this, &GuiManager::showMainWindow,
            Qt::QueuedConnection);
    // The sync waits on the database thread until the credentials are filled in here.
    qRegisterMetaType<QNetworkProxy>();
    qRegisterMetaType<QAuthenticator*>();
    connect(SyncManager::instance(), &SyncManager::proxyAuthenticationRequired, this,
            &GuiManager::handleProxyAuthentication, Qt::BlockingQueuedConnection);
}

void GuiManager::registerQmlTypes()
{
    const QString noReason;
    qmlRegisterUncreatableType<NotificationManager>("com.kelmora.managers", 1, 0, "NotificationEnum",
                                                    noReason);
    // The reminder wording takes the type as a parameter; QML can pass it only once it is known by name.
    qRegisterMetaType<NotificationManager::NotificationType>("NotificationManager::NotificationType");
    qmlRegisterUncreatableType<Settings>("com.kelmora.managers", 1, 0, "SettingsEnums", noReason);
    qmlRegisterSingletonType(QUrl(QStringLiteral("qrc:/PurchaseHelper.qml")), "com.kelmora.helpers", 1, 0,
                             "PurchaseHelper");
    qmlRegisterSingletonType(QUrl(QStringLiteral("qrc:/FunctionHelper.qml")), "com.kelmora.helpers", 1, 0,
                             "FunctionHelper");
    qmlRegisterUncreatableMetaObject(SortingNamespace::staticMetaObject, "com.kelmora.common", 1, 0,
                                     "SortingEnums", noReason);
    qRegisterMetaType<SortingNamespace::ListType>("ListType");
    qRegisterMetaType<SortingNamespace::SortingType>("SortingType");
}

QObject* GuiManager::publishSeat(const QString& name)
{
    auto* seat = new QObject(this);
    seat->setObjectName(name);
    setContextProperty(name, seat);
    return seat;
}

void GuiManager::publishServices()
{
    setContextProperty(QStringLiteral("GuiManager"), this);
    setContextProperty(QStringLiteral("WheelEventsRedirector"), new WheelEventsRedirector(this));
    setContextProperty(QStringLiteral("DateFormatHelper"), new DateFormatHelper(this));
    setContextProperty(QStringLiteral("RepetitionFormatHelper"), new RepetitionFormatHelper(this));
    setContextProperty(QStringLiteral("ReminderFormatHelper"), new ReminderFormatHelper(this));
    publishSeat(QStringLiteral("AnalyticsManager"));
    setContextProperty(QStringLiteral("PredefinedDataHelper"), PredefinedDataHelper::instance());
    setContextProperty(QStringLiteral("Settings"), Settings::instance());
    setContextProperty(QStringLiteral("DataManager"), DataManager::instance());
    auto* taskHandler = new TaskHandler(this);
    auto* contextHandler = new ContextHandler(this);
    auto* projectHandler = new ProjectHandler(this);
    QLOG_INFO() << "Creating of object handlers and others...";
    setContextProperty(QStringLiteral("ContextHandler"), contextHandler);
    setContextProperty(QStringLiteral("TaskHandler"), taskHandler);
    setContextProperty(QStringLiteral("ProjectHandler"), projectHandler);
    publishSeat(QStringLiteral("CalendarManager"));
    publishSeat(QStringLiteral("PasscodeManager"));
    setContextProperty(QStringLiteral("Helper"), Helper::instance());
    publishSeat(QStringLiteral("FavoritesManager"));
    publishSeat(QStringLiteral("AuthManager"));
    publishSeat(QStringLiteral("LicenseCheckManager"));
    publishSeat(QStringLiteral("LegacyPurchaseManager"));
    publishSeat(QStringLiteral("ExportHelper"));
    setContextProperty(QStringLiteral("UrlHelper"), new UrlHelper(this));
    publishSeat(QStringLiteral("KeyboardHelper"));
    setContextProperty(QStringLiteral("Clipboard"), Clipboard::instance());
    setContextProperty(QStringLiteral("Logger"), new Logger(this));
    setContextProperty(QStringLiteral("SearchHelper"), new SearchHelper(this));
    publishSeat(QStringLiteral("LicenseManager"));
    setContextProperty(QStringLiteral("HardwareManager"), HardwareManager::instance());
    publishSeat(QStringLiteral("AppUpdater"));
    publishSeat(QStringLiteral("ReceiptValidationManager"));
    publishSeat(QStringLiteral("RateManager"));
}

void GuiManager::publishConstants()
{
    // Numbers go in as QVariant: a bare 0 would pick the QObject* overload and publish null.
    const QString applicationDirectory = QCoreApplication::applicationDirPath();
    setContextProperty(
        QStringLiteral("METHOD_RESOURCES_URL"),
        QStringLiteral("file://%1/../Resources/MethodArticles/method").arg(applicationDirectory));
    setContextProperty(QStringLiteral("DEFAULT_OBJECT_STATE"), QVariant(0));
    setContextProperty(QStringLiteral("DELETED_OBJECT_STATE"), QVariant(1));
    setContextProperty(QStringLiteral("COMPLETED_OBJECT_STATE"), QVariant(2));
    setContextProperty(QStringLiteral("COMPLETED_AND_DELETED_OBJECT_STATE"), QVariant(3));
    setContextProperty(QStringLiteral("EXPORT_NORVEL_BOX"), QVariant(0));
    setContextProperty(QStringLiteral("EXPORT_DAILY_PLAN"), QVariant(1));
    setContextProperty(QStringLiteral("EXPORT_DEFAULT"), QVariant(2));
    setContextProperty(QStringLiteral("APP_VERSION"), QString::fromLatin1(appVersion));
    setContextProperty(QStringLiteral("APP_DIR_PATH"), applicationDirectory);
    setContextProperty(QStringLiteral("USE_NATIVE_TEXT_RENDERING"), false);
}

void GuiManager::setContextProperty(const QString& name, QObject* object)
{
    if (d->engine)
        d->engine->rootContext()->setContextProperty(name, object);
}

void GuiManager::setContextProperty(const QString& name, const QVariant& value)
{
    if (d->engine)
        d->engine->rootContext()->setContextProperty(name, value);
}

void GuiManager::loadUi()
{
    d->engine->load(QUrl(QStringLiteral("qrc:///main.qml")));
    if (d->engine->rootObjects().isEmpty())
        return;
    d->window = qobject_cast<QQuickWindow*>(d->engine->rootObjects().constFirst());
    if (!d->window)
        return;
    connect(d->window, SIGNAL(hideOnClose()), this, SLOT(hideMainWindow()));
    // The moment the user sees the window; start-up time is measured up to this line.
    auto firstFrame = std::make_shared<QMetaObject::Connection>();
    *firstFrame = connect(d->window, &QQuickWindow::frameSwapped, this, [firstFrame] {
        QObject::disconnect(*firstFrame);
        QLOG_INFO() << "Main window: first frame shown";
    });
    createTrayIcon();
}

void GuiManager::createTrayIcon()
{
    if (!SystemTray::available()) {
        QLOG_INFO() << "No system tray found, a closed window is minimized";
        return;
    }
    d->tray = new SystemTray(this);
    connect(d->tray, &SystemTray::activated, this, &GuiManager::onTrayActivated);
    connect(d->tray, &SystemTray::toggleWindowRequested, this, &GuiManager::toggleMainWindow);
    connect(d->tray, &SystemTray::quitRequested, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    connect(d->window, &QWindow::visibleChanged, this, &GuiManager::updateTrayIcon);
    updateTrayIcon();
}

void GuiManager::updateTrayIcon()
{
    if (d->tray)
        d->tray->setWindowVisible(d->window && d->window->isVisible());
}

QQmlApplicationEngine* GuiManager::engine() const
{
    return d->engine;
}

QWindow* GuiManager::mainWindow() const
{
    return d->window;
}

bool GuiManager::isAppInDarkMode() const
{
    const Settings::AppTheme theme = Settings::instance()->appTheme();
    if (theme != Settings::UndefinedTheme)
        return theme == Settings::DarkTheme;
    return d->appearance->isDark();
}

bool GuiManager::isRateHandlingEnabled() const
{
    return d->rateHandlingEnabled;
}

bool GuiManager::hasTrayIcon() const
{
    return d->tray;
}

bool GuiManager::isInDarkTimeSpan(const QTime& start, const QTime& end, const QTime& now)
{
    if (end < start)
        return now >= start;
    return now >= start && now < end;
}

bool GuiManager::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && watched->parent() &&
        watched->objectName() != undoButtonName)
        emit userPerformedAction();
    return false;
}

void GuiManager::showMainWindow()
{
    if (!d->window)
        return;
    // Staying on top for a moment brings the window over other applications without pinning it there.
    d->window->setFlag(Qt::WindowStaysOnTopHint, true);
    if (d->window->windowState() & Qt::WindowMaximized)
        d->window->showMaximized();
    else
        d->window->show();
    d->window->setFlag(Qt::WindowStaysOnTopHint, false);
    d->window->requestActivate();
}

void GuiManager::showMainWindowMinimized()
{
    if (!d->window)
        return;
    d->window->showMinimized();
    hideMainWindow();
}

void GuiManager::hideMainWindow()
{
    if (!d->window)
        return;
    if (d->window->windowState() & Qt::WindowFullScreen)
        d->window->showNormal();
    else if (d->tray)
        d->window->hide();
    else
        d->window->showMinimized();
}

void GuiManager::toggleMainWindow()
{
    if (d->window && d->window->isVisible())
        hideMainWindow();
    else
        showMainWindow();
}

void GuiManager::activateWindow()
{
    if (d->window)
        d->window->requestActivate();
}

bool GuiManager::isWindowsFullScreen() const
{
    return d->window && d->window->visibility() == QWindow::FullScreen;
}

bool GuiManager::isWindowActive() const
{
    return d->window && d->window->isActive();
}

void GuiManager::suspendRateHandlings()
{
    d->rateHandlingEnabled = false;
}

void GuiManager::continueRateHandlings()
{
    d->rateHandlingEnabled = true;
}

void GuiManager::shakeWindow()
{
    if (d->window)
        QMetaObject::invokeMethod(d->window, "shakeWindow", Qt::QueuedConnection);
}

void GuiManager::reloadTranslations()
{
    removeTranslation(d->qtTranslator);
    removeTranslation(d->appTranslator);
    const QString language = Settings::instance()->applicationLanguage();
    QLOG_INFO() << "Setting up current system locale: " << language;
    d->qtTranslator =
        installTranslation(QStringLiteral(":/translations/qtbase_%1.qm").arg(language),
                           "Qt translation file loaded successfully!", "Unable to load Qt translation file!");
    d->appTranslator = installTranslation(QStringLiteral(":/translations/nv_%1.qm").arg(language),
                                          "App translation file loaded successfully!",
                                          "Unable to load App translation file!");
    if (d->engine)
        d->engine->retranslate();
    if (d->tray)
        d->tray->retranslate();
}

void GuiManager::setWaitingAppCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

void GuiManager::setDefaultAppCursor()
{
    QGuiApplication::restoreOverrideCursor();
}

void GuiManager::setTitleBarColor(const QColor& color)
{
    // The window manager draws the title bar on this platform and takes no colour from programs.
    Q_UNUSED(color)
}

void GuiManager::setDefaultYesButtonForQuestionDialog()
{
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box)
        return;
    box->setDefaultButton(QMessageBox::Yes);
    box->setEscapeButton(QMessageBox::No);
}

void GuiManager::setAppInDarkMode(bool dark)
{
    Settings::instance()->setAppTheme(dark ? Settings::DarkTheme : Settings::LightTheme);
    emit appThemeChanged();
}

void GuiManager::followSystemAppearance(bool dark)
{
    Settings* settings = Settings::instance();
    if (settings->themeSwitchType() == Settings::DependsOnSystemTheme)
        setAppInDarkMode(dark);
    else if (settings->appTheme() == Settings::UndefinedTheme)
        emit appThemeChanged();
}

void GuiManager::switchAppThemeIfNeeded()
{
    Settings* settings = Settings::instance();
    switch (settings->themeSwitchType()) {
    case Settings::DependsOnSystemTheme: {
        const bool systemDark = d->appearance->isDark();
        if (systemDark != isAppInDarkMode())
            setAppInDarkMode(systemDark);
        break;
    }
    case Settings::AutoByTime: {
        const QTime start = QTime::fromString(settings->autoDarkThemeStartTime(), timeFormat);
        const QTime end = QTime::fromString(settings->autoDarkThemeEndTime(), timeFormat);
        setAppInDarkMode(isInDarkTimeSpan(start, end, Clock::currentDateTime().time()));
        break;
    }
    case Settings::Manual:
        break;
    }
}

void GuiManager::startTrackUserActions()
{
    QCoreApplication::instance()->installEventFilter(this);
}

void GuiManager::endTrackUserActions()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

void GuiManager::handleProxyAuthentication(const QNetworkProxy& proxy, QAuthenticator* authenticator)
{
    const QString key = QStringLiteral("%1:%2").arg(proxy.hostName()).arg(proxy.port());
    Settings* settings = Settings::instance();
    QJsonObject credentials = settings->proxyCredentials(key);
    if (!credentials.isEmpty()) {
        int& attempts = d->proxyAuthAttempts[key];
        if (attempts < savedProxyCredentialAttempts) {
            ++attempts;
        } else {
            attempts = 0;
            settings->removeProxyCredentials(key);
            credentials = QJsonObject();
        }
    }
    if (credentials.isEmpty())
        credentials = showProxyDialog(key);

    const QString username = credentials.value(QStringLiteral("username")).toString();
    const QString password = credentials.value(QStringLiteral("password")).toString();
    if (username.isEmpty() || password.isEmpty())
        return;
    QLOG_INFO() << "User has entered username and password";
    authenticator->setUser(username);
    authenticator->setPassword(password);
}

QJsonObject GuiManager::showProxyDialog(const QString& proxyKey)
{
    ProxyAuthDialog dialog;
    dialog.setProxyName(proxyKey);
    // Closes by itself just under half a minute later, typing or not.
    QTimer::singleShot(proxyDialogTimeoutMilliseconds, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return QJsonObject();
    if (dialog.rememberPassword())
        Settings::instance()->setProxyCredentials(proxyKey, dialog.username(), dialog.password());
    return QJsonObject{{QStringLiteral("username"), dialog.username()},
                       {QStringLiteral("password"), dialog.password()}};
}

void GuiManager::showTaskById(const QString& taskId)
{
    const DOTask task = DataManager::instance()->getTaskById(taskId);
    if (task.isEmpty() || !d->window)
        return;
    const QString projectId = task.value(QStringLiteral("PARENT")).toString();
    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    // The two inbox-like lists have no project row to load.
    QVariantMap project;
    if (projectId == predefined->norvelBoxId() || projectId == predefined->oneStepActionsId())
        project.insert(QStringLiteral("ID"), projectId);
    else
        project = DataManager::instance()->getProjectById(projectId);
    QMetaObject::invokeMethod(d->window, "showTaskEditItem", Qt::QueuedConnection, Q_ARG(QVariant, project),
                              Q_ARG(QVariant, QVariant(task)));
}

void GuiManager::onTrayActivated(QSystemTrayIcon::ActivationReason reason)
{
    if (reason != QSystemTrayIcon::DoubleClick || !d->window)
        return;
    if (d->window->visibility() == QWindow::Hidden) {
        QLOG_INFO() << "Tray icon double clicked. Showing the window...";
        showMainWindow();
    } else {
        QLOG_INFO() << "Tray icon double clicked. Hiding the window...";
        hideMainWindow();
    }
}
