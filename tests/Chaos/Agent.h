#pragma once

#include "Chaos/ChaosPlatform.h"

#include <atomic>
#include <memory>
#include <string>

namespace trellisport::chaos {

/// What comes to the person from outside: the service's agent does something, and a notification
/// tells of it. Main thread; what follows comes later.
class Agent {
public:
    explicit Agent(ChaosPlatform &platform);

    /// Makes an event happen ("decision", "award", "error", "message", "work") to the project, or
    /// to any when it is empty, and delivers its notification when it has happened. opened: the
    /// person taps it.
    void happen(const std::string &event, const std::string &project, bool opened);
    /// A notification that no service of ours would send. kind: any number.
    void deliverNonsense(unsigned kind, bool opened);

    /// Ends the service's trouble, and gives what there was of it: JSON, empty when the service
    /// does not say. Turns the event loop.
    [[nodiscard]] std::string endTrouble();

    /// How many events have happened, and how many were asked for and have happened or not.
    [[nodiscard]] int happened() const { return *m_happened; }
    [[nodiscard]] int ended() const { return *m_ended; }

private:
    /// What the service answers with a status of 200. Turns the event loop.
    [[nodiscard]] std::string ask(const std::string &method, const std::string &url);

    ChaosPlatform &m_platform;
    std::string m_control; ///< the address of the service's paths for tests
    std::unique_ptr<platform::HttpExchange> m_exchange;
    std::shared_ptr<std::atomic<int>> m_happened = std::make_shared<std::atomic<int>>(0);
    std::shared_ptr<std::atomic<int>> m_ended = std::make_shared<std::atomic<int>>(0);
};

} // namespace trellisport::chaos
