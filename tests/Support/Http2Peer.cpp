#include "Support/Http2Peer.h"

namespace trellisport::test {

namespace {

constexpr std::size_t openingLength = 24; // "PRI * HTTP/2.0..."
constexpr std::size_t frameHeaderLength = 9;

constexpr std::uint8_t dataFrame = 0;
constexpr std::uint8_t headersFrame = 1;
constexpr std::uint8_t resetFrame = 3;
constexpr std::uint8_t settingsFrame = 4;
constexpr std::uint8_t pingFrame = 6;

constexpr std::uint8_t acknowledged = 1; // of settings and pings
constexpr std::uint8_t endsStream = 1;
constexpr std::uint8_t endsHeaders = 4;

/// ":status: 200", the eighth entry of the table that every connection starts with.
constexpr std::string_view status200 = "\x88";
constexpr std::string_view status404 = "\x8d"; // the thirteenth
constexpr std::string_view refusedStream("\0\0\0\x07", 4);

std::uint32_t number(std::string_view bytes)
{
    std::uint32_t value = 0;
    for (const char byte : bytes) {
        value = value << 8 | static_cast<unsigned char>(byte);
    }
    return value;
}

std::string bytes(std::uint32_t value, int count)
{
    std::string text;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        text += static_cast<char>(value >> shift & 0xff);
    }
    return text;
}

} // namespace

Http2Peer::Http2Peer(ServerConnection &connection)
    : m_connection(connection)
{
    m_connection.read(openingLength);
    sendFrame(settingsFrame, 0, 0, {});
}

std::uint32_t Http2Peer::nextRequest()
{
    for (;;) {
        const std::string head = m_connection.read(frameHeaderLength);
        if (head.size() < frameHeaderLength) {
            return 0;
        }
        const std::uint32_t length = number(std::string_view(head).substr(0, 3));
        const auto type = static_cast<std::uint8_t>(head[3]);
        const auto flags = static_cast<std::uint8_t>(head[4]);
        const std::uint32_t stream = number(std::string_view(head).substr(5)) & 0x7fffffff;
        const std::string payload = m_connection.read(length);
        if ((type == settingsFrame || type == pingFrame) && (flags & acknowledged) == 0) {
            sendFrame(type, acknowledged, 0, type == pingFrame ? payload : std::string());
        }
        if ((type == headersFrame || type == dataFrame) && (flags & endsStream) != 0) {
            return stream;
        }
    }
}

void Http2Peer::reply(std::uint32_t stream, std::string_view body)
{
    sendFrame(headersFrame, endsHeaders, stream, status200);
    sendFrame(dataFrame, endsStream, stream, body);
}

void Http2Peer::beginReply(std::uint32_t stream, std::string_view part, int status)
{
    sendFrame(headersFrame, endsHeaders, stream, status == 404 ? status404 : status200);
    sendFrame(dataFrame, 0, stream, part);
}

void Http2Peer::refuse(std::uint32_t stream)
{
    sendFrame(resetFrame, 0, stream, refusedStream);
}

void Http2Peer::sendFrame(std::uint8_t type, std::uint8_t flags, std::uint32_t stream,
                          std::string_view payload)
{
    std::string frame = bytes(static_cast<std::uint32_t>(payload.size()), 3) +
                        static_cast<char>(type) + static_cast<char>(flags) + bytes(stream, 4);
    frame.append(payload);
    m_connection.send(frame);
}

} // namespace trellisport::test
