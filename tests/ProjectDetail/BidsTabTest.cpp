#include "WorkspaceScene.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

const char *const fourBids =
    R"([{"bidder_id":1,"username":"alpha_dev","amount":90,"period":3},)"
    R"({"bidder_id":2,"username":"our_agent","amount":100,"period":7,"is_ours":true},)"
    R"({"bidder_id":3,"username":"beta_works","amount":110,"period":5,"is_ours":false},)"
    R"({"bidder_id":4,"username":"gamma_lab","amount":100}])";

class BidsTabTest : public WorkspaceScene {
protected:
    void showBids(const std::string &bids, const std::string &record = bareProject,
                  QSize size = {390, 844})
    {
        showTab(Tab::Bids, "/bids", bids, record, size);
    }
};

TEST_F(BidsTabTest, TheOwnBidStandsHighlightedAboveTheCompetitors)
{
    showBids(fourBids);
    EXPECT_THAT(tabTexts(),
                ElementsAre(u"OUR BID", u"$100.00", u"7 days", u"COMPETING BIDS (3)", u"@alpha_dev",
                            u"$90.00", u"/ 3 days", u"@beta_works", u"$110.00", u"/ 5 days",
                            u"@gamma_lab", u"$100.00", u"/ 0 days"));
    expectGround(item("ownBid"), 12, Colors::faded(colors::agentSurface(), 0.3), 1,
                 Colors::faded(colors::accent(), 0.5));
    EXPECT_EQ(lookOf(text("OUR BID")), caption2(colors::accent(), QFont::Bold));
    EXPECT_EQ(lookOf(item("ownAmount")), (Look{22, QFont::Bold, colors::accent(), 28}));
    EXPECT_EQ(lookOf(text("7 days")), caption(colors::gray()));
    EXPECT_EQ(lookOf(item("heading")), caption2(colors::gray(), QFont::Bold));
}

TEST_F(BidsTabTest, ThePartsStandTwelveApartAndTheHeadingFourLower)
{
    showBids(fourBids);
    const QRectF own = place("ownBid");
    EXPECT_EQ(own.topLeft(), QPointF(16, tabTop() + 16));
    EXPECT_EQ(own.width(), 390 - 32);
    EXPECT_EQ(sceneRect(text("OUR BID")).topLeft(), own.topLeft() + QPointF(16, 16));
    EXPECT_EQ(place("ownAmount").top() - sceneRect(text("OUR BID")).bottom(), 8);
    EXPECT_EQ(sceneRect(text("7 days")).right(), own.right() - 16);
    EXPECT_EQ(place("heading").top() - own.bottom(), 12 + 4);
    const auto cards = items("card");
    ASSERT_EQ(cards.size(), 3);
    EXPECT_EQ(sceneRect(cards[0]).top() - place("heading").bottom(), 12);
    EXPECT_EQ(sceneRect(cards[1]).top() - sceneRect(cards[0]).bottom(), 12);
    for (const QQuickItem *card : cards) {
        expectGround(card, 10, colors::surface(), 1, colors::hairline());
    }
}

TEST_F(BidsTabTest, AmountsBelowOursAreRedAboveGreenAndOthersWhite)
{
    showBids(R"([{"amount":90},{"amount":100,"is_ours":true},{"amount":110},{"amount":100},{}])");
    QList<QColor> colours;
    QStringList amounts;
    for (const QQuickItem *amount : items("amount")) {
        colours << colorOf(amount);
        amounts << textOf(amount);
        EXPECT_EQ(lookOf(amount), subheadline(colorOf(amount), QFont::Bold));
    }
    EXPECT_THAT(colours,
                ElementsAre(colors::red(), colors::green(), colors::white(), colors::white()));
    EXPECT_EQ(amounts.last(), u"$0.00");
}

TEST_F(BidsTabTest, OfTwoOwnBidsTheFirstIsHighlightedAndTheSecondIsNowhere)
{
    showBids(R"([{"username":"one","amount":100,"is_ours":true},)"
             R"({"username":"two","amount":555,"is_ours":true},{"username":"three"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"OUR BID", u"$100.00", u"0 days", u"COMPETING BIDS (1)",
                                        u"@three", u"$0.00", u"/ 0 days"));
}

TEST_F(BidsTabTest, WithoutAnOwnBidTheProjectsAmountStandsInAndCompetitorsAreWhite)
{
    showBids(R"([{"username":"low","amount":90},{"username":"high","amount":900}])",
             R"({"id":"p1","title":"t","bid_amount":250})");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Our Bid", u"$250.00", u"COMPETING BIDS (2)", u"@low",
                                        u"$90.00", u"/ 0 days", u"@high", u"$900.00", u"/ 0 days"));
    for (const QQuickItem *amount : items("amount")) {
        EXPECT_EQ(colorOf(amount), colors::white());
    }
    expectGround(item("ownBid"), 10, colors::surface(), 1, colors::hairline());
    EXPECT_EQ(lookOf(text("Our Bid")), caption(colors::white(), QFont::Bold));
    EXPECT_EQ(lookOf(item("ownAmount")), (Look{22, QFont::Bold, colors::accent(), 28}));
}

