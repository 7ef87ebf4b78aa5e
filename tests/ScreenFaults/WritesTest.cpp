#include "Platform/Linux/CurlHttpSession.h"
#include "Platform/Linux/ThreadPoolExecutor.h"
#include "Platform/Platform.h"
#include "Presentation/LinkController.h"
#include "ProjectDetail/Decisions/DecisionsViewModel.h"
#include "QmlSupport/QmlScene.h"
#include "Settings/SettingsViewModel.h"
#include "Support/FakeLinkOpener.h"
#include "Support/ManualClock.h"
#include "Support/ScriptedServer.h"
#include "Support/Waiting.h"

#include <QTest>

#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace trellisport::test {
namespace {

using testing::Each;
using testing::EndsWith;

/// What becomes of a write that a server has read.
struct Fate {
    const char *name;
    bool isTaken; ///< the client learns that it succeeded
    std::function<void(ServerConnection &)> play;
};

void PrintTo(const Fate &fate, std::ostream *stream)
{
    *stream << fate.name;
}

void sendSome(ServerConnection &connection, std::string_view bytes)
{
    connection.send(bytes);
    connection.close();
}

const std::vector<Fate> fates{
    {"Taken", true,
     [](ServerConnection &connection) { connection.send(ScriptedServer::replyBytes(200, "{}")); }},
    {"Refused", false,
     [](ServerConnection &connection) { connection.send(ScriptedServer::replyBytes(500, "{}")); }},
    {"Closed", false, [](ServerConnection &connection) { connection.close(); }},
    {"Reset", false, [](ServerConnection &connection) { connection.reset(); }},
    {"CutWithinTheHeaders", false,
     [](ServerConnection &connection) { sendSome(connection, "HTTP/1.1 200 OK\r\nContent-"); }},
    {"CutWithinTheBody", false,
     [](ServerConnection &connection) {
         sendSome(connection, "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{");
     }},
    {"AnsweredWithNoise", false, [](ServerConnection &connection) {
         connection.send(ScriptedServer::replyBytes(200, "{\"status\":"));
     }}};

/// Counts the writes that are handed to a session.
class CountingSession : public platform::HttpSession {
public:
    explicit CountingSession(std::shared_ptr<platform::HttpSession> session)
        : m_session(std::move(session))
    {
    }

    [[nodiscard]] std::unique_ptr<platform::HttpExchange> send(platform::HttpRequest request,
                                                               Completion completion) override
    {
        m_writes += request.method != "GET";
        return m_session->send(std::move(request), std::move(completion));
    }
    [[nodiscard]] int writes() const { return m_writes; }

private:
    std::shared_ptr<platform::HttpSession> m_session;
    std::atomic<int> m_writes = 0;
};

/// The screens that write, touched as a finger does, over the real session to a real server that
/// counts what reaches it.
class Writes : public testing::TestWithParam<Fate> {
protected:
    void SetUp() override
    {
        QObject::connect(&settings, &SettingsViewModel::saveButtonChanged,
                         [this] { ++turnsOfSave; });
        QObject::connect(&decisions, &DecisionsViewModel::answerEnded, [this] { ++answersEnded; });
    }
    void TearDown() override
    {
        scene.reset();
        session->stop();
        executor.finish();
    }

    void serve(ServerConnection &connection)
    {
        while (const auto request = connection.readRequest()) {
            if (request->starts_with("GET ")) {
                connection.send(ScriptedServer::replyBytes(
                    200, request->find("/config ") != std::string::npos
                             ? R"({"max_daily_bids":"5"})"
                             : R"([{"id":"d1","question":"Which?","status":"pending"}])"));
            } else {
                GetParam().play(connection);
            }
        }
    }
    static std::shared_ptr<platform::CurlHttpSession> newSession()
    {
        platform::CurlHttpOptions options;
        options.authorityFile = ScriptedServer::authorityFile();
        options.systemAuthorities = options.authorityFile;
        return std::make_shared<platform::CurlHttpSession>(std::move(options));
    }

