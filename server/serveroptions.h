#pragma once

#include <QString>
#include <QStringList>

// Everything the server is told on its command line, with the defaults that make a bare start serve
// on loopback from a SQLite file in the user's data directory.
struct ServerOptions
{
    QString listenAddress = QStringLiteral("127.0.0.1");
    // 0 picks a free port; the chosen one is printed on standard output.
    int port = 8470;
    // Empty for SQLite in the data directory, else a "postgresql://" address.
    QString database;
    QString dataDirectory;
    QString tlsCertificate;
    QString tlsKey;
    QString smtpUrl;
    QString smtpUser;
    QString smtpPassword;
    QString mailFrom = QStringLiteral("norvel-server@localhost");
    // The address clients reach the server by, for the links in password-reset mail.
    QString publicUrl;
    QString minimumClientVersion = QStringLiteral("1.0");
    QString logLevel = QStringLiteral("info");
    int threads = 8;

    // False with a message for the user when the arguments do not make a usable configuration;
    // --help and --version print and exit inside.
    static bool parse(const QStringList& arguments, ServerOptions* options, QString* error);

    bool usesTls() const { return !tlsCertificate.isEmpty(); }
    QString sqliteFile() const;
};
