#include "Platform/Platform.h"
#include "ServiceAccess/ConfiguredAddress.h"
#include "ServiceAccess/TrellisportAPI.h"
#include "Support/ScriptedServer.h"
#include "Support/TaskOutcome.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace trellisport {
namespace {

class FixedEnvironment : public platform::Environment {
public:
    std::map<std::string, std::string> variables;

    std::string way;

    [[nodiscard]] std::optional<std::string> variable(const std::string &name) const override
    {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    }
    [[nodiscard]] std::string wayToSet() const override { return way; }
};

TEST(ConfiguredAddress, TheEnvironmentNamesTheService)
{
    FixedEnvironment environment;
    environment.variables["TRELLISPORT_BASE_URL"] = "https://agent.example:8443/api/v1";
    const ServiceAddress address = configuredServiceAddress(environment);
    EXPECT_EQ(address.baseURL, "https://agent.example:8443/api/v1");
    EXPECT_EQ(address.webURL, "https://agent.example:8443");
}

TEST(ConfiguredAddress, AnUnusableAddressIsRefused)
{
    FixedEnvironment environment;
    environment.variables["TRELLISPORT_BASE_URL"] = "http://agent.example/api/v1";
    EXPECT_THROW(static_cast<void>(configuredServiceAddress(environment)), std::invalid_argument);
}

std::string outcome(const FixedEnvironment &environment)
{
    try {
        return configuredServiceAddress(environment).baseURL;
    } catch (const std::invalid_argument &error) {
        return error.what();
    }
}

TEST(ConfiguredAddress, WhereNoneIsNamedItIsToldHowToNameIt)
{
    FixedEnvironment environment;
    EXPECT_EQ(outcome(environment), "No service is named: set TRELLISPORT_BASE_URL to its address, "
                                    "such as https://agent.example/api/v1.");
    environment.way = "in the book of names";
    EXPECT_EQ(outcome(environment), "No service is named: set TRELLISPORT_BASE_URL to its address, "
                                    "such as https://agent.example/api/v1, in the book of names.");
}

TEST(ConfiguredAddress, AnEmptyVariableCountsAsNone)
{
    FixedEnvironment empty;
    empty.variables["TRELLISPORT_BASE_URL"] = "";
    EXPECT_EQ(outcome(empty), outcome(FixedEnvironment()));
}

TEST(SharedClient, IsMadeOnceWithTheConfiguredAddressAndWorks)
{
    const test::ScriptedServer server(test::ScriptedServer::answering(
        [](const auto &) { return test::ScriptedServer::replyBytes(200, R"({"a":"b"})"); }));
    qputenv("TRELLISPORT_BASE_URL", QByteArray::fromStdString(server.origin() + "/api/v1"));
    qputenv("TRELLISPORT_CA_FILE",
            QByteArray::fromStdString(test::ScriptedServer::authorityFile()));
    std::mutex mutex;
    std::set<const TrellisportAPI *> seen;
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            const TrellisportAPI *api = &TrellisportAPI::shared();
            const std::lock_guard lock(mutex);
            seen.insert(api);
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(TrellisportAPI::shared().baseURL(), server.origin() + "/api/v1");
    EXPECT_EQ(test::finish(TrellisportAPI::shared().getConfig()).at("a"), "b");
}

} // namespace
} // namespace trellisport
