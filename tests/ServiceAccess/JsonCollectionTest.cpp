#include "DecodingSupport.h"

#include <fstream>
#include <map>
#include <sstream>
#include <vector>

namespace trellisport {
namespace {

struct Case {
    std::string verdict;
    std::string name;
    std::string json;

    [[nodiscard]] bool isTaken() const
    {
        return verdict == "accepted" || verdict == "either taken";
    }
};

/// "@N x" is x N times, and more such pieces may follow; anything else is itself.
std::string repeated(const std::string &text)
{
    if (!text.starts_with('@')) {
        return text;
    }
    std::string result;
    std::istringstream words(text);
    std::string count;
    std::string piece;
    while (words >> count >> piece) {
        for (int left = std::stoi(count.substr(1)); left > 0; --left) {
            result += piece;
        }
    }
    return result;
}

std::string unescaped(const std::string &text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '%') {
            result += static_cast<char>(std::stoi(text.substr(at + 1, 2), nullptr, 16));
            at += 2;
        } else {
            result += text[at];
        }
    }
    return result;
}

std::vector<Case> readCases()
{
    std::ifstream file(JSON_COLLECTION);
    std::vector<Case> cases;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) {
            continue;
        }
        std::istringstream fields(line);
        Case read;
        std::getline(fields, read.verdict, '\t');
        std::getline(fields, read.name, '\t');
        std::getline(fields, read.json);
        read.json = unescaped(repeated(read.json));
        cases.push_back(std::move(read));
    }
    return cases;
}

TEST(JsonCollection, IsWhole)
{
    std::map<std::string, int> counts;
    for (const Case &each : readCases()) {
        ++counts[each.verdict];
    }
    EXPECT_EQ(
        counts,
        (std::map<std::string, int>{
            {"accepted", 95}, {"refused", 199}, {"either taken", 20}, {"either refused", 15}}));
}

TEST(JsonCollection, EachDocumentIsDecidedAsItsLineSays)
{
    for (const Case &each : readCases()) {
        EXPECT_EQ(isJson(each.json), each.isTaken()) << each.name;
    }
}

TEST(JsonCollection, EachIsDecidedAlikeWhereNobodyReadsIt)
{
    for (const Case &each : readCases()) {
        const auto error =
            decodingFailure<Project>(R"({"id":"p","ignored":)" + each.json + R"(,"title":"t"})");
        if (each.isTaken()) {
            EXPECT_FALSE(error) << each.name;
        } else {
            ASSERT_TRUE(error) << each.name;
            EXPECT_EQ(error->kind(), DecodingError::Kind::DamagedData) << each.name;
        }
    }
}

TEST(JsonCollection, EachIsDecidedAlikeAtTheEndOfALongList)
{
    std::string list = "[";
    for (int count = 0; count < 500; ++count) {
        list += R"({"id":"p","title":"t"},)";
    }
    for (const Case &each : readCases()) {
        const auto error = decodingFailure<std::vector<Project>>(
            list + R"({"id":"p","title":"t","ignored":)" + each.json + "}]");
        EXPECT_EQ(!error, each.isTaken()) << each.name;
    }
}

} // namespace
} // namespace trellisport
