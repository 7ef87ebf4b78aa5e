#pragma once

#include "Notifications/NotificationManager.h"
#include "Platform/Executor.h"
#include "Platform/TextRules.h"
#include "Presentation/ScreenModel.h"
#include "ProjectsList/FilterChipData.h"
#include "ProjectsList/ProjectGroups.h"
#include "ProjectsList/ProjectRowsModel.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QList>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellisport {

/// The projects list's state: what was loaded, and which of it the chips and the search field let
/// through. Chips and search only filter what is loaded. A failed load shows nothing and keeps what
/// there was.
class ProjectsListViewModel : public trellisport::ScreenModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(trellisport::ProjectRowsModel *rows READ rows CONSTANT FINAL)
    Q_PROPERTY(QList<trellisport::FilterChipData> chips READ chips NOTIFY chipsChanged FINAL)
    Q_PROPERTY(
        QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged FINAL)
    /// Whether a reload that the owner asked for by pulling is under way.
    Q_PROPERTY(bool isRefreshing READ isRefreshing NOTIFY isRefreshingChanged FINAL)
public:
    ProjectsListViewModel();
    /// api, rules, executor and notifications must outlive the model, and the rules also the work
    /// that it gives to the executor.
    ProjectsListViewModel(TrellisportAPI &api, const platform::TextRules &rules,
                          platform::Executor &executor, NotificationManager &notifications,
                          QObject *parent = nullptr);

    [[nodiscard]] ProjectRowsModel *rows() { return &m_rows; }
    /// "All", then one chip for each of projectStatuses.
    [[nodiscard]] const QList<FilterChipData> &chips() const { return m_chips; }
    /// Presses the chip at a place in chips(): the first turns the filter off, every other turns
    /// its own status on, or off when it is on. Other places do nothing.
    Q_INVOKABLE void pressChip(int place);
    /// The status whose chip is on; absent: all.
    [[nodiscard]] std::optional<std::string> selectedStatus() const;

    [[nodiscard]] QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);

    [[nodiscard]] bool isRefreshing() const { return m_refreshes > 0; }
    /// The project that the last opened notification was about. Nothing reads it: the list opens no
    /// project by itself.
    [[nodiscard]] const std::optional<std::string> &navigateToProjectId() const
    {
        return m_navigateToProjectId;
    }

    /// Loads every project once, whatever the chips say. Loads may overlap; the last to end wins.
    QCoro::Task<> loadProjects(CancellationToken cancellation = {});

    /// The owner pulled: a load that keeps the indicator until it ends.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void chipsChanged();
    void searchTextChanged();
    void isRefreshingChanged();

protected:
    QCoro::Task<> load(CancellationToken cancellation) override;

private:
    QCoro::Task<> refreshProjects();
    QCoro::Task<> makeTitlesReady();
    void takeOverPendingProject();
    void updateChips();
    void updateRows();
    /// The places of the projects whose titles hold the search text; absent while that is empty.
    [[nodiscard]] std::optional<std::vector<std::uint32_t>> found();

    TrellisportAPI &m_api;
    const platform::TextRules &m_rules;
    platform::Executor &m_executor;
    NotificationManager &m_notifications;
    ProjectRowsModel m_rows;
    ProjectRowsModel::Projects m_projects;
    std::vector<std::uint8_t> m_statusPlaces; ///< of all that is loaded
    /// The titles of m_projects; none until they are ready or needed.
    std::unique_ptr<platform::SearchableTexts> m_titles;
    std::optional<std::size_t> m_selectedStatus; ///< a place in projectStatuses
    QList<FilterChipData> m_chips;
    QString m_searchText;
    std::optional<std::string> m_navigateToProjectId;
    int m_refreshes = 0;
};

} // namespace trellisport
