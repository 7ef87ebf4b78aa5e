#include "ServiceAccess/RecordCoding.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <stdexcept>

namespace trellisport {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

rapidjson::SizeType checkedSize(std::string_view text)
{
    // Checked here and not by the writer, which would look beyond the end of a text cut short.
    if (!simdjson::validate_utf8(text)) {
        throw EncodingError(EncodingError::Kind::InvalidText,
                            "A text to be sent is not valid UTF-8.");
    }
    if (text.size() > std::numeric_limits<rapidjson::SizeType>::max()) {
        throw std::length_error("a text longer than 4 GiB");
    }
    return static_cast<rapidjson::SizeType>(text.size());
}

void write(Writer &writer, std::string_view text)
{
    writer.String(text.data(), checkedSize(text));
}

void write(Writer &writer, std::int64_t number)
{
    writer.Int64(number);
}

void write(Writer &writer, bool value)
{
    writer.Bool(value);
}

void write(Writer &writer, double number)
{
    if (!writer.Double(number)) {
        throw EncodingError(EncodingError::Kind::NumberNotFinite,
                            "A number to be sent is not finite.");
    }
}

void writeKey(Writer &writer, std::string_view key)
{
    writer.Key(key.data(), checkedSize(key));
}

template <typename Key, typename Value, typename Order>
void write(Writer &writer, const std::map<Key, Value, Order> &map)
{
    writer.StartObject();
    for (const auto &[key, value] : map) {
        writeKey(writer, key);
        write(writer, value);
    }
    writer.EndObject();
}

template <Record T>
void write(Writer &writer, const T &record);

template <typename T>
void write(Writer &writer, const std::vector<T> &list)
{
    writer.StartArray();
    for (const T &item : list) {
        write(writer, item);
    }
    writer.EndArray();
}

template <typename T>
void writeMember(Writer &writer, std::string_view key, const T &value)
{
    if constexpr (requires { value.has_value(); }) {
        if (value.has_value()) {
            writeMember(writer, key, *value);
        }
    } else {
        writeKey(writer, key);
        write(writer, value);
    }
}

template <Record T>
void write(Writer &writer, const T &record)
{
    writer.StartObject();
    std::apply(
        [&](const auto &...field) { (writeMember(writer, field.key, record.*field.member), ...); },
        T::fields);
    writer.EndObject();
}

} // namespace

template <typename T>
std::string encode(const T &value)
{
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    write(writer, value);
    return {buffer.GetString(), buffer.GetSize()};
}

template std::string encode(const Project &);
template std::string encode(const ProjectDetail &);
template std::string encode(const Message &);
template std::string encode(const Decision &);
template std::string encode(const DashboardData &);
template std::string encode(const BidInfo &);
template std::string encode(const TimelineEvent &);
template std::string encode(const DevLog &);
template std::string encode(const Report &);
template std::string encode(const AppConfig &);
template std::string encode(const TextMap &);

template std::string encode(const std::vector<Project> &);
template std::string encode(const std::vector<ProjectDetail> &);
template std::string encode(const std::vector<Message> &);
template std::string encode(const std::vector<Decision> &);
template std::string encode(const std::vector<DashboardData> &);
template std::string encode(const std::vector<BidInfo> &);
template std::string encode(const std::vector<TimelineEvent> &);
template std::string encode(const std::vector<DevLog> &);
template std::string encode(const std::vector<Report> &);
template std::string encode(const std::vector<AppConfig> &);

} // namespace trellisport
