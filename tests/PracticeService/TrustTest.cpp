#include "CurlClient.h"
#include "ServiceProcess.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

namespace trellisport::practice {
namespace {

TEST(Trust, ClientThatKnowsTheAuthorityConnectsByEveryName)
{
    const QTemporaryDir folder;
    ServiceProcess service(folder.path());
    ASSERT_FALSE(service.url().empty());
    CurlClient client(service.authority());
    const std::string port = service.url().substr(service.url().rfind(':'));
    for (const std::string &url : {service.api(), "https://localhost" + port + "/api/v1"}) {
        const auto reply = client.get(url + "/dashboard");
        EXPECT_EQ(reply.code, CURLE_OK) << url << ": " << curl_easy_strerror(reply.code);
        EXPECT_EQ(reply.status, 200) << url;
    }
}

TEST(Trust, ClientThatDoesNotKnowTheAuthorityRefuses)
{
    const QTemporaryDir folder;
    ServiceProcess service(folder.path());
    ASSERT_FALSE(service.url().empty());
    EXPECT_EQ(CurlClient({}).get(service.api() + "/dashboard").code,
              CURLE_PEER_FAILED_VERIFICATION);
}

TEST(Trust, ClientThatKnowsAnotherServicesAuthorityRefuses)
{
    const QTemporaryDir one;
    const QTemporaryDir other;
    ServiceProcess service(one.path());
    const ServiceProcess stranger(other.path());
    ASSERT_FALSE(service.url().empty() || stranger.url().empty());
    EXPECT_EQ(CurlClient(stranger.authority()).get(service.api() + "/dashboard").code,
              CURLE_PEER_FAILED_VERIFICATION);
}

TEST(Trust, AuthorityStaysTheSameAcrossStarts)
{
    const QTemporaryDir folder;
    std::string authority;
    {
        const ServiceProcess first(folder.path());
        QFile file(QString::fromStdString(first.authority()));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        authority = file.readAll().toStdString();
    }
    const ServiceProcess second(folder.path());
    QFile file(QString::fromStdString(second.authority()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), authority);
}

} // namespace
} // namespace trellisport::practice
