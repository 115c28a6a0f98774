#include "apioperation.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QPointer>

#include <cmath>
#include <limits>

struct ApiOperation::Private
{
    QPointer<QNetworkReply> reply;
    int networkErrorCode = 0;
    int errorCode = 0;
    QString errorText;
    QVariant result;
    int serverTime = 0;
    bool finished = false;
};

namespace {

// Whole numbers come back as int (qlonglong beyond its range), as the local store hands them out.
QVariant fromJsonNumber(double number)
{
    if (std::floor(number) != number)
        return number;
    if (std::fabs(number) <= std::numeric_limits<int>::max())
        return static_cast<int>(number);
    return static_cast<qlonglong>(number);
}

// Dates travel as ISO 8601 text in UTC; the store expects a QDateTime, or "" for no date.
QVariant fromJsonDate(const QJsonValue& value)
{
    const QString text = value.toString();
    if (text.isEmpty())
        return QString();
    return QDateTime::fromString(text, Qt::ISODate).toUTC();
}

QVariantMap fromJsonObject(const QJsonObject& object)
{
    QVariantMap map;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        if (it.key() == QLatin1String("START") || it.key() == QLatin1String("DUE"))
            map.insert(it.key(), fromJsonDate(it.value()));
        else if (it.value().isDouble())
            map.insert(it.key(), fromJsonNumber(it.value().toDouble()));
        else
            map.insert(it.key(), it.value().toVariant());
    }
    return map;
}

QVariant fromJsonResult(const QJsonValue& value)
{
    if (value.isDouble())
        return fromJsonNumber(value.toDouble());
    if (!value.isArray())
        return value.toVariant();
    QVariantList list;
    const QJsonArray array = value.toArray();
    list.reserve(array.size());
    for (const QJsonValue& element : array)
        list.append(element.isObject() ? QVariant(fromJsonObject(element.toObject()))
                                       : fromJsonResult(element));
    return list;
}

} // namespace

ApiOperation::ApiOperation(QNetworkReply* reply, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->reply = reply;
    connect(reply, &QNetworkReply::finished, this, &ApiOperation::handleReply);
}

ApiOperation::~ApiOperation()
{
    if (d->reply) {
        d->reply->abort();
        d->reply->deleteLater();
    }
}

int ApiOperation::networkErrorCode() const
{
    return d->networkErrorCode;
}

int ApiOperation::errorCode() const
{
    return d->errorCode;
}

QString ApiOperation::errorText() const
{
    return d->errorText;
}

QVariant ApiOperation::result() const
{
    return d->result;
}

int ApiOperation::serverTime() const
{
    return d->serverTime;
}

bool ApiOperation::isFinished() const
{
    return d->finished;
}

void ApiOperation::handleReply()
{
    QNetworkReply* reply = d->reply;
    const QJsonObject answer = QJsonDocument::fromJson(reply->readAll()).object();
    // The server answers its own refusals with an error status and the envelope: those are answers,
    // not network failures.
    if (answer.value(QStringLiteral("code")).isDouble()) {
        d->errorCode = answer.value(QStringLiteral("code")).toInt();
        d->errorText = answer.value(QStringLiteral("text")).toString();
        d->serverTime = static_cast<int>(answer.value(QStringLiteral("server_time")).toDouble());
        d->result = fromJsonResult(answer.value(QStringLiteral("result")));
    } else {
        d->networkErrorCode =
            reply->error() != QNetworkReply::NoError ? reply->error() : QNetworkReply::ProtocolFailure;
        d->errorText = reply->error() != QNetworkReply::NoError
                           ? reply->errorString()
                           : QStringLiteral("The server's answer cannot be read");
    }
    d->reply = nullptr;
    reply->deleteLater();
    d->finished = true;
    emit finished();
}
