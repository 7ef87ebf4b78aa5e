#include "Platform/Linux/HttpCache.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::platform {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

using Headers = std::vector<HttpHeader>;

HttpRequest get(const std::string &path = "/a", Headers headers = {})
{
    return {"GET", "https://host" + path, std::move(headers), {}};
}

HttpRequest put(const std::string &path = "/a", const std::string &origin = "https://host")
{
    return {"PUT", origin + path, {}, "{}"};
}

HttpReply reply(Headers headers, std::string body = "body")
{
    return {200, std::move(headers), std::move(body)};
}

class HttpCacheTest : public testing::Test {
protected:
    CacheMoment m_now{sys_days(2026y / March / 1) + 12h, 5h};
    HttpCache m_cache{{.bytes = 10'000, .entries = 4}, [this] { return m_now; }};

    void pass(milliseconds time)
    {
        m_now.calendar += time;
        m_now.sinceStart += time;
    }
    /// The server answers a request with this.
    HttpReply answer(const HttpRequest &request, HttpReply given)
    {
        const HttpCache::Ticket ticket = m_cache.begin(request);
        return m_cache.finish(request, ticket, std::move(given));
    }
    bool isFresh(const HttpRequest &request) { return m_cache.begin(request).fresh.has_value(); }
};

TEST_F(HttpCacheTest, ServesAFreshReplyUntilItsTimeIsOver)
{
    answer(get(), reply({{"Cache-Control", "max-age=60"}}));
    pass(59s);
    const auto ticket = m_cache.begin(get());
    ASSERT_TRUE(ticket.fresh);
    EXPECT_EQ(ticket.fresh->body, "body");
    EXPECT_EQ(ticket.fresh->status, 200);
    pass(1s);
    EXPECT_FALSE(isFresh(get()));
}

TEST_F(HttpCacheTest, TellsTheAgeOfWhatItServes)
{
    answer(get(), reply({{"Cache-Control", "max-age=60"}, {"Age", "10"}}));
    pass(1500ms);
    const auto ticket = m_cache.begin(get());
    ASSERT_TRUE(ticket.fresh);
    EXPECT_EQ(ticket.fresh->headers.back().name, "Age");
    EXPECT_EQ(ticket.fresh->headers.back().value, "12");
    EXPECT_THAT(ticket.fresh->headers, SizeIs(2));
}

TEST_F(HttpCacheTest, CountsTheTimeOnTheWay)
{
    const auto ticket = m_cache.begin(get());
    pass(40s);
    static_cast<void>(m_cache.finish(get(), ticket, reply({{"Cache-Control", "max-age=60"}})));
    pass(20s);
    EXPECT_FALSE(isFresh(get()));
}

TEST_F(HttpCacheTest, ASetBackCalendarKeepsNothingFresh)
{
    answer(get(), reply({{"Cache-Control", "max-age=60"}}));
    m_now.calendar -= 24h;
    m_now.sinceStart += 61s;
    EXPECT_FALSE(isFresh(get()));
}

TEST_F(HttpCacheTest, KeepsNothingThatItCouldNeverUse)
{
    answer(get("/a"), reply({}));
    answer(get("/b"), reply({{"Cache-Control", "max-age=0"}}));
    answer(get("/c"), reply({{"Cache-Control", "no-store, max-age=60"}, {"ETag", "\"1\""}}));
    answer(get("/d"), reply({{"Vary", "*"}, {"ETag", "\"1\""}}));
    EXPECT_EQ(m_cache.entryCount(), 0U);
}

TEST_F(HttpCacheTest, AsksAboutAStaleReplyAndServesItWhenNotModified)
{
    answer(get(), reply({{"Cache-Control", "max-age=60"}, {"ETag", "\"1\""}, {"X", "old"}}));
    pass(2min);
    const auto ticket = m_cache.begin(get());
    EXPECT_FALSE(ticket.fresh);
    ASSERT_THAT(ticket.conditions, SizeIs(1));
    EXPECT_EQ(ticket.conditions[0].value, "\"1\"");
    const HttpReply served =
        m_cache.finish(get(), ticket, {304, {{"X", "new"}, {"Cache-Control", "max-age=60"}}, ""});
    EXPECT_EQ(served.status, 200);
    EXPECT_EQ(served.body, "body");
    ASSERT_THAT(served.headers, SizeIs(3));
    EXPECT_EQ(served.headers[1].value, "new");
    pass(59s);
    EXPECT_TRUE(isFresh(get()));
}

TEST_F(HttpCacheTest, NoCacheIsAskedAboutEachTime)
{
    answer(get(), reply({{"Cache-Control", "no-cache, max-age=60"}, {"ETag", "\"1\""}}));
    const auto ticket = m_cache.begin(get());
    EXPECT_FALSE(ticket.fresh);
    EXPECT_THAT(ticket.conditions, SizeIs(1));
}

TEST_F(HttpCacheTest, AReplyThatHasChangedTakesThePlaceOfTheOld)
{
    answer(get(), reply({{"ETag", "\"1\""}}, "old"));
    EXPECT_EQ(answer(get(), reply({{"Cache-Control", "max-age=60"}}, "new")).body, "new");
    const auto ticket = m_cache.begin(get());
    ASSERT_TRUE(ticket.fresh);
    EXPECT_EQ(ticket.fresh->body, "new");
    EXPECT_EQ(m_cache.entryCount(), 1U);
}

TEST_F(HttpCacheTest, AnErrorIsPassedOnAndEndsWhatWasKept)
{
    answer(get(), reply({{"ETag", "\"1\""}}));
    EXPECT_EQ(answer(get(), {500, {}, "oops"}).status, 500);
    EXPECT_EQ(m_cache.entryCount(), 0U);
}

TEST_F(HttpCacheTest, ATransportFailureKeepsWhatWasKept)
{
    answer(get(), reply({{"ETag", "\"1\""}}));
    static_cast<void>(m_cache.begin(get()));
    m_cache.fail(get());
    EXPECT_THAT(m_cache.begin(get()).conditions, SizeIs(1));
}

TEST_F(HttpCacheTest, ANotModifiedThatNobodyAskedForIsPassedOn)
{
    EXPECT_EQ(answer(get(), {304, {}, ""}).status, 304);
}

TEST_F(HttpCacheTest, NotModifiedHelpsEvenWhenTheEntryIsGone)
{
    answer(get(), reply({{"ETag", "\"1\""}}));
    const auto ticket = m_cache.begin(get());
    answer(get(), {404, {}, ""});
    EXPECT_EQ(m_cache.finish(get(), ticket, {304, {}, ""}).body, "body");
    EXPECT_EQ(m_cache.entryCount(), 1U);
}

TEST_F(HttpCacheTest, AnswersOnlyRequestsWithTheSameVariedHeaders)
{
    answer(get("/a", {{"Content-Type", "x"}, {"Accept", "y"}}),
           reply({{"Cache-Control", "max-age=60"}, {"Vary", "content-type"}, {"ETag", "\"1\""}}));
    EXPECT_TRUE(isFresh(get("/a", {{"content-type", "x"}, {"Accept", "other"}})));
    const auto ticket = m_cache.begin(get("/a", {{"Content-Type", "z"}}));
    EXPECT_FALSE(ticket.fresh);
    EXPECT_THAT(ticket.conditions, IsEmpty());
    EXPECT_FALSE(isFresh(get("/a")));
}

TEST_F(HttpCacheTest, TheFragmentIsNoPartOfTheAddressButTheQueryIs)
{
    answer(get("/a?b#c"), reply({{"Cache-Control", "max-age=60"}}));
    EXPECT_TRUE(isFresh(get("/a?b")));
    EXPECT_FALSE(isFresh(get("/a")));
}

TEST_F(HttpCacheTest, ARequestThatRulesItselfPassesByTheCache)
{
    answer(get("/a", {{"Cache-Control", "no-cache"}}), reply({{"Cache-Control", "max-age=60"}}));
    EXPECT_EQ(m_cache.entryCount(), 0U);
    answer(get(), reply({{"Cache-Control", "max-age=60"}}));
    EXPECT_FALSE(isFresh(get("/a", {{"Range", "bytes=0-1"}})));
}

TEST_F(HttpCacheTest, AfterAWriteTheWholeServerIsAskedAgain)
{
    answer(get("/a"), reply({{"Cache-Control", "max-age=60"}, {"ETag", "\"1\""}}));
    answer(get("/b"), reply({{"Cache-Control", "max-age=60"}}));
    answer(put("/a"), {200, {}, "{}"});
    EXPECT_FALSE(isFresh(get("/b")));
    const auto ticket = m_cache.begin(get("/a"));
    EXPECT_FALSE(ticket.fresh);
    ASSERT_THAT(ticket.conditions, SizeIs(1));
    static_cast<void>(
        m_cache.finish(get("/a"), ticket, {304, {{"Cache-Control", "max-age=60"}}, ""}));
    EXPECT_TRUE(isFresh(get("/a")));
}

TEST_F(HttpCacheTest, AFailedWriteCountsAsOneThatMayHaveArrived)
{
    answer(get(), reply({{"Cache-Control", "max-age=60"}}));
    static_cast<void>(m_cache.begin(put()));
    m_cache.fail(put());
    EXPECT_FALSE(isFresh(get()));
}

TEST_F(HttpCacheTest, AWriteElsewhereChangesNothing)
{
    answer(get(), reply({{"Cache-Control", "max-age=60"}}));
    answer(put("/a", "https://host:8443"), {200, {}, "{}"});
    EXPECT_TRUE(isFresh(get()));
}

TEST_F(HttpCacheTest, AReplyAskedForBeforeAWriteEndedIsNotKept)
{
    const auto read = m_cache.begin(get());
    answer(put(), {200, {}, "{}"});
    static_cast<void>(m_cache.finish(get(), read, reply({{"Cache-Control", "max-age=60"}})));
    EXPECT_FALSE(isFresh(get()));
}

TEST_F(HttpCacheTest, ALateReplyToAnEarlierRequestDoesNotReplaceANewerOne)
{
    const auto slow = m_cache.begin(get());
    answer(get(), reply({{"Cache-Control", "max-age=60"}}, "newer"));
    static_cast<void>(
        m_cache.finish(get(), slow, reply({{"Cache-Control", "max-age=60"}}, "older")));
    EXPECT_EQ(m_cache.begin(get()).fresh->body, "newer");
}

TEST_F(HttpCacheTest, TheLeastRecentlyUsedGoFirst)
{
    for (const char *path : {"/a", "/b", "/c", "/d"}) {
        answer(get(path), reply({{"Cache-Control", "max-age=60"}}));
    }
    EXPECT_TRUE(isFresh(get("/a")));
    answer(get("/e"), reply({{"Cache-Control", "max-age=60"}}));
    EXPECT_EQ(m_cache.entryCount(), 4U);
    EXPECT_FALSE(isFresh(get("/b")));
    EXPECT_TRUE(isFresh(get("/a")));
}

TEST_F(HttpCacheTest, BytesAreBounded)
{
    for (int i = 0; i < 20; ++i) {
        answer(get('/' + std::to_string(i)),
               reply({{"Cache-Control", "max-age=60"}}, std::string(2'400, 'x')));
        EXPECT_LE(m_cache.byteCount(), 10'000U);
    }
    EXPECT_EQ(m_cache.entryCount(), 3U);
}

TEST_F(HttpCacheTest, AReplyTooLargeForTheCacheIsPassedOnWhole)
{
    EXPECT_EQ(answer(get(), reply({{"Cache-Control", "max-age=60"}}, std::string(5'000, 'x')))
                  .body.size(),
              5'000U);
    EXPECT_EQ(m_cache.entryCount(), 0U);
}

TEST_F(HttpCacheTest, AccountsForEveryByteThatItGivesBack)
{
    answer(get(), reply({{"Cache-Control", "max-age=60"}, {"Vary", "X"}}));
    EXPECT_GT(m_cache.byteCount(), 0U);
    answer(get(), {404, {}, ""});
    EXPECT_EQ(m_cache.byteCount(), 0U);
}

/// Pieces from which damaged and undamaged headers are put together.
std::string scrap(std::mt19937 &random)
{
    static const std::vector<std::string> pieces{"max-age",
                                                 "=",
                                                 "60",
                                                 "\"",
                                                 ",",
                                                 "no-store",
                                                 "no-cache",
                                                 "private",
                                                 " ",
                                                 "\\",
                                                 "W/",
                                                 "\"1\"",
                                                 "*",
                                                 "-",
                                                 "GMT",
                                                 "\t",
                                                 "\xff",
                                                 std::string(1, '\0'),
                                                 "Sun, 01 Mar 2026 12:00:00 GMT",
                                                 "99999999999999999999"};
    std::string text;
    for (auto count = random() % 6; count > 0; --count) {
        text += pieces[random() % pieces.size()];
    }
    return text;
}

TEST_F(HttpCacheTest, NoHeaderTextCanMakeItServeWhatForbidsStoring)
{
    std::mt19937 random(20260301); // NOLINT: the same texts in every run
    const std::vector<std::string> names{"Cache-Control", "Expires", "Date",          "Age", "ETag",
                                         "Vary",          "Pragma",  "Last-Modified", ""};
    for (int round = 0; round < 20'000; ++round) {
        Headers headers;
        for (auto count = random() % 6; count > 0; --count) {
            headers.push_back({names[random() % names.size()], scrap(random)});
        }
        answer(get(), reply(headers));
        pass(milliseconds(random() % 100'000));
        answer(get(), {304, headers, ""});
        headers.insert(headers.begin() +
                           static_cast<std::ptrdiff_t>(random() % (headers.size() + 1)),
                       {"Cache-Control", "no-store"});
        answer(get(), reply(headers));
        ASSERT_FALSE(isFresh(get())) << "round " << round;
        ASSERT_EQ(m_cache.byteCount(), 0U) << "round " << round;
    }
}

TEST(HttpCacheThreads, ManyThreadsMayUseItAtOnce)
{
    HttpCache cache;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&cache, &wrong, thread] {
            for (int i = 0; i < 2'000; ++i) {
                const std::string path = '/' + std::to_string(i % 7);
                const auto ticket = cache.begin(get(path));
                if (ticket.fresh) {
                    wrong += ticket.fresh->body == path ? 0 : 1;
                } else {
                    wrong += cache.finish(get(path), ticket,
                                          reply({{"Cache-Control", "max-age=60"}}, path))
                                         .body == path
                                 ? 0
                                 : 1;
                }
                if (i % 100 == thread) {
                    const auto write = cache.begin(put());
                    static_cast<void>(cache.finish(put(), write, {200, {}, "{}"}));
                }
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(cache.entryCount(), 7U);
}

TEST(HttpCacheThreads, TheSystemsClocksMakeARealReplyFresh)
{
    HttpCache cache;
    const auto ticket = cache.begin(get());
    static_cast<void>(cache.finish(get(), ticket, reply({{"Cache-Control", "max-age=3600"}})));
    EXPECT_TRUE(cache.begin(get()).fresh);
}

} // namespace
} // namespace trellisport::platform
