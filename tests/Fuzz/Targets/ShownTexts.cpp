#include "Fuzz/Targets/Must.h"
#include "Platform/Linux/IcuTextRules.h"
#include "Presentation/TextPieces.h"

#include <cstdint>
#include <string_view>

// What screens make of the service's texts: labels, pieces.

namespace {

using namespace trellisport;

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
    checkPieces(text, rules);
    (void)labelText(text, rules);
    return 0;
}
