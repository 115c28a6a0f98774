#include "quickackserver.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <arpa/inet.h>

namespace {

bool waitFor(socket_t socket, short events, time_t seconds, time_t microseconds)
{
    pollfd descriptor{socket, events, 0};
    const int milliseconds = static_cast<int>(seconds * 1000 + microseconds / 1000);
    int result;
    do {
        result = poll(&descriptor, 1, milliseconds);
    } while (result < 0 && errno == EINTR);
    return result > 0 && (descriptor.revents & (events | POLLHUP | POLLERR));
}

void addressOf(const sockaddr_storage& address, std::string& ip, int& port)
{
    char text[INET6_ADDRSTRLEN] = {};
    if (address.ss_family == AF_INET6) {
        const auto* v6 = reinterpret_cast<const sockaddr_in6*>(&address);
        inet_ntop(AF_INET6, &v6->sin6_addr, text, sizeof text);
        port = ntohs(v6->sin6_port);
    } else {
        const auto* v4 = reinterpret_cast<const sockaddr_in*>(&address);
        inet_ntop(AF_INET, &v4->sin_addr, text, sizeof text);
        port = ntohs(v4->sin_port);
    }
    ip = text;
}

// The library reads a request a byte at a time, so reads come from a buffer of our own; the socket
// is told to acknowledge at once before each refill, since the kernel drops that wish again as soon
// as the connection looks interactive.
class QuickAckStream : public httplib::Stream
{
public:
    QuickAckStream(socket_t socket, time_t readSeconds, time_t readMicroseconds, time_t writeSeconds,
                   time_t writeMicroseconds)
        : m_socket(socket)
        , m_readSeconds(readSeconds)
        , m_readMicroseconds(readMicroseconds)
        , m_writeSeconds(writeSeconds)
        , m_writeMicroseconds(writeMicroseconds)
    {}

    bool is_readable() const override { return waitForData(m_readSeconds, m_readMicroseconds); }

    bool waitForData(time_t seconds, time_t microseconds) const
    {
        return m_start < m_end || waitFor(m_socket, POLLIN, seconds, microseconds);
    }

    bool is_writable() const override
    {
        return waitFor(m_socket, POLLOUT, m_writeSeconds, m_writeMicroseconds);
    }

    ssize_t read(char* data, size_t size) override
    {
        if (m_start == m_end && !refill())
            return -1;
        const size_t count = std::min(size, m_end - m_start);
        std::copy(m_buffer + m_start, m_buffer + m_start + count, data);
        m_start += count;
        return static_cast<ssize_t>(count);
    }

    ssize_t write(const char* data, size_t size) override
    {
        if (!is_writable())
            return -1;
        ssize_t written;
        do {
            written = send(m_socket, data, size, MSG_NOSIGNAL);
        } while (written < 0 && errno == EINTR);
        return written;
    }

    void get_remote_ip_and_port(std::string& ip, int& port) const override
    {
        sockaddr_storage address{};
        socklen_t length = sizeof address;
        if (getpeername(m_socket, reinterpret_cast<sockaddr*>(&address), &length) == 0)
            addressOf(address, ip, port);
    }

    void get_local_ip_and_port(std::string& ip, int& port) const override
    {
        sockaddr_storage address{};
        socklen_t length = sizeof address;
        if (getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &length) == 0)
            addressOf(address, ip, port);
    }

    socket_t socket() const override { return m_socket; }

private:
    bool refill()
    {
        if (!waitFor(m_socket, POLLIN, m_readSeconds, m_readMicroseconds))
            return false;
        const int yes = 1;
        setsockopt(m_socket, IPPROTO_TCP, TCP_QUICKACK, &yes, sizeof yes);
        ssize_t received;
        do {
            received = recv(m_socket, m_buffer, sizeof m_buffer, 0);
        } while (received < 0 && errno == EINTR);
        if (received <= 0)
            return false;
        m_start = 0;
        m_end = static_cast<size_t>(received);
        return true;
    }

    socket_t m_socket;
    time_t m_readSeconds;
    time_t m_readMicroseconds;
    time_t m_writeSeconds;
    time_t m_writeMicroseconds;
    char m_buffer[4096];
    size_t m_start = 0;
    size_t m_end = 0;
};

} // namespace

bool QuickAckServer::process_and_close_socket(socket_t socket)
{
    QuickAckStream stream(socket, read_timeout_sec_, read_timeout_usec_, write_timeout_sec_,
                          write_timeout_usec_);
    bool processed = false;
    for (size_t left = keep_alive_max_count_; left > 0 && svr_sock_ != INVALID_SOCKET; --left) {
        if (!stream.waitForData(keep_alive_timeout_sec_, 0))
            break;
        bool connectionClosed = false;
        processed = process_request(stream, left == 1, connectionClosed, nullptr);
        if (!processed || connectionClosed)
            break;
    }
    shutdown(socket, SHUT_RDWR);
    close(socket);
    return processed;
}
