#include "ServiceAccess/APIError.h"

#include <utility>

namespace trellisport {

APIError APIError::httpError(int status)
{
    return {Case::HttpError, status, "HTTP error " + std::to_string(status)};
}

APIError APIError::invalidURL()
{
    return {Case::InvalidURL, 0, "Invalid URL"};
}

APIError::APIError(Case errorCase, int status, std::string description)
    : m_case(errorCase)
    , m_status(status)
    , m_description(std::move(description))
{
}

} // namespace trellisport
