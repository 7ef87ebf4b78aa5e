#include "Platform/Platform.h"
#include "ProjectSamples.h"
#include "ProjectsList/ProjectRowData.h"
#include "ProjectsList/ProjectsListViewModel.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <deque>
#include <functional>
#include <utility>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

/// Does the work when it is told to.
class LateExecutor : public platform::Executor {
public:
    void run(std::function<void()> work) override { m_work.push_back(std::move(work)); }
    [[nodiscard]] std::size_t waiting() const { return m_work.size(); }
    void doLast()
    {
        const auto work = std::move(m_work.back());
        m_work.pop_back();
        work();
    }

private:
    std::deque<std::function<void()>> m_work;
};

/// Titles made ready are not searched by this.
class CountingRules : public platform::TextRules {
public:
    std::unique_ptr<platform::TextSearch> search(std::string_view part) const override
    {
        ++searches;
        return m_rules.search(part);
    }
    std::unique_ptr<platform::SearchableTexts>
    searchable(std::vector<std::string_view> texts) const override
    {
        return m_rules.searchable(std::move(texts));
    }
    std::string capitalized(std::string_view text) const override
    {
        return m_rules.capitalized(text);
    }
    std::string uppercased(std::string_view text) const override
    {
        return m_rules.uppercased(text);
    }
    std::string lowercased(std::string_view text) const override
    {
        return m_rules.lowercased(text);
    }
    std::string prefix(std::string_view text, std::size_t count) const override
    {
        return m_rules.prefix(text, count);
    }

    mutable int searches = 0;

private:
    const platform::TextRules &m_rules = platform::Platform::current().textRules();
};

class TitleSearch : public ::testing::Test {
protected:
    void TearDown() override
    {
        while (executor.waiting() > 0) {
            executor.doLast(); // somebody waits for it
        }
        runPendingEvents();
    }
    void load(const std::vector<std::string> &projects)
    {
        const std::size_t before = executor.waiting();
        session->queueReply(200, listJson(projects));
        model->refresh();
        ASSERT_TRUE(waitUntil([&] { return executor.waiting() > before; }));
    }
    std::vector<QString> found(const char *text)
    {
        model->setSearchText(QString::fromUtf8(text));
        std::vector<QString> titles;
        const ProjectRowsModel &rows = *model->rows();
        for (int row = 0; row < rows.rowCount(); ++row) {
            titles.push_back(rows.data(rows.index(row), ProjectRowsModel::ProjectRole)
                                 .value<ProjectRowData>()
                                 .title);
        }
        return titles;
    }

    LateExecutor executor;
    CountingRules rules;
    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    NotificationManager notifications;
    std::unique_ptr<ProjectsListViewModel> model =
        std::make_unique<ProjectsListViewModel>(api, rules, executor, notifications);
};

TEST_F(TitleSearch, FindsTheSameBeforeTheTitlesAreReadyAndAfter)
{
    load({projectJson("1", "awarded", "Caf\u00e9"), projectJson("2", "awarded", "Cafe"),
          projectJson("3", "awarded", "Logo")});
    EXPECT_THAT(found("CAF\u00c9"), ElementsAre(u"Caf\u00e9"));
    EXPECT_EQ(rules.searches, 1);
    executor.doLast();
    runPendingEvents();
    EXPECT_THAT(found("cafe"), ElementsAre(u"Cafe"));
    EXPECT_THAT(found("o"), ElementsAre(u"Logo"));
    EXPECT_EQ(rules.searches, 1) << "the titles were ready";
}

TEST_F(TitleSearch, TitlesOfAFormerLoadThatGetReadyLateAreNotSearched)
{
    load({projectJson("1", "awarded", "Former")});
    load({projectJson("1", "awarded", "Latter"), projectJson("2", "awarded", "Logo")});
    executor.doLast();
    runPendingEvents();
    executor.doLast();
    runPendingEvents();
    EXPECT_THAT(found("r"), ElementsAre(u"Latter"));
    EXPECT_EQ(rules.searches, 0);
}

TEST_F(TitleSearch, ANewLoadIsSearchedAnew)
{
    load({projectJson("1", "awarded", "Former")});
    executor.doLast();
    runPendingEvents();
    EXPECT_THAT(found("r"), ElementsAre(u"Former"));
    load({projectJson("2", "awarded", "Latter"), projectJson("3", "awarded", "Logo")});
    EXPECT_THAT(found("r"), ElementsAre(u"Latter"));
    EXPECT_THAT(found("l"), ElementsAre(u"Latter", u"Logo"));
}

TEST_F(TitleSearch, TitlesGetReadyWithoutHarmWhenTheModelIsGone)
{
    load({projectJson("1", "awarded", "One")});
    model.reset();
    executor.doLast();
    runPendingEvents();
    EXPECT_EQ(executor.waiting(), 0U);
}

} // namespace
} // namespace trellisport::test
