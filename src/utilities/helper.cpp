#include "helper.h"

#include "core/clock.h"
#include "core/logmanager.h"
#include "core/settings.h"
#include "core/startup.h"
#include "models/searchsortfiltermodel.h"
#include "platform/desktopmailhandler.h"
#include "platform/launcherbadge.h"
#include "store/databasehandler.h"
#include "store/predefineddatahelper.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QQmlEngine>
#include <QSettings>
#include <QTimer>
#include <QTouchDevice>

#include <algorithm>

namespace {
const QString russian = QStringLiteral("ru");

void forgetPredefinedObjects()
{
    QSettings predefinedObjects(Startup::dataFilePath(QStringLiteral("predefined_objects.dat")),
                                QSettings::IniFormat);
    predefinedObjects.clear();
    predefinedObjects.setValue(QStringLiteral("folders_created"), false);
    predefinedObjects.setValue(QStringLiteral("contexts_created"), false);
    predefinedObjects.sync();
}

bool hasClipboardText()
{
    return !QGuiApplication::clipboard()->text().isEmpty();
}
} // namespace

struct Helper::Private
{
    QString databaseFilePath = Startup::dataFilePath(QStringLiteral("norvel_data.db"));
    LauncherBadge badge;
    bool clipboardHasText = hasClipboardText();
};

Helper* Helper::instance()
{
    static Helper* const helper = [] {
        auto* created = new Helper;
        // Handed to QML without a parent: keep the engine from ever deleting it.
        QQmlEngine::setObjectOwnership(created, QQmlEngine::CppOwnership);
        return created;
    }();
    return helper;
}

Helper::Helper(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    QLOG_INFO() << "Database path updated: " << d->databaseFilePath;
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &Helper::updateClipboardHasText);
}

Helper::~Helper() = default;

QString Helper::databaseFilePath() const
{
    return d->databaseFilePath;
}

bool Helper::databaseExists() const
{
    return QFile::exists(d->databaseFilePath);
}

bool Helper::unpackDatabase()
{
    if (!QFile::copy(QStringLiteral(":/norvel_data.db"), d->databaseFilePath))
        return false;
    QFile::setPermissions(d->databaseFilePath, QFileDevice::Permissions(0x6666));
    return true;
}

bool Helper::recreateDatabase()
{
    DatabaseHandler* database = DatabaseHandler::instance();
    QLOG_INFO() << "Recreating the database...";
    database->disconnectDatabase();

    QLOG_INFO() << "Resettings ids of inbox projects...";
    PredefinedDataHelper::instance()->unsetNorvelBoxId();
    PredefinedDataHelper::instance()->unsetOneStepActionsId();
    QLOG_INFO() << "Disconnected from database.";

    if (!QFile::remove(d->databaseFilePath)) {
        QLOG_ERROR() << "Unable to remove database file! Path: " << d->databaseFilePath;
        unpackDatabase();
        QLOG_ERROR() << "Unable to unpack database file!";
        return false;
    }
    if (!unpackDatabase())
        return false;

    QLOG_INFO() << "Connecting to new created database...";
    if (!database->connectDatabase(d->databaseFilePath)) {
        QLOG_ERROR() << "Unable to connect to the database!";
        return database->isConnected();
    }

    forgetPredefinedObjects();
    // The indexes of a normal start are left to the next start.
    database->createCalendarInfoTable();
    return database->isConnected();
}

QDateTime Helper::toUtcDateTime(const QVariant& dateTime) const
{
    const QDateTime utc = dateTime.toDateTime().toUTC();
    if (!utc.isValid())
        return QDateTime();
    return QDateTime(utc.date(), utc.time(), Qt::LocalTime);
}

QString Helper::toUtcString(const QVariant& dateTime) const
{
    return toUtcString(dateTime, Settings::instance()->applicationLanguage());
}

QString Helper::toUtcString(const QVariant& dateTime, const QString& language) const
{
    const QDateTime wallClock = toUtcDateTime(dateTime);
    if (!wallClock.isValid())
        return QString();
    const bool isRussian = language == russian;
    const QLocale locale(isRussian ? QLocale::Russian : QLocale::English);

    QString datePart;
    switch (Clock::currentDate().daysTo(wallClock.date())) {
    case 0:
        datePart = tr("Today");
        break;
    case 1:
        datePart = tr("Tomorrow");
        break;
    case -1:
        datePart = tr("Yesterday");
        break;
    default:
        datePart = locale.toString(wallClock.date(), isRussian ? QStringLiteral("d MMMM, yyyy")
                                                               : QStringLiteral("MMMM d, yyyy"));
    }
    const QString timePart =
        locale.toString(wallClock.time(), isRussian ? QStringLiteral("h:mm") : QStringLiteral("h:mm AP"));
    return (isRussian ? QStringLiteral("%1 %2") : QStringLiteral("%1, %2")).arg(datePart, timePart);
}

QString Helper::objectDisplayName(const QVariantMap& object) const
{
    return SearchSortFilterModel::displayedName(object);
}

QVariantList Helper::handleRecentProjectList(const QVariantList& list, const QVariantMap& newProject) const
{
    const QVariant newId = newProject.value(QStringLiteral("ID"));
    QVariantList recent{newProject};
    bool repeated = false;
    for (const QVariant& entry : list) {
        if (!repeated && entry.toMap().value(QStringLiteral("ID")) == newId) {
            recent.first() = entry;
            repeated = true;
        } else {
            recent.append(entry);
        }
    }
    return recent.mid(0, maxRecentProjects);
}

QVariant Helper::getTemporaryTimer() const
{
    auto* timer = new QTimer;
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    // The timer ends itself; the QML garbage collector must not end it first while it still runs.
    QQmlEngine::setObjectOwnership(timer, QQmlEngine::CppOwnership);
    return QVariant::fromValue<QObject*>(timer);
}

bool Helper::clipboardHasText() const
{
    return d->clipboardHasText;
}

void Helper::updateClipboardHasText()
{
    const bool hasText = hasClipboardText();
    if (hasText == d->clipboardHasText)
        return;
    d->clipboardHasText = hasText;
    emit clipboardHasTextChanged();
}

bool Helper::isTouchDeviceAvailable() const
{
    const QList<const QTouchDevice*> devices = QTouchDevice::devices();
    return std::any_of(devices.cbegin(), devices.cend(), [](const QTouchDevice* device) {
        return device->type() == QTouchDevice::TouchScreen;
    });
}

void Helper::setBadgeLabelTaskCount(int count)
{
    d->badge.setCount(count);
}

bool Helper::hasDefaultMailClient() const
{
    return !DesktopMailHandler::defaultHandler().isEmpty();
}
