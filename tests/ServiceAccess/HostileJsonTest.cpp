#include "DecodingSupport.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <malloc.h>

#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace trellisport {
namespace {

constexpr std::size_t million = 1'000'000;

std::string nested(const std::string &open, const std::string &close, std::size_t depth)
{
    std::string json;
    json.reserve(depth * (open.size() + close.size()));
    for (std::size_t i = 0; i < depth; ++i) {
        json += open;
    }
    for (std::size_t i = 0; i < depth; ++i) {
        json += close;
    }
    return json;
}

std::string projectIgnoring(const std::string &json)
{
    return R"({"id":"p","ignored":)" + json + R"(,"title":"t"})";
}

/// A document with something of everything.
const std::string sample =
    R"([{"id":"p1","title":"Web \u00e9 \ud83d\ude80 é 🚀\n","bid_amount":-1.5e2,
"freelancer_project_id":39112233,"x":[true,false,null,{"a":{},"b":[[]]},"\"\\\/\b"],
"y":123456789012345678901234567890,"z":[1e400,"\ud800"],"description":null},
{"id":"p2","title":"", "" : [ 0, -0.0, 1E+5 ] }])";

TEST(HostileJson, MillionLevelsInIgnoredKey)
{
    const Project expected{.id = "p", .title = "t"};
    EXPECT_EQ(decode<Project>(projectIgnoring(nested("[", "]", million))), expected);
    EXPECT_EQ(decode<Project>(projectIgnoring(nested(R"({"a":[)", "]}", million / 2))), expected);
}

