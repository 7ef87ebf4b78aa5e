#include "PracticeDesk.h"
#include "ServiceAccess/RecordCoding.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace trellisport::practice {
namespace {

using testing::ElementsAre;
using testing::Pair;

TEST(Faults, AFaultOfNoKindIsRefused)
{
    PracticeDesk desk;
    EXPECT_EQ(desk.send("POST", "/control/fault?path=/dashboard&kind=odd").status, 422);
    EXPECT_EQ(desk.get("/api/v1/dashboard").status, 200);
}

TEST(Faults, WritesAreToldInTheOrderOfArrivalWhateverBecameOfThem)
{
    PracticeDesk desk;
    const auto status = [&](const char *method, const char *path, const char *body) {
        return desk.send(method, path, body).status;
    };
    EXPECT_EQ(status("POST", "/control/fault?path=/config&status=503", ""), 200);
    EXPECT_EQ(status("PUT", "/api/v1/config", R"({"a":"1"})"), 503);
    EXPECT_EQ(status("POST", "/api/v1/projects/nobody/decisions/d/answer", R"({"answer":"x"})"),
              404);
    EXPECT_EQ(status("POST", "/api/v1/devices", "\xff"), 400);
    EXPECT_EQ(desk.get("/api/v1/config").status, 200);
    EXPECT_THAT(decode<TextMap>(desk.get("/control/writes").body),
                ElementsAre(Pair("0", R"(PUT /config {"a":"1"})"),
                            Pair("1", R"(POST /projects/nobody/decisions/d/answer {"answer":"x"})"),
                            Pair("2", "POST /devices \xef\xbf\xbd")));
}

/// What became of a number of requests to a path: statuses, and 0 for a reset connection.
std::vector<int> fates(PracticeDesk &desk, const std::string &path, int count)
{
    std::vector<int> statuses;
    for (int i = 0; i < count; ++i) {
        const ServiceReply reply = desk.get("/api/v1" + path);
        statuses.push_back(reply.delivery == Delivery::Reset ? 0 : reply.status);
    }
    return statuses;
}

TEST(Trouble, TheSameSeedDoesTheSameToEachPathWhateverComesInBetween)
{
    PracticeDesk desk;
    const auto begin = [&] {
        return desk.send("POST", "/control/trouble?seed=7&one_of=3&silence_ms=0").status;
    };
    ASSERT_EQ(begin(), 200);
    const std::vector<int> first = fates(desk, "/dashboard", 60);
    ASSERT_EQ(begin(), 200);
    static_cast<void>(fates(desk, "/config", 25));
    EXPECT_EQ(fates(desk, "/dashboard", 60), first);
    ASSERT_EQ(desk.send("POST", "/control/trouble?seed=8&one_of=3&silence_ms=0").status, 200);
    EXPECT_NE(fates(desk, "/dashboard", 60), first);
}

TEST(Trouble, AboutOneOfSoManyFailsInEveryWayAndIsCounted)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.send("POST", "/control/trouble?one_of=5&silence_ms=0").status, 200);
    static_cast<void>(fates(desk, "/dashboard", 1000));
    auto counts = decode<TextMap>(desk.get("/control/troubles").body);
    EXPECT_EQ(counts.at("requests"), "1000");
    counts.erase("requests");
    EXPECT_EQ(counts.size(), 11U);
    int failed = 0;
    for (const auto &[kind, count] : counts)
        failed += std::stoi(count);
    EXPECT_GT(failed, 150);
    EXPECT_LT(failed, 250);
}

TEST(Trouble, EndsWithNought)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.send("POST", "/control/trouble?one_of=1&silence_ms=0").status, 200);
    ASSERT_EQ(desk.send("POST", "/control/trouble?one_of=0").status, 200);
    EXPECT_THAT(fates(desk, "/dashboard", 30), testing::Each(200));
}

} // namespace
} // namespace trellisport::practice
