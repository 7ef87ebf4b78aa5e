#pragma once

#include "Platform/CallingThread.h"

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

namespace trellisport {

/// Something that a coroutine waits for and another thread delivers: the coroutine goes on, on the
/// thread that made the arrival. When that thread ends first, the coroutine stays where it is.
/// Copies are one arrival.
template <typename T>
class Arrival {
public:
    Arrival()
        : m_state(std::make_shared<State>())
    {
    }

    /// Once, on any thread. The value is moved on, never copied.
    void deliver(T value) const
    {
        m_state->value.emplace(std::move(value));
        m_state->thread.post([state = m_state] {
            state->isHere = true;
            if (state->waiting) {
                std::exchange(state->waiting, {}).resume();
            }
        });
    }

    // Awaited once, on the thread that made it.
    [[nodiscard]] bool await_ready() const noexcept { return m_state->isHere; }
    void await_suspend(std::coroutine_handle<> waiting) const noexcept
    {
        m_state->waiting = waiting;
    }
    [[nodiscard]] T await_resume() const { return std::move(*m_state->value); }

private:
    struct State {
        platform::CallingThread thread = platform::CallingThread::current();
        std::optional<T> value; ///< written before the post, read after it
        bool isHere = false;    ///< this and the next: on the thread that made it alone
        std::coroutine_handle<> waiting;
    };

    std::shared_ptr<State> m_state;
};

} // namespace trellisport
