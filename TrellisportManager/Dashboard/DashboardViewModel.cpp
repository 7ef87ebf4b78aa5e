#include "Dashboard/DashboardViewModel.h"

#include "Platform/Platform.h"

#include <QPointer>

#include <chrono>

namespace trellisport {

namespace {
constexpr std::chrono::seconds reloadInterval{60};
}

DashboardViewModel::DashboardViewModel()
    : DashboardViewModel(TrellisportAPI::shared(), platform::Platform::current().clock())
{
}

DashboardViewModel::DashboardViewModel(TrellisportAPI &api, platform::Clock &clock, QObject *parent)
    : ScreenModel(parent)
    , m_api(api)
    , m_timer(clock.every(reloadInterval, [this] { loadData(); }))
{
    connect(this, &ScreenModel::isLoadingChanged, this, &DashboardViewModel::changed);
}

DashboardViewModel::Content DashboardViewModel::content() const
{
    if (isLoading() && !m_data) {
        return Content::Spinner;
    }
    if (m_error) {
        return Content::Error;
    }
    return m_data ? Content::Cards : Content::Nothing;
}

QList<StatCardData> DashboardViewModel::statCards() const
{
    return m_data ? trellisport::statCards(*m_data) : QList<StatCardData>();
}

QList<RevenueCardData> DashboardViewModel::revenueCards() const
{
    return m_data ? trellisport::revenueCards(*m_data) : QList<RevenueCardData>();
}

QCoro::Task<> DashboardViewModel::loadData(CancellationToken cancellation)
{
    const QPointer<DashboardViewModel> self(this);
    try {
        const DashboardData data = co_await m_api.getDashboard(cancellation);
        if (self) {
            apply(data);
        }
    } catch (const std::exception &failure) {
        if (self) {
            fail(failure);
        }
    }
}

void DashboardViewModel::refresh()
{
    refreshData();
}

QCoro::Task<> DashboardViewModel::load(CancellationToken cancellation)
{
    return loadData(cancellation);
}

QCoro::Task<> DashboardViewModel::refreshData()
{
    const QPointer<DashboardViewModel> self(this);
    ++m_refreshes;
    Q_EMIT isRefreshingChanged();
    co_await loadData();
    if (self) {
        --m_refreshes;
        Q_EMIT isRefreshingChanged();
    }
}

void DashboardViewModel::apply(const DashboardData &data)
{
    m_data = std::make_shared<const DashboardData>(data);
    m_error.reset();
    endLoading();
    Q_EMIT changed();
}

void DashboardViewModel::fail(const std::exception &failure)
{
    m_error = QString::fromUtf8(failure.what());
    endLoading();
    Q_EMIT changed();
}

} // namespace trellisport
