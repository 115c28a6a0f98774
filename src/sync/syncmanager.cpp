#include "syncmanager.h"

#include "core/logmanager.h"
#include "core/settings.h"
#include "core/startup.h"
#include "store/predefineddatahelper.h"
#include "sync/synchandler.h"
#include "utilities/helper.h"

#include <QCryptographicHash>
#include <QSettings>

#include <functional>

namespace {

const QString lastSyncDateTimeKey = QStringLiteral("LastSyncDateTime");
const int logoutErrorCode = 1000;

QString md5(const QString& text)
{
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex());
}

QPair<QString, QString> serverErrorMessage(int code)
{
    switch (code) {
    case 110:
        return {QObject::tr("Warning"),
                QObject::tr("The app version you are using is too old. In order to perform "
                            "sync, please update the app.")};
    case 200:
        return {QObject::tr("Login Error"),
                QObject::tr("The email you have entered does not belong to any account.")};
    case 201:
        return {QObject::tr("Login Error"), QObject::tr("The password you have entered is incorrect.")};
    case 202:
        return {QObject::tr("Registration Error"), QObject::tr("A user with this email already exists.")};
    case 500:
        return {
            QObject::tr("Internal Server Error"),
            QObject::tr("We are sorry. The server encountered an internal error and was unable to complete "
                        "your request. Please try again.")};
    case logoutErrorCode:
        return {
            QObject::tr("Application Error"),
            QObject::tr("Unknown error occurred during logout. Contact the application's support team for "
                        "more information.")};
    default:
        return {QObject::tr("Sync Error"),
                QObject::tr("Sync error (code %1). Please logout from your account and "
                            "login again to resolve the issue.")
                    .arg(code)};
    }
}

} // namespace

struct SyncManager::Private
{
    SyncHandler* syncHandler = nullptr;
    QSettings settings{Startup::dataFilePath(QStringLiteral("sync.dat")), QSettings::IniFormat};
    bool active = false;
    bool checkLoginActive = false;
    bool resetPasswordActive = false;
    bool changePasswordActive = false;
    bool registrationActive = false;
    bool loggedIn = false;
    int syncProgress = 0;
    bool silent = false;
    bool syncFailed = false;
};

SyncManager* SyncManager::instance()
{
    static SyncManager* const manager = new SyncManager;
    return manager;
}

SyncManager::SyncManager()
    : d(std::make_unique<Private>())
{
    d->settings.beginGroup(QStringLiteral("Sync"));
    d->syncHandler = new SyncHandler(this);
    d->loggedIn =
        !Settings::instance()->clientLogin().isEmpty() && !Settings::instance()->clientPassword().isEmpty();
    connect(d->syncHandler, &SyncHandler::finished, this, &SyncManager::handleSyncFinished);
    connect(d->syncHandler, &SyncHandler::progressChanged, this, &SyncManager::handleProgressChanged);
    connect(d->syncHandler, &SyncHandler::networkError, this, &SyncManager::handleNetworkError);
    connect(d->syncHandler, &SyncHandler::serverError, this, [this](int code) {
        d->syncFailed = true;
        handleServerError(code, QString());
    });
    connect(d->syncHandler, &SyncHandler::buildInProjectsUpdated, this, &SyncManager::loadBuiltInProjectIds);
    connect(d->syncHandler, &SyncHandler::proxyAuthenticationRequired, this,
            &SyncManager::proxyAuthenticationRequired);
    loadBuiltInProjectIds();
}

SyncManager::~SyncManager() = default;

SyncHandler* SyncManager::syncHandler() const
{
    return d->syncHandler;
}

int SyncManager::syncProgress() const
{
    return d->syncProgress;
}

namespace {

// Runs one account call with its busy flag raised, and the reaction to its success.
void runAccountOperation(bool& flag, const std::function<void(bool)>& flagChanged,
                         const std::function<bool()>& call, const std::function<void()>& onSuccess)
{
    flag = true;
    flagChanged(true);
    if (call())
        onSuccess();
    flag = false;
    flagChanged(false);
}

} // namespace

void SyncManager::registerUser(const QString& login, const QString& password)
{
    if (login.isEmpty() || password.isEmpty() || d->registrationActive)
        return;
    runAccountOperation(
        d->registrationActive, [this](bool active) { emit registrationActiveChanged(active); },
        [&] { return d->syncHandler->registerUser(login, password); },
        [&] {
            Settings::instance()->setClientLogin(login);
            Settings::instance()->setClientPassword(password);
            updateLoggedIn();
            emit userRegistered();
        });
}

void SyncManager::checkLogin(const QString& login, const QString& password)
{
    if (login.isEmpty() || password.isEmpty() || d->checkLoginActive)
        return;
    runAccountOperation(
        d->checkLoginActive, [this](bool active) { emit checkLoginActiveChanged(active); },
        [&] { return d->syncHandler->checkLogin(login, password); },
        [&] {
            Settings::instance()->setClientLogin(login);
            Settings::instance()->setClientPassword(password);
            updateLoggedIn();
            emit checkLoginSuccessful();
        });
}

