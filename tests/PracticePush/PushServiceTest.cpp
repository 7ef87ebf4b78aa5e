#include "PracticeService/Push/PushService.h"
#include "BusSupport/PrivateBus.h"
#include "Platform/Linux/Push/PushConnector.h"
#include "PracticeService/Push/EndpointServer.h"
#include "PracticeService/Push/PushPost.h"
#include "Support/Waiting.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <future>

namespace trellisport::practice {
namespace {

using test::waitUntil;
using ::testing::ElementsAre;
using ::testing::SizeIs;

const QString clientName = QStringLiteral("org.trellisport.test");

/// The push service with both its sides, and a connector for it.
class PushServiceTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_server.start({[this](const QString &path) {
                            bool isKnown = false;
                            QMetaObject::invokeMethod(
                                m_service.get(), [&] { isKnown = m_service->knows(path); },
                                Qt::BlockingQueuedConnection);
                            return isKnown;
                        },
                        [this](const QString &path, const QByteArray &message) {
                            QMetaObject::invokeMethod(m_service.get(), [this, path, message] {
                                m_service->deliver(path, message);
                            });
                        }});
        openService();
        m_ours.registerService(clientName);
    }
    void openService()
    {
        m_service.reset();
        m_service = std::make_unique<PushService>(
            m_bus.connect(), m_folder.filePath(QStringLiteral("clients.json")),
            QStringLiteral("https://127.0.0.1:%1/push/").arg(m_server.port()));
        ASSERT_TRUE(m_service->appear(QStringLiteral("org.unifiedpush.Distributor.test")));
    }
    void startClient()
    {
        m_connector.reset();
        m_connector = std::make_unique<platform::PushConnector>(
            m_ours,
            platform::PushRegistrationStore(m_folder.filePath(QStringLiteral("client.json"))),
            platform::PushConnector::Options{clientName, QStringLiteral("the tests"), {}},
            platform::PushConnector::Events{
                [this](const std::vector<std::uint8_t> &token) {
                    m_endpoints.push_back(QJsonDocument::fromJson(QByteArray(
                        reinterpret_cast<const char *>(token.data()),
                        static_cast<qsizetype>(token.size())))[QLatin1String("endpoint")]
                                              .toString()
                                              .toStdString());
                },
                [](const QString &) {},
                [this](const platform::PushMessage &message,
                       const std::function<void(platform::MessageFate)> &done) {
                    m_messages.push_back(message.content);
                    done(platform::MessageFate::Done);
                }});
        m_connector->registerDevice();
    }
    PushOutcome postTo(const std::string &endpoint, const QByteArray &content)
    {
        // Answered by this thread's service, so asked for from another.
        auto outcome = std::async(std::launch::async, [&] {
            return post({endpoint, content, false}, m_vapid, m_certificates.authority.string());
        });
        static_cast<void>(waitUntil([&] {
            return outcome.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        }));
        return outcome.get();
    }

    test::PrivateBus m_bus;
    QTemporaryDir m_folder;
    CertificateFiles m_certificates = ensureCertificates(m_folder.path().toStdString());
    Vapid m_vapid{m_folder.path().toStdString() + "/push-key.pem", "https://service.test"};
    std::unique_ptr<PushService> m_service;
    EndpointServer m_server{m_certificates, 0};
    QDBusConnection m_ours = m_bus.connect();
    std::unique_ptr<platform::PushConnector> m_connector;
    std::vector<std::string> m_endpoints;
    std::vector<QByteArray> m_messages;
};

TEST_F(PushServiceTest, WhatIsPostedToAnEndpointReachesTheClient)
{
    startClient();
    ASSERT_TRUE(waitUntil([&] { return m_endpoints.size() == 1; }));
    EXPECT_EQ(postTo(m_endpoints.front(), "hello"), PushOutcome::Accepted);
    ASSERT_TRUE(waitUntil([&] { return m_messages.size() == 1; }));
    EXPECT_THAT(m_messages, ElementsAre("hello"));
}

