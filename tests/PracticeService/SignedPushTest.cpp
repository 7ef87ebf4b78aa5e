#include "CurlClient.h"
#include "PushEndpoint.h"
#include "ServiceProcess.h"
#include "SignedToken.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include <filesystem>

namespace trellisport::practice {
namespace {

using testing::HasSubstr;
using testing::Not;

class SignedPush : public testing::Test {
protected:
    void SetUp() override { start(); }
    void start()
    {
        m_service.reset(); // the folder is one service's at a time
        m_service = std::make_unique<ServiceProcess>(m_folder.path(),
                                                     QStringList{QStringLiteral("--verbose")});
        ASSERT_FALSE(m_service->url().empty());
    }
    [[nodiscard]] std::string folder() const { return m_folder.path().toStdString(); }
    [[nodiscard]] std::string pushKey() const
    {
        return CurlClient(m_service->authority()).get(m_service->url() + "/app/push-key").body;
    }
    [[nodiscard]] std::string devices() const
    {
        return CurlClient(m_service->authority()).get(m_service->url() + "/control/devices").body;
    }
    void registerAt(const PushEndpoint &endpoint) const
    {
        ASSERT_EQ(CurlClient(m_service->authority())
                      .send("POST", m_service->api() + "/devices",
                            R"({"device_token":")" + endpoint.deviceToken() + "\"}")
                      .status,
                  200);
    }
    void ask() const
    {
        ASSERT_EQ(CurlClient(m_service->authority())
                      .send("POST", m_service->url() + "/control/tick?event=decision", "")
                      .status,
                  200);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;
};

TEST_F(SignedPush, EveryMessageIsSignedForItsPushServiceByTheKeyThatIsOffered)
{
    PushEndpoint one(folder());
    PushEndpoint other(folder());
    registerAt(one);
    registerAt(other);
    ask();
    ask();
    for (PushEndpoint *endpoint : {&one, &other}) {
        const auto posts = endpoint->posts(2);
        ASSERT_EQ(posts.size(), 2U);
        for (const auto &post : posts) {
            const auto token = readAuthorization(post.authorization);
            ASSERT_TRUE(token) << post.authorization;
            EXPECT_TRUE(token->isGenuine);
            EXPECT_EQ(token->key, pushKey());
            EXPECT_EQ(token->claims[QLatin1String("aud")].toString().toStdString(),
                      endpoint->origin());
            EXPECT_EQ(token->claims[QLatin1String("sub")].toString().toStdString(),
                      m_service->url());
            EXPECT_EQ(post.encoding, "aes128gcm");
            EXPECT_EQ(post.timeToLive, "86400");
            EXPECT_FALSE(post.body.empty());
        }
    }
}

TEST_F(SignedPush, TheKeyIsPlainTextThatIsAskedForEachTime)
{
    const auto reply = CurlClient(m_service->authority()).get(m_service->url() + "/app/push-key");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.headers.at("content-type"), "text/plain");
    EXPECT_EQ(reply.headers.at("cache-control"), "no-cache");
    EXPECT_EQ(reply.body.size(), 87U);
}

TEST_F(SignedPush, TheKeySurvivesARestartAndGoesOnSigning)
{
    PushEndpoint endpoint(folder());
    registerAt(endpoint);
    const std::string before = pushKey();
    start();
    EXPECT_EQ(pushKey(), before);
    ask();
    const auto posts = endpoint.posts(1);
    ASSERT_EQ(posts.size(), 1U);
    const auto token = readAuthorization(posts[0].authorization);
    ASSERT_TRUE(token);
    EXPECT_TRUE(token->isGenuine);
    EXPECT_EQ(token->key, before);
}

TEST_F(SignedPush, NoOutputHoldsTheKeyOrWhatItSigned)
{
    PushEndpoint endpoint(folder());
    registerAt(endpoint);
    ask();
    const auto posts = endpoint.posts(1);
    ASSERT_EQ(posts.size(), 1U);
    const std::string shown = pushKey();
    QFile file(m_folder.filePath(QStringLiteral("push-key.pem")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(std::filesystem::status(folder() + "/push-key.pem").permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    const QList<QByteArray> lines = file.readAll().split('\n');
    ASSERT_GE(lines.size(), 4);
    ASSERT_TRUE(m_service->terminate(5000));
    const std::string output = (m_service->errors() + m_service->output()).toStdString();
    EXPECT_THAT(output, HasSubstr("/control/tick")); // it does tell its requests
    for (const QByteArray &line : lines) {
        if (!line.isEmpty()) {
            EXPECT_THAT(output, Not(HasSubstr(line.toStdString())));
        }
    }
    EXPECT_THAT(output, Not(HasSubstr("vapid")));
    EXPECT_THAT(output, Not(HasSubstr(shown)));
}

TEST_F(SignedPush, AnEndpointThatIsGoneIsForgotten)
{
    for (const int status : {404, 410}) {
        PushEndpoint endpoint(folder(), status);
        registerAt(endpoint);
        ASSERT_NE(devices(), "{}");
        ask();
        ASSERT_EQ(endpoint.posts(1).size(), 1U);
        EXPECT_TRUE(test::waitUntil([&] { return devices() == "{}"; })) << devices();
    }
}

TEST_F(SignedPush, OneThatRefusesTheSignatureIsKept)
{
    PushEndpoint endpoint(folder(), 403);
    registerAt(endpoint);
    ask();
    ASSERT_EQ(endpoint.posts(2).size(), 2U); // tried again
    EXPECT_NE(devices(), "{}");
}

} // namespace
} // namespace trellisport::practice
