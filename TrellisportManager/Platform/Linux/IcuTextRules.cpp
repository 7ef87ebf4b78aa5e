#include "Platform/Linux/IcuTextRules.h"

#include "Platform/Linux/IcuFoldTable.h"
#include "Platform/Linux/IcuSearchableTexts.h"
#include "Platform/Linux/IcuTextSearch.h"
#include "Platform/Toolkit/SingleBytes.h"

#include <unicode/brkiter.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/stringpiece.h>
#include <unicode/ucasemap.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <utility>

namespace trellisport::platform {

namespace {

bool isTurkic(const icu::Locale &locale)
{
    const std::string_view language = locale.getLanguage();
    return language == "tr" || language == "az";
}

icu::UnicodeString fromUtf8(std::string_view text)
{
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string toUtf8(const icu::UnicodeString &text)
{
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

} // namespace

IcuTextRules::IcuTextRules(const std::string &locale)
    : m_foldTable(std::make_shared<IcuFoldTable>(
          isTurkic(locale.empty() ? icu::Locale::getDefault()
                                  : icu::Locale::createFromName(locale.c_str()))))
{
}

std::unique_ptr<TextSearch> IcuTextRules::search(std::string_view part) const
{
    return std::make_unique<IcuTextSearch>(m_foldTable, part);
}

std::unique_ptr<SearchableTexts> IcuTextRules::searchable(std::vector<std::string_view> texts) const
{
    return std::make_unique<IcuSearchableTexts>(m_foldTable, texts);
}

std::string IcuTextRules::capitalized(std::string_view text) const
{
    // To the first letter and not the first letter or digit: "3d" becomes "3D".
    return toUtf8(
        fromUtf8(text).toTitle(nullptr, icu::Locale::getRoot(), U_TITLECASE_ADJUST_TO_CASED));
}

std::string IcuTextRules::uppercased(std::string_view text) const
{
    return toUtf8(fromUtf8(text).toUpper(icu::Locale::getRoot()));
}

std::string IcuTextRules::lowercased(std::string_view text) const
{
    return toUtf8(fromUtf8(text).toLower(icu::Locale::getRoot()));
}

std::string IcuTextRules::prefix(std::string_view text, std::size_t count) const
{
    // A character has at least one byte, so the whole text is no longer than that.
    if (count >= text.size() || beginsWithSingleBytes(text, count)) {
        return std::string(text.substr(0, count));
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    UText opened = UTEXT_INITIALIZER;
    utext_openUTF8(&opened, text.data(), static_cast<std::int64_t>(text.size()), &status);
    if (U_FAILURE(status)) {
        return {};
    }
    characters->setText(&opened, status);
    std::int32_t end = 0;
    for (; count > 0 && end != icu::BreakIterator::DONE; --count) {
        end = characters->next();
    }
    utext_close(&opened);
    return std::string(
        end == icu::BreakIterator::DONE ? text : text.substr(0, static_cast<std::size_t>(end)));
}

} // namespace trellisport::platform
