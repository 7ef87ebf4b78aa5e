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
    enum class Kind {
        Late,    ///< nothing but the delay
        Status,  ///< an error instead of the reply; nothing is done
        Drop,    ///< the connection is reset; nothing is done
        Reset,   ///< the request is carried out, and the connection is reset instead of a reply
        Cut,     ///< the reply breaks off within its body
        Slow,    ///< the reply's body comes in small pieces
        Garbage, ///< the request is carried out, and the reply's body is no JSON
    };

    std::string path; ///< below the base path, e.g. "/dashboard"
    Kind kind = Kind::Late;
    int status = 0;                     ///< of a Status
    std::chrono::milliseconds delay{0}; ///< before anything else happens
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
