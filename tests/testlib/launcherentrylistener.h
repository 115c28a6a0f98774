#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>

// Listens on a bus for the launcher-entry updates that docks and panels receive, and repeats each
// one as the signal updated, ready for a QSignalSpy.
class LauncherEntryListener : public QObject
{
    Q_OBJECT

public:
    explicit LauncherEntryListener(const QString& busAddress);
    ~LauncherEntryListener() override;

    bool isListening() const { return m_listening; }

signals:
    void updated(const QString& applicationUri, const QVariantMap& properties);

public slots:
    // Public only because the bus delivers to public slots alone.
    void receive(const QString& applicationUri, const QVariantMap& properties);

private:
    QDBusConnection m_connection;
    bool m_listening = false;
};
