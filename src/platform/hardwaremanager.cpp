#include "hardwaremanager.h"

#include "platform/logindsleepmonitor.h"
#include "platform/networkstatemonitor.h"

#include <QDBusConnection>

struct HardwareManager::Private
{
    explicit Private(const QDBusConnection& bus)
        : sleepMonitor(bus)
        , networkMonitor(bus)
    {}

    LogindSleepMonitor sleepMonitor;
    NetworkStateMonitor networkMonitor;
};

HardwareManager* HardwareManager::instance()
{
    static HardwareManager* const manager = new HardwareManager(QDBusConnection::systemBus());
    return manager;
}

HardwareManager::HardwareManager(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(bus))
{
    connect(&d->sleepMonitor, &LogindSleepMonitor::wokeUp, this, &HardwareManager::computerWokeUp);
    connect(&d->networkMonitor, &NetworkStateMonitor::wentOnline, this,
            &HardwareManager::internetConnectionOnline);
}

HardwareManager::~HardwareManager() = default;
