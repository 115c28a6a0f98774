#pragma once

#include <QByteArray>
#include <QString>

// Password hashing and random tokens, all through libsodium.
namespace Secrets {
// False when libsodium cannot start; nothing else here may be used then.
bool initialize();

// A salted, deliberately slow hash in libsodium's self-describing text form.
QByteArray hashPassword(const QString& secret);
bool verifyPassword(const QByteArray& storedHash, const QString& secret);

// Random bytes as lower-case hexadecimal text.
QByteArray randomToken(int bytes = 32);
// A fast one-way digest, for tokens that are random enough not to need a slow hash.
QByteArray tokenDigest(const QByteArray& token);
// A digest under a key that exists only in this process, for remembering verified passwords.
QByteArray processDigest(const QString& secret);
} // namespace Secrets
