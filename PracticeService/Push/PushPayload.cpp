#include "PracticeService/Push/PushPayload.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

namespace trellisport::practice {

namespace {

// In characters: with the worst of escapes and the other keys still below the 3993 bytes that an
// encrypted message may hold.
constexpr qsizetype longestTitle = 80;
constexpr qsizetype longestBody = 400;

QString shortened(const std::string &text, qsizetype most)
{
    QString result = QString::fromStdString(text);
    if (result.size() > most) {
        qsizetype end = most - 1;
        if (result.at(end).isLowSurrogate()) {
            --end;
        }
        result = result.left(end) + QChar(0x2026);
    }
    return result;
}

} // namespace

QByteArray pushPayload(const Alert &alert, const std::string &id)
{
    QJsonObject payload{
        {QStringLiteral("id"), QString::fromStdString(id)},
        {QStringLiteral("aps"),
         QJsonObject{{QStringLiteral("alert"),
                      QJsonObject{{QStringLiteral("title"), shortened(alert.title, longestTitle)},
                                  {QStringLiteral("body"), shortened(alert.text, longestBody)}}}}},
        {QStringLiteral("type"), QString::fromStdString(alert.type)},
        {QStringLiteral("project_id"), QString::fromStdString(alert.projectId)}};
    if (!alert.decisionId.empty()) {
        payload[QStringLiteral("decision_id")] = QString::fromStdString(alert.decisionId);
    }
    return QJsonDocument(payload).toJson(QJsonDocument::Compact);
}

} // namespace trellisport::practice
