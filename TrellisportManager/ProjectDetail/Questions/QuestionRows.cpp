#include "ProjectDetail/Questions/QuestionRows.h"

#include "Platform/Platform.h"
#include "ProjectDetail/TextViews.h"

namespace trellisport {

namespace {

/// The line without the carriage return that a line end of two characters leaves behind.
std::string_view lineOf(std::string_view text)
{
    text.remove_suffix(text.ends_with('\r') ? 1 : 0);
    return text;
}

} // namespace

QuestionRows::QuestionRows()
    : QuestionRows(platform::Platform::current().textRules())
{
}

QuestionRows::QuestionRows(const platform::TextRules &rules, QObject *parent)
    : EntryRows(rules, parent)
{
}

void QuestionRows::setProject(const ProjectRecord &project)
{
    if (m_project == project) {
        return;
    }
    m_project = project;
    const auto &record = project.project;
    show(record ? qaPairs(viewOf(record->questionnaire), viewOf(record->ownerAnswers))
                : std::vector<QaPair>());
    Q_EMIT projectChanged();
}

QHash<int, QByteArray> QuestionRows::roleNames() const
{
    return withCommonRoles({
        {Question, "question"},
        {ShowsQuestion, "showsQuestion"},
        {ShowsState, "showsState"},
        {IsAnswered, "isAnswered"},
        {Answer, "answer"},
        {ShowsAnswer, "showsAnswer"},
        {AnswerStarts, "answerStarts"},
        {AnswerEnds, "answerEnds"},
    });
}

CardRows::LongTexts QuestionRows::longTexts(std::size_t number) const
{
    return {lineOf(entry(number).question), lineOf(entry(number).answer)};
}

QVariant QuestionRows::value(const Slice &slice, int role) const
{
    const bool isAnswered = !entry(slice.entry).answer.empty();
    switch (role) {
    case Question:
        return piece(slice, 0).shown();
    case ShowsQuestion:
        return piece(slice, 0).isShown;
    case ShowsState:
        return piece(slice, 0).ends;
    case IsAnswered:
        return isAnswered;
    case Answer:
        return piece(slice, 1).shown();
    case ShowsAnswer:
        return isAnswered && piece(slice, 1).isShown;
    case AnswerStarts:
        return piece(slice, 1).starts;
    case AnswerEnds:
        return piece(slice, 1).ends;
    default:
        return {};
    }
}

} // namespace trellisport
