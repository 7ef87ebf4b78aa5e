#pragma once

#include "Notifications/NotificationManager.h"
#include "Platform/TextRules.h"
#include "Presentation/ListScreenModel.h"
#include "Presentation/ScreenModel.h"
#include "ProjectDetail/Bids/BidsViewModel.h"
#include "ProjectDetail/Decisions/DecisionsViewModel.h"
#include "ProjectDetail/ProjectRecord.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QString>
#include <QStringList>

#include <string>

namespace trellisport {

/// One project's workspace: its record, loaded each time the workspace appears, and the tab that is
/// selected. An opened notification that asks for the decisions or the logs selects their tab, as
/// long as this lives.
class ProjectDetailViewModel : public trellisport::ScreenModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString projectId READ projectId WRITE setProjectId NOTIFY changed FINAL)
    Q_PROPERTY(Content content READ content NOTIFY changed FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(trellisport::ProjectRecord project READ project NOTIFY changed FINAL)
    Q_PROPERTY(trellisport::ProjectHeader header READ header NOTIFY changed FINAL)
    /// Stops the program when the record's address is no URL (RepositoryAddress.h).
    Q_PROPERTY(QString repositoryAddress READ repositoryAddress NOTIFY changed FINAL)
    Q_PROPERTY(QStringList tabs READ tabs CONSTANT FINAL)
    Q_PROPERTY(
        int selectedTab READ selectedTab WRITE setSelectedTab NOTIFY selectedTabChanged FINAL)
public:
    /// What the screen shows: while it loads, a loaded project, after a first load that failed.
    enum class Content { Spinner, Workspace, Nothing };
    Q_ENUM(Content)
    /// The place of a tab in tabs().
    enum Tab { Overview, Questions, Chat, Bids, Development, Logs, Decisions, Reports };
    Q_ENUM(Tab)

    /// Of no project yet, with the shared services.
    ProjectDetailViewModel();
    /// The services must outlive the model.
    ProjectDetailViewModel(const TrellisportAPI &api, const platform::TextRules &rules,
                           NotificationManager &notifications, std::string projectId,
                           QObject *parent = nullptr);

    [[nodiscard]] QString projectId() const { return QString::fromStdString(m_projectId); }
    /// Before the workspace appears, and never again.
    void setProjectId(const QString &projectId);

    [[nodiscard]] Content content() const;
    /// The project's title, or "Project" while none is loaded.
    [[nodiscard]] QString title() const;
    [[nodiscard]] const ProjectRecord &project() const { return m_project; }
    [[nodiscard]] ProjectHeader header() const;
    [[nodiscard]] QString repositoryAddress() const;
    [[nodiscard]] static QStringList tabs();
    [[nodiscard]] int selectedTab() const { return m_selectedTab; }
    void setSelectedTab(int tab);

    /// Loads the record once. A failure is silent and leaves the record as it was.
    QCoro::Task<> loadProject(CancellationToken cancellation = {});

    // The models of the tabs that load something, made anew for each tab that is shown and owned by
    // it. The bids need a loaded project.
    [[nodiscard]] Q_INVOKABLE trellisport::ListScreenModel *newChat(QObject *owner) const;
    [[nodiscard]] Q_INVOKABLE trellisport::BidsViewModel *newBids(QObject *owner) const;
    [[nodiscard]] Q_INVOKABLE trellisport::ListScreenModel *newDevelopment(QObject *owner) const;
    [[nodiscard]] Q_INVOKABLE trellisport::ListScreenModel *newLogs(QObject *owner) const;
    [[nodiscard]] Q_INVOKABLE trellisport::DecisionsViewModel *newDecisions(QObject *owner) const;
    [[nodiscard]] Q_INVOKABLE trellisport::ListScreenModel *newReports(QObject *owner) const;

Q_SIGNALS:
    void changed();
    void selectedTabChanged();

protected:
    QCoro::Task<> load(CancellationToken cancellation) override;

private:
    void apply(ProjectDetail &&project);
    void followPendingTab();

    const TrellisportAPI &m_api;
    const platform::TextRules &m_rules;
    NotificationManager &m_notifications;
    std::string m_projectId;
    ProjectRecord m_project;
    int m_selectedTab = Overview;
};

} // namespace trellisport
