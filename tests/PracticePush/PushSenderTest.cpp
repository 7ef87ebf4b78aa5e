#include "PracticeService/Push/PushSender.h"
#include "Platform/Linux/Push/PushEndpoint.h"
#include "Platform/Linux/Push/WebPushDecryption.h"
#include "PracticeService/Push/DeviceToken.h"
#include "PracticeService/Push/PushPayload.h"
#include "Support/Waiting.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <thread>

namespace trellisport::practice {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

const Alert question{"decision_needed", "p1", "d7", "A question", "Which way?"};

std::string tokenFor(const char *endpoint, const platform::PushKeys &keys)
{
    const auto token = platform::deviceToken(QLatin1String(endpoint), keys);
    return QByteArray(reinterpret_cast<const char *>(token.data()),
                      static_cast<qsizetype>(token.size()))
        .toHex()
        .toStdString();
}

TEST(DeviceToken, WhatTheConsoleRegistersIsRead)
{
    const auto keys = platform::PushKeys::generate().value();
    const auto target = readDeviceToken(tokenFor("https://push.test/a", keys));
    ASSERT_TRUE(target);
    EXPECT_EQ(target->endpoint, "https://push.test/a");
    EXPECT_EQ(target->recipient.publicKey, keys.publicKey);
    EXPECT_EQ(target->recipient.authSecret, keys.authSecret);
}

TEST(DeviceToken, AnythingElseIsNone)
{
    const auto keys = platform::PushKeys::generate().value();
    const auto hex = [](const char *text) { return QByteArray(text).toHex().toStdString(); };
    for (const std::string &token :
         {std::string(), std::string("00ab10"), std::string("not hexadecimal"), hex("{}"),
          hex("[]"), hex(R"({"endpoint":"https://push.test/a"})"),
          hex(R"({"endpoint":"https://push.test/a","p256dh":"AA","auth":"AA"})"),
          tokenFor("http://push.test/a", keys), tokenFor("", keys)}) {
        EXPECT_FALSE(readDeviceToken(token)) << token;
    }
}

TEST(PushPayload, CarriesWhatTheConsoleUnderstands)
{
    const QJsonObject payload = QJsonDocument::fromJson(pushPayload(question, "n1")).object();
    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "id": "n1", "type": "decision_needed", "project_id": "p1", "decision_id": "d7",
        "aps": {"alert": {"title": "A question", "body": "Which way?"}}})")
                                     .object();
    EXPECT_EQ(payload, expected);
}

TEST(PushPayload, WithoutADecisionNamesNone)
{
    const QJsonObject payload =
        QJsonDocument::fromJson(pushPayload({"dev_error", "p1", "", "t", "b"}, "n1")).object();
    EXPECT_FALSE(payload.contains(QStringLiteral("decision_id")));
}

TEST(PushPayload, AlwaysFitsIntoOneMessage)
{
    std::string worst;
    for (int count = 0; count < 5000; ++count) {
        worst += "\x01";
    }
    const QByteArray payload =
        pushPayload({"decision_needed", "p1", "d7", worst, worst}, std::string(36, 'x'));
    EXPECT_LE(payload.size(), 3993);
    std::string wide;
    for (int count = 0; count < 5000; ++count) {
        wide += "\xF0\x9F\x98\x80";
    }
    const QByteArray cut = pushPayload({"decision_needed", "p1", "d7", wide, wide}, "n1");
    EXPECT_LE(cut.size(), 3993);
    EXPECT_FALSE(cut.contains("\xEF\xBF\xBD")); // no half of a character
}

class PushSenderTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        m_mayHang = false;
        m_sender.stop();
    }

    void start(std::chrono::milliseconds silence = std::chrono::hours(1))
    {
        m_sender.start({[this] {
                            const std::lock_guard lock(m_mutex);
                            return m_tokens;
                        },
                        [this](const std::string &token) {
                            const std::lock_guard lock(m_mutex);
                            std::erase(m_tokens, token);
                            m_forgotten.push_back(token);
                        }},
                       [this](const PushPost &message) {
                           std::unique_lock lock(m_mutex);
                           m_posts.push_back(message);
                           if (message.endpoint == m_hanging) {
                               lock.unlock();
                               while (m_mayHang) {
                                   std::this_thread::sleep_for(std::chrono::milliseconds(1));
                               }
                               return PushOutcome::Failed;
                           }
                           auto &outcomes = m_outcomes[message.endpoint];
                           if (outcomes.empty()) {
                               return PushOutcome::Accepted;
                           }
                           const PushOutcome outcome = outcomes.front();
                           outcomes.erase(outcomes.begin());
                           return outcome;
                       },
                       {std::chrono::milliseconds(5), silence});
    }
    bool forgot(std::size_t count)
    {
        return test::waitUntil([&] {
            const std::lock_guard lock(m_mutex);
            return m_forgotten.size() == count;
        });
    }
    [[nodiscard]] std::vector<std::string> endpoints()
    {
        const std::lock_guard lock(m_mutex);
        std::vector<std::string> result;
        for (const PushPost &message : m_posts) {
            result.push_back(message.endpoint);
        }
        return result;
    }
    bool posted(std::size_t count)
    {
        return test::waitUntil([&] { return endpoints().size() == count; });
    }

    platform::PushKeys m_keys = platform::PushKeys::generate().value();
    std::mutex m_mutex;
    std::vector<std::string> m_tokens{tokenFor("https://push.test/a", m_keys)};
    std::vector<std::string> m_forgotten;
    std::map<std::string, std::vector<PushOutcome>> m_outcomes;
    std::vector<PushPost> m_posts;
    std::string m_hanging; ///< posts to it do not come back before the end
    std::atomic<bool> m_mayHang = true;
    PushSender m_sender;
};

