#include "Tour/Portfolio.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace trellisport::tour {

namespace {

QJsonArray list(const ServiceControl &service, const QString &path)
{
    return QJsonDocument::fromJson(service.get(path)).array();
}

} // namespace

Portfolio::Portfolio(const ServiceControl &service)
    : m_service(service)
{
    for (const auto &project : list(service, QStringLiteral("/projects"))) {
        m_projects.push_back({project[QLatin1String("id")].toString(),
                              project[QLatin1String("bid_status")].toString()});
    }
}

QString Portfolio::richest(const QString &status) const
{
    QString best;
    qsizetype most = -1;
    for (const Project &project : m_projects) {
        if (project.status != status) {
            continue;
        }
        qsizetype size = 0;
        for (const char *part : {"/messages", "/bids", "/logs", "/decisions", "/reports"}) {
            const auto path = QStringLiteral("/projects/%1").arg(project.id) + QLatin1String(part);
            size += list(m_service, path).size();
        }
        if (size > most) {
            most = size;
            best = project.id;
        }
    }
    return best;
}

QString Portfolio::undecided() const
{
    for (const Project &project : m_projects) {
        for (const auto &decision :
             list(m_service, QStringLiteral("/projects/%1/decisions").arg(project.id))) {
            if (decision[QLatin1String("status")].toString() == QLatin1String("pending")) {
                return project.id;
            }
        }
    }
    return {};
}

} // namespace trellisport::tour
