#pragma once

#include "Platform/HttpSession.h"

#include <curl/curl.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace trellisport::platform {

/// Puts a reply together from what libcurl hands over piece by piece. The body is taken of a
/// success alone (200 to 299); of any other status nobody reads it, so such a reply is settled
/// without it.
class ReplyReader {
public:
    /// limit: the most bytes taken of the body.
    explicit ReplyReader(std::size_t limit)
        : m_limit(limit)
    {
    }

    /// The transfer that the reply belongs to.
    void setHandle(CURL *handle) { m_handle = handle; }

    // libcurl's callbacks; reader is a ReplyReader. Anything but the whole size ends the transfer.
    static std::size_t takeHeader(char *data, std::size_t size, std::size_t count, void *reader);
    static std::size_t takeBody(char *data, std::size_t size, std::size_t count, void *reader);

    /// Whether anything came that looks like the start of an HTTP reply.
    [[nodiscard]] bool hasStarted() const { return m_hasStarted; }
    /// Whether the headers of the final reply are whole.
    [[nodiscard]] bool hasHeaders() const { return m_hasHeaders; }
    /// Whether what the caller gets is certain, whatever becomes of the transfer: the headers are
    /// whole and tell of no success.
    [[nodiscard]] bool isSettled() const { return m_isSettled; }
    [[nodiscard]] bool isTooLarge() const { return m_isTooLarge; }
    [[nodiscard]] std::uint64_t bytesRead() const { return m_headerBytes + m_reply.body.size(); }
    /// Gives the reply away.
    [[nodiscard]] HttpReply take();

private:
    bool readHeaderLine(std::string_view line);
    bool endHeaders();
    [[nodiscard]] bool announcesTooMuch() const;
    void addField(std::string_view line);
    bool readBody(std::string_view piece);

    std::size_t m_limit;
    CURL *m_handle = nullptr;
    HttpReply m_reply;
    std::uint64_t m_headerBytes = 0;
    bool m_hasStarted = false;
    bool m_hasHeaders = false;
    bool m_isSettled = false;
    bool m_isTooLarge = false;
};

} // namespace trellisport::platform