TEST_F(PushServiceTest, AnUnknownEndpointIsGone)
{
    startClient();
    ASSERT_TRUE(waitUntil([&] { return m_endpoints.size() == 1; }));
    std::string other = m_endpoints.front();
    other.back() = other.back() == '0' ? '1' : '0';
    EXPECT_EQ(postTo(other, "hello"), PushOutcome::Gone);
    EXPECT_THAT(m_messages, SizeIs(0));
}

TEST_F(PushServiceTest, EmptyAndTooLargeMessagesAreRefused)
{
    startClient();
    ASSERT_TRUE(waitUntil([&] { return m_endpoints.size() == 1; }));
    EXPECT_EQ(postTo(m_endpoints.front(), ""), PushOutcome::Failed);
    EXPECT_EQ(postTo(m_endpoints.front(), QByteArray(4097, 'x')), PushOutcome::Failed);
    EXPECT_EQ(postTo(m_endpoints.front(), QByteArray(4096, 'x')), PushOutcome::Accepted);
    ASSERT_TRUE(waitUntil([&] { return m_messages.size() == 1; }));
}

TEST_F(PushServiceTest, AClientKeepsItsEndpointOverRestartsOfBoth)
{
    startClient();
    ASSERT_TRUE(waitUntil([&] { return m_endpoints.size() == 1; }));
    openService();
    startClient();
    ASSERT_TRUE(waitUntil([&] { return m_endpoints.size() == 2; }));
    EXPECT_EQ(m_endpoints[0], m_endpoints[1]);
}

TEST_F(PushServiceTest, AStrangerCanNotTakeAnothersToken)
{
    EXPECT_TRUE(m_service->registerClient({QStringLiteral("org.a"), QStringLiteral("t"), 2}));
    EXPECT_TRUE(m_service->registerClient({QStringLiteral("org.a"), QStringLiteral("t"), 2}));
    EXPECT_FALSE(m_service->registerClient({QStringLiteral("org.b"), QStringLiteral("t"), 2}));
    EXPECT_FALSE(m_service->registerClient({QStringLiteral("org.a"), QString(), 2}));
    EXPECT_FALSE(
        m_service->registerClient({QStringLiteral("org.a"), QString(101, QLatin1Char('t')), 2}));
}

TEST_F(PushServiceTest, AnUnregisteredClientsEndpointIsGone)
{
    startClient();
    ASSERT_TRUE(waitUntil([&] { return m_endpoints.size() == 1; }));
    const QString token =
        platform::PushRegistrationStore(m_folder.filePath(QStringLiteral("client.json")))
            .load()
            .value()
            .places.last()
            .token;
    m_service->unregisterClient(token);
    EXPECT_EQ(postTo(m_endpoints.front(), "hello"), PushOutcome::Gone);
}

TEST(PushPost, NobodyThereIsAFailureAndSoIsAServerThatIsNotTrusted)
{
    const QTemporaryDir folder;
    const CertificateFiles files = ensureCertificates(folder.path().toStdString());
    const Vapid vapid(folder.path().toStdString() + "/push-key.pem", "https://service.test");
    std::string endpoint;
    {
        EndpointServer server(files, 0);
        server.start(
            {[](const QString &) { return true; }, [](const QString &, const QByteArray &) {}});
        endpoint =
            "https://127.0.0.1:" + std::to_string(server.port()) + "/push/" + std::string(32, '0');
        EXPECT_EQ(post({endpoint, "x", false}, vapid, files.authority.string()),
                  PushOutcome::Accepted);
        EXPECT_EQ(post({endpoint, "x", false}, vapid, {}), PushOutcome::Failed);
    }
    EXPECT_EQ(post({endpoint, "x", false}, vapid, files.authority.string()), PushOutcome::Failed);
    EXPECT_EQ(post({"http://127.0.0.1:1/", "x", false}, vapid, {}), PushOutcome::Failed);
}

} // namespace
} // namespace trellisport::practice
