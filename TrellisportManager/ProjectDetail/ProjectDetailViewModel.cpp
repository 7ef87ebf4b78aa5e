#include "ProjectDetail/ProjectDetailViewModel.h"

#include "Platform/Platform.h"
#include "Presentation/Money.h"
#include "Presentation/TextPieces.h"
#include "ProjectDetail/Chat/MessageRows.h"
#include "ProjectDetail/Development/TimelineRows.h"
#include "ProjectDetail/Logs/LogRows.h"
#include "ProjectDetail/ProjectListModel.h"
#include "ProjectDetail/Reports/ReportRows.h"
#include "ProjectDetail/RepositoryAddress.h"
#include "ProjectDetail/TextViews.h"

#include <QPointer>

#include <exception>
#include <memory>
#include <utility>

namespace trellisport {

ProjectDetailViewModel::ProjectDetailViewModel()
    : ProjectDetailViewModel(TrellisportAPI::shared(), platform::Platform::current().textRules(),
                             NotificationManager::shared(), {})
{
}

ProjectDetailViewModel::ProjectDetailViewModel(const TrellisportAPI &api,
                                               const platform::TextRules &rules,
                                               NotificationManager &notifications,
                                               std::string projectId, QObject *parent)
    : ScreenModel(parent)
    , m_api(api)
    , m_rules(rules)
    , m_notifications(notifications)
    , m_projectId(std::move(projectId))
{
    connect(this, &ScreenModel::isLoadingChanged, this, &ProjectDetailViewModel::changed);
    connect(&m_notifications, &NotificationManager::pendingTabChanged, this,
            &ProjectDetailViewModel::followPendingTab);
}

void ProjectDetailViewModel::setProjectId(const QString &projectId)
{
    m_projectId = projectId.toStdString();
    Q_EMIT changed();
}

ProjectDetailViewModel::Content ProjectDetailViewModel::content() const
{
    if (isLoading()) {
        return Content::Spinner;
    }
    return m_project.project ? Content::Workspace : Content::Nothing;
}

QString ProjectDetailViewModel::title() const
{
    return m_project.project ? labelText(m_project.project->title, m_rules)
                             : QStringLiteral("Project");
}

ProjectHeader ProjectDetailViewModel::header() const
{
    ProjectHeader header;
    if (const auto &project = m_project.project) {
        header.hasReference = project->refNumber.has_value();
        header.reference = labelText(viewOf(project->refNumber), m_rules);
        header.status = labelText(project->bidStatus.value_or("unknown"), m_rules);
        header.bidAmount = project->bidAmount ? moneyText(*project->bidAmount) : QString();
        header.marketplaceNumber =
            QStringLiteral("FL#") + QString::number(project->freelancerProjectId.value_or(0));
        header.hasRepository = project->githubRepoUrl.has_value();
    }
    return header;
}

QString ProjectDetailViewModel::repositoryAddress() const
{
    if (!m_project.project || !m_project.project->githubRepoUrl) {
        return {};
    }
    return trellisport::repositoryAddress(*m_project.project->githubRepoUrl);
}

QStringList ProjectDetailViewModel::tabs()
{
    return {QStringLiteral("Overview"),  QStringLiteral("Questions"), QStringLiteral("Chat"),
            QStringLiteral("Bids"),      QStringLiteral("Dev"),       QStringLiteral("Logs"),
            QStringLiteral("Decisions"), QStringLiteral("Reports")};
}

void ProjectDetailViewModel::setSelectedTab(int tab)
{
    if (m_selectedTab != tab) {
        m_selectedTab = tab;
        Q_EMIT selectedTabChanged();
    }
}

QCoro::Task<> ProjectDetailViewModel::loadProject(CancellationToken cancellation)
{
    const QPointer<ProjectDetailViewModel> self(this);
    try {
        ProjectDetail project = co_await m_api.getProject(m_projectId, cancellation);
        if (self) {
            apply(std::move(project));
        }
    } catch (const std::exception &) { // NOLINT(bugprone-empty-catch): a failed load is silent
    }
    if (self) {
        endLoading();
    }
}

QCoro::Task<> ProjectDetailViewModel::load(CancellationToken cancellation)
{
    return loadProject(cancellation);
}

void ProjectDetailViewModel::apply(ProjectDetail &&project)
{
    m_project.project = std::make_shared<const ProjectDetail>(std::move(project));
    endLoading();
    Q_EMIT changed();
}

void ProjectDetailViewModel::followPendingTab()
{
    const auto &pending = m_notifications.pendingTab();
    if (pending == "decisions") {
        setSelectedTab(Decisions);
    } else if (pending == "logs") {
        setSelectedTab(Logs);
    }
    m_notifications.setPendingTab({});
}

ListScreenModel *ProjectDetailViewModel::newChat(QObject *owner) const
{
    return new ProjectListModel<MessageRows, &TrellisportAPI::getMessages>(m_api, m_rules,
                                                                           m_projectId, owner);
}

BidsViewModel *ProjectDetailViewModel::newBids(QObject *owner) const
{
    return new BidsViewModel(m_api, m_rules, m_project, owner);
}

ListScreenModel *ProjectDetailViewModel::newDevelopment(QObject *owner) const
{
    return new ProjectListModel<TimelineRows, &TrellisportAPI::getTimeline>(m_api, m_rules,
                                                                            m_projectId, owner);
}

ListScreenModel *ProjectDetailViewModel::newLogs(QObject *owner) const
{
    return new ProjectListModel<LogRows, &TrellisportAPI::getLogs>(m_api, m_rules, m_projectId,
                                                                   owner);
}

DecisionsViewModel *ProjectDetailViewModel::newDecisions(QObject *owner) const
{
    return new DecisionsViewModel(m_api, m_rules, m_projectId, owner);
}

ListScreenModel *ProjectDetailViewModel::newReports(QObject *owner) const
{
    return new ProjectListModel<ReportRows, &TrellisportAPI::getReports>(m_api, m_rules,
                                                                         m_projectId, owner);
}

} // namespace trellisport
