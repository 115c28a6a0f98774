// A second installation of Norvel for the sync tests, since the data manager exists once per
// process. The caller points HOME and the XDG directories at the installation's own data. Arguments:
//   <server url> <login> <md5 password> sync|complete [ids...]
// It logs in when needed, completes the first id for "complete", runs one sync and prints the
// stored objects with the given ids as one JSON object keyed by id.
#include "core/settings.h"
#include "core/startup.h"
#include "store/datamanager.h"

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTextStream>

namespace {

QVariantMap storedObject(DataManager* data, const QString& id)
{
    for (const QVariantMap& object :
         {data->getTaskById(id), data->getProjectById(id), data->getContextById(id)}) {
        if (!object.isEmpty())
            return object;
    }
    return QVariantMap();
}

bool logIn(DataManager* data, const QString& login, const QString& password)
{
    if (data->isUserLoggedIn())
        return true;
    QSignalSpy succeeded(data, &DataManager::checkLoginSuccessful);
    data->checkLogin(login, password);
    return succeeded.wait(20000);
}

bool completeTask(DataManager* data, const QString& id)
{
    QVariantMap task = data->getTaskById(id);
    task.insert(QStringLiteral("STATE"), 2);
    return data->updateTaskLocally(task) && data->commitChanges();
}

bool syncOnce(DataManager* data)
{
    QSignalSpy activeChanged(data, &DataManager::syncActiveChanged);
    data->startSync();
    while (activeChanged.isEmpty() || activeChanged.last().first().toBool()) {
        if (!activeChanged.wait(60000))
            return false;
    }
    // What the sync left open (the retired seeds of a new account) is the interface's to confirm.
    data->commitChanges();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Kelmora"));
    QCoreApplication::setApplicationName(QStringLiteral("Norvel"));
    const QStringList arguments = app.arguments().mid(1);
    if (arguments.size() < 4)
        return 2;
    Settings::instance()->setServerUrl(arguments.at(0));
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    Startup::prepareDatabase();
    Settings::instance()->setCloudSyncEnabled(true);
    DataManager* data = DataManager::instance();
    if (!logIn(data, arguments.at(1), arguments.at(2)))
        return 3;
    const QStringList ids = arguments.mid(4);
    if (arguments.at(3) == QLatin1String("complete") && !completeTask(data, ids.value(0)))
        return 4;
    if (!syncOnce(data))
        return 5;
    QJsonObject objects;
    for (const QString& id : ids)
        objects.insert(id, QJsonObject::fromVariantMap(storedObject(data, id)));
    QTextStream(stdout) << QJsonDocument(objects).toJson(QJsonDocument::Compact) << '\n';
    return 0;
}
