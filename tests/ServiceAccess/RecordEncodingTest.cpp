#include "DecodingSupport.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace trellisport {
namespace {

template <typename T>
std::optional<EncodingError::Kind> encodingFailure(const T &value)
{
    try {
        (void)encode(value);
    } catch (const EncodingError &error) {
        EXPECT_FALSE(std::string_view(error.what()).empty());
        return error.kind();
    }
    return {};
}

TEST(RecordEncoding, MessageWithoutTimeHasExactlyThreeKeys)
{
    EXPECT_EQ(encode(Message{.id = "m", .sender = "agent", .messageText = "Hi"}),
              R"({"id":"m","sender":"agent","message_text":"Hi"})");
}

TEST(RecordEncoding, FieldsComeInTableOrder)
{
    EXPECT_EQ(encode(Project{"i", "r", 5, "t", "d", 1.5, "s", "o", "g", "c", "u"}),
              R"({"id":"i","ref_number":"r","freelancer_project_id":5,"title":"t",)"
              R"("description":"d","bid_amount":1.5,"bid_status":"s","owner_username":"o",)"
              R"("github_repo_url":"g","created_at":"c","updated_at":"u"})");
    EXPECT_EQ(encode(ProjectDetail{"i", "r", 5, "t", "d", "m", "p", "q", "a", 1.5, "s", "o", "g",
                                   "c", "u"}),
              R"({"id":"i","ref_number":"r","freelancer_project_id":5,"title":"t",)"
              R"("description":"d","project_md":"m","delivery_plan":"p","questionnaire":"q",)"
              R"("owner_answers":"a","bid_amount":1.5,"bid_status":"s","owner_username":"o",)"
              R"("github_repo_url":"g","created_at":"c","updated_at":"u"})");
    EXPECT_EQ(encode(Message{"m", "s", "x", "c"}),
              R"({"id":"m","sender":"s","message_text":"x","created_at":"c"})");
    EXPECT_EQ(encode(Decision{"d", "q", "a", "s", 30, "n", "w"}),
              R"({"id":"d","question":"q","answer":"a","status":"s","timeout_minutes":30,)"
              R"("notified_at":"n","answered_at":"w"})");
    EXPECT_EQ(encode(DashboardData{{{"b", 2}, {"a", -1}}, 0.5, 1.25, 3}),
              R"({"status_counts":{"a":-1,"b":2},"bids_pending":0.5,"total_earned":1.25,)"
              R"("pending_decisions":3})");
    EXPECT_EQ(encode(BidInfo{1, "u", "d", "c", 4.5, 2, 1.5, 3, "t", false}),
              R"({"bidder_id":1,"username":"u","display_name":"d","country":"c","rating":4.5,)"
              R"("reviews":2,"amount":1.5,"period":3,"description":"t","is_ours":false})");
    EXPECT_EQ(encode(TimelineEvent{"t", "e", "d", "y"}),
              R"({"time":"t","event":"e","detail":"d","type":"y"})");
    EXPECT_EQ(encode(DevLog{"i", "info", "c", "a"}),
              R"({"id":"i","log_type":"info","content":"c","created_at":"a"})");
    EXPECT_EQ(encode(Report{"r", "d", "s", "m", std::vector<Text>{"a", "b"}, "c"}),
              R"({"id":"r","report_date":"d","commit_diff_summary":"s","claude_md_diff":"m",)"
              R"("artifact_links":["a","b"],"created_at":"c"})");
}

TEST(RecordEncoding, AbsentFieldsAreLeftOutAndEmptyOnesWritten)
{
    EXPECT_EQ(encode(BidInfo{}), "{}");
    EXPECT_EQ(encode(Report{.id = "", .reportDate = "", .artifactLinks = std::vector<Text>{}}),
              R"({"id":"","report_date":"","artifact_links":[]})");
}

TEST(RecordEncoding, ListsAndMapsAreWritten)
{
    EXPECT_EQ(encode(std::vector<BidInfo>{}), "[]");
    EXPECT_EQ(encode(std::vector<BidInfo>{{.bidderId = 1}, {}}), R"([{"bidder_id":1},{}])");
    EXPECT_EQ(encode(TextMap{}), "{}");
    EXPECT_EQ(encode(TextMap{{"b", "2"}, {"a", ""}}), R"({"a":"","b":"2"})");
}

TEST(RecordEncoding, ConfigWritesWhatIsPresent)
{
    const AppConfig config(TextMap{{"max_daily_bids", "5"}});
    EXPECT_EQ(encode(config), R"({"max_daily_bids":"5"})");
    EXPECT_EQ(encode(AppConfig()), "{}");
}

TEST(RecordEncoding, AConfigWritesItsKeysInTableOrder)
{
    const AppConfig config(TextMap{{"preview_mode", "true"},
                                   {"max_daily_bids", "5"},
                                   {"daily_revenue_target", "100"},
                                   {"max_concurrent_projects", "2"}});
    EXPECT_EQ(encode(config), R"({"preview_mode":"true","max_daily_bids":"5",)"
                              R"("daily_revenue_target":"100","max_concurrent_projects":"2"})");
}

TEST(RecordEncoding, TextsAreEscapedWhereJsonNeedsIt)
{
    using namespace std::string_literals;
    std::string text = "\"\\/\b\f\n\r\té€🚀\x7f\ufffd\uffff"s;
    text += '\0';
    text += "\x01\x1f";
    const std::string json = encode(TextMap{{text, text}});
    for (const char c : json) {
        EXPECT_GE(static_cast<unsigned char>(c), 0x20);
    }
    EXPECT_EQ(decode<TextMap>(json), (TextMap{{text, text}}));
}

TEST(RecordEncoding, TextThatIsNotUtf8Fails)
{
    using Kind = EncodingError::Kind;
    for (const std::string_view text :
         {"\x80", "a\xff", "\xc3", "\xe2\x82", "\xf0\x9f\x9a", "\xc0\x80", "\xe0\x80\x80",
          "\xed\xa0\x80", "\xed\xb0\x80", "\xf4\x90\x80\x80", "\xf8\x88\x80\x80\x80", "\xc3x"}) {
        EXPECT_EQ(encodingFailure(TextMap{{"answer", std::string(text)}}), Kind::InvalidText);
        EXPECT_EQ(encodingFailure(TextMap{{std::string(text), ""}}), Kind::InvalidText);
        EXPECT_EQ(encodingFailure(DevLog{"i", "info", text}), Kind::InvalidText);
    }
}

TEST(RecordEncoding, NumberThatIsNotFiniteFails)
{
    using Kind = EncodingError::Kind;
    for (const double number :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(encodingFailure(BidInfo{.rating = number}), Kind::NumberNotFinite);
        EXPECT_EQ(encodingFailure(std::vector<BidInfo>{{.rating = number}}), Kind::NumberNotFinite);
    }
}

TEST(RecordEncoding, NumbersReadBackTheSame)
{
    std::vector<double> numbers = {0,
                                   -0.0,
                                   250,
                                   250.5,
                                   0.1,
                                   1e300,
                                   -1e-300,
                                   5e-324,
                                   1e21,
                                   1.0 / 3,
                                   4503599627370497.5,
                                   std::numeric_limits<double>::max(),
                                   std::numeric_limits<double>::min()};
    std::mt19937_64 random(20260102);
    static_assert(sizeof(random()) == sizeof(double));
    while (numbers.size() < 20000) {
        const auto number = std::bit_cast<double>(random());
        if (std::isfinite(number)) {
            numbers.push_back(number);
        }
    }
    for (const double number : numbers) {
        const std::string json = encode(BidInfo{.rating = number});
        ASSERT_EQ(decode<BidInfo>(json).rating, number) << json;
    }
}

TEST(RecordEncoding, IntegersReadBackTheSame)
{
    for (const std::int64_t number : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                      std::int64_t{0}, std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(decode<BidInfo>(encode(BidInfo{.bidderId = number})).bidderId, number);
    }
}

TEST(RecordEncoding, EveryRecordReadsBackTheSame)
{
    const auto check = [](const auto &record) {
        using T = std::remove_cvref_t<decltype(record)>;
        EXPECT_EQ(decode<T>(encode(record)), record);
        const std::vector<T> list = {record, record};
        EXPECT_EQ(decode<std::vector<T>>(encode(list)), list);
    };
    check(Project{"i", "r", 5, "t", "d", 1.5, "s", "o", "g", "c", "u"});
    check(Project{.id = "i", .title = "t"});
    check(ProjectDetail{"i", "r", 5, "t", "d", "m", "p", "q", "a", 1.5, "s", "o", "g", "c", "u"});
    check(Message{"m", "s", "x", "c"});
    check(Decision{"d", "q", "a", "s", 30, "n", "w"});
    check(DashboardData{{{"b", 2}, {"a", -1}}, 0.5, 1.25, 3});
    check(BidInfo{1, "u", "d", "c", 4.5, 2, 1.5, 3, "t", false});
    check(BidInfo{});
    check(TimelineEvent{"t", "e", "d", "y"});
    check(DevLog{"i", "info", "c", "a"});
    check(Report{"r", "d", "s", "m", std::vector<Text>{"a", ""}, "c"});
    check(AppConfig(TextMap{{"preview_mode", "true"}, {"max_daily_bids", ""}}));
}

} // namespace
} // namespace trellisport
