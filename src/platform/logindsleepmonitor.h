#pragma once

#include <QDBusConnection>
#include <QObject>

// Tells when the computer has woken up, from logind's PrepareForSleep signal on the given bus
// (the system bus in the program). Without a bus it stays silent.
class LogindSleepMonitor : public QObject
{
    Q_OBJECT

public:
    explicit LogindSleepMonitor(const QDBusConnection& bus, QObject* parent = nullptr);
    ~LogindSleepMonitor() override;

signals:
    // Once per wake, after the sleep that logind announced.
    void wokeUp();

private slots:
    void handlePrepareForSleep(bool goingToSleep);

private:
    bool m_sleeping = false;
};
