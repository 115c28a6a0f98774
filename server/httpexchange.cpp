#include "httpexchange.h"

#include <QDateTime>
#include <QJsonDocument>

namespace {

QJsonDocument readDocument(const httplib::Request& request)
{
    QJsonParseError error;
    return QJsonDocument::fromJson(QByteArray::fromStdString(request.body), &error);
}

QByteArray jsonString(const QString& text)
{
    // A one-element array is the shortest way to have Qt escape a string for JSON.
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

} // namespace

bool HttpExchange::readObject(const httplib::Request& request, QJsonObject* object)
{
    const QJsonDocument document = readDocument(request);
    *object = document.object();
    return document.isObject();
}

bool HttpExchange::readArray(const httplib::Request& request, QJsonArray* array)
{
    const QJsonDocument document = readDocument(request);
    *array = document.array();
    return document.isArray();
}

QByteArray HttpExchange::credentials(const httplib::Request& request, const char* scheme)
{
    const QByteArray header = QByteArray::fromStdString(request.get_header_value("Authorization"));
    const QByteArray prefix = QByteArray(scheme) + ' ';
    if (!header.startsWith(prefix))
        return QByteArray();
    return header.mid(prefix.size()).trimmed();
}

QString HttpExchange::remoteAddress(const httplib::Request& request)
{
    return QString::fromStdString(request.remote_addr);
}

void HttpExchange::replyOutcome(httplib::Response& response, const Outcome& outcome)
{
    QByteArray json = "{\"code\":" + QByteArray::number(outcome.code) +
                      ",\"text\":" + jsonString(outcome.text) +
                      ",\"server_time\":" + QByteArray::number(QDateTime::currentSecsSinceEpoch()) +
                      ",\"result\":" + outcome.resultJson + '}';
    replyJson(response, ResultCode::httpStatus(outcome.code), json);
}

void HttpExchange::replyDetail(httplib::Response& response, int status, const QString& detail)
{
    replyJson(response, status, "{\"detail\":" + jsonString(detail) + '}');
}

void HttpExchange::replyJson(httplib::Response& response, int status, const QByteArray& json)
{
    response.status = status;
    response.set_content(json.constData(), static_cast<size_t>(json.size()), "application/json");
}
