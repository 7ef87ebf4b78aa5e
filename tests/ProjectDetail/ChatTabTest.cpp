#include "WorkspaceScene.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

const char *const bothSides = R"([{"id":"1","sender":"agent","message_text":"Hello"},)"
                              R"({"id":"2","sender":"client","message_text":"Good day"}])";

class ChatTabTest : public WorkspaceScene {
protected:
    void showMessages(const std::string &messages, QSize size = {390, 844})
    {
        showTab(Tab::Chat, "/messages", messages, bareProject, size);
    }
};

TEST_F(ChatTabTest, ShowsASpinnerUntilTheMessagesAreThere)
{
    model.setSelectedTab(Tab::Chat);
    session->queueReply(200, bareProject, "/projects/p1");
    session->hold();
    session->queueReply(200, bothSides, "/messages");
    show();
    ASSERT_TRUE(eventually([&] { return session->releaseOne("/projects/p1"); }));
    ASSERT_TRUE(eventually([&] { return has("header"); }));
    EXPECT_THAT(tabTexts(), ElementsAre());
    EXPECT_TRUE(has("spinner"));
    EXPECT_EQ(sceneRect(items("spinner").first()).top(), tabTop() + 16);
    session->release();
    EXPECT_TRUE(eventually([&] { return !has("spinner"); }));
    settle();
    EXPECT_THAT(tabTexts(), ElementsAre(u"Agent", u"Hello", u"Client", u"Good day"));
}

TEST_F(ChatTabTest, AnEmptyConversationSaysSo)
{
    showMessages("[]");
    EXPECT_THAT(tabTexts(), ElementsAre(u"No messages yet"));
    EXPECT_EQ(colorOf(text("No messages yet")), colors::gray());
    EXPECT_EQ(sceneRect(text("No messages yet")).top(), tabTop() + 40);
}

TEST_F(ChatTabTest, TheAgentStandsAtTheTrailingSideInBlueAndTheOtherAtTheLeadingInGray)
{
    showMessages(bothSides);
    const auto bubbles = items("bubble");
    ASSERT_EQ(bubbles.size(), 2);
    expectGround(bubbles[0], 12, colors::agentSurface(), 0);
    expectGround(bubbles[1], 12, colors::surface(), 0);
    EXPECT_EQ(sceneRect(bubbles[0]).right(), 390 - 16);
    EXPECT_EQ(sceneRect(bubbles[1]).left(), 16);
    EXPECT_EQ(lookOf(text("Agent")), systemText(10, colors::accent()));
    EXPECT_EQ(lookOf(text("Client")), systemText(10, colors::gray()));
    EXPECT_EQ(text("Agent")->property("horizontalAlignment").toInt(), Qt::AlignRight);
    EXPECT_EQ(lookOf(text("Hello")), caption(colors::white()));
    EXPECT_EQ(lookOf(text("Good day")), caption(colors::white()));
}

TEST_F(ChatTabTest, ABubbleIsItsTextWithTenAroundIt)
{
    showMessages(bothSides);
    const auto bubbles = items("bubble");
    ASSERT_EQ(bubbles.size(), 2);
    const QRectF bubble = sceneRect(bubbles[1]);
    const QRectF words = sceneRect(text("Good day"));
    EXPECT_EQ(words.topLeft(), bubble.topLeft() + QPointF(10, 10));
    EXPECT_EQ(words.bottomRight(), bubble.bottomRight() - QPointF(10, 10));
    EXPECT_LT(bubble.width(), 120);
    EXPECT_EQ(bubble.top() - sceneRect(text("Client")).bottom(), 2);
    EXPECT_EQ(sceneRect(text("Client")).top() - sceneRect(bubbles[0]).bottom(), 8);
}

TEST_F(ChatTabTest, OnlyTheExactWordIsTheAgent)
{
    showMessages(R"([{"id":"1","sender":"Agent","message_text":"Hello"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Agent", u"Hello"));
    EXPECT_EQ(colorOf(item("bubble")), colors::surface());
    EXPECT_EQ(place("bubble").left(), 16);
    EXPECT_EQ(colorOf(text("Agent")), colors::gray());
}

TEST_F(ChatTabTest, AnEmptyMessageIsAnEmptyBubbleWithItsInsets)
{
    showMessages(R"([{"id":"1","sender":"client","message_text":""}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Client"));
    ASSERT_TRUE(has("bubble"));
    EXPECT_EQ(place("bubble").width(), 20);
    EXPECT_EQ(place("bubble").height(), 20 + 16);
}

TEST_F(ChatTabTest, ALongMessageWrapsWithinItsColumn)
{
    const std::string words = "a message with more words than any line of its column could hold, "
                              "so that it has to go on in the next";
    showMessages(R"([{"id":"1","sender":"agent","message_text":)" + quoted(words) + "}]");
    EXPECT_LE(place("bubble").width(), 280);
    EXPECT_GT(place("bubble").width(), 200);
    EXPECT_EQ(place("bubble").right(), 390 - 16);
    QQuickItem *body = item("body");
    EXPECT_GT(body->property("lineCount").toInt(), 1);
    EXPECT_LE(body->property("contentWidth").toDouble(), 260);
}

TEST_F(ChatTabTest, AMessageOfManyLinesIsWhole)
{
    const std::string lines = numberedLines(120);
    showMessages(R"([{"id":"1","sender":"client","message_text":)" + quoted(lines) + "}]",
                 {390, 3000});
    EXPECT_EQ(joined("body"), QString::fromStdString(lines));
    const auto bubbles = items("bubble");
    for (int i = 1; i < bubbles.size(); ++i) {
        EXPECT_EQ(sceneRect(bubbles[i]).top(), sceneRect(bubbles[i - 1]).bottom());
    }
}

TEST_F(ChatTabTest, AFailedLoadSaysThatThereAreNone)
{
    model.setSelectedTab(Tab::Chat);
    session->queueReply(500, {}, "/messages");
    showLoaded();
    EXPECT_TRUE(eventually([&] { return has("emptyText"); }));
    EXPECT_THAT(tabTexts(), ElementsAre(u"No messages yet"));
}

} // namespace
} // namespace trellisport::test
