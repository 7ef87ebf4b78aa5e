#pragma once

#include "Presentation/ListScreenModel.h"
#include "ProjectDetail/Decisions/DecisionRows.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QPointer>
#include <QString>

#include <string>

namespace trellisport {

/// The decisions that the agent has asked its owner for, and the owner's answers to them.
class DecisionsViewModel : public trellisport::ListScreenModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The workspace makes one")
public:
    /// The services must outlive the model and every submission.
    DecisionsViewModel(const TrellisportAPI &api, const platform::TextRules &rules,
                       std::string projectId, QObject *parent = nullptr);

    [[nodiscard]] DecisionRows *rows() override { return &m_rows; }

    /// The owner has typed; each decision keeps its own text.
    Q_INVOKABLE void setTypedAnswer(const QString &decisionId, const QString &text);
    /// Sends what was typed for the decision, unless it is empty, and then shows the decisions anew
    /// and clears the text, in this order. A failure on the way is silent and leaves the rest
    /// undone. Each call sends; a submission goes on when this has gone.
    Q_INVOKABLE void submitAnswer(const QString &decisionId);
    /// The nearest row with an editor behind the given row, or before it; -1 when there is none.
    [[nodiscard]] Q_INVOKABLE int editorRow(int row, bool forward) const
    {
        return m_rows.editorRow(row, forward);
    }

Q_SIGNALS:
    /// A submission has ended: whether the service took the answer, and whether the decisions are
    /// shown anew.
    void answerEnded(bool isSent, bool isShown);

protected:
    QCoro::Task<> reload(CancellationToken cancellation) override;
    [[nodiscard]] bool isEmpty() const override { return m_rows.entries().empty(); }

private:
    static QCoro::Task<> submit(QPointer<DecisionsViewModel> self, const TrellisportAPI &api,
                                std::string projectId, QString decisionId, QString answer);
    void show(std::vector<Decision> decisions);

    const TrellisportAPI &m_api;
    const std::string m_projectId;
    DecisionRows m_rows;
};

} // namespace trellisport
