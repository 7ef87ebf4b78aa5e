#include "PracticeDesk.h"

#include <gmock/gmock.h>

namespace trellisport::practice {
namespace {

struct BadRequest {
    const char *method;
    std::string path;
    std::string body;
    int status;
    const char *contentType = "application/json";
};

TEST(Refusals, EachSaysWhyInJson)
{
    PracticeDesk desk;
    const auto open = desk.openDecisions().front();
    const std::string project = "/api/v1/projects/" + open.project;
    const std::string answer = project + "/decisions/" + open.decision + "/answer";
    const std::vector<BadRequest> requests{
        {"GET", "", {}, 404},
        {"GET", "/api", {}, 404},
        {"GET", "/api/v1", {}, 404},
        {"GET", "/api/v1/", {}, 404},
        {"GET", "/api/v1x/dashboard", {}, 404},
        {"GET", "/api/v2/dashboard", {}, 404},
        {"GET", "/api/v1/dashboard/", {}, 404},
        {"GET", "/api/v1//dashboard", {}, 404},
        {"GET", "/api/v1/dashboard/more", {}, 404},
        {"GET", "/api/v1/Dashboard", {}, 404},
        {"GET", "/api/v1/projects/", {}, 404},
        {"GET", "/api/v1/projects/nobody", {}, 404},
        {"GET", "/api/v1/projects/nobody/messages", {}, 404},
        {"GET", "/api/v1/projects/' OR 1=1 --/logs", {}, 404},
        {"GET", project + "/", {}, 404},
        {"GET", project + "/nothing", {}, 404},
        {"GET", project + "/logs/1", {}, 404},
        {"GET", project + "/decisions/" + open.decision, {}, 404},
        {"GET", answer + "/more", {}, 404},
        {"GET", "/control/nothing", {}, 404},
        {"POST", "/control/tick?event=earthquake", {}, 422},
        {"POST", "/control/tick", {}, 422},
        {"POST", "/control/fault?status=500", {}, 422},
        {"POST", "/control/fault?path=/dashboard&status=1000", {}, 422},
        {"POST", "/control/advance?seconds=-1", {}, 422},
        {"GET", "/control/tick?event=award", {}, 405},
        {"POST", "/", {}, 405},
        {"POST", "/api/v1/dashboard", "{}", 405},
        {"PUT", "/api/v1/projects", "{}", 405},
        {"DELETE", project, {}, 405},
        {"POST", project + "/logs", "{}", 405},
        {"POST", "/api/v1/config", "{}", 405},
        {"GET", "/api/v1/devices", {}, 405},
        {"GET", answer, {}, 405},
        {"OPTIONS", "/api/v1/dashboard", {}, 405},
        {"POST", answer, {}, 400},
        {"POST", answer, "yes", 400},
        {"POST", answer, "{\"answer\": \"yes\"", 400},
        {"POST", answer, "{\"answer\": \"\xff\"}", 400},
        {"POST", answer, std::string("\0", 1), 400},
        {"POST", answer, std::string(100'000, '['), 400},
        {"POST", answer, "[]", 422},
        {"POST", answer, "null", 422},
        {"POST", answer, "\"yes\"", 422},
        {"POST", answer, "{}", 422},
        {"POST", answer, "{\"answer\": 1}", 422},
        {"POST", answer, "{\"answer\": null}", 422},
        {"POST", answer, "{\"answer\": \"\"}", 422},
        {"POST", answer, "{\"Answer\": \"yes\"}", 422},
        {"POST", answer, "{\"answer\": \"yes\", \"more\": \"no\"}", 422},
        {"POST", answer, "{\"answer\": \"yes\"}", 415, ""},
        {"POST", answer, "answer=yes", 415, "application/x-www-form-urlencoded"},
        {"POST", project + "/decisions/nothing/answer", "{\"answer\": \"yes\"}", 404},
        {"POST", "/api/v1/projects/nobody/decisions/nothing/answer", "{\"answer\": \"yes\"}", 404},
        {"POST", "/api/v1/devices", "{\"token\": \"ab\"}", 422},
        {"POST", "/api/v1/devices", "{\"device_token\": [\"ab\"]}", 422},
        {"PUT", "/api/v1/config", "{\"max_daily_bids\": 5}", 422},
        {"PUT", "/api/v1/config", "{\"preview_mode\": true}", 422},
        {"PUT", "/api/v1/config", "[{}]", 422},
        {"PUT", "/api/v1/config", "", 400},
    };
    for (const BadRequest &request : requests) {
        const ServiceReply reply =
            desk.send(request.method, request.path, request.body, request.contentType);
        const std::string name =
            request.method + (' ' + request.path) + ' ' + request.body.substr(0, 60);
        EXPECT_EQ(reply.status, request.status) << name;
        EXPECT_EQ(reply.contentType, "application/json") << name;
        EXPECT_THAT(decode<TextMap>(reply.body),
                    testing::ElementsAre(testing::Pair("error", testing::Not(testing::IsEmpty()))))
            << name;
    }
}

TEST(Refusals, NothingIsChanged)
{
    PracticeDesk desk;
    const std::string config = desk.get("/api/v1/config").body;
    EXPECT_EQ(desk.send("PUT", "/api/v1/config", R"({"preview_mode": "true", "x": 1})").status,
              422);
    EXPECT_EQ(desk.get("/api/v1/config").body, config);
}

TEST(Refusals, WrongMethodNamesTheRightOnes)
{
    PracticeDesk desk;
    EXPECT_THAT(desk.send("DELETE", "/api/v1/config").headers,
                testing::Contains(testing::Pair("Allow", "GET, PUT")));
}

TEST(Refusals, ControlPathsAreAbsentUnlessAskedFor)
{
    PracticeDesk desk;
    Service plain(desk.keeper(), false);
    ServiceRequest request;
    request.method = "POST";
    request.path = "/control/tick";
    request.query.emplace("event", "award");
    EXPECT_EQ(plain.handle(request).status, 404);
}

TEST(Refusals, ContentTypeMayCarryACharset)
{
    PracticeDesk desk;
    EXPECT_EQ(desk.send("PUT", "/api/v1/config", "{}", "Application/JSON; charset=utf-8").status,
              200);
}

} // namespace
} // namespace trellisport::practice
