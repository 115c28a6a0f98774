#include "proxyauthdialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

ProxyAuthDialog::ProxyAuthDialog(QWidget* parent)
    : QDialog(parent)
    , m_description(new QLabel(this))
    , m_username(new QLineEdit(this))
    , m_password(new QLineEdit(this))
    , m_rememberPassword(new QCheckBox(tr("Remember my password"), this))
{
    setWindowTitle(tr("Authentication Required"));
    setWindowModality(Qt::ApplicationModal);
    setFixedSize(320, 150);
    m_username->setObjectName(QStringLiteral("leUsername"));
    m_password->setObjectName(QStringLiteral("lePassword"));
    m_password->setEchoMode(QLineEdit::Password);
    m_rememberPassword->setObjectName(QStringLiteral("cbRememberPassword"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* fields = new QFormLayout;
    fields->addRow(tr("Username:"), m_username);
    fields->addRow(tr("Password:"), m_password);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_description);
    layout->addLayout(fields);
    layout->addWidget(m_rememberPassword);
    layout->addWidget(buttons);
}

void ProxyAuthDialog::setProxyName(const QString& proxyName)
{
    m_description->setText(tr("Connect to proxy %1 using:").arg(proxyName));
}

QString ProxyAuthDialog::username() const
{
    return m_username->text();
}

QString ProxyAuthDialog::password() const
{
    return m_password->text();
}

bool ProxyAuthDialog::rememberPassword() const
{
    return m_rememberPassword->isChecked();
}
