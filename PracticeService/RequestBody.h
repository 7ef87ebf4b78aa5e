#pragma once

#include "ServiceAccess/Records.h"

#include <stdexcept>
#include <string>

namespace trellisport::practice {

/// A body that the operation cannot take: 400 when it is no JSON, 422 when it is another JSON than
/// promised, 415 when it does not say that it is JSON.
class BodyError : public std::runtime_error {
public:
    BodyError(int status, const std::string &reason)
        : std::runtime_error(reason)
        , m_status(status)
    {
    }
    [[nodiscard]] int status() const noexcept { return m_status; }

private:
    int m_status;
};

/// The body as a flat map of texts. Throws BodyError.
[[nodiscard]] TextMap textMap(const std::string &contentType, const std::string &body);

/// The body's one text: an object with this key alone, whose text is not empty. Throws BodyError.
[[nodiscard]] std::string onlyText(const std::string &contentType, const std::string &body,
                                   const std::string &key);

} // namespace trellisport::practice
