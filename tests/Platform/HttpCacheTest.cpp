#include "HttpCacheFixture.h"

#include <gmock/gmock.h>

#include <chrono>

namespace trellisport::platform {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

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

} // namespace
} // namespace trellisport::platform