/// What /proc/self/status says under the name, in bytes.
std::size_t ofThisProcess(const std::string &name)
{
    std::ifstream file("/proc/self/status");
    for (std::string word; file >> word;) {
        if (word == name + ':') {
            std::size_t kilobytes = 0;
            file >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

TEST(HostileJson, MillionLevelsTakeLittleMemoryAtTheHighestPoint)
{
    if (mallinfo2().uordblks == 0) {
        GTEST_SKIP() << "the sanitizer's heap does not count";
    }
    std::string body = projectIgnoring(nested("[", "]", million));
    const std::size_t size = body.size();
    malloc_trim(0);
    // The highest point from here on.
    if (!(std::ofstream("/proc/self/clear_refs") << 5 << std::flush)) {
        GTEST_SKIP() << "the system does not let its mark be set back";
    }
    const std::size_t before = ofThisProcess("VmRSS");
    ASSERT_LT(ofThisProcess("VmHWM"), before + (std::size_t{1} << 20));
    EXPECT_EQ(decode<Project>(std::move(body)), (Project{.id = "p", .title = "t"}));
    const std::size_t highest = ofThisProcess("VmHWM");
    EXPECT_GT(highest, before) << "the mark stands still";
    EXPECT_LT(highest, before + 20 * size);
    RecordProperty("times_its_size", std::to_string(double(highest - before) / double(size)));
}

TEST(HostileJson, MillionLevelsThatDoNotClose)
{
    EXPECT_FALSE(isJson(std::string(million, '[')));
    EXPECT_FALSE(isJson(std::string(million, '{')));
    EXPECT_FALSE(isJson(projectIgnoring(std::string(million, '['))));
    EXPECT_FALSE(isJson(nested("[", "]", million) + "]"));
    EXPECT_FALSE(isJson(nested("[", "}", million)));
}

TEST(HostileJson, MillionLevelsWhereATextBelongs)
{
    expectFailure<Project>(R"({"id":)" + nested("[", "]", million) + R"(,"title":"t"})",
                           DecodingError::Kind::TypeMismatch, "id");
}

TEST(HostileJson, MillionOfEverythingThatIsRewritten)
{
    std::string list = "[0";
    for (std::size_t i = 0; i < million / 4; ++i) {
        list += R"(,1e999,"\ud800")";
    }
    list += ']';
    EXPECT_EQ(decode<Project>(projectIgnoring(list)), (Project{.id = "p", .title = "t"}));
}

TEST(HostileJson, NumberOfMillionDigits)
{
    const std::string digits(million, '9');
    EXPECT_TRUE(isJson(digits));
    EXPECT_TRUE(isJson("0." + digits));
    EXPECT_TRUE(isJson("1e" + digits));
    EXPECT_TRUE(isJson("1e-" + digits));
    EXPECT_FALSE(isJson("0" + digits));
    EXPECT_EQ(decode<BidInfo>("{\"rating\":0." + digits + "}").rating, 1.0);
}

TEST(HostileJson, TextOfMillionEscapes)
{
    std::string escapes;
    std::string halves;
    for (std::size_t i = 0; i < million; ++i) {
        escapes += R"(\n)";
        halves += R"(\udc00)";
    }
    EXPECT_EQ(decode<Project>(R"({"id":")" + escapes + R"(","title":"t"})").id.size(), million);
    EXPECT_EQ(decode<Project>(R"({"id":")" + halves + R"(","title":"t"})").id.size(), 3 * million);
}

TEST(HostileJson, ObjectOfManyKeys)
{
    std::string json = "{";
    for (std::size_t i = 0; i < million / 5; ++i) {
        json += "\"k" + std::to_string(i % 1000) + "\":\"" + std::to_string(i) + "\",";
    }
    json += R"("id":"p","title":"t"})";
    EXPECT_EQ(decode<Project>(json), (Project{.id = "p", .title = "t"}));
    EXPECT_EQ(decode<TextMap>(json).size(), 1002U);
}

TEST(HostileJson, DocumentCutAnywhereIsRefused)
{
    ASSERT_EQ(decode<std::vector<Project>>(sample).size(), 2U);
    for (std::size_t size = 0; size < sample.size(); ++size) {
        EXPECT_FALSE(isJson(sample.substr(0, size))) << size;
    }
}

TEST(HostileJson, DocumentMayLieAnywhereInItsString)
{
    for (std::size_t capacity = sample.size(); capacity < sample.size() + 130; ++capacity) {
        std::string body;
        body.reserve(capacity);
        body = sample;
        EXPECT_EQ(decode<std::vector<Project>>(std::move(body)).size(), 2U);
    }
}

/// Another reader's judgement, whose own limits are worked around without touching the grammar.
bool isJsonForOtherReader(std::string document)
{
    if (document.find('\0') != std::string::npos) {
        return false; // it would take one for the end
    }
    // It refuses halves of surrogate pairs.
    for (std::size_t at = 0; (at = document.find("\\u", at)) != std::string::npos; at += 2) {
        if (at + 2 < document.size() && (document[at + 2] | 0x20) == 'd') {
            document[at + 2] = 'a';
        }
    }
    constexpr unsigned flags = rapidjson::kParseIterativeFlag |
                               rapidjson::kParseNumbersAsStringsFlag |
                               rapidjson::kParseValidateEncodingFlag;
    while (true) {
        rapidjson::MemoryStream stream(document.data(), document.size());
        rapidjson::Reader reader;
        rapidjson::BaseReaderHandler<> handler;
        const auto result = reader.Parse<flags>(stream, handler);
        if (result.Code() != rapidjson::kParseErrorNumberTooBig) {
            return !result.IsError();
        }
        // It refuses numbers beyond double's range, even as texts.
        const std::size_t exponent = document.find_first_of("eE", result.Offset());
        const std::size_t digits = document.find_first_of("0123456789", exponent);
        const std::size_t end = document.find_first_not_of("0123456789", digits);
        document.replace(digits, end - digits, "1");
    }
}

TEST(HostileJson, MutatedDocumentsAreJudgedAsByAnotherReader)
{
    // Bytes that matter to the grammar come up more often than others.
    constexpr std::string_view telling = "[]{}:,\"\\/ \n\t0123456789+-.eEutfn\x80\xc3\xed\xf0";
    std::mt19937 random(20260102);
    const auto below = [&random](std::size_t bound) { return random() % bound; };
    int accepted = 0;
    int refused = 0;
    for (int round = 0; round < 100'000; ++round) {
        std::string document = sample;
        for (std::size_t left = 1 + below(3); left > 0; --left) {
            const std::size_t at = below(document.size());
            const char byte =
                below(4) == 0 ? static_cast<char>(below(256)) : telling[below(telling.size())];
            switch (below(4)) {
            case 0:
                document[at] = byte;
                break;
            case 1:
                document.insert(at, 1, byte);
                break;
            case 2:
                document.erase(at, 1 + below(3));
                break;
            default:
                document.insert(at, document.substr(below(document.size()), below(12)));
                break;
            }
        }
        const bool expected = isJsonForOtherReader(document);
        ASSERT_EQ(isJson(document), expected) << document;
        ++(expected ? accepted : refused);
    }
    EXPECT_GT(accepted, 1000);
    EXPECT_GT(refused, 1000);
}

TEST(HostileJson, ListOfShortEntriesTakesLessThanOneAndAHalfTimesItsReply)
{
    std::string body = "[";
    for (int i = 0; i < 100'000; ++i) {
        const std::string digits = std::to_string(1'000'000 + i);
        body += i == 0 ? "" : ",";
        body += R"({"id":"0b9f7c1e-55aa-4d0e-8c3b-00000)" + digits + R"(","log_type":"tool_call",)";
        body +=
            R"("content":"Ran the tests of the shop module and wrote the outcome down, round )" +
            digits + R"(","created_at":"2026-01-02T03:04:05Z"})";
    }
    body += ']';
    const std::size_t size = body.size();
    ASSERT_NEAR(static_cast<double>(size), 2e7, 3e6);

    const auto inUse = [] {
        const struct mallinfo2 heap = mallinfo2();
        return heap.uordblks + heap.hblkhd;
    };
    const std::size_t before = inUse();
    const auto logs = decode<std::vector<DevLog>>(std::move(body));
    const std::size_t after = inUse();
    ASSERT_EQ(logs.size(), 100'000U);
    if (before == 0) {
        GTEST_SKIP() << "the sanitizer's heap does not count";
    }
    // The reply itself was part of what was in use before.
    EXPECT_LT(static_cast<double>(after + size - before), 1.5 * static_cast<double>(size));
}

} // namespace
} // namespace trellisport
