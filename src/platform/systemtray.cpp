#include "systemtray.h"

#include <QAction>
#include <QIcon>
#include <QMenu>

struct SystemTray::Private
{
    QSystemTrayIcon icon;
    QMenu menu;
    QAction* toggleWindow = nullptr;
    QAction* quit = nullptr;
    bool windowVisible = false;
};

SystemTray::SystemTray(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->toggleWindow = d->menu.addAction(QString());
    d->menu.addSeparator();
    d->quit = d->menu.addAction(QString());
    connect(d->toggleWindow, &QAction::triggered, this, &SystemTray::toggleWindowRequested);
    connect(d->quit, &QAction::triggered, this, &SystemTray::quitRequested);
    connect(&d->icon, &QSystemTrayIcon::activated, this, &SystemTray::activated);
    retranslate();

    d->icon.setIcon(QIcon(QStringLiteral(":/icons/norvel.svg")));
    d->icon.setToolTip(QStringLiteral("Norvel"));
    d->icon.setContextMenu(&d->menu);
    d->icon.show();
}

SystemTray::~SystemTray() = default;

bool SystemTray::available()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void SystemTray::setWindowVisible(bool visible)
{
    d->windowVisible = visible;
    retranslate();
}

void SystemTray::retranslate()
{
    d->toggleWindow->setText(d->windowVisible ? tr("Hide Norvel") : tr("Show Norvel"));
    d->quit->setText(tr("Quit Norvel"));
}
