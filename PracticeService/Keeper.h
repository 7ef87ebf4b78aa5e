#pragma once

#include "PracticeService/Agent.h"
#include "PracticeService/AgentClock.h"
#include "PracticeService/Store.h"

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>

namespace trellisport::practice {

/// Owns the thread on which the state lives, and the state. Everyone else asks.
class Keeper {
public:
    struct Setup {
        std::filesystem::path file;
        std::uint64_t seed = 1; ///< seed, scale and begin count only while the file is empty
        int scale = 1;
        double speed = 1;
        Agent::AlertSink alerts = [](const Alert &) {};
        std::optional<Moment> begin = std::nullopt; ///< of the agent's time; nothing: now
    };

    /// What the asker gets to see, on the keeper's thread.
    struct Desk {
        Store &store;
        Agent &agent;
        AgentClock &clock;
    };

    /// Opens the state, and makes a portfolio when there is none. Throws what that throws.
    explicit Keeper(Setup setup);
    Keeper(const Keeper &) = delete;
    Keeper &operator=(const Keeper &) = delete;
    /// Finishes what was asked before, then closes the state.
    ~Keeper();

    /// Calls work(desk) on the keeper's thread and gives what it gives, or throws what it throws.
    /// Any thread but the keeper's.
    template <typename Work>
    auto ask(Work work) -> std::invoke_result_t<Work &, Desk &>
    {
        using Task = std::packaged_task<std::invoke_result_t<Work &, Desk &>(Desk &)>;
        // Shared: the keeper is still inside it when the answer wakes the asker.
        const auto task = std::make_shared<Task>(std::move(work));
        auto answer = task->get_future();
        post([task](Desk &desk) { (*task)(desk); });
        return answer.get();
    }

private:
    void post(std::function<void(Desk &)> task);
    void live(const Setup &setup, std::promise<void> &opened);
    void serve(Desk &desk);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void(Desk &)>> m_tasks;
    bool m_closing = false;
    std::thread m_thread;
};

} // namespace trellisport::practice
