#include "WorkspaceScene.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

class ReportsTabTest : public WorkspaceScene {
protected:
    void showReports(const std::string &reports, QSize size = {390, 844})
    {
        showTab(Tab::Reports, "/reports", reports, bareProject, size);
    }
};

TEST_F(ReportsTabTest, WithoutReportsItSaysSo)
{
    showReports("[]");
    EXPECT_THAT(tabTexts(), ElementsAre(u"No daily reports yet"));
}

TEST_F(ReportsTabTest, AReportShowsItsDateCommitsAndChanges)
{
    showReports(R"([{"id":"1","report_date":"2024-05-01","commit_diff_summary":"2 files",)"
                R"("claude_md_diff":"+ a\n- b"}])");
    EXPECT_THAT(tabTexts(),
                ElementsAre(u"2024-05-01", u"Commits", u"2 files", u"Changes", u"+ a\n- b"));
    EXPECT_EQ(lookOf(item("date")), caption(colors::accent(), QFont::Bold));
    EXPECT_EQ(lookOf(text("Commits")), systemText(10, colors::gray()));
    EXPECT_EQ(lookOf(text("2 files")), caption(colors::white()));
    EXPECT_EQ(lookOf(text("Changes")), systemText(10, colors::gray()));
    EXPECT_EQ(lookOf(text("+ a\n- b")), (Look{12, QFont::Normal, colors::gray(), 16, true}));
    expectGround(item("card"), 12, colors::surface(), 1, colors::hairline());
    EXPECT_EQ(place("card").left(), 16);
    EXPECT_EQ(place("card").width(), 390 - 32);
    EXPECT_EQ(place("date").topLeft(), place("card").topLeft() + QPointF(16, 16));
    const char *const rows[] = {"2024-05-01", "Commits", "2 files", "Changes", "+ a\n- b"};
    for (int i = 1; i < 5; ++i) {
        EXPECT_EQ(sceneRect(text(rows[i])).top() - sceneRect(text(rows[i - 1])).bottom(), 8)
            << rows[i];
    }
}

TEST_F(ReportsTabTest, AMissingDateIsUnknownAndAnEmptyOneIsAnEmptyLine)
{
    showReports(R"([{"id":"1"},{"id":"2","report_date":""}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Unknown date"));
    const auto cards = items("card");
    ASSERT_EQ(cards.size(), 2);
    EXPECT_EQ(cards[0]->height(), 16 + 16 + 16);
    EXPECT_EQ(cards[1]->height(), 16 + 16 + 16);
    EXPECT_EQ(sceneRect(cards[1]).top() - sceneRect(cards[0]).bottom(), 12);
}

TEST_F(ReportsTabTest, WithNeitherTextThereIsOnlyTheDate)
{
    showReports(R"([{"id":"1","report_date":"2024-05-01","commit_diff_summary":"",)"
                R"("claude_md_diff":""}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"2024-05-01"));
}

TEST_F(ReportsTabTest, AnEmptySummaryHasNoLabel)
{
    showReports(R"([{"id":"1","report_date":"d","commit_diff_summary":"","claude_md_diff":"x"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"d", u"Changes", u"x"));
}

TEST_F(ReportsTabTest, LinksToArtifactsAreNotShown)
{
    showReports(R"([{"id":"1","report_date":"d","artifact_links":["https://files.example/a"]}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"d"));
}

TEST_F(ReportsTabTest, ADiffOfManyLinesIsWhole)
{
    const std::string diff = numberedLines(300);
    showReports(R"([{"id":"1","claude_md_diff":)" + quoted(diff) + "}]", {390, 6000});
    QStringList pieces;
    for (QQuickItem *changes : items("changes")) {
        QQuickItem *body = item("body", changes);
        EXPECT_TRUE(lookOf(body).monospaced);
        pieces << textOf(body);
    }
    EXPECT_EQ(pieces.join(QLatin1Char('\n')), QString::fromStdString(diff));
    EXPECT_EQ(tabTexts().count(QStringLiteral("Changes")), 1);
}

} // namespace
} // namespace trellisport::test
