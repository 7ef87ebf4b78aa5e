#pragma once

#include "PracticeService/Database.h"
#include "PracticeService/Moment.h"
#include "ServiceAccess/Records.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace trellisport::practice {

/// Something that happened, for the status page.
struct Happening {
    std::string time;
    std::string type;
    std::string projectId;
    std::string text;
};

struct OpenQuestion {
    std::string projectTitle;
    std::string question;
    std::string notifiedAt;
};

/// The state on disk as the service shows it. Lists about a project are absent when there is no
/// such project. Every function may throw StoreError; one thread only.
class Store {
public:
    /// Opens the file and makes the tables when they are missing.
    explicit Store(const std::filesystem::path &file);

    [[nodiscard]] Database &database() noexcept { return m_database; }
    [[nodiscard]] bool isFilled();

    [[nodiscard]] DashboardData dashboard();
    /// Latest change first; all of them when no status is asked for.
    [[nodiscard]] std::vector<Project> projects(const std::optional<std::string> &status);
    [[nodiscard]] std::optional<ProjectDetail> project(const std::string &id);
    /// As they were said.
    [[nodiscard]] std::optional<std::vector<Message>> messages(const std::string &project);
    /// The newest first.
    [[nodiscard]] std::optional<std::vector<Decision>> decisions(const std::string &project);
    [[nodiscard]] std::optional<std::vector<BidInfo>> bids(const std::string &project);
    /// As it went.
    [[nodiscard]] std::optional<std::vector<TimelineEvent>> timeline(const std::string &project);
    /// The newest first.
    [[nodiscard]] std::optional<std::vector<DevLog>> logs(const std::string &project);
    /// The newest first.
    [[nodiscard]] std::optional<std::vector<Report>> reports(const std::string &project);

    [[nodiscard]] TextMap config();
    void replaceConfig(const TextMap &config);

    void addDevice(const std::string &token, Moment now);
    void removeDevice(const std::string &token);
    /// The latest first.
    [[nodiscard]] std::vector<std::string> devices();

    [[nodiscard]] std::vector<Happening> happenings(int limit);
    [[nodiscard]] std::vector<OpenQuestion> openQuestions(int limit);

    /// A value that the agent keeps for itself.
    [[nodiscard]] std::optional<std::string> note(const std::string &name);
    void setNote(const std::string &name, const std::string &value);

private:
    template <typename Record, typename Make>
    std::optional<std::vector<Record>> listOf(const std::string &project, const char *sql,
                                              const Make &make);

    Database m_database;
};

} // namespace trellisport::practice
