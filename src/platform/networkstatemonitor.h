#pragma once

#include <QDBusConnection>
#include <QObject>

// Tells when the machine gets its internet connection back, from NetworkManager's StateChanged signal
// on the given bus (the system bus in the program). Without a bus it stays silent.
class NetworkStateMonitor : public QObject
{
    Q_OBJECT

public:
    // NetworkManager's NM_STATE_CONNECTED_GLOBAL: a connection that reaches the internet.
    static constexpr uint connectedGlobalState = 70;

    explicit NetworkStateMonitor(const QDBusConnection& bus, QObject* parent = nullptr);
    ~NetworkStateMonitor() override;

signals:
    // On each change into the online state, never while it lasts.
    void wentOnline();

private slots:
    void handleStateChanged(uint state);

private:
    uint m_state = 0;
};
