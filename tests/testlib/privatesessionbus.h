#pragma once

#include <QProcess>
#include <QString>

// A D-Bus session daemon of the test's own, so that D-Bus code is exercised against a real bus
// without reaching the desktop session of whoever runs the tests. The daemon ends with the object.
class PrivateSessionBus
{
public:
    PrivateSessionBus();
    ~PrivateSessionBus();
    PrivateSessionBus(const PrivateSessionBus&) = delete;
    PrivateSessionBus& operator=(const PrivateSessionBus&) = delete;

    // Empty when the daemon could not be started.
    QString address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};
