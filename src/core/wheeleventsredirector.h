#pragma once

#include <QObject>
#include <QPointer>

// Sends every mouse wheel turn to one chosen object while one is chosen, wherever the pointer is:
// an open popup list scrolls even when the wheel turns over the page behind it.
class WheelEventsRedirector : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QObject* redirectTo READ redirectTo WRITE setRedirectTo NOTIFY redirectToChanged)

public:
    // Watches the whole application from the moment it exists.
    explicit WheelEventsRedirector(QObject* parent = nullptr);

    QObject* redirectTo() const;
    void setRedirectTo(QObject* target);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void redirectToChanged();

private:
    QPointer<QObject> m_redirectTo;
};
