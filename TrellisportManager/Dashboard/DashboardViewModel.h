#pragma once

#include "Dashboard/DashboardCards.h"
#include "Platform/Clock.h"
#include "Presentation/ScreenModel.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <memory>
#include <optional>

namespace trellisport {

/// The dashboard's state and its three ways to reload: the screen appears, the owner pulls, and a
/// timer every 60 seconds while the screen exists. Loads may overlap; the last to end wins.
class DashboardViewModel : public trellisport::ScreenModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Content content READ content NOTIFY changed FINAL)
    Q_PROPERTY(QString error READ error NOTIFY changed FINAL)
    Q_PROPERTY(QList<trellisport::StatCardData> statCards READ statCards NOTIFY changed FINAL)
    Q_PROPERTY(
        QList<trellisport::RevenueCardData> revenueCards READ revenueCards NOTIFY changed FINAL)
    /// Whether a reload that the owner asked for by pulling is under way.
    Q_PROPERTY(bool isRefreshing READ isRefreshing NOTIFY isRefreshingChanged FINAL)
public:
    /// What the screen shows, the first that applies.
    enum class Content { Spinner, Error, Cards, Nothing };
    Q_ENUM(Content)

    DashboardViewModel();
    /// api and clock must outlive the model.
    DashboardViewModel(TrellisportAPI &api, platform::Clock &clock, QObject *parent = nullptr);

    [[nodiscard]] Content content() const;
    [[nodiscard]] QString error() const { return m_error.value_or(QString()); }
    [[nodiscard]] QList<StatCardData> statCards() const;
    [[nodiscard]] QList<RevenueCardData> revenueCards() const;
    [[nodiscard]] bool isRefreshing() const { return m_refreshes > 0; }

    /// Loads the summary once. A failure becomes the error text; the last summary is kept behind
    /// it.
    QCoro::Task<> loadData(CancellationToken cancellation = {});

    /// The owner pulled: a load that keeps the indicator until it ends.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void changed();
    void isRefreshingChanged();

protected:
    QCoro::Task<> load(CancellationToken cancellation) override;

private:
    QCoro::Task<> refreshData();
    void apply(const DashboardData &data);
    void fail(const std::exception &failure);

    TrellisportAPI &m_api;
    std::shared_ptr<const DashboardData> m_data;
    std::optional<QString> m_error;
    int m_refreshes = 0;
    std::unique_ptr<platform::Timer> m_timer;
};

} // namespace trellisport
