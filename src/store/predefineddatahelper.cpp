#include "predefineddatahelper.h"

#include "core/logmanager.h"
#include "core/settings.h"
#include "core/startup.h"
#include "store/datamanager.h"

#include <QSettings>
#include <QVector>

#include <functional>

namespace {
// A demo object: its name, its Russian name, and the seed number the server knows it by, if any.
struct DemoObject
{
    const char* name;
    const char* russianName;
    const char* seedKey;
};

const QVector<DemoObject> demoFolders = {
    {"Business", "Работа", "1"},
    {"Personal", "Личное", "2"},
    // Not in the server's seed list, so it has no number.
    {"Side projects", "Сайд-проекты", nullptr},
};

// Created in this order; the numbers are the server's and are not ascending.
const QVector<DemoObject> demoContexts = {
    {"@home (demo context)", "Дома (демо-контекст)", "300"},
    {"@office (demo context)", "В офисе (демо-контекст)", "301"},
    {"@garage (demo context)", "В гараже (демо-контекст)", "303"},
    {"In the morning (demo context)", "С утра (демо-контекст)", "302"},
    {"If I have some time (demo context)", "Если есть свободное время (демо-контекст)", "304"},
    {"Online (demo context)", "В сети (демо-контекст)", "305"},
};

const QString predefinedIdsKey = QStringLiteral("predefined_ids");

bool isApplicationLanguageRussian()
{
    const bool russian = Settings::instance()->applicationLanguage() == QLatin1String("ru");
    QLOG_INFO() << "Is current app lang is Russian: " << (russian ? "true" : "false");
    return russian;
}

// Creates each object under its name in the application language, records its seed number, and
// commits them together. Returns the new ids in order.
QStringList createDemoObjects(QSettings& settings, const QVector<DemoObject>& objects,
                              const std::function<void(const QString&)>& create)
{
    const bool russian = isApplicationLanguageRussian();
    DataManager* dataManager = DataManager::instance();
    QStringList ids;
    // The results are not looked at: a failed insert leaves the previous id as the last created one.
    for (const DemoObject& object : objects) {
        create(QString::fromUtf8(russian ? object.russianName : object.name));
        ids.append(dataManager->lastCreatedObjectId());
        if (object.seedKey) {
            settings.setValue(QString::fromLatin1(object.seedKey), ids.last());
            settings.sync();
        }
    }
    dataManager->commitChanges();
    return ids;
}
} // namespace

struct PredefinedDataHelper::Private
{
    QString norvelBoxId;
    QString oneStepActionsId;
    std::unique_ptr<QSettings> settings;
};

PredefinedDataHelper::PredefinedDataHelper(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    const QString filePath = Startup::dataFilePath(QStringLiteral("predefined_objects.dat"));
    d->settings = std::make_unique<QSettings>(filePath, QSettings::IniFormat);
    unsetNorvelBoxId();
    unsetOneStepActionsId();
}

PredefinedDataHelper::~PredefinedDataHelper() = default;

PredefinedDataHelper* PredefinedDataHelper::instance()
{
    static PredefinedDataHelper* helper = new PredefinedDataHelper;
    return helper;
}

QString PredefinedDataHelper::norvelBoxId() const
{
    return d->norvelBoxId;
}

void PredefinedDataHelper::setNorvelBoxId(const QString& id)
{
    if (d->norvelBoxId == id)
        return;
    d->norvelBoxId = id;
    emit norvelBoxIdChanged(id);
}

QString PredefinedDataHelper::oneStepActionsId() const
{
    return d->oneStepActionsId;
}

void PredefinedDataHelper::setOneStepActionsId(const QString& id)
{
    if (d->oneStepActionsId == id)
        return;
    d->oneStepActionsId = id;
    emit oneStepActionsIdChanged(id);
}

void PredefinedDataHelper::unsetNorvelBoxId()
{
    d->norvelBoxId = QString::fromLatin1(defaultNorvelBoxId);
    emit norvelBoxIdChanged(d->norvelBoxId);
}

void PredefinedDataHelper::unsetOneStepActionsId()
{
    d->oneStepActionsId = QString::fromLatin1(defaultOneStepActionsId);
    emit oneStepActionsIdChanged(d->oneStepActionsId);
}

void PredefinedDataHelper::createPredefinedFolders()
{
    QLOG_INFO() << "Creating predefined folders...";
    const QStringList ids = createDemoObjects(*d->settings, demoFolders, [](const QString& name) {
        DataManager::instance()->createProjectLocally({{QStringLiteral("NAME"), name},
                                                       {QStringLiteral("FOLDER"), true},
                                                       {QStringLiteral("CONTEXT"), QString()},
                                                       {QStringLiteral("PARENT"), QString()}});
    });
    recordCreatedObjects(ids, QStringLiteral("folders"));
}

bool PredefinedDataHelper::predefinedFoldersCreated()
{
    return d->settings->value(QStringLiteral("folders_created"), false).toBool();
}

void PredefinedDataHelper::createPredefinedContexts()
{
    QLOG_INFO() << "Creating predefined contexts...";
    const QStringList ids = createDemoObjects(*d->settings, demoContexts, [](const QString& name) {
        DataManager::instance()->createContextLocally(
            {{QStringLiteral("NAME"), name}, {QStringLiteral("PARENT"), QString()}});
    });
    recordCreatedObjects(ids, QStringLiteral("contexts"));
}

bool PredefinedDataHelper::predefinedContextsCreated()
{
    return d->settings->value(QStringLiteral("contexts_created"), false).toBool();
}

void PredefinedDataHelper::recordCreatedObjects(const QStringList& ids, const QString& name)
{
    // Splitting the empty first value keeps one empty part, so the list begins with a comma; the
    // readers of the list do not mind.
    QStringList predefinedIds = d->settings->value(predefinedIdsKey).toString().split(QLatin1Char(','));
    predefinedIds.append(ids);
    d->settings->setValue(predefinedIdsKey, predefinedIds.join(QLatin1Char(',')));
    d->settings->setValue(QStringLiteral("%1_created").arg(name), true);
    d->settings->sync();
    QLOG_INFO() << "Predefined objects successfully saved!";
}
