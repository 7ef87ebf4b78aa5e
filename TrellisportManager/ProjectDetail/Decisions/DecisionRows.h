#pragma once

#include "Presentation/CardRows.h"
#include "ServiceAccess/Records.h"

#include <QHash>
#include <QString>

namespace trellisport {

/// The decisions that the agent has asked for, in the service's order, and what the owner has typed
/// for each so far. A pending one has an editor at its end, every other its answer, if any.
class DecisionRows : public EntryRows<Decision> {
public:
    /// rules must outlive the model.
    explicit DecisionRows(const platform::TextRules &rules, QObject *parent = nullptr)
        : EntryRows(rules, parent)
    {
    }

    /// What was typed for a decision; empty when nothing was.
    [[nodiscard]] QString typedAnswer(const QString &decisionId) const;
    void setTypedAnswer(const QString &decisionId, const QString &text);

    /// The nearest row with an editor behind the given row, or before it; -1 when there is none.
    [[nodiscard]] int editorRow(int row, bool forward) const;

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    enum OwnRole {
        DecisionId = FirstOwnRole,
        Status,
        IsPending,
        HasTime,
        Time,
        Question,
        ShowsQuestion,
        QuestionEnds,
        Answer,
        ShowsAnswer,
        AnswerStarts,
        AnswerEnds,
        TypedAnswer,
    };

    QHash<QString, QString> m_typedAnswers;
};

} // namespace trellisport
