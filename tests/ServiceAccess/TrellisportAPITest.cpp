#include "ServiceAccess/CodingErrors.h"
#include "TrellisportAPIFixture.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellisport {
namespace {

using platform::HttpRequest;
using platform::TransportError;
using platform::TransportFailure;
using test::finish;
using testing::SizeIs;

/// An operation and what it has to send.
struct Operation {
    const char *name;
    std::function<void(const TrellisportAPI &)> call;
    const char *reply;
    const char *method;
    const char *path;
    std::optional<std::string> body;
};

class TrellisportAPIOperations : public testing::TestWithParam<Operation> {};

TEST_P(TrellisportAPIOperations, SendsExactlyItsRequest)
{
    const Operation &operation = GetParam();
    const auto session = std::make_shared<test::FakeHttpSession>();
    test::InlineExecutor executor;
    const TrellisportAPI api(base, session, executor);
    session->queueReply(200, operation.reply);
    operation.call(api);
    ASSERT_EQ(session->requestCount(), 1U);
    const HttpRequest request = session->requests().front();
    EXPECT_EQ(request.method, operation.method);
    EXPECT_EQ(request.url, std::string(base) + operation.path);
    EXPECT_EQ(request.body, operation.body);
    ASSERT_THAT(request.headers, SizeIs(1));
    EXPECT_EQ(request.headers[0].name, "Content-Type");
    EXPECT_EQ(request.headers[0].value, "application/json");
}

const Operation operations[] = {
    {"getDashboard",
     [](const auto &api) { finish(api.getDashboard()); },
     dashboard,
     "GET",
     "/dashboard",
     {}},
    {"getProjects",
     [](const auto &api) { finish(api.getProjects()); },
     "[]",
     "GET",
     "/projects",
     {}},
    {"getProjectsWithStatus",
     [](const auto &api) { finish(api.getProjects("awarded")); },
     "[]",
     "GET",
     "/projects?status=awarded",
     {}},
    {"getProjectsWithEmptyStatus",
     [](const auto &api) { finish(api.getProjects("")); },
     "[]",
     "GET",
     "/projects?status=",
     {}},
    {"getProject",
     [](const auto &api) { finish(api.getProject("p1")); },
     R"({"id":"p1","title":"t"})",
     "GET",
     "/projects/p1",
     {}},
    {"getMessages",
     [](const auto &api) { finish(api.getMessages("p1")); },
     "[]",
     "GET",
     "/projects/p1/messages",
     {}},
    {"getDecisions",
     [](const auto &api) { finish(api.getDecisions("p1")); },
     "[]",
     "GET",
     "/projects/p1/decisions",
     {}},
    {"answerDecision", [](const auto &api) { finish(api.answerDecision("p1", "d2", "Yes \"é\"")); },
     "{}", "POST", "/projects/p1/decisions/d2/answer", R"({"answer":"Yes \"é\""})"},
    {"getBids",
     [](const auto &api) { finish(api.getBids("p1")); },
     "[]",
     "GET",
     "/projects/p1/bids",
     {}},
    {"getTimeline",
     [](const auto &api) { finish(api.getTimeline("p1")); },
     "[]",
     "GET",
     "/projects/p1/timeline",
     {}},
    {"getLogs",
     [](const auto &api) { finish(api.getLogs("p1")); },
     "[]",
     "GET",
     "/projects/p1/logs",
     {}},
    {"getReports",
     [](const auto &api) { finish(api.getReports("p1")); },
     "[]",
     "GET",
     "/projects/p1/reports",
     {}},
    {"getConfig", [](const auto &api) { finish(api.getConfig()); }, "{}", "GET", "/config", {}},
    {"updateConfig",
     [](const auto &api) {
         finish(api.updateConfig({{"b", "2"}, {"a", ""}}));
     },
     "{}", "PUT", "/config", R"({"a":"","b":"2"})"},
    {"updateConfigWithNothing", [](const auto &api) { finish(api.updateConfig({})); }, "{}", "PUT",
     "/config", "{}"},
    {"registerDevice", [](const auto &api) { finish(api.registerDevice("00ff")); },
     R"({"status":"ok"})", "POST", "/devices", R"({"device_token":"00ff"})"},
};

INSTANTIATE_TEST_SUITE_P(All, TrellisportAPIOperations, testing::ValuesIn(operations),
                         [](const auto &operation) { return std::string(operation.param.name); });

TEST_F(TrellisportAPITest, IdentifiersEnterTheAddressAsTheyAre)
{
    reply(200, R"({"id":"p1","title":"t"})");
    EXPECT_EQ(request(m_api.getProject("../a/b?c=d&e#f%20")).url,
              std::string(base) + "/projects/../a/b?c=d&e#f%20");
}

TEST_F(TrellisportAPITest, AStatusEntersTheAddressAsItIs)
{
    reply(200, "[]");
    EXPECT_EQ(request(m_api.getProjects("a&b=c/d#e")).url,
              std::string(base) + "/projects?status=a&b=c/d#e");
}

