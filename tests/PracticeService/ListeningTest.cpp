#include "CurlClient.h"
#include "ServiceAccess/RecordCoding.h"
#include "ServiceProcess.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::practice {
namespace {

class Listening : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(m_service.url().empty()); }
    void TearDown() override
    {
        // Whatever was sent, the service must still be there.
        EXPECT_EQ(CurlClient(m_service.authority()).get(m_service.api() + "/dashboard").status,
                  200);
    }
    /// Sends bytes as they are over TLS and gives the beginning of what comes back.
    std::string sendRaw(const std::string &bytes)
    {
        CurlClient client(m_service.authority());
        if (!client.sendOnly(m_service.url(), bytes))
            return {};
        CURL *curl = client.handle();
        std::string reply(4096, '\0');
        std::size_t received = 0;
        CURLcode code = CURLE_AGAIN;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (code == CURLE_AGAIN && std::chrono::steady_clock::now() < deadline) {
            code = curl_easy_recv(curl, reply.data(), reply.size(), &received);
            std::this_thread::yield();
        }
        reply.resize(received);
        return reply;
    }

    QTemporaryDir m_folder;
    ServiceProcess m_service{m_folder.path()};
};

TEST_F(Listening, RepliesCarryTheirKindTagAndCacheRule)
{
    CurlClient client(m_service.authority());
    const auto reply = client.get(m_service.api() + "/projects");
    EXPECT_EQ(reply.headers.at("content-type"), "application/json");
    EXPECT_EQ(reply.headers.at("cache-control"), "no-cache");
    EXPECT_EQ(reply.headers.at("content-length"), std::to_string(reply.body.size()));
    const auto again =
        client.get(m_service.api() + "/projects", {"If-None-Match: " + reply.headers.at("etag")});
    EXPECT_EQ(again.status, 304);
    EXPECT_TRUE(again.body.empty());
    EXPECT_EQ(client.get(m_service.api() + "/projects").status, 200);
}

TEST_F(Listening, RangesAndCompressionAreIgnored)
{
    CurlClient client(m_service.authority());
    const std::string whole = client.get(m_service.api() + "/config").body;
    for (const char *wish : {"Range: bytes=0-3", "Range: bytes=-4", "Range: bytes=9000000-9000003",
                             "Range: bytes=0-1,3-4", "Accept-Encoding: br, gzip, deflate"}) {
        const auto reply = client.get(m_service.api() + "/config", {wish});
        EXPECT_EQ(reply.status, 200) << wish;
        EXPECT_EQ(reply.body, whole) << wish;
        EXPECT_EQ(reply.headers.count("content-encoding"), 0U) << wish;
    }
}

TEST_F(Listening, OneConnectionServesAllRequests)
{
    CurlClient client(m_service.authority());
    for (int request = 0; request < 20; ++request)
        ASSERT_EQ(client.get(m_service.api() + "/dashboard").status, 200);
    long connections = -1;
    curl_easy_getinfo(client.handle(), CURLINFO_NUM_CONNECTS, &connections);
    EXPECT_EQ(connections, 0) << "the last request needed a new connection";
}

TEST_F(Listening, FilterWorksInTheUrl)
{
    CurlClient client(m_service.authority());
    const auto reply = client.get(m_service.api() + "/projects?status=completed");
    const auto projects = decode<std::vector<Project>>(reply.body);
    ASSERT_FALSE(projects.empty());
    for (const Project &project : projects)
        EXPECT_EQ(project.bidStatus, "completed");
}

TEST_F(Listening, RefusalsAreJson)
{
    CurlClient client(m_service.authority());
    const auto wrongMethod = client.send("DELETE", m_service.api() + "/projects", "");
    EXPECT_EQ(wrongMethod.status, 405);
    EXPECT_TRUE(decode<TextMap>(wrongMethod.body).contains("error"));
    const auto unknown = client.get(m_service.url() + "/favicon.ico");
    EXPECT_EQ(unknown.status, 404);
    EXPECT_TRUE(decode<TextMap>(unknown.body).contains("error"));
}

TEST_F(Listening, BodyThatIsTooLargeIsRefused)
{
    CurlClient client(m_service.authority());
    const auto reply = client.send("PUT", m_service.api() + "/config",
                                   R"({"a":")" + std::string(2'000'000, 'x') + "\"}");
    EXPECT_EQ(reply.status, 413);
    EXPECT_TRUE(decode<TextMap>(reply.body).contains("error"));
}

TEST_F(Listening, LargestBodyIsTaken)
{
    CurlClient client(m_service.authority());
    const std::string body = R"({"a":")" + std::string(1024 * 1024 - 8, 'x') + "\"}";
    EXPECT_EQ(client.send("PUT", m_service.api() + "/config", body).status, 200);
    EXPECT_EQ(client.get(m_service.api() + "/config").body, body);
}

TEST_F(Listening, BytesThatAreNoHttpDoNoHarm)
{
    const std::vector<std::string> garbage{
        "\r\n\r\n",
        "GET\r\n\r\n",
        "GET / HTTP/9.9\r\n\r\n",
        "BREW /pot HTTP/1.1\r\n\r\n",
        "GET /" + std::string(20'000, 'a') + " HTTP/1.1\r\n\r\n",
        "GET / HTTP/1.1\r\nX: " + std::string(20'000, 'a') + "\r\n\r\n",
        "GET /%zz%00%ff HTTP/1.1\r\nConnection: close\r\n\r\n",
        "POST /api/v1/devices HTTP/1.1\r\nContent-Length: -5\r\nConnection: close\r\n\r\n",
        ("POST /api/v1/devices HTTP/1.1\r\nTransfer-Encoding: chunked\r\n"
         "Connection: close\r\n\r\nzz\r\n\r\n"),
        std::string("\0\1\2\3\r\n\r\n", 8),
    };
    for (const std::string &bytes : garbage) {
        const std::string reply = sendRaw(bytes);
        EXPECT_TRUE(reply.empty() || reply.starts_with("HTTP/1.1 4"))
            << bytes.substr(0, 40) << " -> " << reply.substr(0, 200);
    }
}

TEST_F(Listening, LongestPathIsJustUnknown)
{
    CurlClient client(m_service.authority());
    EXPECT_EQ(client.get(m_service.url() + '/' + std::string(8000, 'a')).status, 404);
    EXPECT_EQ(client.send("PUT", m_service.url() + '/' + std::string(8000, 'a'), "{}").status, 404);
}

TEST_F(Listening, ManyClientsAtOnceAreServed)
{
    constexpr int clientCount = 12;
    std::vector<std::thread> clients;
    clients.reserve(clientCount);
    std::atomic<int> served{0};
    for (int number = 0; number < clientCount; ++number) {
        clients.emplace_back([&] {
            CurlClient client(m_service.authority());
            for (int request = 0; request < 15; ++request)
                served += client.get(m_service.api() + "/projects").status == 200 ? 1 : 0;
        });
    }
    for (std::thread &client : clients)
        client.join();
    EXPECT_EQ(served, clientCount * 15);
}

} // namespace
} // namespace trellisport::practice
