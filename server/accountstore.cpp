#include "accountstore.h"

#include "accountseeder.h"
#include "mailer.h"
#include "secrets.h"
#include "serverdatabase.h"
#include "serverlog.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QUrl>
#include <QUrlQuery>

namespace {

constexpr int longestEmail = 254;
constexpr int longestSecret = 128;
constexpr qint64 resetLinkSeconds = 3600;
constexpr int mostRememberedSecrets = 100000;

qint64 now()
{
    return QDateTime::currentSecsSinceEpoch();
}

struct StoredAccount
{
    qint64 id = 0;
    QByteArray passwordHash;
};

StoredAccount findAccount(const QString& email)
{
    QSqlQuery query(ServerDatabase::connection());
    if (!ServerDatabase::execute(
            query, QStringLiteral("SELECT id, password_hash FROM accounts WHERE email = ?"), {email}) ||
        !query.next())
        return {};
    return {query.value(0).toLongLong(), query.value(1).toByteArray()};
}

Outcome internalError()
{
    return Outcome::failure(ResultCode::InternalError, QStringLiteral("Internal server error"));
}

} // namespace

AccountStore::AccountStore(const Mailer* mailer)
    : m_mailer(mailer)
{}

QString AccountStore::normalizedEmail(const QString& email)
{
    return email.trimmed().toLower();
}

bool AccountStore::isValidEmail(const QString& email)
{
    static const QRegularExpression shape(QStringLiteral("^[^@\\s]+@[^@\\s]+$"));
    return email.size() <= longestEmail && shape.match(email).hasMatch();
}

bool AccountStore::isValidSecret(const QString& secret)
{
    return !secret.isEmpty() && secret.size() <= longestSecret;
}

Outcome AccountStore::registerAccount(const QString& email, const QString& secret, bool russian)
{
    if (findAccount(email).id != 0)
        return Outcome::failure(ResultCode::LoginTaken,
                                QStringLiteral("A user with this email already exists"));
    const QByteArray hash = Secrets::hashPassword(secret);
    if (hash.isEmpty())
        return internalError();
    ServerTransaction transaction;
    QSqlQuery query(ServerDatabase::connection());
    // Two registrations racing for one address: the unique key lets only one through.
    if (!transaction.isActive() ||
        !ServerDatabase::execute(
            query,
            QStringLiteral("INSERT INTO accounts (email, password_hash, revision, created) "
                           "VALUES (?, ?, 1, ?) RETURNING id"),
            {email, QString::fromLatin1(hash), now()}) ||
        !query.next()) {
        if (findAccount(email).id != 0)
            return Outcome::failure(ResultCode::LoginTaken,
                                    QStringLiteral("A user with this email already exists"));
        return internalError();
    }
    const qint64 accountId = query.value(0).toLongLong();
    query.finish();
    if (!AccountSeeder::seed(accountId, russian) || !transaction.commit())
        return internalError();
    qCInfo(serverLog) << "Account" << accountId << "registered";
    return Outcome::success(QByteArrayLiteral("1"));
}

AccountStore::Login AccountStore::authenticate(const QString& email, const QString& secret,
                                               const QString& remoteAddress)
{
    const qint64 wait = m_throttle.secondsToWait(email, remoteAddress, now());
    if (wait > 0)
        return {ResultCode::TooManyAttempts,
                QStringLiteral("Too many failed logins; try again in %1 seconds").arg(wait), 0};
    const StoredAccount account = findAccount(email);
    if (account.id == 0) {
        m_throttle.recordFailure(email, remoteAddress, now());
        return {ResultCode::UnknownLogin, QStringLiteral("The email does not belong to any account"), 0};
    }
    if (!verify(account.id, account.passwordHash, secret)) {
        m_throttle.recordFailure(email, remoteAddress, now());
        return {ResultCode::WrongPassword, QStringLiteral("The password is incorrect"), 0};
    }
    m_throttle.recordSuccess(email);
    return {ResultCode::Success, QString(), account.id};
}

bool AccountStore::verify(qint64 accountId, const QByteArray& storedHash, const QString& secret)
{
    const QByteArray digest = Secrets::processDigest(secret);
    {
        std::lock_guard<std::mutex> lock(m_cacheMutex);
        const auto remembered = m_verified.constFind(accountId);
        if (remembered != m_verified.constEnd() && remembered->first == storedHash)
            return remembered->second == digest;
    }
    if (!Secrets::verifyPassword(storedHash, secret))
        return false;
    std::lock_guard<std::mutex> lock(m_cacheMutex);
    if (m_verified.size() >= mostRememberedSecrets)
        m_verified.clear();
    m_verified.insert(accountId, qMakePair(storedHash, digest));
    return true;
}

