#include "Platform/Linux/ReplyReader.h"

#include "Platform/Linux/HttpHeaders.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <string>
#include <system_error>
#include <utility>

namespace trellisport::platform {

namespace {

/// How much is set aside on the word of a Content-Length alone.
constexpr curl_off_t trustedLength = curl_off_t{1} << 20;
/// Decoding reads a little beyond the end; room for it saves it a copy.
constexpr std::size_t decodingMargin = 64;
/// Somewhat less than where libcurl gives up with an error of another kind.
constexpr std::size_t headerLimit = std::size_t{256} << 10;

/// Whether another reply follows the one with this status. Other statuses below 200 are in no use;
/// a server that sends one means it as its answer.
bool isInterim(long status)
{
    return status == 100 || (status >= 102 && status <= 104);
}

} // namespace

std::size_t ReplyReader::takeHeader(char *data, std::size_t size, std::size_t count, void *reader)
{
    try {
        const std::string_view line(data, size * count);
        return static_cast<ReplyReader *>(reader)->readHeaderLine(line) ? line.size() : 0;
    } catch (const std::exception &) {
        static_cast<ReplyReader *>(reader)->m_isTooLarge = true;
        return 0;
    }
}

std::size_t ReplyReader::takeBody(char *data, std::size_t size, std::size_t count, void *reader)
{
    try {
        const std::string_view piece(data, size * count);
        return static_cast<ReplyReader *>(reader)->readBody(piece) ? piece.size() : 0;
    } catch (const std::exception &) {
        static_cast<ReplyReader *>(reader)->m_isTooLarge = true;
        return 0;
    }
}

bool ReplyReader::readHeaderLine(std::string_view line)
{
    m_headerBytes += line.size();
    if (m_headerBytes > headerLimit) {
        m_isTooLarge = true;
        return false;
    }
    if (m_hasHeaders) {
        return true; // a trailer behind the body, of no use to anybody
    }
    if (line.starts_with("HTTP/")) {
        m_hasStarted = true;
        m_reply.headers.clear();
        return true;
    }
    if (trimmed(line).empty()) {
        return endHeaders();
    }
    addField(line);
    return true;
}

bool ReplyReader::endHeaders()
{
    long status = 0;
    curl_easy_getinfo(m_handle, CURLINFO_RESPONSE_CODE, &status);
    if (isInterim(status)) {
        return true;
    }
    m_reply.status = static_cast<int>(status);
    m_hasHeaders = true;
    m_isSettled = status < 200 || status > 299;
    if (!m_isSettled && announcesTooMuch()) {
        m_isTooLarge = true;
        return false;
    }
    // libcurl would wait for what follows a status below 200.
    return status >= 200;
}

bool ReplyReader::announcesTooMuch() const
{
    // libcurl could see to it as well, but it would refuse errors along with successes.
    const auto values = headerValues(m_reply.headers, "Content-Length");
    return std::any_of(values.begin(), values.end(), [this](std::string_view text) {
        std::size_t length = 0;
        const auto error = std::from_chars(text.data(), text.data() + text.size(), length).ec;
        return error == std::errc::result_out_of_range ||
               (error == std::errc() && length > m_limit);
    });
}

void ReplyReader::addField(std::string_view line)
{
    if ((line.front() == ' ' || line.front() == '\t') && !m_reply.headers.empty()) {
        m_reply.headers.back().value.append(" ").append(trimmed(line));
        return;
    }
    const std::size_t colon = line.find(':');
    if (colon != std::string_view::npos) {
        m_reply.headers.push_back({std::string(trimmed(line.substr(0, colon))),
                                   std::string(trimmed(line.substr(colon + 1)))});
    }
}

bool ReplyReader::readBody(std::string_view piece)
{
    if (m_isSettled) {
        return true;
    }
    std::string &body = m_reply.body;
    if (piece.size() > m_limit - body.size()) {
        m_isTooLarge = true;
        return false;
    }
    if (body.empty()) {
        curl_off_t length = 0;
        curl_easy_getinfo(m_handle, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
        body.reserve(static_cast<std::size_t>(std::clamp(length, curl_off_t{0}, trustedLength)) +
                     decodingMargin);
    }
    body.append(piece);
    return true;
}

HttpReply ReplyReader::take()
{
    return std::move(m_reply);
}

} // namespace trellisport::platform
