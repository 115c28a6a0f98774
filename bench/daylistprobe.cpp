#include "daylistprobe.h"

#include "core/clock.h"
#include "models/listmodel.h"
#include "models/sortmodel.h"
#include "store/datamanager.h"
#include "utilities/helper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <cstdio>

namespace {
const char* const peakLabel = "peak_kib ";

// The high-water mark of this process's own memory. getrusage's ru_maxrss would not do: a process
// started from a large one inherits that one's peak at its start.
long peakResidentKib()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}
} // namespace

long DayListProbe::peakKibWithDayList(const QString& databasePath)
{
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(databaseVariable), databasePath);
    probe.setProcessEnvironment(environment);
    probe.start(QCoreApplication::applicationFilePath(), QStringList());
    if (!probe.waitForFinished(120000) || probe.exitCode() != 0)
        return -1;
    const QString output = QString::fromLatin1(probe.readAllStandardOutput());
    const int label = output.indexOf(QLatin1String(peakLabel));
    if (label < 0)
        return -1;
    return output.mid(label + int(qstrlen(peakLabel))).trimmed().toLong();
}

int DayListProbe::runInThisProcess()
{
    const QString source = qEnvironmentVariable(databaseVariable);
    const QString target = Helper::instance()->databaseFilePath();
    if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(source, target))
        return 1;
    const QDate today = Clock::currentDate();
    ListModel list([today] { return DataManager::instance()->getDayTasks(today); });
    SortModel sortModel;
    sortModel.setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
    sortModel.setModelType(SortingNamespace::ListTypeDailyPlan, today.toString(QStringLiteral("ddMMyyyy")));
    sortModel.setSourceModel(&list);
    const long peakKib = peakResidentKib();
    if (sortModel.rowCount() == 0 || peakKib < 0)
        return 1;
    std::printf("%s%ld\n", peakLabel, peakKib);
    return 0;
}
