#pragma once

#include <QString>

// Sends the server's few messages by SMTP, or, with no mail server configured, writes each one as an
// .eml file into the outbox folder for an administrator (or a test) to pick up.
class Mailer
{
public:
    struct Settings
    {
        QString smtpUrl;
        QString user;
        QString password;
        QString from;
        QString outboxDirectory;
    };

    explicit Mailer(Settings settings);

    bool send(const QString& to, const QString& subject, const QString& text) const;

private:
    QByteArray compose(const QString& to, const QString& subject, const QString& text) const;
    bool writeToOutbox(const QByteArray& message) const;
    bool sendBySmtp(const QString& to, const QByteArray& message) const;

    Settings m_settings;
};
