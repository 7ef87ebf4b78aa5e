#pragma once

#include <cstddef>
#include <string_view>

namespace trellisport::platform {

/// Copies the text with its ASCII letters in lower case and all other bytes as they are. keepI: not
/// the capital I, which is the capital of something else. out has room for the text's size and
/// eight bytes. Whether the text is ASCII throughout.
[[nodiscard]] bool copyAsciiLowercased(std::string_view text, char *out, bool keepI);

[[nodiscard]] bool isAsciiAlone(std::string_view text);

[[nodiscard]] inline bool isAscii(char c)
{
    return (static_cast<unsigned char>(c) & 0x80) == 0;
}

/// Whether the text may hold code points beyond ASCII that fold to ASCII alone. True of some others
/// too.
[[nodiscard]] bool mayFoldToAscii(std::string_view text);

} // namespace trellisport::platform
