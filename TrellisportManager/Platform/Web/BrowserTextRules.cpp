#include "Platform/Web/BrowserTextRules.h"

#include "Platform/Toolkit/SingleBytes.h"
#include "Platform/Web/JsText.h"

#include <algorithm>
#include <utility>

// Script/Text.js
extern "C" bool trellisport_is_turkic();
extern "C" void trellisport_fold(const char *text, std::size_t size);
extern "C" bool trellisport_holds(const char *text, std::size_t size, const char *part,
                                  std::size_t partSize);
extern "C" void trellisport_prefix(const char *text, std::size_t size, std::size_t count);
extern "C" void trellisport_uppercased(const char *text, std::size_t size);
extern "C" void trellisport_lowercased(const char *text, std::size_t size);
extern "C" void trellisport_capitalized(const char *text, std::size_t size);

namespace trellisport::platform {

namespace {

char asciiCapital(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

class BrowserTextSearch final : public TextSearch {
public:
    explicit BrowserTextSearch(std::string_view part)
    {
        trellisport_fold(part.data(), part.size());
        m_part = takeText();
        m_isPlain = beginsWithSingleBytes(m_part, m_part.size()) && !trellisport_is_turkic();
    }

    bool isIn(std::string_view text) override
    {
        if (m_part.empty() || text.empty()) {
            return false;
        }
        // To ask the browser takes longer than to look oneself, and most titles are ASCII.
        if (beginsWithSingleBytes(text, text.size()) && !trellisport_is_turkic()) {
            return m_isPlain &&
                   std::search(text.begin(), text.end(), m_part.begin(), m_part.end(),
                               [](char a, char b) { return asciiCapital(a) == b; }) != text.end();
        }
        return trellisport_holds(text.data(), text.size(), m_part.data(), m_part.size());
    }

private:
    std::string m_part; ///< folded
    bool m_isPlain = false;
};

} // namespace

std::unique_ptr<TextSearch> BrowserTextRules::search(std::string_view part) const
{
    return std::make_unique<BrowserTextSearch>(part);
}

std::string BrowserTextRules::capitalized(std::string_view text) const
{
    trellisport_capitalized(text.data(), text.size());
    return takeText();
}

std::string BrowserTextRules::uppercased(std::string_view text) const
{
    trellisport_uppercased(text.data(), text.size());
    return takeText();
}

std::string BrowserTextRules::lowercased(std::string_view text) const
{
    trellisport_lowercased(text.data(), text.size());
    return takeText();
}

std::string BrowserTextRules::prefix(std::string_view text, std::size_t count) const
{
    // A character has at least one byte, so the whole text is no longer than that.
    if (count >= text.size() || beginsWithSingleBytes(text, count)) {
        return std::string(text.substr(0, count));
    }
    trellisport_prefix(text.data(), text.size(), count);
    return takeText();
}

} // namespace trellisport::platform
