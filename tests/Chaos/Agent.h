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

    [[nodiscard]] int happened() const { return *m_happened; }

private:
    ChaosPlatform &m_platform;
    std::string m_control; ///< the address of the service's paths for tests
    std::unique_ptr<platform::HttpExchange> m_exchange;
    std::shared_ptr<std::atomic<int>> m_happened = std::make_shared<std::atomic<int>>(0);
};

} // namespace trellisport::chaos
