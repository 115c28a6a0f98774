#include "secrets.h"

#include <sodium.h>

namespace {

unsigned char processKey[crypto_generichash_KEYBYTES];

QByteArray toHex(const unsigned char* bytes, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(bytes), static_cast<int>(size)).toHex();
}

} // namespace

bool Secrets::initialize()
{
    if (sodium_init() < 0)
        return false;
    randombytes_buf(processKey, sizeof processKey);
    return true;
}

QByteArray Secrets::hashPassword(const QString& secret)
{
    const QByteArray utf8 = secret.toUtf8();
    char hash[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(hash, utf8.constData(), static_cast<unsigned long long>(utf8.size()),
                          crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        return QByteArray();
    return QByteArray(hash);
}

bool Secrets::verifyPassword(const QByteArray& storedHash, const QString& secret)
{
    const QByteArray utf8 = secret.toUtf8();
    return crypto_pwhash_str_verify(storedHash.constData(), utf8.constData(),
                                    static_cast<unsigned long long>(utf8.size())) == 0;
}

QByteArray Secrets::randomToken(int bytes)
{
    QByteArray buffer(bytes, Qt::Uninitialized);
    randombytes_buf(buffer.data(), static_cast<size_t>(buffer.size()));
    return buffer.toHex();
}

QByteArray Secrets::tokenDigest(const QByteArray& token)
{
    unsigned char digest[crypto_generichash_BYTES];
    crypto_generichash(digest, sizeof digest, reinterpret_cast<const unsigned char*>(token.constData()),
                       static_cast<unsigned long long>(token.size()), nullptr, 0);
    return toHex(digest, sizeof digest);
}

QByteArray Secrets::processDigest(const QString& secret)
{
    const QByteArray utf8 = secret.toUtf8();
    unsigned char digest[crypto_generichash_BYTES];
    crypto_generichash(digest, sizeof digest, reinterpret_cast<const unsigned char*>(utf8.constData()),
                       static_cast<unsigned long long>(utf8.size()), processKey, sizeof processKey);
    return toHex(digest, sizeof digest);
}
