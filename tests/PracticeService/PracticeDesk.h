#pragma once

#include "PracticeService/Keeper.h"
#include "PracticeService/Service.h"
#include "ServiceAccess/RecordCoding.h"

#include <QTemporaryDir>

#include <memory>
#include <string>
#include <vector>

namespace trellisport::practice {

/// The service without sockets, on a folder of its own, in which time stands still unless a test
/// moves it.
class PracticeDesk {
public:
    explicit PracticeDesk(double speed = 0, int scale = 1);

    [[nodiscard]] ServiceReply get(const std::string &path) { return send("GET", path); }
    [[nodiscard]] ServiceReply send(const std::string &method, const std::string &path,
                                    const std::string &body = {},
                                    const std::string &contentType = "application/json");
    [[nodiscard]] ServiceReply handle(const ServiceRequest &request);
    /// What an operation gives; fails the test when it gives no such thing.
    template <typename Value>
    [[nodiscard]] Value read(const std::string &path)
    {
        return decode<Value>(get("/api/v1" + path).body);
    }

    /// Makes an event happen and gives the project's and the decision's identifier; both empty when
    /// it cannot happen.
    struct Done {
        std::string project;
        std::string decision;
    };
    Done happen(const std::string &event, const std::string &project = {});
    [[nodiscard]] std::vector<Project> inStage(const std::string &status);
    /// Projects whose decisions are pending, with the first such decision.
    [[nodiscard]] std::vector<Done> openDecisions();
    ServiceReply answer(const Done &decision, const std::string &text);
    ServiceReply configure(const TextMap &changes);

    /// Closes the state and opens it again, as a restart does.
    void restart();

    [[nodiscard]] Keeper &keeper() { return *m_keeper; }
    [[nodiscard]] std::vector<Alert> alerts();

private:
    void open();

    QTemporaryDir m_folder;
    double m_speed;
    int m_scale;
    std::vector<Alert> m_alerts; // filled on the keeper's thread
    std::unique_ptr<Keeper> m_keeper;
    std::unique_ptr<Service> m_service;
};

} // namespace trellisport::practice
