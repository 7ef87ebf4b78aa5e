#include "Fuzz/Targets/Must.h"
#include "Platform/Linux/IcuTextRules.h"
#include "Presentation/Color.h"
#include "Presentation/TextPieces.h"

#include <algorithm>
#include <cstdint>
#include <string>

// What screens make of the service's texts: colours, shortened times, labels, pieces.

namespace {

using namespace trellisport;

bool isPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

void checkColor(std::string_view text)
{
    const QColor color = colorFromHex(text);
    must(color.isValid() && color.alpha() == 255, "every text is an opaque colour");
    const bool isHex = text.size() == 6 &&
                       text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
    if (isHex) {
        const auto value = static_cast<unsigned>(std::stoul(std::string(text), nullptr, 16));
        must((color.rgb() & 0xFFFFFFU) == value, "six digits are the colour that they write");
    }
}

void checkTime(std::string_view text, const platform::TextRules &rules)
{
    const QString shown = shortTime(text, rules);
    if (isPlain(text)) {
        std::string wanted(text.substr(0, 19));
        std::replace(wanted.begin(), wanted.end(), 'T', ' ');
        must(shown.toStdString() == wanted, "a time is its first 19 characters, blanks for T");
    }
}

void checkPieces(std::string_view text, const platform::TextRules &rules)
{
    while (!text.empty()) {
        const std::size_t cut = firstPieceSize(text, rules);
        must(cut > 0 && cut <= text.size(), "each piece takes something of the text");
        (void)pieceText(text.substr(0, cut), cut < text.size());
        text.remove_prefix(cut);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    static const platform::IcuTextRules rules("en");
    checkColor(text);
    checkTime(text, rules);
    checkPieces(text, rules);
    (void)labelText(text, rules);
    return 0;
}
