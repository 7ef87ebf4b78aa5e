#pragma once

#include "Support/Waiting.h"

#include <QCoroTask>

#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <utility>

namespace trellisport::test {

/// What became of a task that a test started.
template <typename T>
class TaskOutcome {
public:
    /// Whether the task has ended, well or badly.
    [[nodiscard]] bool isDone() const { return m_value.has_value() || m_error; }
    /// Whether it ended by throwing.
    [[nodiscard]] bool hasFailed() const { return m_error != nullptr; }
    /// The thread on which it ended.
    [[nodiscard]] std::thread::id endedOn() const { return m_endedOn; }

    /// Gives the value away, or throws what the task threw. Throws std::logic_error before the end.
    T take()
    {
        if (m_error) {
            std::rethrow_exception(m_error);
        }
        if (!m_value) {
            throw std::logic_error("the task has not ended");
        }
        if constexpr (!std::is_void_v<T>) {
            return std::move(*m_value);
        }
    }

    /// Follows a task to its end; see observe().
    static QCoro::Task<> follow(QCoro::Task<T> task, std::shared_ptr<TaskOutcome> outcome)
    {
        try {
            if constexpr (std::is_void_v<T>) {
                co_await task;
                outcome->m_value.emplace();
            } else {
                outcome->m_value.emplace(co_await task);
            }
        } catch (...) {
            outcome->m_error = std::current_exception();
        }
        outcome->m_endedOn = std::this_thread::get_id();
    }

private:
    struct Nothing {};

    std::optional<std::conditional_t<std::is_void_v<T>, Nothing, T>> m_value;
    std::exception_ptr m_error;
    std::thread::id m_endedOn;
};

/// Lets a task run by itself; the outcome tells how it ended.
template <typename T>
[[nodiscard]] std::shared_ptr<TaskOutcome<T>> observe(QCoro::Task<T> task)
{
    auto outcome = std::make_shared<TaskOutcome<T>>();
    TaskOutcome<T>::follow(std::move(task), outcome);
    return outcome;
}

/// Runs the calling thread's event loop until the task has ended. Gives its value or throws what it
/// threw; throws std::runtime_error when it does not end.
template <typename T>
T finish(QCoro::Task<T> task)
{
    const auto outcome = observe(std::move(task));
    if (!waitUntil([&] { return outcome->isDone(); })) {
        throw std::runtime_error("the task did not end");
    }
    return outcome->take();
}

} // namespace trellisport::test
