#pragma once

#include "Platform/TextRules.h"

namespace trellisport::platform {

/// The text rules of the browser's own language library; its language is the user's.
class BrowserTextRules final : public TextRules {
public:
    [[nodiscard]] std::unique_ptr<TextSearch> search(std::string_view part) const override;
    [[nodiscard]] std::string capitalized(std::string_view text) const override;
    [[nodiscard]] std::string uppercased(std::string_view text) const override;
    [[nodiscard]] std::string lowercased(std::string_view text) const override;
    [[nodiscard]] std::string prefix(std::string_view text, std::size_t count) const override;
};

} // namespace trellisport::platform
