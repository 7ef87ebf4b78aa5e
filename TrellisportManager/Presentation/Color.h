#pragma once

#include <QColor>

#include <string_view>

namespace trellisport {

/// The colour that six hexadecimal digits stand for (red, green, blue), always opaque.
///
/// Reads as the platform's hexadecimal scanner does: leading white space is skipped, a "0x" prefix
/// is taken, reading stops at the first character that is no hexadecimal digit, and only the low 24
/// bits of the number count. Nothing readable gives black; it never fails. So "#3B82F6" is black,
/// "FFF" is (0, 15, 255), and an alpha pair at the end is taken as blue.
[[nodiscard]] QColor colorFromHex(std::string_view digits);

} // namespace trellisport
