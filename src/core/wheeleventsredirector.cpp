#include "wheeleventsredirector.h"

#include <QCoreApplication>
#include <QWheelEvent>

WheelEventsRedirector::WheelEventsRedirector(QObject* parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

QObject* WheelEventsRedirector::redirectTo() const
{
    return m_redirectTo;
}

void WheelEventsRedirector::setRedirectTo(QObject* target)
{
    if (m_redirectTo == target)
        return;
    m_redirectTo = target;
    emit redirectToChanged();
}

bool WheelEventsRedirector::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Wheel || !m_redirectTo || watched == m_redirectTo)
        return false;
    const auto* wheel = static_cast<QWheelEvent*>(event);
    const QPointF origin(0, 0);
    QCoreApplication::postEvent(m_redirectTo,
                                new QWheelEvent(origin, origin, wheel->pixelDelta(), wheel->angleDelta(),
                                                wheel->buttons(), wheel->modifiers(), wheel->phase(),
                                                wheel->inverted()));
    return true;
}
