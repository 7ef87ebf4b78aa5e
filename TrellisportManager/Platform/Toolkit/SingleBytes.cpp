#include "Platform/Toolkit/SingleBytes.h"

#include <algorithm>

namespace trellisport::platform {

bool beginsWithSingleBytes(std::string_view text, std::size_t count)
{
    const std::string_view looked = text.substr(0, count == text.size() ? count : count + 1);
    return std::all_of(looked.begin(), looked.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80 && c != '\r'; // CR LF is one character
    });
}

} // namespace trellisport::platform
