#pragma once

#include "Presentation/CardRows.h"
#include "ProjectDetail/ProjectRecord.h"
#include "ProjectDetail/Questions/QaPairs.h"

namespace trellisport {

/// The agent's questions to a project's client, each with its answer, as far as there is one.
class QuestionRows : public EntryRows<QaPair> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(trellisport::ProjectRecord project READ project WRITE setProject NOTIFY
                   projectChanged FINAL)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY projectChanged FINAL)
public:
    QuestionRows();
    /// rules must outlive the model.
    explicit QuestionRows(const platform::TextRules &rules, QObject *parent = nullptr);

    [[nodiscard]] const ProjectRecord &project() const { return m_project; }
    void setProject(const ProjectRecord &project);
    [[nodiscard]] bool isEmpty() const { return entries().empty(); }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void projectChanged();

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    enum OwnRole {
        Question = FirstOwnRole,
        ShowsQuestion,
        ShowsState, ///< the state stands below the question's end
        IsAnswered,
        Answer,
        ShowsAnswer,
        AnswerStarts,
        AnswerEnds,
    };

    ProjectRecord m_project;
};

} // namespace trellisport
