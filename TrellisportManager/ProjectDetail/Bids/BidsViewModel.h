#pragma once

#include "Presentation/ListScreenModel.h"
#include "ProjectDetail/Bids/BidRows.h"
#include "ProjectDetail/ProjectRecord.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QString>

namespace trellisport {

/// A project's bids: the own one, for which the project's amount stands in when the list has none,
/// and the competitors'.
class BidsViewModel : public trellisport::ListScreenModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The workspace makes one")
    Q_PROPERTY(
        trellisport::ProjectRecord project READ project WRITE setProject NOTIFY bidsChanged FINAL)
    Q_PROPERTY(OwnBid ownBid READ ownBid NOTIFY bidsChanged FINAL)
    Q_PROPERTY(QString ownAmount READ ownAmount NOTIFY bidsChanged FINAL)
    Q_PROPERTY(QString ownPeriod READ ownPeriod NOTIFY bidsChanged FINAL)
    Q_PROPERTY(int otherCount READ otherCount NOTIFY bidsChanged FINAL)
public:
    /// The own-bid block: none, the highlighted card of a bid of ours, or a card with the project's
    /// amount.
    enum class OwnBid { None, Highlighted, FromProject };
    Q_ENUM(OwnBid)

    /// project is loaded; its identifier keys the bids. The services must outlive the model.
    BidsViewModel(const TrellisportAPI &api, const platform::TextRules &rules,
                  ProjectRecord project, QObject *parent = nullptr);

    [[nodiscard]] const ProjectRecord &project() const { return m_project; }
    void setProject(const ProjectRecord &project);
    [[nodiscard]] OwnBid ownBid() const;
    [[nodiscard]] QString ownAmount() const;
    /// Of a bid of ours.
    [[nodiscard]] QString ownPeriod() const;
    [[nodiscard]] int otherCount() const { return static_cast<int>(m_rows.otherCount()); }
    [[nodiscard]] BidRows *rows() override { return &m_rows; }

Q_SIGNALS:
    void bidsChanged();

protected:
    QCoro::Task<> reload(CancellationToken cancellation) override;
    /// What stands above the competitors is always there.
    [[nodiscard]] bool isEmpty() const override { return false; }

private:
    const TrellisportAPI &m_api;
    ProjectRecord m_project;
    BidRows m_rows;
};

} // namespace trellisport
