#include "ServiceAccess/ConfiguredAddress.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

// This program was built for https://built-in.example/api/v1.

namespace trellisport {
namespace {

class OneVariable : public platform::Environment {
public:
    explicit OneVariable(std::optional<std::string> value)
        : m_value(std::move(value))
    {
    }
    [[nodiscard]] std::optional<std::string> variable(const std::string &name) const override
    {
        return name == "TRELLISPORT_BASE_URL" ? m_value : std::nullopt;
    }

private:
    std::optional<std::string> m_value;
};

TEST(BuiltInAddress, CountsWhereTheEnvironmentNamesNone)
{
    for (const std::optional<std::string> &none : {std::optional<std::string>(), {""}}) {
        const ServiceAddress address = configuredServiceAddress(OneVariable(none));
        EXPECT_EQ(address.baseURL, "https://built-in.example/api/v1");
        EXPECT_EQ(address.host, "built-in.example");
        EXPECT_EQ(address.webURL, "https://built-in.example");
    }
}

TEST(BuiltInAddress, GivesWayToTheEnvironment)
{
    EXPECT_EQ(configuredServiceAddress(OneVariable("https://agent.example/api/v1")).baseURL,
              "https://agent.example/api/v1");
}

TEST(BuiltInAddress, DoesNotStandInForAnAddressThatCannotBeUsed)
{
    EXPECT_THROW(static_cast<void>(configuredServiceAddress(OneVariable("http://agent.example"))),
                 std::invalid_argument);
}

} // namespace
} // namespace trellisport
