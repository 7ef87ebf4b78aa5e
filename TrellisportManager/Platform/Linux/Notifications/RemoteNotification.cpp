#include "Platform/Linux/Notifications/RemoteNotification.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace trellisport::platform {

namespace {

/// What a notification service can be trusted with: no control characters, which some draw as boxes
/// and the bus cuts texts at, but for line ends where there may be lines.
QString presentable(const QString &text, bool lines)
{
    QString result = text;
    for (QChar &character : result) {
        if (character.category() == QChar::Other_Control &&
            !(lines && character == QLatin1Char('\n'))) {
            character = QLatin1Char(' ');
        }
    }
    return result.trimmed();
}

UserInfoValue userInfoValue(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return {value.toBool()};
    case QJsonValue::Double:
        return {value.toDouble()};
    case QJsonValue::String:
        return {value.toString().toStdString()};
    case QJsonValue::Array: {
        UserInfoValue::List list;
        for (const auto &element : value.toArray()) {
            list.push_back(userInfoValue(element));
        }
        return {std::move(list)};
    }
    case QJsonValue::Object: {
        UserInfoValue::Object members;
        const QJsonObject object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member) {
            members.push_back({member.key().toStdString(), userInfoValue(member.value())});
        }
        return {std::move(members)};
    }
    default:
        return {nullptr};
    }
}

UserInfo userInfo(const QJsonObject &payload)
{
    UserInfo info;
    for (auto member = payload.begin(); member != payload.end(); ++member) {
        info.emplace(member.key().toStdString(), userInfoValue(member.value()));
    }
    return info;
}

} // namespace

std::optional<RemoteNotification> parseRemoteNotification(const QByteArray &content,
                                                          const QString &fallbackTitle)
{
    const QJsonDocument document = QJsonDocument::fromJson(content);
    if (!document.isObject()) {
        return std::nullopt;
    }
    const QJsonObject payload = document.object();
    const QJsonValue alert = payload[QLatin1String("aps")].toObject().value(QLatin1String("alert"));
    RemoteNotification result;
    result.title = presentable(alert[QLatin1String("title")].toString(), false);
    result.body = presentable(
        alert.isString() ? alert.toString() : alert[QLatin1String("body")].toString(), true);
    if (result.title.isEmpty()) {
        result.title = fallbackTitle;
    }
    result.isUrgent = payload[QLatin1String("type")].toString() == QLatin1String("decision_needed");
    result.id = payload[QLatin1String("id")].toString().toUtf8();
    result.notification.userInfo = userInfo(payload);
    return result;
}

} // namespace trellisport::platform
