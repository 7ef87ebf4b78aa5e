#pragma once

#include "Platform/TextRules.h"
#include "Presentation/ListScreenModel.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QPointer>

#include <string>
#include <utility>

namespace trellisport {

/// The model of a tab that loads one list of a project and shows it as it is. Rows are an
/// EntryRows; fetch is the client's operation.
template <typename Rows, auto fetch>
class ProjectListModel final : public ListScreenModel {
public:
    /// api and rules must outlive the model.
    ProjectListModel(const TrellisportAPI &api, const platform::TextRules &rules,
                     std::string projectId, QObject *parent = nullptr)
        : ListScreenModel(parent)
        , m_api(api)
        , m_projectId(std::move(projectId))
        , m_rows(rules)
    {
    }

    [[nodiscard]] Rows *rows() override { return &m_rows; }

protected:
    QCoro::Task<> reload(CancellationToken cancellation) override
    {
        const QPointer<ProjectListModel> self(this);
        auto entries = co_await (m_api.*fetch)(m_projectId, cancellation);
        if (self) {
            m_rows.show(std::move(entries));
        }
    }
    [[nodiscard]] bool isEmpty() const override { return m_rows.entries().empty(); }

private:
    const TrellisportAPI &m_api;
    const std::string m_projectId;
    Rows m_rows;
};

} // namespace trellisport
