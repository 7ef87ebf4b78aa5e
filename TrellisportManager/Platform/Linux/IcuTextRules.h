#pragma once

#include "Platform/TextRules.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trellisport::platform {

class IcuFoldTable;

/// The text rules of the ICU library.
class IcuTextRules final : public TextRules {
public:
    /// locale: a language tag such as "tr-TR"; empty for the user's own, which the environment
    /// tells.
    explicit IcuTextRules(const std::string &locale = {});

    [[nodiscard]] std::unique_ptr<TextSearch> search(std::string_view part) const override;
    [[nodiscard]] std::unique_ptr<SearchableTexts>
    searchable(std::vector<std::string_view> texts) const override;
    [[nodiscard]] std::string capitalized(std::string_view text) const override;
    [[nodiscard]] std::string uppercased(std::string_view text) const override;
    [[nodiscard]] std::string lowercased(std::string_view text) const override;
    [[nodiscard]] std::string prefix(std::string_view text, std::size_t count) const override;

private:
    std::shared_ptr<const IcuFoldTable> m_foldTable; ///< shared with the searches
};

} // namespace trellisport::platform
