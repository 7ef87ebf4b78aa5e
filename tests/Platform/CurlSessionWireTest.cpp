#include "Platform/SessionProbe.h"

#include <gmock/gmock.h>

#include <string>

namespace trellisport::test {
namespace {

using platform::CurlHttpSession;
using platform::HttpRequest;
using platform::TransportFailure;

class CurlSessionWire : public testing::Test {
protected:
    ScriptedServer m_server{ScriptedServer::answering(
        [](const auto &) { return ScriptedServer::replyBytes(200, "{}"); })};
    CurlHttpSession m_session{trustingOptions()};

    std::string host() const { return "localhost:" + std::to_string(m_server.port()); }
    /// Sends the request and gives the bytes that reached the server.
    std::string wire(HttpRequest request)
    {
        const std::size_t before = m_server.requests().size();
        EXPECT_EQ(SessionProbe(m_session, std::move(request)).waitForReply().status, 200);
        const auto requests = m_server.requests();
        return requests.size() == before + 1 ? requests.back() : "not one request";
    }
    /// What stands in the request line for the rest of a URL behind the origin.
    std::string target(const std::string &rest)
    {
        const std::string bytes = wire(getRequest(m_server.origin() + rest));
        return bytes.substr(4, bytes.find(" HTTP/1.1\r\n") - 4);
    }
};

TEST_F(CurlSessionWire, AGetIsNothingButItsOwnHeaders)
{
    EXPECT_EQ(wire(getRequest(m_server.origin() + "/api/v1/projects?status=awarded")),
              "GET /api/v1/projects?status=awarded HTTP/1.1\r\n"
              "Host: " +
                  host() +
                  "\r\n"
                  "Content-Type: application/json\r\n\r\n");
}

TEST_F(CurlSessionWire, APostIsNothingButItsOwnHeadersAndBody)
{
    EXPECT_EQ(wire(postRequest(m_server.origin() + "/devices", R"({"device_token":"be"})")),
              "POST /devices HTTP/1.1\r\n"
              "Host: " +
                  host() +
                  "\r\n"
                  "Content-Type: application/json\r\n"
                  "Content-Length: 21\r\n\r\n"
                  R"({"device_token":"be"})");
}

TEST_F(CurlSessionWire, APutIsNothingButItsOwnHeadersAndBody)
{
    HttpRequest request = postRequest(m_server.origin() + "/config");
    request.method = "PUT";
    EXPECT_EQ(wire(request), "PUT /config HTTP/1.1\r\n"
                             "Host: " +
                                 host() +
                                 "\r\n"
                                 "Content-Type: application/json\r\n"
                                 "Content-Length: 2\r\n\r\n{}");
}

TEST_F(CurlSessionWire, ALargeBodyGoesOutWholeWithoutAskingFirst)
{
    const std::string body(3 << 20, 'x');
    const std::string bytes = wire(postRequest(m_server.origin() + "/a", body));
    EXPECT_EQ(bytes.substr(bytes.size() - body.size()), body);
    EXPECT_EQ(bytes.find("Expect"), std::string::npos);
}

TEST_F(CurlSessionWire, ABodyMayHoldAnyByte)
{
    const std::string body("a\0\r\n\xff", 5);
    const std::string bytes = wire(postRequest(m_server.origin() + "/a", body));
    EXPECT_EQ(bytes.substr(bytes.size() - 5), body);
}

TEST_F(CurlSessionWire, AWriteWithoutABodySaysSo)
{
    HttpRequest request = postRequest(m_server.origin() + "/a");
    request.body.reset();
    EXPECT_EQ(wire(request), "POST /a HTTP/1.1\r\n"
                             "Host: " +
                                 host() +
                                 "\r\n"
                                 "Content-Type: application/json\r\n"
                                 "Content-Length: 0\r\n\r\n");
}

TEST_F(CurlSessionWire, TheTargetIsThatOfTheAddressCharacterByCharacter)
{
    for (const char *rest :
         {"/a/../b/./c", "/%7e%2F%2f%41", "/a//b///", "/?", "/a?b?c/../d&e=f",
          "/a;b=c,d:e@f!$'()*+", "/api/v1/projects?status=", "/..", "/%00%0d%0a"}) {
        EXPECT_EQ(target(rest), rest);
    }
}

TEST_F(CurlSessionWire, TheFragmentStaysAtHome)
{
    EXPECT_EQ(target("/a?b#c?d/e"), "/a?b");
    EXPECT_EQ(target("/a#"), "/a");
}

TEST_F(CurlSessionWire, AnAddressWithoutAPathAsksForTheRoot)
{
    EXPECT_EQ(target(""), "/");
    EXPECT_EQ(target("?a"), "/?a");
    EXPECT_EQ(target("#a"), "/");
}

TEST_F(CurlSessionWire, AnEmptyHeaderIsSentEmpty)
{
    HttpRequest request = getRequest(m_server.origin() + "/a");
    request.headers = {{"X-Empty", ""}};
    EXPECT_EQ(wire(request), "GET /a HTTP/1.1\r\nHost: " + host() + "\r\nX-Empty:\r\n\r\n");
}

TEST_F(CurlSessionWire, AHeaderCannotBringOthersIn)
{
    for (const std::string &value :
         {std::string("a\r\nX: y"), std::string("a\nb"), std::string("a\0b", 3)}) {
        HttpRequest request = getRequest(m_server.origin() + "/a");
        request.headers = {{"X-Header", value}};
        EXPECT_EQ(SessionProbe(m_session, request).waitForFailure(), TransportFailure::Other);
    }
    EXPECT_EQ(m_server.requestCount(), 0);
}

TEST_F(CurlSessionWire, OnlySecureAddressesAreUsed)
{
    for (const std::string &url :
         {"http://" + host() + "/a", "ftp://" + host() + "/a", std::string("file:///etc/hostname"),
          std::string("https://"), std::string()}) {
        EXPECT_EQ(SessionProbe(m_session, getRequest(url)).waitForFailure(),
                  TransportFailure::Other)
            << url;
    }
    EXPECT_EQ(m_server.connections(), 0);
}

TEST_F(CurlSessionWire, AnAddressWithAPasswordIsNotUsed)
{
    EXPECT_EQ(
        SessionProbe(m_session, getRequest("https://user:pass@" + host() + "/")).waitForFailure(),
        TransportFailure::Other);
    EXPECT_EQ(m_server.connections(), 0);
}

TEST_F(CurlSessionWire, CookiesAreNotSentBack)
{
    ScriptedServer server(ScriptedServer::answering([](const auto &) {
        return ScriptedServer::replyBytes(200, "{}", "Set-Cookie: a=b; Path=/\r\n");
    }));
    SessionProbe first(m_session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(first.waitForReply().status, 200);
    SessionProbe second(m_session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(second.waitForReply().status, 200);
    ASSERT_EQ(server.requestCount(), 2);
    EXPECT_EQ(server.requests()[0], server.requests()[1]);
}

TEST_F(CurlSessionWire, ReadsShareAConnectionOneAfterTheOther)
{
    for (int i = 0; i < 5; ++i) {
        wire(getRequest(m_server.origin() + "/a"));
    }
    EXPECT_EQ(m_server.connections(), 1);
}

TEST_F(CurlSessionWire, EveryWriteHasAConnectionOfItsOwn)
{
    wire(getRequest(m_server.origin() + "/a"));
    for (int i = 0; i < 3; ++i) {
        wire(postRequest(m_server.origin() + "/a"));
    }
    EXPECT_EQ(m_server.connections(), 4);
}

TEST_F(CurlSessionWire, AReadMayFollowAWriteOnItsConnection)
{
    wire(postRequest(m_server.origin() + "/a"));
    wire(getRequest(m_server.origin() + "/a"));
    EXPECT_EQ(m_server.connections(), 1);
}

} // namespace
} // namespace trellisport::test
