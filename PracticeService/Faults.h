#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace trellisport::practice {

/// What a test asked to go wrong.
struct Fault {
    std::string path; ///< below the base path, e.g. "/dashboard"
    int status = 0;   ///< 0: the reply itself is sound
    std::chrono::milliseconds delay{0};
    int times = 1;
};

/// The faults still to come. Any thread.
class Faults {
public:
    void add(Fault fault)
    {
        const std::lock_guard lock(m_mutex);
        m_faults.push_back(std::move(fault));
    }

    /// The fault that the next reply to the path shall have; it is used up by this.
    std::optional<Fault> take(const std::string &path)
    {
        const std::lock_guard lock(m_mutex);
        for (auto fault = m_faults.begin(); fault != m_faults.end(); ++fault) {
            if (fault->path != path)
                continue;
            Fault taken = *fault;
            if (--fault->times <= 0)
                m_faults.erase(fault);
            return taken;
        }
        return std::nullopt;
    }

    /// Comes back after the delay, or when there is no more time for such things.
    void wait(std::chrono::milliseconds delay)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, delay, [this] { return m_over; });
    }
    void endWaiting()
    {
        const std::lock_guard lock(m_mutex);
        m_over = true;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_over = false;
    std::vector<Fault> m_faults;
};

} // namespace trellisport::practice
