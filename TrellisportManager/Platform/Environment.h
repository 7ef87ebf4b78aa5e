#pragma once

#include <optional>
#include <string>

namespace trellisport::platform {

/// What the surroundings tell the program.
class Environment {
public:
    Environment() = default;
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;
    virtual ~Environment() = default;

    /// The value of a variable; absent when it is not set. A browser has none but those that its
    /// page stands for. Any thread.
    [[nodiscard]] virtual std::optional<std::string> variable(const std::string &name) const = 0;

    /// How a person sets variables for good, as the end of a sentence, such as "in the file x";
    /// empty where there is no way. Any thread.
    [[nodiscard]] virtual std::string wayToSet() const { return {}; }
};

} // namespace trellisport::platform
