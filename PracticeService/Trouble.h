#pragma once

#include "PracticeService/Faults.h"
#include "ServiceAccess/Records.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace trellisport::practice {

/// Faults without end, of every kind by chance. What happens to the Nth request of a method to a
/// path rests on the seed and N alone, however requests to other paths come in between. Any thread.
class Trouble {
public:
    /// From now on one of so many requests goes wrong; 0: none. silence is how long a request may
    /// stay without an answer. Counting begins anew.
    void begin(std::uint64_t seed, int oneOf, std::chrono::milliseconds silence);

    /// The fault that this request meets. path: below the base path.
    [[nodiscard]] std::optional<Fault> next(const std::string &method, const std::string &path);

    /// How many requests there were under "requests", and of these how many met each fault.
    [[nodiscard]] TextMap counts() const;

private:
    mutable std::mutex m_mutex;
    std::uint64_t m_seed = 0;
    int m_oneOf = 0;
    std::chrono::milliseconds m_silence{0};
    std::map<std::string, std::uint64_t> m_places; ///< how many requests each method and path had
    std::map<std::string, int> m_counts;
};

} // namespace trellisport::practice
