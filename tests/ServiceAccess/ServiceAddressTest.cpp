#include "ServiceAccess/ServiceAddress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace trellisport {
namespace {

using testing::HasSubstr;

/// What is said of an address that is refused; empty when it is taken.
std::string objection(std::string_view baseURL)
{
    try {
        (void)parseServiceAddress(baseURL);
    } catch (const std::invalid_argument &error) {
        return error.what();
    }
    return {};
}

TEST(ServiceAddress, IsTakenApart)
{
    const ServiceAddress address = parseServiceAddress("https://agent.example/api/v1");
    EXPECT_EQ(address.baseURL, "https://agent.example/api/v1");
    EXPECT_EQ(address.host, "agent.example");
    EXPECT_EQ(address.webURL, "https://agent.example");
}

TEST(ServiceAddress, KeepsThePortForTheDashboard)
{
    const ServiceAddress address = parseServiceAddress("https://127.0.0.1:8443/api/v1");
    EXPECT_EQ(address.host, "127.0.0.1");
    EXPECT_EQ(address.webURL, "https://127.0.0.1:8443");

    const ServiceAddress bracketed = parseServiceAddress("https://[::1]:8443/api/v1");
    EXPECT_EQ(bracketed.host, "[::1]");
    EXPECT_EQ(bracketed.webURL, "https://[::1]:8443");
}

TEST(ServiceAddress, SchemeMayBeInCapitals)
{
    EXPECT_EQ(parseServiceAddress("HTTPS://agent.example/api/v1").webURL, "HTTPS://agent.example");
}

TEST(ServiceAddress, SaysWhatIsWrong)
{
    EXPECT_EQ(objection(""), "No address of the service was given.");
    for (const char *text : {"agent.example/api/v1", "/api/v1", "https:///api/v1", "https:/api/v1",
                             "https://agent example/api/v1", "https://agent.example/api/v1 ",
                             "https://agent.exämple/api/v1", "https://:443/api/v1"}) {
        EXPECT_THAT(objection(text), HasSubstr("is not a complete URL")) << text;
    }
    for (const char *text : {"http://agent.example/api/v1", "ftp://agent.example/api/v1",
                             "httpsx://agent.example/api/v1", "h://agent.example/api/v1"}) {
        EXPECT_THAT(objection(text), HasSubstr("does not begin with https://")) << text;
    }
    EXPECT_THAT(objection("https://user@agent.example/api/v1"), HasSubstr("user name"));
    EXPECT_THAT(objection("https://@agent.example/api/v1"), HasSubstr("user name"));
    for (const char *text :
         {"https://agent.example:/api/v1", "https://agent.example:0/api/v1",
          "https://agent.example:65536/api/v1", "https://agent.example:99999999999/api/v1"}) {
        EXPECT_THAT(objection(text), HasSubstr("port")) << text;
    }
    EXPECT_THAT(objection("https://agent.example/api/v1?x=1"), HasSubstr("query"));
    EXPECT_THAT(objection("https://agent.example/api/v1?"), HasSubstr("query"));
    EXPECT_THAT(objection("https://agent.example/api/v1#x"), HasSubstr("fragment"));
    EXPECT_THAT(objection("https://agent.example/api/v1/"), HasSubstr("ends in a slash"));
    for (const char *text :
         {"https://agent.example", "https://agent.example/", "https://agent.example/api",
          "https://agent.example/api/v2", "https://agent.example/API/v1",
          "https://agent.example/x/api/v1", "https://agent.example//api/v1",
          "https://agent.example/api/v1//", "https://agent.example/api/%761",
          "https://agent.example/x/../api/v1", "https://agent.example/api/v1/dashboard"}) {
        EXPECT_THAT(objection(text), HasSubstr("does not have the path /api/v1")) << text;
    }
}

TEST(ServiceAddress, ObjectionNamesTheAddressAndIsOneSentence)
{
    EXPECT_EQ(
        objection("http://agent.example/api/v1"),
        "The service's address \"http://agent.example/api/v1\" does not begin with https://.");
}

TEST(ServiceAddress, HighestPortIsTaken)
{
    EXPECT_EQ(objection("https://agent.example:65535/api/v1"), "");
    EXPECT_EQ(objection("https://agent.example:1/api/v1"), "");
}

} // namespace
} // namespace trellisport
