#include "CurlClient.h"
#include "ServiceAccess/RecordCoding.h"
#include "ServiceProcess.h"

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

namespace trellisport::practice {
namespace {

/// Everything that the console can read, decoded once; gives the number of records.
std::size_t readEverything(CurlClient &client, const std::string &api)
{
    std::size_t records = 0;
    static_cast<void>(decode<DashboardData>(client.get(api + "/dashboard").body));
    for (const Project &project :
         decode<std::vector<Project>>(client.get(api + "/projects").body)) {
        const std::string root = api + "/projects/" + std::string(project.id.view());
        static_cast<void>(decode<ProjectDetail>(client.get(root).body));
        records += decode<std::vector<Message>>(client.get(root + "/messages").body).size();
        records += decode<std::vector<Decision>>(client.get(root + "/decisions").body).size();
        records += decode<std::vector<BidInfo>>(client.get(root + "/bids").body).size();
        records += decode<std::vector<TimelineEvent>>(client.get(root + "/timeline").body).size();
        records += decode<std::vector<DevLog>>(client.get(root + "/logs").body).size();
        records += decode<std::vector<Report>>(client.get(root + "/reports").body).size();
    }
    return records;
}

TEST(Kill, WhatWasAcceptedIsThereAfterKillInTheMiddleOfWrites)
{
    const QTemporaryDir folder;
    std::atomic<int> accepted{0};
    int highest = 0;
    for (int round = 0; round < 5; ++round) {
        ServiceProcess service(folder.path());
        ASSERT_FALSE(service.url().empty()) << service.errors().toStdString();
        CurlClient client(service.authority());
        ASSERT_GT(readEverything(client, service.api()), 1000U);
        if (round > 0) {
            // The write under way at the kill may or may not have been taken.
            const auto config = decode<TextMap>(client.get(service.api() + "/config").body);
            EXPECT_GE(std::stoi(config.at("count")), accepted);
            EXPECT_LE(std::stoi(config.at("count")), accepted + 1);
            EXPECT_EQ(config.at("count"), config.at("again")) << "half of a write";
        }
        std::thread writer([&] {
            CurlClient writing(service.authority());
            for (int number = accepted;; ++number) {
                const std::string text = std::to_string(number + 1);
                const auto reply = writing.send(
                    "PUT", service.api() + "/config",
                    encode(TextMap{{"preview_mode", "false"}, {"again", text}, {"count", text}}));
                if (reply.status != 200)
                    return;
                accepted = number + 1;
                writing.send("POST", service.url() + "/control/tick?event=work", "");
            }
        });
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (accepted < highest + 20 && std::chrono::steady_clock::now() < deadline)
            std::this_thread::yield();
        service.kill();
        writer.join();
        ASSERT_GE(accepted, highest + 20);
        highest = accepted;
    }
}

TEST(Kill, DuringTheFirstFillingLeavesAFolderThatStartsAgain)
{
    const QTemporaryDir folder;
    QProcess filling;
    filling.start(QStringLiteral(PRACTICE_SERVICE_PROGRAM),
                  {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--data"),
                   folder.path(), QStringLiteral("--scale"), QStringLiteral("200")});
    // The log of the unfinished transaction is on disk as soon as it no longer fits into memory.
    const QString log = folder.filePath(QStringLiteral("state.sqlite-wal"));
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (QFileInfo(log).size() < 1'000'000 && filling.state() != QProcess::NotRunning &&
           std::chrono::steady_clock::now() < deadline)
        filling.waitForFinished(10);
    ASSERT_GE(QFileInfo(log).size(), 1'000'000);
    filling.kill();
    filling.waitForFinished();
    EXPECT_TRUE(filling.readAllStandardOutput().isEmpty()) << "it was ready already";

    ServiceProcess service(folder.path());
    ASSERT_FALSE(service.url().empty()) << service.errors().toStdString();
    CurlClient client(service.authority());
    const auto projects =
        decode<std::vector<Project>>(client.get(service.api() + "/projects").body);
    EXPECT_GE(projects.size(), 24U);
    EXPECT_LT(projects.size(), 100U);
}

} // namespace
} // namespace trellisport::practice
