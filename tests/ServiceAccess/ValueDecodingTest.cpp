#include "DecodingSupport.h"

#include <limits>
#include <vector>

namespace trellisport {
namespace {

using Kind = DecodingError::Kind;

TEST(Values, EveryWrongTypeFailsInEveryField)
{
    // A value of each type, and what may stand in a field of each.
    const std::vector<std::pair<std::string, std::string>> values = {
        {"text", R"("x")"},  {"integer", "1"},     {"number", "1.5"},
        {"boolean", "true"}, {"list", R"(["x"])"}, {"map", R"({"x":1})"},
    };
    const auto check = [&](const std::string &key, const std::string &type, auto decodes) {
        for (const auto &[valueType, value] : values) {
            const bool fits = valueType == type || (type == "number" && valueType == "integer");
            const auto error = decodes(member(key, value));
            EXPECT_EQ(!error, fits) << key << ' ' << value;
            if (error) {
                EXPECT_EQ(error->kind(), Kind::TypeMismatch) << key << ' ' << value;
                EXPECT_EQ(error->path(), key) << value;
            }
        }
    };
    check("bidder_id", "integer",
          [](const std::string &json) { return decodingFailure<BidInfo>("{" + json + "}"); });
    check("rating", "number",
          [](const std::string &json) { return decodingFailure<BidInfo>("{" + json + "}"); });
    check("is_ours", "boolean",
          [](const std::string &json) { return decodingFailure<BidInfo>("{" + json + "}"); });
    check("username", "text",
          [](const std::string &json) { return decodingFailure<BidInfo>("{" + json + "}"); });
    check("title", "text", [](const std::string &json) {
        return decodingFailure<Project>(R"({"id":"p",)" + json + "}");
    });
    check("artifact_links", "list", [](const std::string &json) {
        return decodingFailure<Report>(R"({"id":"r",)" + json + "}");
    });
    check("status_counts", "map", [](const std::string &json) {
        return decodingFailure<DashboardData>(
            R"({"bids_pending":1,"total_earned":2,"pending_decisions":3,)" + json + "}");
    });
}

TEST(Values, IntegerFieldsTakeWholeNumbersOf64Bits)
{
    const auto id = [](const std::string &number) {
        return decode<BidInfo>("{\"bidder_id\":" + number + "}").bidderId;
    };
    EXPECT_EQ(id("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(id("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(id("0"), 0);
    EXPECT_EQ(id("-0"), 0);
    for (const char *number :
         {"9223372036854775808", "-9223372036854775809", "18446744073709551615",
          "18446744073709551616", "100000000000000000000000000000", "250.0", "2.5e2", "1e2", "-0.0",
          "1e400"}) {
        expectFailure<BidInfo>(std::string("{\"bidder_id\":") + number + "}", Kind::TypeMismatch,
                               "bidder_id");
    }
}

TEST(Values, NumberFieldsTakeTheNearestDouble)
{
    const auto rating = [](const std::string &number) {
        return *decode<BidInfo>("{\"rating\":" + number + "}").rating;
    };
    EXPECT_EQ(rating("123456789012345678901234567890"), 123456789012345678901234567890.0);
    EXPECT_EQ(rating("-123456789012345678901234567890"), -123456789012345678901234567890.0);
    EXPECT_EQ(rating("9223372036854775808"), 9223372036854775808.0);
    EXPECT_EQ(rating("18446744073709551615"), 18446744073709551615.0);
    EXPECT_EQ(rating("9007199254740993"), 9007199254740992.0) << "halfway: to even";
    EXPECT_EQ(rating("9007199254740995"), 9007199254740996.0);
    EXPECT_EQ(rating("0.1"), 0.1);
    EXPECT_EQ(rating("1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_EQ(rating("5e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(rating("1e-400"), 0.0);
    EXPECT_EQ(rating("1" + std::string(308, '0')), 1e308);
    EXPECT_EQ(rating("0." + std::string(320, '0') + "1e321"), 1.0);
    EXPECT_EQ(rating("2.5E+2"), 250.0);
}

TEST(Values, NumberBeyondDoubleFailsForEveryFieldThatReadsIt)
{
    for (const std::string &number :
         {std::string("1e309"), std::string("-1e309"), std::string("1.8e308"),
          std::string("1e99999999999999999999"), "1" + std::string(400, '0')}) {
        for (const char *key : {"rating", "bidder_id", "username", "is_ours"}) {
            expectFailure<BidInfo>("{\"" + std::string(key) + "\":" + number + "}",
                                   Kind::TypeMismatch, key);
        }
        const auto links = decodingFailure<Report>(R"({"id":"r","artifact_links":)" + number + "}");
        ASSERT_TRUE(links);
        EXPECT_EQ(links->kind(), Kind::TypeMismatch);
        expectFailure<Report>(R"({"id":"r","artifact_links":["a",)" + number + "]}",
                              Kind::TypeMismatch, "artifact_links[1]");
        expectFailure<DashboardData>(R"({"bids_pending":1,"total_earned":2,"pending_decisions":3,
                                         "status_counts":)" +
                                         number + "}",
                                     Kind::TypeMismatch, "status_counts");
        expectFailure<DashboardData>(R"({"bids_pending":1,"total_earned":2,"pending_decisions":3,
                                         "status_counts":{"a":)" +
                                         number + "}}",
                                     Kind::TypeMismatch, "status_counts.a");
        EXPECT_TRUE(decodingFailure<TextMap>(number));
        EXPECT_TRUE(decodingFailure<std::vector<BidInfo>>(number));
        EXPECT_TRUE(decodingFailure<std::vector<BidInfo>>("[" + number + "]"));
        EXPECT_TRUE(decodingFailure<TextMap>("{\"a\":" + number + "}"));
    }
}

TEST(Values, TextsKeepEveryCharacter)
{
    const auto title = [](const std::string &json) {
        return std::string(decode<Project>(R"({"id":"p","title":")" + json + "\"}").title.view());
    };
    using namespace std::string_literals;
    EXPECT_EQ(title(R"(a\u0000b)"), "a\0b"s);
    EXPECT_EQ(title(R"(\"\\\/\b\f\n\r\t)"), "\"\\/\b\f\n\r\t");
    EXPECT_EQ(title(R"(\u00e9é\u20AC€\ud83d\ude80🚀)"), "éé€€🚀🚀");
    EXPECT_EQ(title("\x7f"), "\x7f");
    EXPECT_EQ(title(R"(\uffff\ufeff)"), "\uffff\ufeff");
    EXPECT_EQ(title(std::string(100000, 'x')), std::string(100000, 'x'));
}

TEST(Values, HalfASurrogatePairIsReplaced)
{
    const auto title = [](const std::string &json) {
        return std::string(decode<Project>(R"({"id":"p","title":")" + json + "\"}").title.view());
    };
    EXPECT_EQ(title(R"(\ud800)"), "\ufffd");
    EXPECT_EQ(title(R"(a\uDFFFb)"), "a\ufffdb");
    EXPECT_EQ(title(R"(\ud83d\ud83d\ude80)"), "\ufffd🚀");
    EXPECT_EQ(title(R"(\ude80\ud83d)"), "\ufffd\ufffd");
    EXPECT_EQ(title(R"(\ud83dx\ude80)"), "\ufffdx\ufffd");
    EXPECT_EQ(title(R"(\ud83d\n)"), "\ufffd\n");
    EXPECT_EQ(title(R"(\\ud800)"), "\\ud800") << "no escape at all";
    EXPECT_EQ(title(R"(\ud83d\\ude80)"), "\ufffd\\ude80");
}

TEST(Values, RewritingLeavesOtherValuesAlone)
{
    const auto bid = decode<BidInfo>(R"({"x":1e400,"bidder_id":9223372036854775807,
        "username":"1e400 \"\\ud800\\\" 99999999999999999999 [","rating":1.5e3,
        "y":["\ud800",18446744073709551616],"reviews":-1,"description":"é\u00e9"})");
    EXPECT_EQ(bid, (BidInfo{.bidderId = std::numeric_limits<std::int64_t>::max(),
                            .username = "1e400 \"\\ud800\\\" 99999999999999999999 [",
                            .rating = 1500.0,
                            .reviews = -1,
                            .description = "éé"}));
}

TEST(Values, ErrorsNameThePlaceForAPerson)
{
    const auto missing = decodingFailure<std::vector<Project>>(R"([{"id":"1"}])");
    ASSERT_TRUE(missing);
    EXPECT_STREQ(missing->what(), "\"[0].title\" in the service's reply is missing.");
    const auto wrong = decodingFailure<TextMap>(R"({"done":true})");
    ASSERT_TRUE(wrong);
    EXPECT_STREQ(wrong->what(), "\"done\" in the service's reply is not a text.");
    const auto damaged = decodingFailure<TextMap>("<html>");
    ASSERT_TRUE(damaged);
    EXPECT_STREQ(damaged->what(), "The service's reply is not valid JSON.");
}

TEST(Values, LongKeyIsCutInErrors)
{
    std::string key;
    for (int i = 0; i < 1000; ++i) {
        key += "é";
    }
    const auto error = decodingFailure<TextMap>("{\"" + key + "\":1}");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->path(), key.substr(0, 64) + "...");
}

} // namespace
} // namespace trellisport