void SyncManager::resetPassword(const QString& login)
{
    if (login.isEmpty() || d->resetPasswordActive)
        return;
    runAccountOperation(
        d->resetPasswordActive, [this](bool active) { emit resetPasswordActiveChanged(active); },
        [&] { return d->syncHandler->resetPassword(login); }, [this] { emit resetPasswordSuccessful(); });
}

void SyncManager::changePassword(const QString& oldPassword, const QString& newPassword)
{
    if (oldPassword.isEmpty() || newPassword.isEmpty() || d->changePasswordActive || !d->loggedIn)
        return;
    const QString login = Settings::instance()->clientLogin();
    runAccountOperation(
        d->changePasswordActive, [this](bool active) { emit changePasswordActiveChanged(active); },
        [&] { return d->syncHandler->changePassword(login, oldPassword, newPassword); },
        [&] {
            Settings::instance()->setClientPassword(md5(newPassword));
            emit changePasswordSuccessful();
        });
}

void SyncManager::logout()
{
    if (!d->loggedIn)
        return;
    emit userIsAboutToLogout();
    if (!Helper::instance()->recreateDatabase()) {
        handleServerError(logoutErrorCode, QString());
        return;
    }
    Settings* settings = Settings::instance();
    settings->unsetClientLogin();
    settings->unsetClientPassword();
    settings->unsetRecentProjects();
    // The group stays open; clearing it empties the whole file, which holds nothing else.
    d->settings.clear();
    d->settings.sync();
    emit lastSyncDateTimeChanged(QDateTime());
    updateLoggedIn();
}

bool SyncManager::isCheckLoginActive() const
{
    return d->checkLoginActive;
}

bool SyncManager::isActive() const
{
    return d->active;
}

bool SyncManager::isLoggedIn() const
{
    return d->loggedIn;
}

bool SyncManager::isRegistrationActive() const
{
    return d->registrationActive;
}

bool SyncManager::resetPasswordActive() const
{
    return d->resetPasswordActive;
}

bool SyncManager::changePasswordActive() const
{
    return d->changePasswordActive;
}

QDateTime SyncManager::lastSyncDateTime()
{
    d->settings.sync();
    return d->settings.value(lastSyncDateTimeKey).toDateTime();
}

void SyncManager::start()
{
    if (!Settings::instance()->cloudSyncEnabled() || d->active)
        return;
    d->syncFailed = false;
    if (!d->syncHandler->start())
        return;
    setActive(true);
    handleProgressChanged(0);
    QLOG_INFO() << "Sync started";
}

void SyncManager::startSilent()
{
    if (!Settings::instance()->cloudSyncEnabled() || d->active)
        return;
    // Stays set until a run finishes, also when the handler refuses to start.
    d->silent = true;
    start();
}

void SyncManager::abort()
{
    if (d->active)
        d->syncHandler->abort();
}

void SyncManager::setActive(bool active)
{
    if (d->active == active)
        return;
    d->active = active;
    emit activeChanged(active);
}

void SyncManager::updateLoggedIn()
{
    const bool loggedIn =
        !Settings::instance()->clientLogin().isEmpty() && !Settings::instance()->clientPassword().isEmpty();
    d->loggedIn = loggedIn;
    emit loggedInChanged(loggedIn);
}

void SyncManager::loadBuiltInProjectIds()
{
    d->settings.sync();
    if (d->settings.contains(QStringLiteral("NB_ID")))
        PredefinedDataHelper::instance()->setNorvelBoxId(
            d->settings.value(QStringLiteral("NB_ID")).toString());
    if (d->settings.contains(QStringLiteral("OSA_ID")))
        PredefinedDataHelper::instance()->setOneStepActionsId(
            d->settings.value(QStringLiteral("OSA_ID")).toString());
}

void SyncManager::handleSyncFinished()
{
    if (!d->syncFailed && d->loggedIn) {
        const QDateTime now = QDateTime::currentDateTime();
        d->settings.setValue(lastSyncDateTimeKey, now);
        d->settings.sync();
        emit lastSyncDateTimeChanged(now);
    }
    d->silent = false;
    d->syncFailed = false;
    setActive(false);
    QLOG_INFO() << "Sync process finished!";
    QLOG_INFO() << "Sync finished";
}

void SyncManager::handleProgressChanged(int progress)
{
    if (d->syncProgress == progress)
        return;
    d->syncProgress = progress;
    emit progressChanged(progress);
}

void SyncManager::handleNetworkError()
{
    d->syncFailed = true;
    if (!d->silent)
        emit networkError(0);
}

void SyncManager::handleServerError(int code, const QString& text)
{
    if (code == 201 && d->loggedIn) {
        QLOG_ERROR() << "User's password has been changed on server. Destroying database...";
        logout();
        emit passwordChangedOutside();
        return;
    }
    if (d->silent) {
        QLOG_INFO() << "Server Error (silent mode is on): " << code << ".  " << text;
        return;
    }
    QLOG_INFO() << "Server Error: " << code << ".  " << text;
    if (d->changePasswordActive) {
        emit serverError(QObject::tr("Change Password Error"),
                         QObject::tr("Your current password is incorrect, please check."), code);
        return;
    }
    const QPair<QString, QString> message = serverErrorMessage(code);
    emit serverError(message.first, message.second, code);
}
