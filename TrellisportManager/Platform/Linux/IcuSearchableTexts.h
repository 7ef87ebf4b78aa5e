#pragma once

#include "Platform/Linux/IcuFoldTable.h"
#include "Platform/TextRules.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trellisport::platform {

/// Keeps the texts folded, one behind the other, with a bit for each byte before which a character
/// ends: a part is found in all of them by one pass over bytes.
class IcuSearchableTexts final : public SearchableTexts {
public:
    IcuSearchableTexts(std::shared_ptr<const IcuFoldTable> table,
                       const std::vector<std::string_view> &texts);

    [[nodiscard]] std::vector<std::uint32_t> holding(std::string_view part) const override;

private:
    class Maker;

    std::shared_ptr<const IcuFoldTable> m_table;
    std::string m_folded;            ///< with a separator behind each text
    std::vector<bool> m_boundaries;  ///< by the byte of m_folded
    std::vector<std::size_t> m_ends; ///< of each text, where its separator stands
};

} // namespace trellisport::platform
