#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace trellisport::platform {

struct UserInfoMember;

/// Any value that JSON can hold. Texts are UTF-8.
struct UserInfoValue {
    using List = std::vector<UserInfoValue>;
    using Object = std::vector<UserInfoMember>;

    std::variant<std::nullptr_t, bool, double, std::string, List, Object> value;

    /// The text, or null when the value is of another kind. Valid while the value lives.
    [[nodiscard]] const std::string *text() const { return std::get_if<std::string>(&value); }
};

struct UserInfoMember {
    std::string key;
    UserInfoValue value;
};

/// What a remote notification carries: each key once.
using UserInfo = std::map<std::string, UserInfoValue, std::less<>>;

} // namespace trellisport::platform
