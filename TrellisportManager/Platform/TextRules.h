#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trellisport::platform {

/// Text operations by the rules of the user's language. All texts are UTF-8; what is not valid
/// UTF-8 counts as U+FFFD. Any thread.
class TextRules {
public:
    TextRules() = default;
    TextRules(const TextRules &) = delete;
    TextRules &operator=(const TextRules &) = delete;
    virtual ~TextRules() = default;

    /// Whether text holds part, letter case ignored by the language's rules, composed and
    /// decomposed spellings alike. An empty part is held by no text.
    [[nodiscard]] virtual bool containsIgnoringCase(std::string_view text,
                                                    std::string_view part) const = 0;

    /// The first letter of each word in upper (title) case, all others in lower case.
    [[nodiscard]] virtual std::string capitalized(std::string_view text) const = 0;
    [[nodiscard]] virtual std::string uppercased(std::string_view text) const = 0;
    [[nodiscard]] virtual std::string lowercased(std::string_view text) const = 0;

    /// The first count characters as a person counts them (grapheme clusters); never part of one.
    [[nodiscard]] virtual std::string prefix(std::string_view text, std::size_t count) const = 0;
};

}  // namespace trellisport::platform
