#include "ProjectDetail/Decisions/DecisionRows.h"

#include "Presentation/TextPieces.h"
#include "ProjectDetail/TextViews.h"

namespace trellisport {

namespace {

bool isPending(const Decision &decision)
{
    return decision.status == "pending";
}

QString idOf(const Decision &decision)
{
    const std::string_view id = decision.id;
    return QString::fromUtf8(id.data(), static_cast<qsizetype>(id.size()));
}

} // namespace

QString DecisionRows::typedAnswer(const QString &decisionId) const
{
    return m_typedAnswers.value(decisionId);
}

void DecisionRows::setTypedAnswer(const QString &decisionId, const QString &text)
{
    QString &typed = m_typedAnswers[decisionId];
    if (typed != text) {
        typed = text;
        const std::string id = decisionId.toStdString();
        entriesChanged([&](std::size_t number) { return entry(number).id == id; }, TypedAnswer);
    }
}

int DecisionRows::editorRow(int row, bool forward) const
{
    const int step = forward ? 1 : -1;
    for (int at = row + step; at >= 0 && at < rowCount(); at += step) {
        const Slice shown = slice(at);
        if (shown.isLast && isPending(entry(shown.entry))) {
            return at;
        }
    }
    return -1;
}

QHash<int, QByteArray> DecisionRows::roleNames() const
{
    return withCommonRoles({
        {DecisionId, "decisionId"},
        {Status, "status"},
        {IsPending, "isPending"},
        {HasTime, "hasTime"},
        {Time, "time"},
        {Question, "question"},
        {ShowsQuestion, "showsQuestion"},
        {QuestionEnds, "questionEnds"},
        {Answer, "answer"},
        {ShowsAnswer, "showsAnswer"},
        {AnswerStarts, "answerStarts"},
        {AnswerEnds, "answerEnds"},
        {TypedAnswer, "typedAnswer"},
    });
}

CardRows::LongTexts DecisionRows::longTexts(std::size_t number) const
{
    const Decision &decision = entry(number);
    return {decision.question.view(),
            isPending(decision) ? std::string_view() : viewOf(decision.answer)};
}

QVariant DecisionRows::value(const Slice &slice, int role) const
{
    const Decision &decision = entry(slice.entry);
    switch (role) {
    case DecisionId:
        return idOf(decision);
    case Status:
        return labelText(decision.status, rules());
    case IsPending:
        return isPending(decision);
    case HasTime:
        return decision.notifiedAt.has_value();
    case Time:
        return shortTime(viewOf(decision.notifiedAt), rules());
    case Question:
        return piece(slice, 0).shown();
    case ShowsQuestion:
        return piece(slice, 0).isShown;
    case QuestionEnds:
        return piece(slice, 0).ends;
    case Answer:
        return piece(slice, 1).shown();
    case ShowsAnswer:
        return !longTexts(slice.entry).at(1).empty() && piece(slice, 1).isShown;
    case AnswerStarts:
        return piece(slice, 1).starts;
    case AnswerEnds:
        return piece(slice, 1).ends;
    case TypedAnswer:
        return typedAnswer(idOf(decision));
    default:
        return {};
    }
}

} // namespace trellisport
