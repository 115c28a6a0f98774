#pragma once

#include "resultcode.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <httplib.h>

// Reading requests and writing answers the same way on every route.
namespace HttpExchange {
// The body as a JSON object or array; false when it is neither.
bool readObject(const httplib::Request& request, QJsonObject* object);
bool readArray(const httplib::Request& request, QJsonArray* array);
// The value of an "Authorization" header of the given scheme ("Basic", "Token"), or empty.
QByteArray credentials(const httplib::Request& request, const char* scheme);
QString remoteAddress(const httplib::Request& request);

// The revision protocol's envelope: {"code", "text", "server_time", "result"}.
void replyOutcome(httplib::Response& response, const Outcome& outcome);
// The REST side's error form: {"detail"}.
void replyDetail(httplib::Response& response, int status, const QString& detail);
void replyJson(httplib::Response& response, int status, const QByteArray& json);
} // namespace HttpExchange
