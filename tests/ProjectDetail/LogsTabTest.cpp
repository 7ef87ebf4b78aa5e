#include "WorkspaceScene.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

const char *const toolCall =
    R"([{"id":"1","log_type":"tool_call","content":"run","created_at":"2024-05-01T09:30:00.5Z"}])";

class LogsTabTest : public WorkspaceScene {
protected:
    void showLogs(const std::string &logs, QSize size = {390, 844})
    {
        showTab(Tab::Logs, "/logs", logs, bareProject, size);
    }
    QQuickItem *badgeLabel() const { return item("badgeLabel", item("logType")); }
};

TEST_F(LogsTabTest, WithoutEntriesItSaysSo)
{
    showLogs("[]");
    EXPECT_THAT(tabTexts(), ElementsAre(u"No development logs yet"));
}

TEST_F(LogsTabTest, AnEntryIsACardWithItsTypeTimeAndText)
{
    showLogs(toolCall);
    EXPECT_THAT(tabTexts(), ElementsAre(u"tool call", u"2024-05-01 09:30:00", u"run"));
    expectGround(item("card"), 8, colors::surface(), 0);
    EXPECT_EQ(place("card").topLeft(), QPointF(16, tabTop() + 16));
    EXPECT_EQ(place("logType").topLeft(), place("card").topLeft() + QPointF(10, 10));
    EXPECT_EQ(place("time").right(), place("card").right() - 10);
    EXPECT_EQ(place("body").top() - place("logType").bottom(), 4);
    EXPECT_EQ(lookOf(item("time")), systemText(9, colors::dimText()));
    EXPECT_EQ(lookOf(item("body")), (Look{12, QFont::Normal, colors::gray(), 16, true}));
}

TEST_F(LogsTabTest, TheTypeIsALabelInItsColourOnAFaintGround)
{
    showLogs(toolCall);
    EXPECT_EQ(lookOf(badgeLabel()), systemText(9, colors::blue(), QFont::Medium));
    EXPECT_EQ(badgeLabel()->position(), QPointF(6, 2));
    EXPECT_EQ(colorOf(item("logType")), Colors::faded(colors::blue(), 0.2));
    EXPECT_EQ(item("logType")->property("radius"), 4);
}

TEST_F(LogsTabTest, AnUnknownTypeIsGrayAndReadsAsItIs)
{
    showLogs(R"([{"id":"1","log_type":"Error","content":"x"}])");
    EXPECT_EQ(textOf(badgeLabel()), u"Error");
    EXPECT_EQ(colorOf(badgeLabel()), colors::gray());
}

TEST_F(LogsTabTest, WithoutATimeTheTypeStandsAtTheLeft)
{
    showLogs(R"([{"id":"1","log_type":"info","content":"x"}])");
    EXPECT_FALSE(has("time"));
    EXPECT_EQ(place("logType").left(), 16 + 10);
}

TEST_F(LogsTabTest, EntriesStandEightApart)
{
    showLogs(R"([{"id":"1","log_type":"info","content":"x"},)"
             R"({"id":"2","log_type":"info","content":"y"}])");
    const auto cards = items("card");
    ASSERT_EQ(cards.size(), 2);
    EXPECT_EQ(sceneRect(cards[1]).top() - sceneRect(cards[0]).bottom(), 8);
}

TEST_F(LogsTabTest, ALongTextIsWholeAndKeepsItsLineBreaks)
{
    const std::string content = numberedLines(400) + "\n\n\tindented  twice";
    showLogs(R"([{"id":"1","log_type":"tool_result","content":)" + quoted(content) + "}]",
             {390, 8000});
    EXPECT_EQ(joined("body"), QString::fromStdString(content));
    const auto cards = items("card");
    // Every row is of whole points.
    EXPECT_NEAR(sceneRect(cards.last()).bottom() - sceneRect(cards.first()).top(),
                10 + place("logType").height() + 4 + 402 * 16 + 10, 1);
}

TEST_F(LogsTabTest, ALongLineWrapsInItsCard)
{
    const std::string content(5000, 'x');
    showLogs(R"([{"id":"1","log_type":"tool_result","content":)" + quoted(content) + "}]",
             {320, 3000});
    ASSERT_EQ(items("body").size(), 1);
    EXPECT_EQ(textOf(item("body")).size(), 5000);
    EXPECT_LE(item("body")->property("contentWidth").toDouble(), 320 - 32 - 20);
}

} // namespace
} // namespace trellisport::test
