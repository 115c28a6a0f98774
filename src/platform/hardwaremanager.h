#pragma once

#include <QObject>

#include <memory>

class QDBusConnection;

// What the machine tells about itself that matters for sync: it woke up, or it is online again.
// Lives on the interface thread.
class HardwareManager : public QObject
{
    Q_OBJECT

public:
    // Listens on the system bus.
    static HardwareManager* instance();
    // Listens for logind and NetworkManager on the given bus; a bus that is not connected gives no
    // signal and no error.
    explicit HardwareManager(const QDBusConnection& bus, QObject* parent = nullptr);
    ~HardwareManager() override;

signals:
    void internetConnectionOnline();
    void computerWokeUp();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
