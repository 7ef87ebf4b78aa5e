#pragma once

#include <string_view>

namespace trellisport::practice {

/// Whether an Accept-Encoding header's value lets a reply go out in the coding, such as "br". A
/// coding that it names counts before "*"; one with a weight of 0, or one that can't be read, is
/// refused.
[[nodiscard]] bool accepts(std::string_view acceptEncoding, std::string_view coding);

} // namespace trellisport::practice
