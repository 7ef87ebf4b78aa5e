#pragma once

#include <cstddef>
#include <string_view>

namespace trellisport::platform {

/// Where the part begins in the text, at the offset or behind it, or npos; byte for byte. The part
/// must not be empty, the offset not be beyond the text. Quick in short texts, for which the
/// library's searches take longer to get going than this takes to end, and in long ones that seldom
/// have the part.
[[nodiscard]] std::size_t findPart(std::string_view text, std::string_view part, std::size_t from);

} // namespace trellisport::platform
