#pragma once

#include <cstddef>
#include <string>

namespace trellisport::platform {

/// Memory for a text that a script hands over: the script asks for it by textBuffer(), fills it,
/// and the function that was called returns it as a text by takeText().
extern "C" char *trellisport_text_buffer(std::size_t size);

/// What was filled last; empty when nothing was.
[[nodiscard]] std::string takeText();

} // namespace trellisport::platform
