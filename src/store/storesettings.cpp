#include "storesettings.h"

#include "core/clock.h"
#include "core/startup.h"
#include "store/dataobjectconverter.h"

#include <QSettings>

namespace {
const int defaultTrashDays = 14;

QVariant settingsValue(const QString& key, const QVariant& defaultValue = QVariant())
{
    const QSettings settings(Startup::dataFilePath(QStringLiteral("settings.dat")), QSettings::IniFormat);
    return settings.value(key, defaultValue);
}
} // namespace

uint StoreSettings::trashHorizon()
{
    const uint emptiedAt = settingsValue(QStringLiteral("trash_cleanup_timestamp")).toUInt();
    if (emptiedAt != 0)
        return emptiedAt;
    // Until the trash is first emptied it keeps the last two weeks.
    return DataObjectConverter::toUnixTime(Clock::currentDateTime().addDays(-defaultTrashDays));
}

bool StoreSettings::showProjectsInDailyPlan()
{
    return settingsValue(QStringLiteral("show_projects_in_daily_plan"), true).toBool();
}

QStringList StoreSettings::predefinedIds()
{
    const QSettings settings(Startup::dataFilePath(QStringLiteral("predefined_objects.dat")),
                             QSettings::IniFormat);
    // The stored list starts with a comma; the empty entry it yields matches no id.
    return settings.value(QStringLiteral("predefined_ids")).toString().split(QLatin1Char(','));
}

QString StoreSettings::defaultStartTime()
{
    return settingsValue(QStringLiteral("default_start_time"), QStringLiteral("8:00")).toString();
}
