#include "Platform/SessionProbe.h"

#include <gmock/gmock.h>

#include <string>

namespace trellisport::test {
namespace {

using platform::CurlHttpSession;
using platform::HttpReply;
using testing::HasSubstr;
using testing::Not;

/// A server whose one resource has a version that each write raises.
class CurlSessionCache : public testing::Test {
protected:
    std::string m_headers;
    std::atomic<int> m_version = 1;
    ScriptedServer m_server{ScriptedServer::answering([this](const std::string &request) {
        if (!request.starts_with("GET ")) {
            ++m_version;
            return ScriptedServer::replyBytes(200, "{}");
        }
        const std::string tag = '"' + std::to_string(m_version) + '"';
        const std::string headers = m_headers + "ETag: " + tag + "\r\n";
        if (request.find("If-None-Match: " + tag + "\r\n") != std::string::npos) {
            return "HTTP/1.1 304 Not Modified\r\n" + headers + "\r\n";
        }
        return ScriptedServer::replyBytes(200, std::to_string(m_version), headers);
    })};
    CurlHttpSession m_session{trustingOptions()};

    HttpReply read()
    {
        SessionProbe probe(m_session, getRequest(m_server.origin() + "/a"));
        HttpReply reply = probe.waitForReply();
        EXPECT_FALSE(probe.wasCalledInSend());
        return reply;
    }
    void write()
    {
        SessionProbe probe(m_session, postRequest(m_server.origin() + "/b"));
        EXPECT_EQ(probe.waitForReply().status, 200);
    }
};

TEST_F(CurlSessionCache, AFreshReplyIsNotFetchedAgain)
{
    m_headers = "Cache-Control: max-age=60\r\n";
    EXPECT_EQ(read().body, "1");
    EXPECT_EQ(read().body, "1");
    EXPECT_EQ(m_server.requestCount(), 1);
}

TEST_F(CurlSessionCache, WithoutATimeTheServerIsAskedByTheTag)
{
    EXPECT_EQ(read().body, "1");
    const HttpReply second = read();
    EXPECT_EQ(second.body, "1");
    EXPECT_EQ(second.status, 200);
    ASSERT_EQ(m_server.requestCount(), 2);
    EXPECT_THAT(m_server.requests()[0], Not(HasSubstr("If-None-Match")));
    EXPECT_THAT(m_server.requests()[1], HasSubstr("\r\nIf-None-Match: \"1\"\r\n"));
}

TEST_F(CurlSessionCache, AfterAWriteTheNewStateIsFetched)
{
    m_headers = "Cache-Control: max-age=60\r\n";
    EXPECT_EQ(read().body, "1");
    write();
    EXPECT_EQ(read().body, "2");
    EXPECT_EQ(read().body, "2");
    EXPECT_EQ(m_server.requestCount("GET "), 2);
}

TEST_F(CurlSessionCache, WhatMayNotBeStoredIsFetchedEachTime)
{
    m_headers = "Cache-Control: no-store\r\n";
    read();
    read();
    ASSERT_EQ(m_server.requestCount(), 2);
    EXPECT_THAT(m_server.requests()[1], Not(HasSubstr("If-None-Match")));
}

TEST_F(CurlSessionCache, EverySessionHasItsOwn)
{
    m_headers = "Cache-Control: max-age=60\r\n";
    read();
    CurlHttpSession other(trustingOptions());
    SessionProbe probe(other, getRequest(m_server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().body, "1");
    EXPECT_EQ(m_server.requestCount(), 2);
}

} // namespace
} // namespace trellisport::test
