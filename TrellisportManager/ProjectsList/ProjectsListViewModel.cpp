#include "ProjectsList/ProjectsListViewModel.h"

#include "Platform/Platform.h"
#include "Presentation/StatusStyle.h"
#include "ServiceAccess/Arrival.h"

#include <QPointer>

#include <exception>
#include <utility>

namespace trellisport {

ProjectsListViewModel::ProjectsListViewModel()
    : ProjectsListViewModel(TrellisportAPI::shared(), platform::Platform::current().textRules(),
                            platform::Platform::current().executor(), NotificationManager::shared())
{
}

ProjectsListViewModel::ProjectsListViewModel(TrellisportAPI &api, const platform::TextRules &rules,
                                             platform::Executor &executor,
                                             NotificationManager &notifications, QObject *parent)
    : ScreenModel(parent)
    , m_api(api)
    , m_rules(rules)
    , m_executor(executor)
    , m_notifications(notifications)
    , m_rows(rules)
    , m_projects(std::make_shared<const std::vector<Project>>())
{
    updateChips();
    // Queued, so that everyone who watches the value has seen it before it is taken away.
    connect(&m_notifications, &NotificationManager::pendingProjectIdChanged, this,
            &ProjectsListViewModel::takeOverPendingProject, Qt::QueuedConnection);
}

void ProjectsListViewModel::pressChip(int place)
{
    const auto status = static_cast<std::size_t>(place) - 1;
    if (place < 0 || place >= m_chips.size()) {
        return;
    }
    if (place == 0 || m_selectedStatus == status) {
        m_selectedStatus.reset();
    } else {
        m_selectedStatus = status;
    }
    updateChips();
    updateRows();
}

std::optional<std::string> ProjectsListViewModel::selectedStatus() const
{
    if (!m_selectedStatus) {
        return std::nullopt;
    }
    return std::string(projectStatuses.at(*m_selectedStatus));
}

void ProjectsListViewModel::setSearchText(const QString &text)
{
    if (m_searchText == text) {
        return;
    }
    m_searchText = text;
    updateRows();
    Q_EMIT searchTextChanged();
}

QCoro::Task<> ProjectsListViewModel::loadProjects(CancellationToken cancellation)
{
    const QPointer<ProjectsListViewModel> self(this);
    try {
        auto projects = std::make_shared<const std::vector<Project>>(
            co_await m_api.getProjects(std::nullopt, cancellation));
        if (self) {
            m_titles.reset(); // they lie in the projects
            m_projects = std::move(projects);
            m_statusPlaces = statusPlaces(*m_projects);
            updateRows();
            endLoading();
            makeTitlesReady();
        }
    } catch (const std::exception &) {
        if (self) {
            endLoading();
        }
    }
}

void ProjectsListViewModel::refresh()
{
    refreshProjects();
}

QCoro::Task<> ProjectsListViewModel::load(CancellationToken cancellation)
{
    return loadProjects(std::move(cancellation));
}

QCoro::Task<> ProjectsListViewModel::refreshProjects()
{
    const QPointer<ProjectsListViewModel> self(this);
    ++m_refreshes;
    Q_EMIT isRefreshingChanged();
    co_await loadProjects();
    if (self) {
        --m_refreshes;
        Q_EMIT isRefreshingChanged();
    }
}

QCoro::Task<> ProjectsListViewModel::makeTitlesReady()
{
    const QPointer<ProjectsListViewModel> self(this);
    // Held here, too, so that the titles outlive what refers to them.
    const ProjectRowsModel::Projects projects = m_projects;
    const Arrival<std::unique_ptr<platform::SearchableTexts>> arrival;
    m_executor.run([arrival, projects, &rules = m_rules] {
        arrival.deliver(rules.searchable(titlesOf(*projects)));
    });
    auto titles = co_await arrival;
    if (self && projects == m_projects) {
        m_titles = std::move(titles);
    }
}

void ProjectsListViewModel::takeOverPendingProject()
{
    if (m_notifications.pendingProjectId()) {
        m_navigateToProjectId = m_notifications.pendingProjectId();
        m_notifications.setPendingProjectId(std::nullopt);
    }
}

void ProjectsListViewModel::updateChips()
{
    QList<FilterChipData> chips{{QStringLiteral("All"), !m_selectedStatus}};
    for (std::size_t status = 0; status < projectStatuses.size(); ++status) {
        chips.append({QString::fromStdString(statusLabel(projectStatuses.at(status), m_rules)),
                      m_selectedStatus == status});
    }
    if (chips != m_chips) {
        m_chips = std::move(chips);
        Q_EMIT chipsChanged();
    }
}

void ProjectsListViewModel::updateRows()
{
    m_rows.show(m_projects, groupProjects(m_statusPlaces, m_selectedStatus, found()));
}

std::optional<std::vector<std::uint32_t>> ProjectsListViewModel::found()
{
    if (m_searchText.isEmpty()) {
        return std::nullopt;
    }
    if (!m_titles) {
        m_titles = std::make_unique<platform::TextsOneByOne>(m_rules, titlesOf(*m_projects));
    }
    return m_titles->holding(m_searchText.toStdString());
}

} // namespace trellisport
