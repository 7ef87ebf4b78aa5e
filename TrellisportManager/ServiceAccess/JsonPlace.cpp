#include "ServiceAccess/JsonPlace.h"

#include "ServiceAccess/CodingErrors.h"

namespace trellisport {

namespace {

/// The service chooses the keys of maps; one of any length must not fill a screen.
constexpr std::size_t longestKeyShown = 64;

std::string shown(std::string_view key)
{
    if (key.size() <= longestKeyShown) {
        return std::string(key);
    }
    std::size_t end = longestKeyShown;
    while (end > 0 && (static_cast<unsigned char>(key[end]) & 0xc0) == 0x80) {
        --end; // not inside a character
    }
    return std::string(key.substr(0, end)) + "...";
}

} // namespace

std::string JsonPlace::path() const
{
    if (!m_parent) {
        return {};
    }
    std::string path = m_parent->path();
    if (m_isElement) {
        return path + '[' + std::to_string(m_index) + ']';
    }
    if (m_parent->m_parent) {
        path += '.';
    }
    return path + shown(m_key);
}

std::string JsonPlace::description() const
{
    return m_parent ? "\"" + path() + "\" in the service's reply" : "The service's reply";
}

void JsonPlace::failKeyMissing() const
{
    throw DecodingError(DecodingError::Kind::KeyMissing, path(), description() + " is missing.");
}

void JsonPlace::failValueMissing() const
{
    throw DecodingError(DecodingError::Kind::ValueMissing, path(), description() + " is null.");
}

void JsonPlace::failMismatch(std::string_view expected) const
{
    throw DecodingError(DecodingError::Kind::TypeMismatch, path(),
                        description() + " is not " + std::string(expected) + '.');
}

} // namespace trellisport
