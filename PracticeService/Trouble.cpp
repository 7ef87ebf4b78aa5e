#include "PracticeService/Trouble.h"

#include "PracticeService/Random.h"

#include <array>
#include <utility>

namespace trellisport::practice {

namespace {

struct Kind {
    const char *name;
    Fault::Kind kind;
    int status = 0;
    bool isSilent = false;
};

constexpr std::array kinds{Kind{"late", Fault::Kind::Late},
                           Kind{"status 404", Fault::Kind::Status, 404},
                           Kind{"status 429", Fault::Kind::Status, 429},
                           Kind{"status 500", Fault::Kind::Status, 500},
                           Kind{"status 503", Fault::Kind::Status, 503},
                           Kind{"dropped", Fault::Kind::Drop},
                           Kind{"reset", Fault::Kind::Reset},
                           Kind{"cut", Fault::Kind::Cut},
                           Kind{"slow", Fault::Kind::Slow},
                           Kind{"garbage", Fault::Kind::Garbage},
                           Kind{"silent", Fault::Kind::Drop, 0, true}};

/// FNV-1a, which unlike std::hash is the same everywhere.
std::uint64_t hash(std::string_view text)
{
    std::uint64_t value = 0xCBF29CE484222325ULL;
    for (const char letter : text)
        value = (value ^ static_cast<unsigned char>(letter)) * 0x100000001B3ULL;
    return value;
}

} // namespace

void Trouble::begin(std::uint64_t seed, int oneOf, std::chrono::milliseconds silence)
{
    const std::lock_guard lock(m_mutex);
    m_seed = seed;
    m_oneOf = oneOf;
    m_silence = silence;
    m_places.clear();
    m_counts.clear();
}

std::optional<Fault> Trouble::next(const std::string &method, const std::string &path)
{
    const std::lock_guard lock(m_mutex);
    if (m_oneOf == 0)
        return std::nullopt;
    const std::string request = method + ' ' + path;
    Random chance(m_seed ^ (hash(request) + m_places[request]++));
    ++m_counts["requests"];
    if (chance.between(1, m_oneOf) != 1)
        return std::nullopt;
    const Kind &kind = kinds.at(static_cast<std::size_t>(chance.next() % kinds.size()));
    ++m_counts[kind.name];
    Fault fault{path, kind.kind, kind.status};
    if (kind.isSilent) {
        fault.delay = m_silence;
    } else if (kind.kind == Fault::Kind::Late) {
        fault.delay = m_silence * chance.between(5, 50) / 100;
    }
    return fault;
}

TextMap Trouble::counts() const
{
    const std::lock_guard lock(m_mutex);
    TextMap counts;
    for (const auto &[name, count] : m_counts)
        counts.emplace(name, std::to_string(count));
    return counts;
}

} // namespace trellisport::practice
