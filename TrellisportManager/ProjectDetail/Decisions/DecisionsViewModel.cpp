#include "ProjectDetail/Decisions/DecisionsViewModel.h"

#include <exception>
#include <utility>
#include <vector>

namespace trellisport {

DecisionsViewModel::DecisionsViewModel(const TrellisportAPI &api, const platform::TextRules &rules,
                                       std::string projectId, QObject *parent)
    : ListScreenModel(parent)
    , m_api(api)
    , m_projectId(std::move(projectId))
    , m_rows(rules)
{
}

void DecisionsViewModel::setTypedAnswer(const QString &decisionId, const QString &text)
{
    m_rows.setTypedAnswer(decisionId, text);
}

void DecisionsViewModel::submitAnswer(const QString &decisionId)
{
    const QString answer = m_rows.typedAnswer(decisionId);
    if (!answer.isEmpty()) {
        submit(this, m_api, m_projectId, decisionId, answer);
    }
}

QCoro::Task<> DecisionsViewModel::submit(QPointer<DecisionsViewModel> self,
                                         const TrellisportAPI &api, std::string projectId,
                                         QString decisionId, QString answer)
{
    bool isSent = false;
    try {
        co_await api.answerDecision(projectId, decisionId.toStdString(), answer.toStdString());
        isSent = true;
        std::vector<Decision> decisions = co_await api.getDecisions(projectId);
        if (self) {
            self->show(std::move(decisions));
            self->setTypedAnswer(decisionId, {});
            Q_EMIT self->answerEnded(true, true);
        }
    } catch (const std::exception &) {
        // Nothing on the screen changes: the owner may press again.
        if (self) {
            Q_EMIT self->answerEnded(isSent, false);
        }
    }
}

void DecisionsViewModel::show(std::vector<Decision> decisions)
{
    m_rows.show(std::move(decisions));
    Q_EMIT contentChanged();
}

QCoro::Task<> DecisionsViewModel::reload(CancellationToken cancellation)
{
    const QPointer<DecisionsViewModel> self(this);
    std::vector<Decision> decisions = co_await m_api.getDecisions(m_projectId, cancellation);
    if (self) {
        show(std::move(decisions));
    }
}

} // namespace trellisport
