#include "Presentation/Color.h"

#include <cstdint>
#include <optional>

namespace trellisport {

namespace {

std::optional<unsigned> hexDigit(char c)
{
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<unsigned>(c - 'a') + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<unsigned>(c - 'A') + 10;
    }
    return std::nullopt;
}

} // namespace

QColor colorFromHex(std::string_view digits)
{
    const std::size_t start = digits.find_first_not_of(" \t\n\v\f\r");
    digits.remove_prefix(start == std::string_view::npos ? digits.size() : start);
    if (digits.starts_with("0x") || digits.starts_with("0X")) {
        digits.remove_prefix(2);
    }
    std::uint64_t value = 0;
    for (const char c : digits) {
        const auto digit = hexDigit(c);
        if (!digit) {
            break;
        }
        value = (value << 4U) | *digit;
    }
    return QColor(static_cast<int>((value >> 16U) & 0xFFU), static_cast<int>((value >> 8U) & 0xFFU),
                  static_cast<int>(value & 0xFFU));
}

} // namespace trellisport
