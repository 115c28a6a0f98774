#pragma once

#include <QString>

// The codes of the revision protocol. The client acts on 100, 103, 104, 106, 107 and 110 and shows the
// account codes to the user; the others only end the call.
namespace ResultCode {
constexpr int Success = -1;
constexpr int ObjectMissing = 100;
constexpr int BadRequest = 101;
constexpr int NotAuthenticated = 102;
constexpr int BadReference = 103;
constexpr int ObjectExists = 104;
constexpr int TooManyAttempts = 105;
constexpr int RevisionAhead = 106;
constexpr int NewerObject = 107;
constexpr int ClientTooOld = 110;
constexpr int UnknownLogin = 200;
constexpr int WrongPassword = 201;
constexpr int LoginTaken = 202;
constexpr int InternalError = 500;

// The HTTP status that goes with a code, so that plain HTTP tools see failures as failures.
int httpStatus(int code);
} // namespace ResultCode

// What a protocol call ends in: a code with its text, and on success the JSON text of the result.
struct Outcome
{
    int code = ResultCode::Success;
    QString text;
    QByteArray resultJson = "null";

    static Outcome success(const QByteArray& resultJson)
    {
        return {ResultCode::Success, QString(), resultJson};
    }
    static Outcome failure(int code, const QString& text) { return {code, text, "null"}; }
    bool succeeded() const { return code == ResultCode::Success; }
};
