#pragma once

#include <cstddef>
#include <string_view>

namespace trellisport::platform {

/// Whether the text's first characters, this many, are one byte each and end before the next. count
/// is at most the text's size. Most texts' are, and then nobody who knows all languages has to be
/// asked.
[[nodiscard]] bool beginsWithSingleBytes(std::string_view text, std::size_t count);

} // namespace trellisport::platform
