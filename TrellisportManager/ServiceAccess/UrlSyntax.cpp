#include "ServiceAccess/UrlSyntax.h"

#include <uriparser/Uri.h>

namespace trellisport {

namespace {

/// A URI or a relative reference.
bool isReference(std::string_view text)
{
    UriUriA uri;
    const char *errorPosition = nullptr;
    if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &errorPosition) !=
        URI_SUCCESS) {
        return false; // what was allocated on the way is freed by the parser itself
    }
    uriFreeUriMembersA(&uri);
    return true;
}

/// Cuts the text at the first of the marks; gives what lay before it and leaves the rest, mark
/// included.
std::string_view takeUntil(std::string_view &text, std::string_view marks)
{
    const std::string_view taken = text.substr(0, text.find_first_of(marks));
    text.remove_prefix(taken.size());
    return taken;
}

/// What follows the mark when the text starts with it, up to the next of the marks.
std::optional<std::string_view> takeAfter(std::string_view &text, char mark, std::string_view marks)
{
    if (!text.starts_with(mark)) {
        return {};
    }
    text.remove_prefix(1);
    return takeUntil(text, marks);
}

} // namespace

std::optional<UrlParts> splitURL(std::string_view url)
{
    if (url.empty() || !isReference(url)) {
        return {};
    }
    // In a valid URI each mark below can only stand where it separates.
    UrlParts parts;
    parts.scheme = takeUntil(url, ":/?#");
    if (parts.scheme.empty() || !url.starts_with("://")) {
        return {};
    }
    url.remove_prefix(3);
    std::string_view authority = takeUntil(url, "/?#");
    parts.path = takeUntil(url, "?#");
    parts.query = takeAfter(url, '?', "#");
    parts.fragment = takeAfter(url, '#', {});

    if (const auto at = authority.find('@'); at != std::string_view::npos) {
        parts.userInfo = authority.substr(0, at);
        authority.remove_prefix(at + 1);
    }
    const std::size_t literal = authority.starts_with('[') ? authority.find(']') + 1 : 0;
    const std::size_t colon = authority.find(':', literal);
    parts.host = authority.substr(0, colon);
    if (colon != std::string_view::npos) {
        parts.port = authority.substr(colon + 1);
    }
    if (parts.host.empty()) {
        return {};
    }
    return parts;
}

bool isAbsoluteURL(std::string_view url)
{
    return splitURL(url).has_value();
}

bool isURLReference(std::string_view text)
{
    return !text.empty() && isReference(text);
}

} // namespace trellisport
