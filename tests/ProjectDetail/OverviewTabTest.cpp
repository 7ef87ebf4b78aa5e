#include "WorkspaceScene.h"

#include <QTest>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

class OverviewTabTest : public WorkspaceScene {
protected:
    void showTexts(const std::string &description, const std::string &plan, QSize size = {390, 844})
    {
        showLoaded(R"({"id":"p1","title":"t","description":)" + quoted(description) +
                       R"(,"delivery_plan":)" + quoted(plan) + "}",
                   size);
    }
};

TEST_F(OverviewTabTest, WithNeitherTextItIsEmpty)
{
    showLoaded();
    EXPECT_TRUE(has("overview"));
    EXPECT_THAT(tabTexts(), ElementsAre());
}

TEST_F(OverviewTabTest, ShowsBothTextsInTitledCards)
{
    showTexts("What is to be done.", "How it is done.");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Description", u"What is to be done.", u"Delivery Plan",
                                        u"How it is done."));
    EXPECT_EQ(lookOf(text("Description")), caption(colors::white(), QFont::Bold));
    EXPECT_EQ(lookOf(text("How it is done.")), caption(colors::gray()));
    const auto cards = items("card");
    ASSERT_EQ(cards.size(), 2);
    for (const QQuickItem *card : cards) {
        expectGround(card, 10, colors::surface(), 1, colors::hairline());
    }
    EXPECT_EQ(sceneRect(cards[0]), QRectF(16, tabTop() + 16, 390 - 32, 16 + 16 + 8 + 16 + 16));
    EXPECT_EQ(sceneRect(cards[1]).top() - sceneRect(cards[0]).bottom(), 16);
    EXPECT_EQ(sceneRect(text("Description")).topLeft(),
              sceneRect(cards[0]).topLeft() + QPointF(16, 16));
}

TEST_F(OverviewTabTest, AnEmptyTextIsLikeAMissingOne)
{
    showTexts("", "Plan");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Delivery Plan", u"Plan"));
    EXPECT_EQ(items("card").size(), 1);
}

TEST_F(OverviewTabTest, BlanksAreAText)
{
    showTexts("   ", "");
    EXPECT_EQ(items("card").size(), 1);
    EXPECT_EQ(textOf(item("body")), u"   ");
}

TEST_F(OverviewTabTest, ALongPlanIsWholeInOneCard)
{
    const std::string plan = numberedLines(300);
    showTexts("", plan, {390, 6000});
    EXPECT_EQ(joined("body"), QString::fromStdString(plan));
    const auto cards = items("card");
    ASSERT_GT(cards.size(), 1);
    for (int i = 1; i < cards.size(); ++i) {
        EXPECT_EQ(sceneRect(cards[i]).top(), sceneRect(cards[i - 1]).bottom());
    }
    EXPECT_EQ(sceneRect(cards.last()).bottom() - sceneRect(cards.first()).top(),
              16 + 16 + 8 + 300 * 16 + 16);
    EXPECT_EQ(tabTexts().count(QStringLiteral("Delivery Plan")), 1);
}

TEST_F(OverviewTabTest, ScrollsToTheEndOfALongPlan)
{
    showTexts("", numberedLines(300));
    QQuickItem *list = item("overview");
    list->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&scene->window(), Qt::Key_End);
    settle();
    QQuickItem *last = items("body").last();
    EXPECT_TRUE(textOf(last).endsWith(QLatin1String("line 299")));
    EXPECT_LE(sceneRect(last).bottom(), 844 - 32);
}

TEST_F(OverviewTabTest, AParagraphIsNeverParted)
{
    std::string paragraph;
    while (paragraph.size() < 6000) {
        paragraph += "words that go on and on ";
    }
    showTexts(paragraph, "");
    ASSERT_EQ(items("body").size(), 1);
    QQuickItem *body = item("body");
    EXPECT_EQ(textOf(body), QString::fromStdString(paragraph));
    EXPECT_EQ(body->height(), body->property("lineCount").toInt() * 16);
    EXPECT_LE(body->property("contentWidth").toDouble(), body->width());
}

TEST_F(OverviewTabTest, MarkupIsShownAsItStands)
{
    showTexts("**a** <b>b</b>", "- [c](d)");
    EXPECT_THAT(tabTexts(),
                ElementsAre(u"Description", u"**a** <b>b</b>", u"Delivery Plan", u"- [c](d)"));
}

} // namespace
} // namespace trellisport::test
