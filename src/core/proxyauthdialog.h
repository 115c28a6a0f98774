#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;

// Asks for the user name and password of a proxy that wants them.
class ProxyAuthDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ProxyAuthDialog(QWidget* parent = nullptr);

    // proxyName is shown as "host:port".
    void setProxyName(const QString& proxyName);
    QString username() const;
    QString password() const;
    bool rememberPassword() const;

private:
    QLabel* m_description;
    QLineEdit* m_username;
    QLineEdit* m_password;
    QCheckBox* m_rememberPassword;
};
