#pragma once

#include <string>
#include <string_view>

namespace trellisport::practice {

/// What a file is, by the end of its name, as a Content-Type header says it.
[[nodiscard]] std::string mediaTypeOf(std::string_view name);

/// Whether the name tells the content, as in NAME.0123456789abcdef.EXT: another content has another
/// name, so a reader who has the file need never ask for it again.
[[nodiscard]] bool isNamedByContent(std::string_view name);

} // namespace trellisport::practice
