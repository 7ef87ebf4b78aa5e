#pragma once

#include "ServiceAccess/Text.h"

#include <string_view>

namespace trellisport {

/// The text, or the empty text when there is none; into the bytes that the given one holds.
[[nodiscard]] inline std::string_view viewOf(const OptionalText &text)
{
    return text ? text->view() : std::string_view();
}

} // namespace trellisport