TEST_F(PushSenderTest, EveryDeviceGetsAMessageThatOnlyItCanOpen)
{
    const auto otherKeys = platform::PushKeys::generate().value();
    m_tokens.push_back(tokenFor("https://push.test/b", otherKeys));
    m_tokens.push_back("00ab10"); // reached in another way
    m_sender.push(question);
    start();
    ASSERT_TRUE(posted(2));
    EXPECT_THAT(endpoints(), UnorderedElementsAre("https://push.test/a", "https://push.test/b"));
    for (const PushPost &message : m_posts) {
        const bool isFirst = message.endpoint == "https://push.test/a";
        const auto content =
            platform::decryptPushMessage(isFirst ? m_keys : otherKeys, message.content);
        ASSERT_TRUE(content);
        EXPECT_EQ(QJsonDocument::fromJson(*content)[QLatin1String("project_id")].toString(),
                  QStringLiteral("p1"));
        EXPECT_FALSE(platform::decryptPushMessage(isFirst ? otherKeys : m_keys, message.content));
    }
}

TEST_F(PushSenderTest, ADecisionIsUrgentAndNothingElseIs)
{
    start();
    m_sender.push(question);
    m_sender.push({"project_awarded", "p1", "", "t", "b"});
    ASSERT_TRUE(posted(2));
    EXPECT_TRUE(m_posts[0].isUrgent);
    EXPECT_FALSE(m_posts[1].isUrgent);
}

TEST_F(PushSenderTest, ADeviceWhoseEndpointIsGoneIsForgotten)
{
    const std::string gone = m_tokens.front();
    m_outcomes["https://push.test/a"] = {PushOutcome::Gone};
    start();
    m_sender.push(question);
    ASSERT_TRUE(posted(1));
    ASSERT_TRUE(forgot(1));
    EXPECT_THAT(m_forgotten, ElementsAre(gone));
}

TEST_F(PushSenderTest, AFailureIsTriedAgainAFewTimesAndForgetsNothing)
{
    m_outcomes["https://push.test/a"] = std::vector(10, PushOutcome::Failed);
    start();
    m_sender.push(question);
    ASSERT_TRUE(posted(3));
    m_outcomes.clear();
    m_sender.push(question); // nothing of the first comes after it
    ASSERT_TRUE(posted(4));
    EXPECT_THAT(m_forgotten, SizeIs(0));
    EXPECT_THAT(m_tokens, SizeIs(1));
}

TEST_F(PushSenderTest, WhatFailsIsTheSameMessageEachTime)
{
    m_outcomes["https://push.test/a"] = {PushOutcome::Failed};
    start();
    m_sender.push(question);
    ASSERT_TRUE(posted(2));
    EXPECT_EQ(m_posts[0].content, m_posts[1].content);
}

TEST_F(PushSenderTest, OneThatHangsHoldsUpNoOther)
{
    m_hanging = "https://push.test/hangs";
    m_tokens.insert(m_tokens.begin(), tokenFor(m_hanging.c_str(), m_keys));
    start();
    for (int count = 0; count < 8; ++count) {
        m_sender.push(question);
    }
    EXPECT_TRUE(test::waitUntil([&] {
        const auto posts = endpoints();
        return std::count(posts.begin(), posts.end(), "https://push.test/a") == 8;
    }));
    const auto posts = endpoints();
    EXPECT_EQ(std::count(posts.begin(), posts.end(), m_hanging), 1);
}

TEST_F(PushSenderTest, ADeviceThatIsSilentForLongIsForgotten)
{
    m_outcomes["https://push.test/a"] = std::vector(10, PushOutcome::Failed);
    start(std::chrono::milliseconds(12));
    m_sender.push(question); // fails three times within 15 ms
    EXPECT_TRUE(forgot(1));
}

TEST_F(PushSenderTest, ADeviceThatAnswersNowAndThenIsKept)
{
    auto &outcomes = m_outcomes["https://push.test/a"];
    for (int count = 0; count < 20; ++count) {
        outcomes.push_back(PushOutcome::Failed);
        outcomes.push_back(PushOutcome::Accepted);
    }
    start(std::chrono::milliseconds(60));
    for (int count = 0; count < 20; ++count) {
        m_sender.push(question);
        ASSERT_TRUE(posted(2 * static_cast<std::size_t>(count) + 2));
    }
    EXPECT_THAT(m_forgotten, SizeIs(0));
}

} // namespace
} // namespace trellisport::practice