    void showSettings()
    {
        scene = std::make_unique<QmlScene>(
            QStringLiteral("Settings"), QStringLiteral("SettingsView"),
            QVariantMap{{QStringLiteral("viewModel"), QVariant::fromValue(&settings)},
                        {QStringLiteral("links"), QVariant::fromValue(&links)}});
        ASSERT_TRUE(eventually([&] { return scene->has(QStringLiteral("sections")); }));
        (void)scene->picture();
        typeInto(scene->item(QStringLiteral("maxDailyBids")), "77");
    }
    void showDecisions()
    {
        scene = std::make_unique<QmlScene>(
            QStringLiteral("ProjectDetail"), QStringLiteral("Decisions/DecisionsTab"),
            QVariantMap{{QStringLiteral("viewModel"), QVariant::fromValue(&decisions)}});
        ASSERT_TRUE(eventually([&] { return scene->has(QStringLiteral("submitButton")); }));
        (void)scene->picture();
        typeInto(answerField(), "this");
    }
    [[nodiscard]] QQuickItem *answerField() const
    {
        return scene->item(QStringLiteral("field"), scene->item(QStringLiteral("answerField")));
    }
    void typeInto(QQuickItem *field, const char *keys)
    {
        scene->tap(field);
        QTest::keyClick(&scene->window(), Qt::Key_A, Qt::ControlModifier);
        for (const char *key = keys; *key != 0; ++key) {
            QTest::keyClick(&scene->window(), *key);
        }
    }
    void tap(const char *control) { scene->tap(scene->item(QString::fromLatin1(control))); }
    /// Whether the saves of so many presses have come to their end on the screen: each tells of the
    /// button when it begins and when it ends.
    [[nodiscard]] bool eventuallySaved(int presses) const
    {
        return eventually([&] { return turnsOfSave >= 2 * presses; });
    }
    [[nodiscard]] bool eventuallyAnswered(int presses) const
    {
        return eventually([&] { return answersEnded >= presses; });
    }
    /// Writes that were begun and that reached the server, each counted: nothing is under way.
    void expectWrites(int count) const
    {
        runPendingEvents();
        EXPECT_EQ(counted->writes(), count);
        EXPECT_EQ(static_cast<int>(arrived().size()), count);
    }
    [[nodiscard]] std::vector<std::string> arrived() const
    {
        std::vector<std::string> writes = server.requests();
        std::erase_if(writes,
                      [](const std::string &request) { return request.starts_with("GET "); });
        return writes;
    }

    ScriptedServer server{[this](ServerConnection &connection) { serve(connection); }};
    platform::ThreadPoolExecutor executor;
    std::shared_ptr<platform::CurlHttpSession> session = newSession();
    std::shared_ptr<CountingSession> counted = std::make_shared<CountingSession>(session);
    TrellisportAPI api{server.origin() + "/api/v1", counted, executor};
    ManualClock clock;
    FakeLinkOpener opener;
    LinkController links{opener};
    SettingsViewModel settings{api, clock, parseServiceAddress("https://agent.example/api/v1")};
    DecisionsViewModel decisions{api, platform::Platform::current().textRules(), "p1"};
    int turnsOfSave = 0;
    int answersEnded = 0;
    std::unique_ptr<QmlScene> scene;
};

TEST_P(Writes, APressOfSaveIsOneRequestAndTwoAreTwo)
{
    showSettings();
    tap("saveButton");
    ASSERT_TRUE(eventuallySaved(1));
    expectWrites(1);
    tap("saveButton");
    tap("saveButton");
    ASSERT_TRUE(eventuallySaved(3));
    expectWrites(3);
    EXPECT_THAT(arrived(), Each(EndsWith("\r\n\r\n{\"max_daily_bids\":\"77\"}")));
    EXPECT_EQ(textOf(scene->item(QStringLiteral("maxDailyBids"))), u"77");
}

TEST_P(Writes, APressOfSubmitIsOneRequestAndTwoAreTwo)
{
    showDecisions();
    const int reads = server.requestCount("GET ");
    tap("submitButton");
    tap("submitButton");
    ASSERT_TRUE(eventuallyAnswered(2));
    expectWrites(2);
    if (GetParam().isTaken) {
        EXPECT_TRUE(textOf(answerField()).isEmpty());
        EXPECT_EQ(server.requestCount("GET "), reads + 2);
        // Nothing is left to be sent.
        tap("submitButton");
        expectWrites(2);
    } else {
        EXPECT_EQ(textOf(answerField()), u"this");
        EXPECT_EQ(server.requestCount("GET "), reads);
        tap("submitButton");
        ASSERT_TRUE(eventuallyAnswered(3));
        expectWrites(3);
        EXPECT_EQ(textOf(answerField()), u"this");
    }
    EXPECT_THAT(arrived(), Each(EndsWith("\r\n\r\n{\"answer\":\"this\"}")));
    EXPECT_THAT(arrived(), Each(testing::StartsWith("POST /api/v1/projects/p1/decisions/d1/")));
}

std::string nameOf(const testing::TestParamInfo<Fate> &fate)
{
    return fate.param.name;
}

INSTANTIATE_TEST_SUITE_P(Fates, Writes, testing::ValuesIn(fates), nameOf);

} // namespace
} // namespace trellisport::test
