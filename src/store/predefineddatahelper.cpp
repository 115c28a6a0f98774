#include "predefineddatahelper.h"

#include <QSettings>
#include <QStandardPaths>

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
    const QString filePath = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                             QStringLiteral("/predefined_objects.dat");
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
