#include "resultcode.h"

int ResultCode::httpStatus(int code)
{
    switch (code) {
    case Success:
        return 200;
    case ObjectMissing:
        return 404;
    case BadRequest:
        return 400;
    case NotAuthenticated:
    case UnknownLogin:
    case WrongPassword:
        // Not 401: that status asks HTTP clients for a challenge the protocol does not use.
        return 403;
    case BadReference:
        return 422;
    case ObjectExists:
    case RevisionAhead:
    case NewerObject:
    case LoginTaken:
        return 409;
    case TooManyAttempts:
        return 429;
    case ClientTooOld:
        return 426;
    default:
        return 500;
    }
}
