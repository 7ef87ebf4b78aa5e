#include "ServiceAccess/CodingErrors.h"

#include <utility>

namespace trellisport {

DecodingError::DecodingError(Kind kind, std::string path, std::string description)
    : m_kind(kind)
    , m_path(std::move(path))
    , m_description(std::move(description))
{
}

EncodingError::EncodingError(Kind kind, std::string description)
    : m_kind(kind)
    , m_description(std::move(description))
{
}

} // namespace trellisport
