#include "networkstatemonitor.h"

NetworkStateMonitor::NetworkStateMonitor(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
{
    if (!bus.isConnected())
        return;
    QDBusConnection(bus).connect(QStringLiteral("org.freedesktop.NetworkManager"),
                                 QStringLiteral("/org/freedesktop/NetworkManager"),
                                 QStringLiteral("org.freedesktop.NetworkManager"),
                                 QStringLiteral("StateChanged"), this, SLOT(handleStateChanged(uint)));
}

NetworkStateMonitor::~NetworkStateMonitor() = default;

void NetworkStateMonitor::handleStateChanged(uint state)
{
    const bool cameOnline = state == connectedGlobalState && m_state != connectedGlobalState;
    m_state = state;
    if (cameOnline)
        emit wentOnline();
}
