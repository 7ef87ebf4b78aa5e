#include "Fuzz/Targets/Must.h"
#include "Platform/Linux/IcuTextRules.h"
#include "Presentation/TextPieces.h"

#include <algorithm>
#include <cstdint>
#include <string>

// Times as the service may send them.

namespace {

bool isPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace trellisport;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    static const platform::IcuTextRules rules("en");
    const QString shown = shortTime(text, rules);
    for (qsizetype at = 0; (at = shown.indexOf(QLatin1Char('T'), at)) >= 0; ++at) {
        // With a mark on it, it is another character.
        must(at + 1 < shown.size() && shown.at(at + 1).unicode() > 0x7F, "no T stays");
    }
    must(static_cast<std::size_t>(shown.size()) <= text.size(), "nothing is made longer");
    if (isPlain(text)) {
        std::string wanted(text.substr(0, 19));
        std::replace(wanted.begin(), wanted.end(), 'T', ' ');
        must(shown.toStdString() == wanted, "a time is its first 19 characters, blanks for T");
    }
    return 0;
}