bool AccountStore::storePassword(qint64 accountId, const QString& secret)
{
    const QByteArray hash = Secrets::hashPassword(secret);
    if (hash.isEmpty())
        return false;
    ServerTransaction transaction;
    QSqlQuery query(ServerDatabase::connection());
    // Tokens handed out under the old password stop working with it.
    return transaction.isActive() &&
           ServerDatabase::execute(query,
                                   QStringLiteral("UPDATE accounts SET password_hash = ? WHERE id = ?"),
                                   {QString::fromLatin1(hash), accountId}) &&
           ServerDatabase::execute(query, QStringLiteral("DELETE FROM tokens WHERE account_id = ?"),
                                   {accountId}) &&
           transaction.commit();
}

Outcome AccountStore::changePassword(const QString& email, const QString& oldSecret, const QString& newSecret,
                                     const QString& remoteAddress)
{
    const Login login = authenticate(email, oldSecret, remoteAddress);
    if (login.code != ResultCode::Success)
        return Outcome::failure(login.code, login.text);
    if (!storePassword(login.accountId, newSecret))
        return internalError();
    qCInfo(serverLog) << "Account" << login.accountId << "changed its password";
    return Outcome::success("null");
}

Outcome AccountStore::requestPasswordReset(const QString& email, const QString& confirmationUrl)
{
    const StoredAccount account = findAccount(email);
    if (account.id == 0)
        return Outcome::failure(ResultCode::UnknownLogin,
                                QStringLiteral("The email does not belong to any account"));
    const QByteArray token = Secrets::randomToken();
    QSqlQuery query(ServerDatabase::connection());
    if (!ServerDatabase::execute(
            query,
            QStringLiteral("INSERT INTO password_resets (token_hash, account_id, expires) "
                           "VALUES (?, ?, ?)"),
            {QString::fromLatin1(Secrets::tokenDigest(token)), account.id, now() + resetLinkSeconds}))
        return internalError();
    QUrl link(confirmationUrl);
    link.setQuery(QUrlQuery{{QStringLiteral("token"), QString::fromLatin1(token)}});
    const QString text =
        QStringLiteral("Someone, hopefully you, asked to reset the password of your Norvel account.\n\n"
                       "Open this link within an hour to get a new password:\n%1\n\n"
                       "If you did not ask for it, ignore this message; your password stays as it is.\n")
            .arg(link.toString(QUrl::FullyEncoded));
    if (!m_mailer->send(email, QStringLiteral("Your Norvel password"), text))
        return internalError();
    return Outcome::success("null");
}

QString AccountStore::confirmPasswordReset(const QByteArray& token)
{
    QSqlQuery query(ServerDatabase::connection());
    const QString digest = QString::fromLatin1(Secrets::tokenDigest(token));
    if (!ServerDatabase::execute(
            query, QStringLiteral("SELECT account_id, expires FROM password_resets WHERE token_hash = ?"),
            {digest}) ||
        !query.next())
        return QString();
    const qint64 accountId = query.value(0).toLongLong();
    const qint64 expires = query.value(1).toLongLong();
    QSqlQuery removal(ServerDatabase::connection());
    if (!ServerDatabase::execute(removal, QStringLiteral("DELETE FROM password_resets WHERE token_hash = ?"),
                                 {digest}) ||
        removal.numRowsAffected() != 1 || expires < now())
        return QString();
    // Readable in a mail or on a screen: no characters that look alike.
    static const QByteArray alphabet = "abcdefghjkmnpqrstuvwxyzACDEFGHJKLMNPQRTUVWXY3479";
    const QByteArray random = QByteArray::fromHex(Secrets::randomToken(12));
    QString password;
    for (const char byte : random)
        password += QLatin1Char(alphabet.at(static_cast<unsigned char>(byte) % alphabet.size()));
    const QString secret =
        QString::fromLatin1(QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Md5).toHex());
    if (!storePassword(accountId, secret))
        return QString();
    qCInfo(serverLog) << "Account" << accountId << "reset its password";
    return password;
}

QByteArray AccountStore::issueToken(qint64 accountId)
{
    const QByteArray token = Secrets::randomToken();
    QSqlQuery query(ServerDatabase::connection());
    if (!ServerDatabase::execute(
            query, QStringLiteral("INSERT INTO tokens (token_hash, account_id, created) VALUES (?, ?, ?)"),
            {QString::fromLatin1(Secrets::tokenDigest(token)), accountId, now()}))
        return QByteArray();
    return token;
}

qint64 AccountStore::accountForToken(const QByteArray& token)
{
    if (token.isEmpty() || token.size() > 128)
        return 0;
    QSqlQuery query(ServerDatabase::connection());
    if (!ServerDatabase::execute(query, QStringLiteral("SELECT account_id FROM tokens WHERE token_hash = ?"),
                                 {QString::fromLatin1(Secrets::tokenDigest(token))}) ||
        !query.next())
        return 0;
    return query.value(0).toLongLong();
}
