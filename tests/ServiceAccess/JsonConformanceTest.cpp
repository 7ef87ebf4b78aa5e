#include "DecodingSupport.h"
#include "JsonCases.h"

#include <ostream>
#include <vector>

namespace trellisport {

// Found by the test library where it prints a case.
static void PrintTo(const JsonCase &json, std::ostream *out)
{
    *out << json.name << ": " << testing::PrintToString(json.json.substr(0, 80));
}

namespace {

/// The document as the value of a key that no project has.
std::string inIgnoredKey(const std::string &json)
{
    return R"({"id":"p","ignored":)" + json + R"(,"title":"t"})";
}

std::string nameOf(const testing::TestParamInfo<JsonCase> &info)
{
    return info.param.name;
}

class AcceptedJson : public testing::TestWithParam<JsonCase> {};
class RefusedJson : public testing::TestWithParam<JsonCase> {};

TEST_P(AcceptedJson, AsDocument)
{
    EXPECT_TRUE(isJson(GetParam().json));
    EXPECT_TRUE(isJson("\n" + GetParam().json + "\r\n"));
}

TEST_P(AcceptedJson, InIgnoredKey)
{
    EXPECT_EQ(decode<Project>(inIgnoredKey(GetParam().json)), (Project{.id = "p", .title = "t"}));
}

TEST_P(AcceptedJson, InIgnoredKeyOfListElement)
{
    const std::string element = inIgnoredKey(GetParam().json);
    EXPECT_EQ(decode<std::vector<Project>>("[" + element + "," + element + "]").size(), 2U);
}

TEST_P(RefusedJson, AsDocument)
{
    EXPECT_FALSE(isJson(GetParam().json));
}

TEST_P(RefusedJson, InIgnoredKey)
{
    expectFailure<Project>(inIgnoredKey(GetParam().json), DecodingError::Kind::DamagedData, "");
}

TEST_P(RefusedJson, InIgnoredKeyOfListElement)
{
    EXPECT_FALSE(isJson("[" + inIgnoredKey(GetParam().json) + "]"));
}

TEST_P(RefusedJson, BesideWhatIsRewritten)
{
    EXPECT_FALSE(isJson(R"([1e999,"\ud800",99999999999999999999,)" + GetParam().json + "]"));
}

INSTANTIATE_TEST_SUITE_P(Json, AcceptedJson, testing::ValuesIn(acceptedJson()), nameOf);
INSTANTIATE_TEST_SUITE_P(Json, RefusedJson, testing::ValuesIn(refusedJson()), nameOf);

} // namespace
} // namespace trellisport
