#include "Platform/Linux/CacheRules.h"
#include "Platform/Linux/CacheControl.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

namespace trellisport::platform {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;
using testing::IsEmpty;

using Headers = std::vector<HttpHeader>;

constexpr sys_seconds received = sys_days(2026y / March / 1) + 12h;
constexpr const char *receivedText = "Sun, 01 Mar 2026 12:00:00 GMT";

CacheMoment moment(seconds sinceReceived = {})
{
    return {received + sinceReceived, hours(5) + sinceReceived};
}

CacheControl control(const std::string &value)
{
    return parseCacheControl({{"Cache-Control", value}});
}

milliseconds lifetime(const Headers &headers)
{
    return freshnessLifetime(headers, received);
}

bool mayStore(const Headers &headers, int status = 200)
{
    return platform::mayStore(HttpReply{status, headers, "{}"});
}

TEST(CacheControl, ReadsDirectivesInAnyCaseAndSpacing)
{
    EXPECT_EQ(control("max-age=60").maxAge, 60s);
    EXPECT_EQ(control(" private ,\tMAX-AGE = \"60\" , x=\"a,b\\\"c\"").maxAge, 60s);
    EXPECT_TRUE(control("No-Store").noStore);
    EXPECT_TRUE(control("public, no-cache=\"set-cookie, x\"").noCache);
    EXPECT_FALSE(control("x=\"no-store\"").noStore);
    EXPECT_FALSE(control("public, must-revalidate, s-maxage=5").maxAge);
}

TEST(CacheControl, ReadsSeveralHeadersAsOneList)
{
    const CacheControl read =
        parseCacheControl({{"cache-control", "max-age=60"}, {"Cache-Control", "no-store"}});
    EXPECT_EQ(read.maxAge, 60s);
    EXPECT_TRUE(read.noStore);
}

TEST(CacheControl, TakesAgesThatContradictEachOtherForNone)
{
    EXPECT_TRUE(control("max-age=60, max-age=70").noCache);
    EXPECT_FALSE(control("max-age=60, max-age=60").noCache);
    for (const char *value : {"max-age", "max-age=", "max-age=-1", "max-age=1.5", "max-age=6 0"}) {
        EXPECT_TRUE(control(value).noCache) << value;
    }
}

TEST(CacheControl, TakesAnEnormousAgeForALongOne)
{
    EXPECT_EQ(control("max-age=99999999999999999999999999").maxAge, seconds(1LL << 31));
}

TEST(CacheControl, TakesWhatCannotBeReadForTheStrictest)
{
    EXPECT_TRUE(control("max-age=60, x=\"no end").noStore);
    EXPECT_TRUE(control("max-age=60, x=\"a\" no-store").noStore);
    EXPECT_TRUE(control("x=\"\\").noStore);
}

TEST(CacheControl, SkipsEmptyPlaces)
{
    EXPECT_EQ(control(",, ,max-age=5,,").maxAge, 5s);
    EXPECT_FALSE(control("=").noStore);
}

TEST(CacheRules, OnlyPlainGetsAreCacheable)
{
    EXPECT_TRUE(isCacheable({"GET", "https://h/a", {{"Content-Type", "application/json"}}, {}}));
    EXPECT_FALSE(isCacheable({"PUT", "https://h/a", {}, "{}"}));
    EXPECT_FALSE(isCacheable({"GET", "https://h/a", {}, "{}"}));
    for (const char *name :
         {"range", "If-None-Match", "Cache-Control", "Pragma", "Authorization"}) {
        EXPECT_FALSE(isCacheable({"GET", "https://h/a", {{name, "x"}}, {}})) << name;
    }
}

TEST(CacheRules, OnlyWhole200RepliesMayBeStored)
{
    EXPECT_TRUE(mayStore({}));
    EXPECT_TRUE(mayStore({{"Cache-Control", "private, max-age=60"}}));
    EXPECT_FALSE(mayStore({{"Cache-Control", "no-store"}}));
    EXPECT_FALSE(mayStore({{"Vary", "Accept, *"}}));
    EXPECT_FALSE(mayStore({{"Content-Range", "bytes 0-1/5"}}));
    for (const int status : {0, 201, 203, 204, 206, 301, 304, 404, 500}) {
        EXPECT_FALSE(mayStore({{"Cache-Control", "max-age=60"}}, status)) << status;
    }
}

TEST(CacheRules, MaxAgeComesBeforeExpires)
{
    EXPECT_EQ(
        lifetime({{"Cache-Control", "max-age=60"}, {"Expires", "Sun, 01 Mar 2026 13:00:00 GMT"}}),
        60s);
}

TEST(CacheRules, ExpiresCountsFromTheDateOfTheReply)
{
    EXPECT_EQ(lifetime({{"Expires", "Sun, 01 Mar 2026 13:00:00 GMT"},
                        {"Date", "Sun, 01 Mar 2026 12:59:50 GMT"}}),
              10s);
    EXPECT_EQ(lifetime({{"Expires", "Sun, 01 Mar 2026 12:00:10 GMT"}}), 10s);
    EXPECT_EQ(lifetime({{"Expires", "Sun, 01 Mar 2026 11:00:00 GMT"}}), 0s);
}

TEST(CacheRules, NothingIsFreshThatDoesNotSaySo)
{
    EXPECT_EQ(lifetime({}), 0s);
    EXPECT_EQ(lifetime({{"Last-Modified", "Sun, 01 Mar 2020 12:00:00 GMT"}}), 0s);
    EXPECT_EQ(lifetime({{"Cache-Control", "public"}}), 0s);
    EXPECT_EQ(lifetime({{"Cache-Control", "max-age=60, no-cache"}}), 0s);
    EXPECT_EQ(lifetime({{"Expires", "Sun, 01 Mar 2026 13:00:00 GMT"}, {"Pragma", "no-cache"}}), 0s);
}

TEST(CacheRules, DatesThatCannotBeReadMakeNothingFresh)
{
    EXPECT_EQ(lifetime({{"Expires", "0"}}), 0s);
    EXPECT_EQ(lifetime({{"Expires", "Sun, 01 Mar 2026 13:00:00 GMT"},
                        {"Expires", "Sun, 01 Mar 2026 14:00:00 GMT"}}),
              0s);
    EXPECT_EQ(lifetime({{"Expires", "Sun, 01 Mar 2026 13:00:00 GMT"}, {"Date", "today"}}), 0s);
}

TEST(CacheRules, TheAgeOnArrivalIsTheLargestThatIsKnown)
{
    EXPECT_EQ(ageOnArrival({}, moment(), moment(2s)), 2s);
    EXPECT_EQ(ageOnArrival({{"Age", "30"}}, moment(), moment(2s)), 32s);
    EXPECT_EQ(ageOnArrival({{"Date", "Sun, 01 Mar 2026 11:59:00 GMT"}, {"Age", "30"}}, moment(),
                           moment()),
              60s);
    EXPECT_EQ(ageOnArrival({{"Date", "Sun, 01 Mar 2026 12:59:00 GMT"}}, moment(), moment()), 0s);
}

TEST(CacheRules, AnAgeThatCannotBeReadIsTooOld)
{
    EXPECT_GT(ageOnArrival({{"Age", "young"}}, moment(), moment()), years(50));
    EXPECT_GT(ageOnArrival({{"Date", "today"}}, moment(), moment()), years(50));
    EXPECT_GT(ageOnArrival({{"Date", receivedText}, {"Date", "Sun, 01 Mar 2026 13:00:00 GMT"}},
                           moment(), moment()),
              years(50));
}

TEST(CacheRules, TimeIsTheLongerOfBothClocks)
{
    const CacheMoment early = moment();
    EXPECT_EQ((CacheMoment{early.calendar - 1h, early.sinceStart + 5s}.since(early)), 5s);
    EXPECT_EQ((CacheMoment{early.calendar + 1h, early.sinceStart + 5s}.since(early)), 1h);
}

struct Asked {
    std::string name;
    std::string value;
};

Asked asked(const Headers &headers)
{
    const Headers asking = conditions(headers);
    return asking.size() == 1 ? Asked{asking[0].name, asking[0].value} : Asked{};
}

TEST(CacheRules, AnEntityTagIsAskedAbout)
{
    EXPECT_EQ(asked({{"etag", "\"a1\""}}).name, "If-None-Match");
    EXPECT_EQ(asked({{"ETag", "W/\"a1\""}}).value, "W/\"a1\"");
    EXPECT_EQ(asked({{"ETag", "\"\""}}).value, "\"\"");
}

TEST(CacheRules, ADamagedEntityTagIsNotAskedAbout)
{
    for (const char *tag : {"", "a1", "\"", "\"a", "\"a\"b\"", "\"a b\"", "w/\"a\"", "\"a\x01\""}) {
        EXPECT_THAT(conditions({{"ETag", tag}, {"Date", receivedText}}), IsEmpty()) << tag;
    }
    EXPECT_THAT(conditions({{"ETag", "\"a\""}, {"ETag", "\"b\""}}), IsEmpty());
}

TEST(CacheRules, ASettledLastModifiedIsAskedAbout)
{
    const char *old = "Sun, 01 Mar 2026 11:59:00 GMT";
    EXPECT_EQ(asked({{"Last-Modified", old}, {"Date", receivedText}}).value, old);
    EXPECT_THAT(
        conditions({{"Last-Modified", "Sun, 01 Mar 2026 11:59:30 GMT"}, {"Date", receivedText}}),
        IsEmpty());
    EXPECT_THAT(conditions({{"Last-Modified", old}}), IsEmpty());
}

std::string text(const Headers &headers)
{
    std::string text;
    for (const HttpHeader &header : headers) {
        text += header.name + ':' + header.value + ' ';
    }
    return text;
}

TEST(CacheRules, NewsReplaceTheHeadersThatTheyName)
{
    EXPECT_EQ(
        text(updatedHeaders(
            {{"ETag", "\"1\""}, {"Content-Length", "2"}, {"Age", "3"}},
            {{"etag", "\"2\""}, {"Content-Length", "0"}, {"Connection", "close"}, {"Date", "d"}})),
        "Content-Length:2 etag:\"2\" Date:d ");
}

TEST(CacheRules, VariedHeadersAreReadFromEveryList)
{
    EXPECT_THAT(variedHeaders({{"Vary", "Accept , X-A,,"}, {"vary", "B"}}),
                testing::ElementsAre("Accept", "X-A", "B"));
}

} // namespace
} // namespace trellisport::platform