TEST_F(TrellisportAPITest, AnAddressThatCannotBeIsRefusedAndNothingSent)
{
    for (const char *id :
         {"a b", "a\nb", "é", "%zz", "a\"b", "<", "[", "a\\b", "{x}", "a^b", "`", "a|b", "\x7f"}) {
        try {
            finish(m_api.getProject(id));
            ADD_FAILURE() << "sent: " << id;
        } catch (const APIError &error) {
            EXPECT_EQ(error, APIError::invalidURL());
            EXPECT_STREQ(error.what(), "Invalid URL");
        }
    }
    EXPECT_THROW(finish(m_api.getProjects("a b")), APIError);
    EXPECT_THROW(finish(m_api.answerDecision("a b", "d", "x")), APIError);
    EXPECT_EQ(m_session->requestCount(), 0U);
}

TEST_F(TrellisportAPITest, ABodyThatCannotBeEncodedIsRefusedAndNothingSent)
{
    EXPECT_THROW(finish(m_api.registerDevice("\xff")), EncodingError);
    EXPECT_THROW(finish(m_api.updateConfig({{"\xc3", "a"}})), EncodingError);
    // The body comes before the address.
    EXPECT_THROW(finish(m_api.answerDecision("a b", "d", "\xff")), EncodingError);
    EXPECT_EQ(m_session->requestCount(), 0U);
}

TEST_F(TrellisportAPITest, EveryStatusFrom200To299Succeeds)
{
    for (const int status : {200, 201, 204, 250, 299}) {
        reply(status, dashboard);
        EXPECT_EQ(finish(m_api.getDashboard()).pendingDecisions, 3);
    }
}

TEST_F(TrellisportAPITest, EveryOtherStatusIsAnHttpError)
{
    for (const int status : {0, 100, 199, 300, 304, 404, 500, 999}) {
        const APIError error = httpFailure(status);
        EXPECT_EQ(error, APIError::httpError(status));
        EXPECT_EQ(error.errorDescription(), "HTTP error " + std::to_string(status));
        EXPECT_STREQ(error.what(), error.errorDescription().c_str());
    }
}

TEST_F(TrellisportAPITest, TheBodyOfAnErrorIsIgnored)
{
    EXPECT_EQ(httpFailure(404, R"({"error":"no such project"})"), APIError::httpError(404));
    EXPECT_EQ(httpFailure(500, dashboard), APIError::httpError(500));
    EXPECT_EQ(httpFailure(500, "\xff{"), APIError::httpError(500));
}

TEST_F(TrellisportAPITest, ATransportFailureIsPassedOnUnchanged)
{
    m_session->queueFailure(TransportFailure::HostNotFound, "Nobody is there.");
    try {
        finish(m_api.getDashboard());
        ADD_FAILURE() << "no failure";
    } catch (const TransportError &error) {
        EXPECT_EQ(error.failure(), TransportFailure::HostNotFound);
        EXPECT_STREQ(error.what(), "Nobody is there.");
    }
    EXPECT_EQ(m_session->requestCount(), 1U);
}

TEST_F(TrellisportAPITest, AReplyThatIsNotWhatWasPromisedIsADecodingError)
{
    for (const char *body : {"", "{}", "[]", "null", "{", "\xff"}) {
        reply(200, body);
        EXPECT_THROW(finish(m_api.getDashboard()), DecodingError) << body;
    }
}

TEST_F(TrellisportAPITest, OneBadElementFailsTheWholeList)
{
    reply(200, R"([{"id":"1","title":"a"},{"id":"2"}])");
    EXPECT_THROW(finish(m_api.getProjects()), DecodingError);
}

TEST_F(TrellisportAPITest, TheRepliesOfWritesMustBeMapsOfTexts)
{
    const std::vector<std::function<QCoro::Task<>()>> writes{
        [this] { return m_api.answerDecision("p", "d", "yes"); },
        [this] { return m_api.updateConfig({}); },
        [this] { return m_api.registerDevice("00"); },
    };
    for (const auto &write : writes) {
        for (const char *body : {"{}", R"({"status":"ok","more":""})"}) {
            reply(201, body);
            EXPECT_NO_THROW(finish(write())) << body;
        }
        for (const char *body : {"", "[]", R"({"a":1})", R"({"a":true})", R"({"a":null})", "null",
                                 R"({"a":{}})", R"("text")"}) {
            reply(200, body);
            EXPECT_THROW(finish(write()), DecodingError) << body;
        }
    }
}

TEST_F(TrellisportAPITest, AListComesInItsOrder)
{
    reply(200, R"([{"id":"2","title":"b"},{"id":"1","title":"a"},{"id":"2","title":"b"}])");
    const std::vector<Project> projects = finish(m_api.getProjects());
    ASSERT_THAT(projects, SizeIs(3));
    EXPECT_EQ(projects[1].id, "1");
}

} // namespace
} // namespace trellisport
