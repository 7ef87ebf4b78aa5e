#include "CurlClient.h"
#include "PracticeService/Random.h"
#include "ServiceAccess/RecordCoding.h"
#include "ServiceProcess.h"

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <chrono>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

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

/// What the service said yes to, over all its lives.
struct Accepted {
    std::atomic<int> settings{0};
    std::vector<std::string> tokens;
    std::vector<std::pair<std::string, std::string>> decisions; ///< project, decision
    std::map<std::string, std::string> answers;                 ///< by decision
};

/// Writes until the service is gone, each kind of write on a connection of its own.
class Writers {
public:
    Writers(const ServiceProcess &service, Accepted &accepted)
        : m_service(service)
        , m_accepted(accepted)
        , m_threads{std::thread([this] { writeSettings(); }),
                    std::thread([this] { writeTokens(); }), std::thread([this] { writeAnswers(); })}
    {
    }
    Writers(const Writers &) = delete;
    Writers &operator=(const Writers &) = delete;
    ~Writers()
    {
        for (std::thread &thread : m_threads)
            thread.join();
    }

private:
    void writeSettings()
    {
        CurlClient client(m_service.authority());
        for (int number = m_accepted.settings + 1;; ++number) {
            const std::string text = std::to_string(number);
            const TextMap settings{{"preview_mode", "false"}, {"again", text}, {"count", text}};
            if (client.send("PUT", m_service.api() + "/config", encode(settings)).status != 200)
                return;
            m_accepted.settings = number;
        }
    }
    void writeTokens()
    {
        CurlClient client(m_service.authority());
        for (std::size_t number = m_accepted.tokens.size();; ++number) {
            const std::string token = "token" + std::to_string(number);
            const std::string body = encode(TextMap{{"device_token", token}});
            if (client.send("POST", m_service.api() + "/devices", body).status != 200)
                return;
            m_accepted.tokens.push_back(token);
        }
    }
    void writeAnswers()
    {
        CurlClient client(m_service.authority());
        for (;;) {
            const auto asked =
                client.send("POST", m_service.url() + "/control/tick?event=decision", "");
            if (asked.status != 200)
                return;
            const auto done = decode<TextMap>(asked.body);
            const std::string &project = done.at("project_id");
            const std::string &decision = done.at("decision_id");
            m_accepted.decisions.emplace_back(project, decision);
            std::string path = m_service.api() + "/projects/";
            path.append(project).append("/decisions/").append(decision).append("/answer");
            const std::string text = "answer to " + decision;
            if (client.send("POST", path, encode(TextMap{{"answer", text}})).status != 200)
                return;
            m_accepted.answers[decision] = text;
        }
    }

    const ServiceProcess &m_service;
    Accepted &m_accepted;
    std::array<std::thread, 3> m_threads;
};

/// Expects that all that was accepted is there, and nothing half.
void expectEverything(ServiceProcess &service, const Accepted &accepted)
{
    CurlClient client(service.authority());
    const std::string api = service.api();
    if (accepted.settings > 0) {
        const auto config = decode<TextMap>(client.get(api + "/config").body);
        // The write under way at the kill may or may not have been taken.
        EXPECT_GE(std::stoi(config.at("count")), accepted.settings);
        EXPECT_LE(std::stoi(config.at("count")), accepted.settings + 1);
        EXPECT_EQ(config.at("count"), config.at("again")) << "half of a write";
    }
    std::set<std::string> tokens;
    for (const auto &[place, token] :
         decode<TextMap>(client.get(service.url() + "/control/devices").body))
        tokens.insert(token);
    for (const std::string &token : accepted.tokens)
        EXPECT_TRUE(tokens.contains(token)) << token;

    std::map<std::string, std::map<std::string, std::string>> given; // by project, by decision
    for (const auto &[project, decision] : accepted.decisions) {
        if (given.contains(project))
            continue;
        std::string path = api + "/projects/";
        path.append(project).append("/decisions");
        for (const Decision &found : decode<std::vector<Decision>>(client.get(path).body)) {
            EXPECT_EQ(found.answer.has_value(), found.status == "answered") << "half of an answer";
            EXPECT_EQ(found.answer.has_value(), found.answeredAt.has_value());
            given[project][std::string(found.id.view())] =
                found.answer ? std::string(found.answer->view()) : std::string();
        }
    }
    for (const auto &[project, decision] : accepted.decisions) {
        ASSERT_TRUE(given[project].contains(decision)) << decision;
        const auto answer = accepted.answers.find(decision);
        EXPECT_TRUE(answer == accepted.answers.end() || given[project][decision] == answer->second)
            << decision;
    }
}

/// Expects that SQLite finds no fault with the file, by the pragma that it is asked with.
void expectSoundFile(const QString &file, const char *check)
{
    const QString name = QStringLiteral("after-kills");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(file);
        ASSERT_TRUE(database.open());
        for (const auto &[question, answer] :
             {std::pair(check, "ok"), std::pair("PRAGMA journal_mode", "wal")}) {
            QSqlQuery query(database);
            ASSERT_TRUE(query.exec(QLatin1String(question)) && query.next()) << question;
            EXPECT_EQ(query.value(0).toString(), QLatin1String(answer));
        }
        QSqlQuery strays(database);
        ASSERT_TRUE(strays.exec(QStringLiteral("PRAGMA foreign_key_check")));
        EXPECT_FALSE(strays.next()) << "a row belongs to none";
    }
    QSqlDatabase::removeDatabase(name);
}

/// How often; a developer may want more.
int kills()
{
    bool isNumber = false;
    const int asked = qEnvironmentVariableIntValue("TRELLISPORT_KILLS", &isNumber);
    return isNumber ? asked : 100;
}

TEST(Kill, AtAnyMomentLosesNoAcceptedWriteAndTearsNone)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("state.sqlite"));
    Accepted accepted;
    Random chance(1);
    for (int round = 0; round < kills(); ++round) {
        ServiceProcess service(folder.path());
        ASSERT_FALSE(service.url().empty()) << service.errors().toStdString();
        expectEverything(service, accepted);
        // Beside the service: the first to open the file after a kill repairs it, and that is its
        // part.
        expectSoundFile(file, "PRAGMA quick_check");
        ASSERT_FALSE(testing::Test::HasFailure()) << "after kill " << round;
        const Writers writers(service, accepted);
        std::this_thread::sleep_for(std::chrono::milliseconds(chance.between(0, 150)));
        service.kill();
    }
    ServiceProcess service(folder.path());
    expectEverything(service, accepted);
    CurlClient client(service.authority());
    EXPECT_GT(readEverything(client, service.api()), 1000U);
    service.kill();
    std::cout << kills() << " kills: " << accepted.settings << " settings, "
              << accepted.tokens.size() << " tokens, " << accepted.decisions.size()
              << " decisions and " << accepted.answers.size() << " answers were accepted\n";
    // The test is worth something only when there was something to lose.
    EXPECT_GT(accepted.settings, kills());
    EXPECT_GT(accepted.tokens.size(), static_cast<std::size_t>(kills()));
    EXPECT_GT(accepted.answers.size(), static_cast<std::size_t>(kills()) / 10);
    expectSoundFile(file, "PRAGMA integrity_check");
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
