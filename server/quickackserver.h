#pragma once

#include <httplib.h>

// Plain HTTP server whose connections acknowledge every segment at once. Clients that send a
// request's headers and body in two writes with Nagle's algorithm on (Qt's HTTP client does) would
// otherwise hold the body until our delayed ACK fires, some 40 ms on every request of a kept-alive
// connection.
class QuickAckServer : public httplib::Server
{
private:
    bool process_and_close_socket(socket_t socket) override;
};
