#include "Fuzz/Targets/Must.h"
#include "Presentation/Color.h"

#include <algorithm>
#include <cstdint>
#include <string>

// Six digits for a colour, or what stands there instead.

namespace {

constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";

/// The same rule, spelt otherwise: the last six digits of those that can be read.
QRgb expected(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
    }
    const std::string_view digits = text.substr(0, text.find_first_not_of(hexDigits));
    const std::string last(digits.substr(digits.size() - std::min<std::size_t>(digits.size(), 6)));
    return 0xFF000000U | static_cast<QRgb>(last.empty() ? 0 : std::stoul(last, nullptr, 16));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const QColor color = trellisport::colorFromHex(text);
    must(color.isValid() && color.alpha() == 255, "every text is an opaque colour");
    must(color.rgba() == expected(text), "the last six digits are the colour");
    return 0;
}
