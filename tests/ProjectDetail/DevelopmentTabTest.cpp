#include "WorkspaceScene.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

class DevelopmentTabTest : public WorkspaceScene {
protected:
    void showTimeline(const std::string &events, QSize size = {390, 844})
    {
        showTab(Tab::Development, "/timeline", events, bareProject, size);
    }
};

TEST_F(DevelopmentTabTest, WithoutEventsItSaysSo)
{
    showTimeline("[]");
    EXPECT_THAT(tabTexts(), ElementsAre(u"No development activity yet"));
    EXPECT_EQ(colorOf(item("emptyText")), colors::gray());
}

TEST_F(DevelopmentTabTest, AnEventShowsItsDotTextDetailAndTime)
{
    showTimeline(R"([{"time":"2024-05-01T09:30:00Z","event":"Bid placed","detail":"For $250",)"
                 R"("type":"bid"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Bid placed", u"For $250", u"2024-05-01 09:30:00"));
    EXPECT_EQ(lookOf(text("Bid placed")), caption(colors::white(), QFont::Medium));
    EXPECT_EQ(lookOf(text("For $250")), caption2(colors::gray()));
    EXPECT_EQ(lookOf(item("time")), systemText(9, colors::dimText()));
    EXPECT_EQ(colorOf(item("dot")), colors::accent());
    EXPECT_EQ(place("dot"), QRectF(16, tabTop() + 16, 10, 10));
    EXPECT_EQ(place("event").topLeft(), QPointF(16 + 10 + 12, tabTop() + 16));
    EXPECT_EQ(place("detail").top() - place("event").bottom(), 2);
    EXPECT_EQ(place("time").top() - place("detail").bottom(), 2);
}

TEST_F(DevelopmentTabTest, ASingleEventHasItsLineUnderTheDot)
{
    showTimeline(R"([{"event":"Found"}])");
    EXPECT_TRUE(has("line"));
    EXPECT_EQ(colorOf(item("line")), colors::hairline());
    EXPECT_EQ(place("line"), QRectF(16 + 4.5, tabTop() + 16 + 10, 1, 30));
}

TEST_F(DevelopmentTabTest, TheLineJoinsTheDots)
{
    showTimeline(R"([{"event":"One","detail":"a\nb\nc\nd"},{"event":"Two"}])");
    const auto dots = items("dot");
    const auto lines = items("line");
    ASSERT_EQ(dots.size(), 2);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(sceneRect(lines[0]).top(), sceneRect(dots[0]).bottom());
    EXPECT_EQ(sceneRect(lines[0]).bottom(), sceneRect(dots[1]).top());
    EXPECT_EQ(sceneRect(text("Two")).top() - sceneRect(item("detail")).bottom(), 12);
}

TEST_F(DevelopmentTabTest, WithoutATimeThereIsNoTimeLineAndAShortOneIsUnchanged)
{
    showTimeline(R"([{"event":"One"},{"event":"Two","time":"2024-05-01"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"One", u"Two", u"2024-05-01"));
    EXPECT_EQ(items("time").size(), 1);
}

TEST_F(DevelopmentTabTest, AnEmptyDetailShowsNoLine)
{
    showTimeline(R"([{"event":"One","detail":""}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"One"));
    EXPECT_FALSE(has("detail"));
}

TEST_F(DevelopmentTabTest, UnknownAndMissingTypesHaveGrayDots)
{
    showTimeline(R"([{"event":"One","type":"Bid"},{"event":"Two"},{"event":"3","type":"dev"}])");
    QList<QColor> colours;
    for (const QQuickItem *dot : items("dot")) {
        colours << colorOf(dot);
        EXPECT_EQ(dot->property("radius"), 5);
    }
    EXPECT_THAT(colours, ElementsAre(colors::gray(), colors::gray(), colors::indigo()));
}

TEST_F(DevelopmentTabTest, ALongDetailIsWhole)
{
    const std::string detail = numberedLines(200);
    showTimeline(R"([{"event":"One","detail":)" + quoted(detail) + "}]", {390, 5000});
    EXPECT_EQ(joined("detail"), QString::fromStdString(detail));
}

} // namespace
} // namespace trellisport::test
