#include "mailer.h"

#include "serverlog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QUuid>

#include <curl/curl.h>

#include <cstring>

namespace {

struct Upload
{
    const QByteArray* message;
    int offset = 0;
};

size_t readUpload(char* buffer, size_t size, size_t count, void* userData)
{
    auto* upload = static_cast<Upload*>(userData);
    const size_t left = static_cast<size_t>(upload->message->size() - upload->offset);
    const size_t chunk = std::min(left, size * count);
    std::memcpy(buffer, upload->message->constData() + upload->offset, chunk);
    upload->offset += static_cast<int>(chunk);
    return chunk;
}

// Header values never carry line breaks from user input into the message.
QByteArray headerValue(const QString& value)
{
    QString clean = value;
    clean.remove(QLatin1Char('\r')).remove(QLatin1Char('\n'));
    return clean.toUtf8();
}

} // namespace

Mailer::Mailer(Settings settings)
    : m_settings(std::move(settings))
{}

bool Mailer::send(const QString& to, const QString& subject, const QString& text) const
{
    const QByteArray message = compose(to, subject, text);
    if (m_settings.smtpUrl.isEmpty())
        return writeToOutbox(message);
    return sendBySmtp(to, message);
}

QByteArray Mailer::compose(const QString& to, const QString& subject, const QString& text) const
{
    const QString date = QLocale::c().toString(QDateTime::currentDateTimeUtc(),
                                               QStringLiteral("ddd, dd MMM yyyy hh:mm:ss +0000"));
    QByteArray message;
    message += "Date: " + date.toLatin1() + "\r\n";
    message += "From: " + headerValue(m_settings.from) + "\r\n";
    message += "To: " + headerValue(to) + "\r\n";
    message += "Subject: =?UTF-8?B?" + headerValue(subject).toBase64() + "?=\r\n";
    message +=
        "Message-ID: <" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + "@norvel-server>\r\n";
    message += "MIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n";
    message += "Content-Transfer-Encoding: base64\r\n\r\n";
    const QByteArray body = text.toUtf8().toBase64();
    for (int offset = 0; offset < body.size(); offset += 76)
        message += body.mid(offset, 76) + "\r\n";
    return message;
}

bool Mailer::writeToOutbox(const QByteArray& message) const
{
    if (!QDir().mkpath(m_settings.outboxDirectory))
        return false;
    const QString name = QStringLiteral("%1-%2.eml")
                             .arg(QDateTime::currentMSecsSinceEpoch())
                             .arg(QUuid::createUuid().toString(QUuid::WithoutBraces));
    QFile file(QDir(m_settings.outboxDirectory).filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(message) != message.size()) {
        qCWarning(serverLog) << "Cannot write mail to" << file.fileName();
        return false;
    }
    qCInfo(serverLog) << "Mail written to" << file.fileName();
    return true;
}

bool Mailer::sendBySmtp(const QString& to, const QByteArray& message) const
{
    CURL* curl = curl_easy_init();
    if (!curl)
        return false;
    Upload upload{&message};
    const QByteArray url = m_settings.smtpUrl.toUtf8();
    const QByteArray user = m_settings.user.toUtf8();
    const QByteArray password = m_settings.password.toUtf8();
    const QByteArray from = QByteArray("<") + headerValue(m_settings.from) + ">";
    const QByteArray recipient = QByteArray("<") + headerValue(to) + ">";
    curl_slist* recipients = curl_slist_append(nullptr, recipient.constData());
    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    if (!user.isEmpty()) {
        curl_easy_setopt(curl, CURLOPT_USERNAME, user.constData());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, password.constData());
    }
    curl_easy_setopt(curl, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_TRY));
    curl_easy_setopt(curl, CURLOPT_MAIL_FROM, from.constData());
    curl_easy_setopt(curl, CURLOPT_MAIL_RCPT, recipients);
    curl_easy_setopt(curl, CURLOPT_READFUNCTION, readUpload);
    curl_easy_setopt(curl, CURLOPT_READDATA, &upload);
    curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, 30L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    const CURLcode result = curl_easy_perform(curl);
    curl_slist_free_all(recipients);
    curl_easy_cleanup(curl);
    if (result != CURLE_OK) {
        qCWarning(serverLog) << "Cannot send mail:" << curl_easy_strerror(result);
        return false;
    }
    qCInfo(serverLog) << "Mail sent to the mail server";
    return true;
}
