#include "PracticeService/RequestBody.h"

#include "ServiceAccess/RecordCoding.h"

#include <QByteArray>

namespace trellisport::practice {

TextMap textMap(const std::string &contentType, const std::string &body)
{
    const QByteArray type = QByteArray::fromStdString(contentType.substr(0, contentType.find(';')));
    if (type.trimmed().toLower() != "application/json")
        throw BodyError(415, "The body must be application/json.");
    try {
        return decode<TextMap>(body);
    } catch (const DecodingError &error) {
        throw BodyError(error.kind() == DecodingError::Kind::DamagedData ? 400 : 422, error.what());
    }
}

std::string onlyText(const std::string &contentType, const std::string &body,
                     const std::string &key)
{
    const TextMap map = textMap(contentType, body);
    const auto found = map.find(key);
    if (found == map.end() || map.size() != 1)
        throw BodyError(422, "The body must be an object with the one key \"" + key + "\".");
    if (found->second.empty())
        throw BodyError(422, "The text under \"" + key + "\" must not be empty.");
    return found->second;
}

} // namespace trellisport::practice
