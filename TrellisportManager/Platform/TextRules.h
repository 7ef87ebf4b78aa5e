#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellisport::platform {

/// Looks for one part in any number of texts, prepared once for all of them. One thread at a time.
class TextSearch {
public:
    TextSearch() = default;
    TextSearch(const TextSearch &) = delete;
    TextSearch &operator=(const TextSearch &) = delete;
    virtual ~TextSearch() = default;

    /// Whether text holds the part (see TextRules::search).
    [[nodiscard]] virtual bool isIn(std::string_view text) = 0;
};

/// Many texts, in which one part after another is looked for. One thread at a time.
class SearchableTexts {
public:
    SearchableTexts() = default;
    SearchableTexts(const SearchableTexts &) = delete;
    SearchableTexts &operator=(const SearchableTexts &) = delete;
    virtual ~SearchableTexts() = default;

    /// The places of the texts that hold the part (see TextRules::search), ascending.
    [[nodiscard]] virtual std::vector<std::uint32_t> holding(std::string_view part) const = 0;
};

/// Text operations as a person expects them. All texts are UTF-8; what is not valid UTF-8 counts as
/// U+FFFD. Any thread.
class TextRules {
public:
    TextRules() = default;
    TextRules(const TextRules &) = delete;
    TextRules &operator=(const TextRules &) = delete;
    virtual ~TextRules() = default;

    /// A search for part: letter case ignored by the rules of the user's language, composed and
    /// decomposed spellings alike, accents told apart, whole characters only (an "e" is not in
    /// "é"). An empty part is held by no text. The search may outlive the rules.
    [[nodiscard]] virtual std::unique_ptr<TextSearch> search(std::string_view part) const = 0;

    /// Makes searches in all these texts quick, for instance by folding them once. That may take a
    /// while, so it is not for the main thread where there are others; any thread. At most 2^32
    /// texts, which must outlive what it gives, and so must the rules. It should need no more
    /// memory than the texts. A platform that can make nothing ready leaves it as it is.
    [[nodiscard]] virtual std::unique_ptr<SearchableTexts>
    searchable(std::vector<std::string_view> texts) const;

    /// The same for one text. Where there are many, make one search for them.
    [[nodiscard]] bool containsIgnoringCase(std::string_view text, std::string_view part) const
    {
        return search(part)->isIn(text);
    }

    /// The first letter of each word in upper (title) case, all others in lower case, by the rules
    /// that hold for no language in particular: what the service sends is not in the user's. Words
    /// are those of the Unicode word rules, by which an apostrophe within letters parts nothing:
    /// "o'neil's bid-plan" becomes "O'neil's Bid-Plan".
    [[nodiscard]] virtual std::string capitalized(std::string_view text) const = 0;
    /// By the same rules as capitalized.
    [[nodiscard]] virtual std::string uppercased(std::string_view text) const = 0;
    /// By the same rules as capitalized.
    [[nodiscard]] virtual std::string lowercased(std::string_view text) const = 0;

    /// The first count characters as a person counts them (grapheme clusters); never part of one.
    [[nodiscard]] virtual std::string prefix(std::string_view text, std::size_t count) const = 0;
};

/// Texts that are searched one by one, with nothing made ready. The texts and the rules must
/// outlive it.
class TextsOneByOne final : public SearchableTexts {
public:
    TextsOneByOne(const TextRules &rules, std::vector<std::string_view> texts)
        : m_rules(rules)
        , m_texts(std::move(texts))
    {
    }

    [[nodiscard]] std::vector<std::uint32_t> holding(std::string_view part) const override
    {
        std::vector<std::uint32_t> places;
        const auto search = m_rules.search(part);
        for (std::size_t place = 0; place < m_texts.size(); ++place) {
            if (search->isIn(m_texts[place])) {
                places.push_back(static_cast<std::uint32_t>(place));
            }
        }
        return places;
    }

private:
    const TextRules &m_rules;
    std::vector<std::string_view> m_texts;
};

inline std::unique_ptr<SearchableTexts>
TextRules::searchable(std::vector<std::string_view> texts) const
{
    return std::make_unique<TextsOneByOne>(*this, std::move(texts));
}

} // namespace trellisport::platform
