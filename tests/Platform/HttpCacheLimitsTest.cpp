// What the cache must not keep or serve: after writes, beyond its bounds, of damaged headers, and
// with many threads at once.

#include "HttpCacheFixture.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::platform {
namespace {

using std::chrono::milliseconds;
using testing::SizeIs;

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
