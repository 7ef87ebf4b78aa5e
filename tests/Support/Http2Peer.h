#pragma once

#include "Support/ServerConnection.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace trellisport::test {

/// The server's side of HTTP/2 on one connection, as far as tests need it: it counts what arrives
/// and answers by hand. Header fields are not read.
class Http2Peer {
public:
    /// Takes the client's opening and sends the server's.
    explicit Http2Peer(ServerConnection &connection);

    /// Waits for the next request to be whole; its stream number, or 0 when the client has closed.
    std::uint32_t nextRequest();
    /// Sends headers with the status 200 and the body, all at once.
    void reply(std::uint32_t stream, std::string_view body);
    /// Sends the headers and a part of the body; more is to come. status: 200 or 404.
    void beginReply(std::uint32_t stream, std::string_view part, int status = 200);
    /// Ends one stream as refused, which lets the client send the request again.
    void refuse(std::uint32_t stream);

private:
    void sendFrame(std::uint8_t type, std::uint8_t flags, std::uint32_t stream,
                   std::string_view payload);

    ServerConnection &m_connection;
};

} // namespace trellisport::test
