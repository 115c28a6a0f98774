#include "norvelserver.h"
#include "serverlog.h"
#include "serveroptions.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <thread>

#include <pthread.h>

namespace {

// Blocks the stop signals in every thread, so that one waiting thread can receive them and stop the
// server outside of a signal handler.
sigset_t blockStopSignals()
{
    sigset_t stopSet;
    sigemptyset(&stopSet);
    sigaddset(&stopSet, SIGINT);
    sigaddset(&stopSet, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSet, nullptr);
    return stopSet;
}

} // namespace

int main(int argc, char* argv[])
{
    const sigset_t stopSignals = blockStopSignals();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("norvel-server"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NORVEL_SERVER_VERSION));

    ServerOptions options;
    QString error;
    if (!ServerOptions::parse(QCoreApplication::arguments(), &options, &error)) {
        std::fprintf(stderr, "norvel-server: %s\n", qPrintable(error));
        return 2;
    }
    setUpServerLog(options.logLevel);
    NorvelServer server(options);
    if (!server.start(&error)) {
        qCCritical(serverLog).noquote() << error;
        return 1;
    }
    std::thread signalWaiter([&stopSignals, &server] {
        int received = 0;
        sigwait(&stopSignals, &received);
        if (received == SIGINT || received == SIGTERM)
            server.stop();
    });
    signalWaiter.detach();
    // Tests and scripts read the chosen port from this line.
    std::printf("Listening on %s\n", qPrintable(server.baseUrl()));
    std::fflush(stdout);
    qCInfo(serverLog).noquote() << "Serving" << server.baseUrl() << "with"
                                << (options.database.isEmpty() ? options.sqliteFile() : QStringLiteral("PostgreSQL"));
    const bool served = server.run();
    qCInfo(serverLog) << "Stopped";
    return served ? 0 : 1;
}
