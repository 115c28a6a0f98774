#pragma once

#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

// The icon in the desktop's notification area with its small menu. Where the desktop has no such
// area, available() is false and the window must stay reachable by other means.
class SystemTray : public QObject
{
    Q_OBJECT

public:
    explicit SystemTray(QObject* parent = nullptr);
    ~SystemTray() override;

    static bool available();
    // Names the show-or-hide entry after what it would do now.
    void setWindowVisible(bool visible);
    // Puts the menu's texts into the current language.
    void retranslate();

signals:
    void toggleWindowRequested();
    void quitRequested();
    void activated(QSystemTrayIcon::ActivationReason reason);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