TEST_F(BidsTabTest, WithNothingAtAllOnlyTheSentenceIsShown)
{
    showBids("[]");
    EXPECT_THAT(tabTexts(), ElementsAre(u"No competing bids yet"));
    EXPECT_EQ(colorOf(text("No competing bids yet")), colors::gray());
    EXPECT_EQ(sceneRect(text("No competing bids yet")).top(), tabTop() + 16 + 20);
}

TEST_F(BidsTabTest, AnOwnBidWithoutCompetitorsKeepsTheSentenceBelowIt)
{
    showBids(R"([{"amount":100,"is_ours":true}])");
    EXPECT_THAT(tabTexts(),
                ElementsAre(u"OUR BID", u"$100.00", u"0 days", u"No competing bids yet"));
    EXPECT_EQ(sceneRect(text("No competing bids yet")).top() - place("ownBid").bottom(), 12 + 20);
}

TEST_F(BidsTabTest, ACompetitorIsShownWithWhatIsKnown)
{
    showBids(R"([{"username":"alpha_dev","display_name":"Alpha","country":"Peru","rating":4.96,)"
             R"("reviews":12,"amount":90.5,"period":3,"description":"I can do it."}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"COMPETING BIDS (1)", u"@alpha_dev", u"Alpha", u"Peru",
                                        u"$90.50", u"/ 3 days", u"5.0", u"(12)", u"I can do it."));
    EXPECT_EQ(lookOf(text("@alpha_dev")), caption(colors::white(), QFont::Bold));
    EXPECT_EQ(lookOf(text("Alpha")), caption(colors::gray()));
    EXPECT_EQ(lookOf(text("Peru")), caption2(colors::gray()));
    EXPECT_EQ(lookOf(text("/ 3 days")), caption(colors::gray()));
    EXPECT_EQ(lookOf(text("5.0")), caption2(colors::gray()));
    EXPECT_EQ(lookOf(text("(12)")), caption2(colors::gray()));
    EXPECT_EQ(lookOf(text("I can do it.")), caption2(colors::mutedText()));
    EXPECT_EQ(sceneRect(text("Peru")).right(), 390 - 32);
    EXPECT_EQ(sceneRect(text("(12)")).right(), 390 - 32);
    EXPECT_EQ(item("star")->size(), QSizeF(9, 9));
    EXPECT_EQ(colorOf(item("star")), colors::yellow());
    EXPECT_EQ(sceneRect(text("5.0")).left() - place("star").right(), 2);
    EXPECT_EQ(sceneRect(text("$90.50")).top() - sceneRect(text("@alpha_dev")).bottom(), 6);
    EXPECT_EQ(sceneRect(text("I can do it.")).top() - sceneRect(text("$90.50")).bottom(), 6);
}

TEST_F(BidsTabTest, WhatIsMissingOrEmptyIsNotShown)
{
    showBids(R"([{"display_name":"","country":"","description":""}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"COMPETING BIDS (1)", u"@unknown", u"$0.00", u"/ 0 days"));
    for (const char *name : {"displayName", "country", "star", "reviews", "description"}) {
        EXPECT_FALSE(has(name)) << name;
    }
}

TEST_F(BidsTabTest, ADescriptionOfTenLinesIsCutToFour)
{
    showBids(R"([{"description":)" + quoted(numberedLines(10)) + "}]");
    EXPECT_EQ(item("description")->property("lineCount"), 4);
    EXPECT_EQ(item("description")->property("maximumLineCount"), 4);
    EXPECT_TRUE(item("description")->property("truncated").toBool());
    EXPECT_LT(item("description")->height(), 5 * 13);
}

TEST_F(BidsTabTest, TwoBiddersOfOneIdentityAreBothShown)
{
    showBids(R"([{"username":"one"},{"username":"two"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"COMPETING BIDS (2)", u"@one", u"$0.00", u"/ 0 days",
                                        u"@two", u"$0.00", u"/ 0 days"));
}

TEST_F(BidsTabTest, AFailedLoadShowsTheProjectsAmount)
{
    model.setSelectedTab(Tab::Bids);
    session->queueReply(500, {}, "/bids");
    showLoaded(R"({"id":"p1","title":"t","bid_amount":250})");
    EXPECT_TRUE(eventually([&] { return !has("spinner"); }));
    EXPECT_THAT(tabTexts(), ElementsAre(u"Our Bid", u"$250.00", u"No competing bids yet"));
}

} // namespace
} // namespace trellisport::test
