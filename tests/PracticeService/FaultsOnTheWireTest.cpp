#include "CurlClient.h"
#include "ServiceAccess/RecordCoding.h"
#include "ServiceProcess.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <string>

namespace trellisport::practice {
namespace {

/// The program, asked for one fault at a time.
class FaultsOnTheWire : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(m_service.url().empty()); }

    void ask(const std::string &what)
    {
        ASSERT_EQ(m_client.send("POST", m_service.url() + "/control/fault?path=" + what, "").status,
                  200);
    }
    CurlClient::Reply getConfig() { return m_client.get(m_service.api() + "/config"); }
    /// On a connection of its own: on one that was used before, libcurl would try again by itself.
    CurlClient::Reply putConfig(const std::string &bids)
    {
        return CurlClient(m_service.authority())
            .send("PUT", m_service.api() + "/config", R"({"max_daily_bids":")" + bids + "\"}");
    }

    QTemporaryDir m_folder;
    ServiceProcess m_service{m_folder.path()};
    CurlClient m_client{m_service.authority()};
};

TEST_F(FaultsOnTheWire, ADropDoesNothingAndAResetDoesIt)
{
    ASSERT_EQ(putConfig("3").status, 200);
    ask("/config&kind=drop");
    const auto dropped = putConfig("4");
    EXPECT_NE(dropped.code, CURLE_OK);
    EXPECT_EQ(dropped.status, 0);
    EXPECT_EQ(getConfig().body, R"({"max_daily_bids":"3"})");

    ask("/config&kind=reset");
    const auto lost = putConfig("5");
    EXPECT_NE(lost.code, CURLE_OK);
    EXPECT_EQ(lost.status, 0);
    EXPECT_EQ(getConfig().body, R"({"max_daily_bids":"5"})");
}

TEST_F(FaultsOnTheWire, ACutEndsTheConnectionWithinTheBody)
{
    const std::string whole = getConfig().body;
    ask("/config&kind=cut");
    const auto cut = getConfig();
    EXPECT_EQ(cut.code, CURLE_PARTIAL_FILE);
    EXPECT_EQ(cut.status, 200);
    EXPECT_EQ(cut.body, whole.substr(0, whole.size() / 2));
    EXPECT_EQ(getConfig().body, whole);
}

TEST_F(FaultsOnTheWire, ASlowBodyComesWhole)
{
    const std::string whole = getConfig().body;
    ask("/config&kind=slow");
    const auto slow = getConfig();
    EXPECT_EQ(slow.code, CURLE_OK);
    EXPECT_EQ(slow.body, whole);
    double seconds = 0;
    curl_easy_getinfo(m_client.handle(), CURLINFO_TOTAL_TIME, &seconds);
    EXPECT_GE(seconds, 0.4);
}

TEST_F(FaultsOnTheWire, GarbageIsASuccessThatIsNoJson)
{
    ask("/config&kind=garbage");
    const auto garbage = getConfig();
    EXPECT_EQ(garbage.status, 200);
    EXPECT_THROW(decode<TextMap>(garbage.body), DecodingError);
}

} // namespace
} // namespace trellisport::practice
