#include "norvelserver.h"
#include "serverlog.h"
#include "serveroptions.h"

#include <QCoreApplication>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <thread>

#include <unistd.h>

namespace {

int stopPipe[2] = {-1, -1};

// Only hands the signal on: the server is stopped outside the handler, by a thread reading the pipe.
void handleStopSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(stopPipe[1], &byte, 1);
}

bool installStopSignals()
{
    if (pipe(stopPipe) != 0)
        return false;
    struct sigaction action = {};
    action.sa_handler = handleStopSignal;
    sigemptyset(&action.sa_mask);
    return sigaction(SIGINT, &action, nullptr) == 0 && sigaction(SIGTERM, &action, nullptr) == 0;
}

} // namespace

int main(int argc, char* argv[])
{
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
    if (!installStopSignals()) {
        qCCritical(serverLog) << "Cannot install the signal handlers";
        return 1;
    }
    std::thread signalWaiter([&server] {
        char byte = 0;
        while (read(stopPipe[0], &byte, 1) < 0 && errno == EINTR) {
        }
        server.stop();
    });
    signalWaiter.detach();
    // Tests and scripts read the chosen port from this line.
    std::printf("Listening on %s\n", qPrintable(server.baseUrl()));
    std::fflush(stdout);
    qCInfo(serverLog).noquote() << "Serving" << server.baseUrl() << "with"
                                << (options.database.isEmpty() ? options.sqliteFile()
                                                               : QStringLiteral("PostgreSQL"));
    const bool served = server.run();
    qCInfo(serverLog) << "Stopped";
    return served ? 0 : 1;
}
