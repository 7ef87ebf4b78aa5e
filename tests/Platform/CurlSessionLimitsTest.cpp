#include "Platform/SessionProbe.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <malloc.h>
#include <memory>
#include <string>
#include <vector>

namespace trellisport::test {
namespace {

using platform::CurlHttpOptions;
using platform::CurlHttpSession;
using platform::TransportFailure;

CurlHttpOptions limited(std::size_t limit)
{
    CurlHttpOptions options = trustingOptions();
    options.replyLimit = limit;
    return options;
}

/// Reads one request, sends a beginning and then the same piece for as long as it is taken. A small
/// piece is sent many at a time: a record of TLS for each would be most of the work.
ScriptedServer::Script endless(std::string beginning, std::string piece)
{
    return
        [beginning = std::move(beginning), piece = std::move(piece)](ServerConnection &connection) {
            std::string many;
            while (many.size() < 10'000) {
                many += piece;
            }
            connection.readRequest();
            connection.send(beginning);
            while (connection.send(many)) {
            }
        };
}

/// Bytes that the program has from the allocator; nought when a sanitizer has taken its place.
std::size_t allocated()
{
    const struct mallinfo2 allocator = mallinfo2();
    return allocator.uordblks + allocator.hblkhd;
}

class CurlSessionLimits : public testing::Test {
protected:
    CurlHttpSession m_session{limited(std::size_t{1} << 20)};

    TransportFailure failure(ScriptedServer::Script script)
    {
        const ScriptedServer server(std::move(script));
        return SessionProbe(m_session, getRequest(server.origin() + "/a")).waitForFailure();
    }
};

TEST_F(CurlSessionLimits, AReplyOfTheLargestSizeIsTaken)
{
    const ScriptedServer server(ScriptedServer::answering([](const auto &) {
        return ScriptedServer::replyBytes(200, std::string(std::size_t{1} << 20, 'x'));
    }));
    SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().body.size(), std::size_t{1} << 20);
}

TEST_F(CurlSessionLimits, AnAnnouncedLengthBeyondTheLimitEndsItAtOnce)
{
    for (const char *length : {"1048577", "9223372036854775807", "18446744073709551616",
                               "99999999999999999999999999999999"}) {
        EXPECT_EQ(failure([length](ServerConnection &connection) {
                      connection.readRequest();
                      connection.send(std::string("HTTP/1.1 200 OK\r\nContent-Length: ") + length +
                                      "\r\n\r\n");
                      connection.hold();
                  }),
                  TransportFailure::ReplyTooLarge)
            << length;
    }
}

TEST(CurlSessionLimit, ABodyOfTwoGigabytesIsRefusedBeforeItComes)
{
    CurlHttpSession session(trustingOptions());
    for (const char *announced :
         {"Content-Length: 2147483648\r\n\r\n", "Content-Length: 268435457\r\n\r\n"}) {
        const ScriptedServer server([announced](ServerConnection &connection) {
            connection.readRequest();
            connection.send(std::string("HTTP/1.1 200 OK\r\n") + announced);
            connection.hold();
        });
        SessionProbe probe(session, getRequest(server.origin() + "/a"));
        const platform::HttpResult result = probe.wait();
        const auto *error = std::get_if<platform::TransportError>(&result);
        ASSERT_NE(error, nullptr) << announced;
        EXPECT_EQ(error->failure(), TransportFailure::ReplyTooLarge);
        EXPECT_STREQ(error->what(), "The server's reply is too large.");
    }
}

TEST_F(CurlSessionLimits, AChunkOfTwoGigabytesIsTooLargeWhenTheLimitIsReached)
{
    EXPECT_EQ(failure(endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n80000000\r\n",
                              std::string(10'000, 'x'))),
              TransportFailure::ReplyTooLarge);
}

TEST_F(CurlSessionLimits, ABodyWithoutEndIsTooLarge)
{
    EXPECT_EQ(failure(endless("HTTP/1.1 200 OK\r\n\r\n", std::string(10'000, 'x'))),
              TransportFailure::ReplyTooLarge);
    EXPECT_EQ(failure(endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n",
                              "3e8\r\n" + std::string(1000, 'x') + "\r\n")),
              TransportFailure::ReplyTooLarge);
}

TEST_F(CurlSessionLimits, HeadersWithoutEndAreTooLarge)
{
    EXPECT_EQ(failure(endless("HTTP/1.1 200 OK\r\n", "X-Header: value\r\n")),
              TransportFailure::ReplyTooLarge);
    // libcurl lets a value grow by a line at a time, which takes the sanitizers' allocators long.
    EXPECT_EQ(failure(endless("HTTP/1.1 200 OK\r\nX-Header: a\r\n",
                              ' ' + std::string(200, 'x') + "\r\n")),
              TransportFailure::ReplyTooLarge);
}

TEST_F(CurlSessionLimits, AHeaderLineWithoutEndIsTooLarge)
{
    EXPECT_EQ(failure(endless("HTTP/1.1 200 OK\r\nX-Header: ", std::string(1000, 'x'))),
              TransportFailure::ReplyTooLarge);
}

TEST_F(CurlSessionLimits, InterimRepliesWithoutEndAreTooLarge)
{
    EXPECT_EQ(failure(endless("", "HTTP/1.1 103 Early Hints\r\nLink: </a>\r\n\r\n")),
              TransportFailure::ReplyTooLarge);
}

TEST_F(CurlSessionLimits, TrailersWithoutEndAreTooLarge)
{
    EXPECT_EQ(failure(endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n",
                              "X-Trailer: value\r\n")),
              TransportFailure::ReplyTooLarge);
}

TEST_F(CurlSessionLimits, NoiseWithoutEndIsNoHttp)
{
    const ScriptedServer server(endless("noise", std::string(1000, 'x')));
    SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().status, 0);
}

TEST_F(CurlSessionLimits, AnAnnouncedLengthSetsLittleMemoryAside)
{
    if (allocated() == 0) {
        GTEST_SKIP() << "the sanitizer's heap does not count";
    }
    constexpr std::size_t calls = 16;
    constexpr std::size_t mebibyte = std::size_t{1} << 20;
    CurlHttpSession session(limited(256 * mebibyte));
    const std::string piece(2 * mebibyte, 'x');
    const ScriptedServer server([&piece](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 200000000\r\n\r\n");
        connection.send(piece);
        connection.hold();
    });
    const std::size_t before = allocated();
    std::vector<std::unique_ptr<SessionProbe>> probes;
    probes.reserve(calls);
    for (std::size_t i = 0; i < calls; ++i) {
        probes.push_back(
            std::make_unique<SessionProbe>(session, getRequest(server.origin() + "/a")));
    }
    // More than this is held only when every call has taken what came.
    ASSERT_TRUE(waitUntil([&] { return allocated() >= before + calls * piece.size(); }));
    EXPECT_LT(allocated(), before + calls * 4 * mebibyte);
}

} // namespace
} // namespace trellisport::test
