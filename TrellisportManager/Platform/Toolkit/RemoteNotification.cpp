#include "Platform/Toolkit/RemoteNotification.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

#include <utility>

namespace trellisport::platform {

namespace {

/// What a notification service can be trusted with: no control characters, which some draw as boxes
/// and the bus cuts texts at, but for line ends where there may be lines.
QString presentable(const QString &text, qsizetype longest, bool lines)
{
    QString result = text;
    for (QChar &character : result) {
        if (character.category() == QChar::Other_Control &&
            !(lines && character == QLatin1Char('\n'))) {
            character = QLatin1Char(' ');
        }
    }
    result = result.trimmed();
    if (result.size() > longest) {
        qsizetype end = longest - 1;
        if (result.at(end - 1).isHighSurrogate()) {
            --end; // no half of a character
        }
        result = result.left(end) + QChar(0x2026);
    }
    return result;
}

/// The text that content is; empty when it is none that a person would read.
QString plainText(const QByteArray &content)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(content);
    const QByteArray start = content.trimmed().left(1);
    const bool isForMachines = start == "{" || start == "[";
    return decoder.hasError() || isForMachines ? QString() : text;
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

RemoteNotification parseRemoteNotification(const QByteArray &content, const QString &fallbackTitle)
{
    const QJsonDocument document = QJsonDocument::fromJson(content);
    RemoteNotification result;
    if (!document.isObject()) {
        result.title = fallbackTitle;
        result.body = presentable(plainText(content), longestBody, true);
        if (result.body.isEmpty()) {
            result.body =
                QCoreApplication::translate("RemoteNotification", "A message that can't be shown");
        }
        return result;
    }
    const QJsonObject payload = document.object();
    const QJsonValue alert = payload[QLatin1String("aps")].toObject().value(QLatin1String("alert"));
    const QString title = alert[QLatin1String("title")].toString();
    const QString body =
        alert.isString() ? alert.toString() : alert[QLatin1String("body")].toString();
    result.title = presentable(title, longestTitle, false);
    result.body = presentable(body, longestBody, true);
    if (result.title.isEmpty()) {
        result.title = fallbackTitle;
    }
    result.isUrgent = payload[QLatin1String("type")].toString() == QLatin1String("decision_needed");
    result.id = payload[QLatin1String("id")].toString().toUtf8();
    result.notification.userInfo = userInfo(payload);
    return result;
}

} // namespace trellisport::platform
