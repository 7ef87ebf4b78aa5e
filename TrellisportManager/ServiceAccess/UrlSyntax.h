#pragma once

#include <optional>
#include <string_view>

namespace trellisport {

/// An absolute URL taken apart; the views point into the text it was made from. Nothing is
/// unescaped.
struct UrlParts {
    std::string_view scheme;
    std::optional<std::string_view> userInfo;
    std::string_view host; ///< an IP literal with its brackets
    std::optional<std::string_view> port;
    std::string_view path; ///< with its leading slash; empty when there is none
    std::optional<std::string_view> query;
    std::optional<std::string_view> fragment;
};

/// Takes apart a text that is a URI by RFC 3986 with a scheme and a host; nothing for any other.
/// A character that the standard wants escaped (a blank, a letter beyond ASCII, a bracket in a
/// path) makes it another. Any thread.
[[nodiscard]] std::optional<UrlParts> splitURL(std::string_view url);

/// Whether splitURL takes the text.
[[nodiscard]] bool isAbsoluteURL(std::string_view url);

/// Whether the text is a URI or a relative reference by RFC 3986, as strictly; the empty text
/// counts as none. Any thread.
[[nodiscard]] bool isURLReference(std::string_view text);

} // namespace trellisport
