#pragma once

#include <QObject>

// Tells when the system's wall clock is set: by hand, or by time synchronisation making a jump. Linux reports this to a real-time timer that asks to be cancelled on a change,
// so nothing is polled. Where such a timer cannot be had, it stays silent.
class SystemClockMonitor : public QObject
{
    Q_OBJECT

public:
    explicit SystemClockMonitor(QObject* parent = nullptr);
    ~SystemClockMonitor() override;

    bool isMonitoring() const { return m_descriptor >= 0; }

signals:
    void clockChanged();

private:
    bool arm();
    void handleActivated();

    int m_descriptor = -1;
};
