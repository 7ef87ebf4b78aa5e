#include "ProjectDetail/Bids/BidsViewModel.h"

#include "Presentation/Money.h"

#include <QPointer>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace trellisport {

BidsViewModel::BidsViewModel(const TrellisportAPI &api, const platform::TextRules &rules,
                             ProjectRecord project, QObject *parent)
    : ListScreenModel(parent)
    , m_api(api)
    , m_project(std::move(project))
    , m_rows(rules)
{
}

void BidsViewModel::setProject(const ProjectRecord &project)
{
    if (project.project && m_project != project) {
        m_project = project;
        Q_EMIT bidsChanged();
    }
}

BidsViewModel::OwnBid BidsViewModel::ownBid() const
{
    if (m_rows.ourBid() != nullptr) {
        return OwnBid::Highlighted;
    }
    return m_project.project->bidAmount ? OwnBid::FromProject : OwnBid::None;
}

QString BidsViewModel::ownAmount() const
{
    const BidInfo *ours = m_rows.ourBid();
    return moneyText((ours != nullptr ? ours->amount : m_project.project->bidAmount).value_or(0));
}

QString BidsViewModel::ownPeriod() const
{
    const BidInfo *ours = m_rows.ourBid();
    return periodText(ours != nullptr ? ours->period : OptionalInteger());
}

QCoro::Task<> BidsViewModel::reload(CancellationToken cancellation)
{
    const QPointer<BidsViewModel> self(this);
    std::vector<BidInfo> bids =
        co_await m_api.getBids(std::string(m_project.project->id.view()), cancellation);
    if (self) {
        m_rows.show(std::make_shared<const std::vector<BidInfo>>(std::move(bids)));
        Q_EMIT bidsChanged();
    }
}

} // namespace trellisport
