#include "Coding/JsonPeers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <simdjson.h>

#include <stdexcept>

namespace trellisport::bench {

namespace {

Text textIn(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    if (!value.isString()) {
        throw std::runtime_error("not a text");
    }
    return value.toString().toStdString();
}

} // namespace

void parseBarely(std::string &body)
{
    const std::size_t size = body.size();
    body.resize(size + simdjson::SIMDJSON_PADDING);
    simdjson::dom::parser parser;
    const simdjson::dom::element root = parser.parse(body.data(), size, false);
    if (!root.is_array()) {
        throw std::runtime_error("not a list");
    }
}

std::vector<DevLog> logsThroughQt(const std::string &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(body));
    const QJsonArray array = document.array();
    std::vector<DevLog> logs;
    logs.reserve(static_cast<std::size_t>(array.size()));
    for (const auto value : array) {
        const QJsonObject object = value.toObject();
        logs.push_back({textIn(object, "id"), textIn(object, "log_type"), textIn(object, "content"),
                        textIn(object, "created_at")});
    }
    return logs;
}

std::vector<DevLog> logsThroughNlohmann(const std::string &body)
{
    const auto document = nlohmann::json::parse(body);
    std::vector<DevLog> logs;
    logs.reserve(document.size());
    const auto text = [](const nlohmann::json &object, const char *key) -> Text {
        return object.at(key).get_ref<const std::string &>();
    };
    for (const auto &object : document) {
        logs.push_back({text(object, "id"), text(object, "log_type"), text(object, "content"),
                        text(object, "created_at")});
    }
    return logs;
}

nlohmann::ordered_json documentOf(const std::vector<DevLog> &logs)
{
    auto document = nlohmann::ordered_json::array();
    for (const DevLog &log : logs) {
        document.push_back({{"id", log.id.view()},
                            {"log_type", log.logType.view()},
                            {"content", log.content.view()},
                            {"created_at", log.createdAt.value().view()}});
    }
    return document;
}

} // namespace trellisport::bench
