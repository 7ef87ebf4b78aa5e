#include "QmlSupport/FakeInputMethod.h"
#include "WorkspaceScene.h"

#include <QAccessible>
#include <QTest>

#include <algorithm>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

const char *const threePending = R"([{"id":"d1","question":"Which?","status":"pending"},)"
                                 R"({"id":"d2","question":"When?","status":"pending"},)"
                                 R"({"id":"d3","question":"Where?","status":"pending"}])";
const char *const secondPending =
    R"([{"id":"d1","question":"Which?","status":"answered","answer":"this"},)"
    R"({"id":"d2","question":"When?","status":"pending"},)"
    R"({"id":"d3","question":"Where?","status":"expired"}])";

class DecisionsTabTest : public WorkspaceScene {
protected:
    void showDecisions(const std::string &decisions, QSize size = {390, 844})
    {
        showTab(Tab::Decisions, "/decisions", decisions, bareProject, size);
    }
    QColor outline() const { return item("card")->property("outlineColor").value<QColor>(); }
    static QColor pendingOutline() { return Colors::faded(colors::yellow(), 0.5); }
    /// The text area of the editor of this number.
    QQuickItem *field(int number) const { return item("field", items("answerField").at(number)); }
    QQuickItem *button(int number) const { return items("submitButton").at(number); }
    void type(int number, const char *keys)
    {
        field(number)->forceActiveFocus();
        for (const char *key = keys; *key != 0; ++key) {
            QTest::keyClick(&scene->window(), *key);
        }
    }
    std::vector<std::string> answersSent() const
    {
        std::vector<std::string> bodies;
        for (const auto &request : session->requests()) {
            if (request.method == "POST") {
                bodies.push_back(request.body.value_or(""));
            }
        }
        return bodies;
    }
};

TEST_F(DecisionsTabTest, WithoutDecisionsItSaysSo)
{
    showDecisions("[]");
    EXPECT_THAT(tabTexts(), ElementsAre(u"No decisions requested"));
    EXPECT_EQ(colorOf(text("No decisions requested")), colors::gray());
    EXPECT_EQ(sceneRect(text("No decisions requested")).top(), tabTop() + 40);
}

TEST_F(DecisionsTabTest, APendingDecisionHasAYellowOutlineAndAnEditor)
{
    showDecisions(R"([{"id":"d1","question":"Which?","status":"pending"}])");
    EXPECT_THAT(tabTexts(),
                ElementsAre(u"Pending", u"Which?", u"Type your answer...", u"Submit Answer"));
    expectGround(item("card"), 12, colors::surface(), 1, pendingOutline());
    EXPECT_EQ(lookOf(text("Which?")), subheadline(colors::white()));
    EXPECT_EQ(colorOf(text("Type your answer...")), colors::placeholderText());
    expectGround(item("fieldGround"), 8, colors::innerSurface(), 1, colors::hairline());
    EXPECT_EQ(place("answerField").height(), 3 * 16 + 20);
    EXPECT_EQ(place("answerField").left(), 32);
    EXPECT_EQ(place("answerField").width(), 390 - 64);
    EXPECT_EQ(fontOf(field(0)).pixelSize(), 12);
    EXPECT_EQ(lookOf(item("submitLabel")), caption(colors::white(), QFont::Bold));
    EXPECT_EQ(colorOf(item("submitGround")), colors::accent());
    EXPECT_EQ(item("submitGround")->property("radius"), 8);
    EXPECT_EQ(place("submitButton").height(), 16 + 20);
    EXPECT_EQ(place("submitButton").width(), 390 - 64);
    EXPECT_EQ(place("submitButton").top() - place("answerField").bottom(), 8);
    EXPECT_EQ(place("answerField").top() - sceneRect(text("Which?")).bottom(), 8);
    EXPECT_EQ(place("card").bottom() - place("submitButton").bottom(), 16);
}

TEST_F(DecisionsTabTest, WithACapitalItIsNotPending)
{
    showDecisions(R"([{"id":"d1","question":"Which?","status":"Pending"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Pending", u"Which?"));
    EXPECT_FALSE(has("answerField"));
    EXPECT_EQ(outline(), colors::hairline());
    EXPECT_EQ(colorOf(item("badgeLabel", item("status"))), colors::gray());
}

TEST_F(DecisionsTabTest, APendingOneWithAnAnswerShowsTheEditorAndNotTheAnswer)
{
    showDecisions(R"([{"id":"d1","question":"Which?","status":"pending","answer":"this"}])");
    EXPECT_TRUE(has("answerField"));
    EXPECT_FALSE(has("answerBox"));
    EXPECT_FALSE(tabTexts().contains(QStringLiteral("this")));
}

TEST_F(DecisionsTabTest, AnAnswerStandsInABoxUnderItsLabel)
{
    showDecisions(R"([{"id":"d1","question":"Which?","status":"answered","answer":"this"}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Answered", u"Which?", u"Answer:", u"this"));
    expectGround(item("card"), 12, colors::surface(), 1, colors::hairline());
    QQuickItem *box = item("cardSurface", item("answerBox"));
    EXPECT_EQ(colorOf(box), colors::innerSurface());
    EXPECT_EQ(box->property("radius"), 8);
    EXPECT_EQ(lookOf(text("Answer:")), systemText(10, colors::green()));
    EXPECT_EQ(lookOf(text("this")), caption(colors::gray()));
    EXPECT_EQ(sceneRect(text("Answer:")).topLeft(), place("answerBox").topLeft() + QPointF(10, 10));
    EXPECT_EQ(sceneRect(text("this")).top() - sceneRect(text("Answer:")).bottom(), 2);
    EXPECT_EQ(place("answerBox").bottom() - sceneRect(text("this")).bottom(), 10);
}

TEST_F(DecisionsTabTest, AnEmptyAnswerHasNoBox)
{
    showDecisions(R"([{"id":"d1","question":"Which?","status":"answered","answer":""}])");
    EXPECT_THAT(tabTexts(), ElementsAre(u"Answered", u"Which?"));
    EXPECT_FALSE(has("answerBox"));
}

TEST_F(DecisionsTabTest, TheTimeStandsAtTheRightOrThereIsNone)
{
    showDecisions(R"([{"id":"d1","question":"?","status":"answered",)"
                  R"("notified_at":"2024-05-01T09:30:00.123Z"},)"
                  R"({"id":"d2","question":"?","status":"answered"}])");
    const auto times = items("time");
    ASSERT_EQ(times.size(), 1);
    EXPECT_EQ(textOf(times[0]), u"2024-05-01 09:30:00");
    EXPECT_EQ(lookOf(times[0]), systemText(10, colors::dimText()));
    EXPECT_EQ(sceneRect(times[0]).right(), 390 - 32);
    const auto cards = items("card");
    ASSERT_EQ(cards.size(), 2);
    EXPECT_EQ(sceneRect(cards[1]).top() - sceneRect(cards[0]).bottom(), 12);
}

TEST_F(DecisionsTabTest, TheButtonSendsTheAnswerOnceAndTheListIsShownAnew)
{
    showDecisions(threePending);
    session->queueReply(200, "{}", "/d1/answer");
    session->queueReply(200, secondPending, "/decisions");
    type(1, "later");
    type(0, "this");
    scene->tap(button(0));
    ASSERT_TRUE(eventually([&] { return tabTexts().contains(QStringLiteral("Answer:")); }));
    EXPECT_THAT(answersSent(), ElementsAre(R"({"answer":"this"})"));
    ASSERT_EQ(items("answerField").size(), 1);
    EXPECT_EQ(textOf(field(0)), u"later");
}

TEST_F(DecisionsTabTest, AfterAFingerSentTheAnswerNoRingIsAroundTheList)
{
    showDecisions(R"([{"id":"d1","question":"Which?","status":"pending"}])");
    session->queueReply(200, "{}", "/d1/answer");
    session->queueReply(200,
                        R"([{"id":"d1","question":"Which?","status":"answered","answer":"this"}])",
                        "/decisions");
    type(0, "this");
    scene->tap(button(0));
    ASSERT_TRUE(eventually([&] { return !has("answerField"); }));
    EXPECT_FALSE(has("scrollFocus"));
    // Whoever goes on with keys is to see where they are.
    QTest::keyClick(&scene->window(), Qt::Key_Down);
    EXPECT_TRUE(has("scrollFocus"));
}

TEST_F(DecisionsTabTest, AnEmptyAnswerIsNotSent)
{
    showDecisions(threePending);
    scene->tap(button(0));
    EXPECT_THAT(answersSent(), ElementsAre());
    EXPECT_EQ(session->requestCount(), 2U);
}

TEST_F(DecisionsTabTest, ARejectedAnswerKeepsItsTextAndTheYellowOutline)
{
    showDecisions(threePending);
    session->queueReply(409, R"({"error":"no"})", "/d1/answer");
    type(0, "this");
    scene->tap(button(0));
    ASSERT_TRUE(eventually([&] { return session->requestCount() == 3; }));
    settle();
    EXPECT_EQ(textOf(field(0)), u"this");
    EXPECT_EQ(outline(), pendingOutline());
    EXPECT_EQ(model.selectedTab(), Tab::Decisions);
}

TEST_F(DecisionsTabTest, WhatIsStillBeingComposedIsSentToo)
{
    showDecisions(threePending);
    FakeInputMethod inputMethod;
    type(0, "this ");
    inputMethod.compose(QStringLiteral("one"));
    session->queueReply(200, "{}", "/d1/answer");
    scene->tap(button(0));
    EXPECT_FALSE(inputMethod.isComposing());
    ASSERT_TRUE(eventually([&] { return !answersSent().empty(); }));
    EXPECT_THAT(answersSent(), ElementsAre(R"({"answer":"this one"})"));
}

TEST_F(DecisionsTabTest, TheEditorBetweenTwoThatChangeKeepsTheKeyboard)
{
    showDecisions(threePending, {390, 1200});
    type(0, "this");
    session->queueReply(200, "{}", "/answer");
    session->queueReply(200, secondPending, "/decisions");
    session->hold();
    scene->tap(button(0));
    type(1, "half an ");
    QQuickItem *typedIn = field(1);
    session->release();
    ASSERT_TRUE(eventually([&] { return items("answerField").size() == 1; }));
    EXPECT_EQ(field(0), typedIn);
    EXPECT_TRUE(typedIn->hasActiveFocus());
    QTest::keyClick(&scene->window(), 'h');
    EXPECT_EQ(textOf(field(0)), u"half an h");
}

TEST_F(DecisionsTabTest, EscapeLeavesTheFieldAndKeepsWhatIsTyped)
{
    showDecisions(threePending);
    type(0, "this");
    QTest::keyClick(&scene->window(), Qt::Key_Escape);
    EXPECT_FALSE(field(0)->hasActiveFocus());
    EXPECT_EQ(textOf(field(0)), u"this");
}

TEST_F(DecisionsTabTest, TheKeyboardReachesAnEditorFarBelowAnsweredDecisions)
{
    std::string decisions = "[";
    for (int number = 0; number < 200; ++number) {
        decisions += R"({"id":"a)" + std::to_string(number) +
                     R"(","question":"Which?","status":"answered","answer":"this"},)";
    }
    showDecisions(decisions + R"({"id":"last","question":"When?","status":"pending"}])");
    scene->item(QStringLiteral("list"))->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&scene->window(), Qt::Key_Down);
    EXPECT_GT(scene->item(QStringLiteral("list"))->property("contentY").toDouble(), 0);
    QTest::keyClick(&scene->window(), Qt::Key_Tab);
    ASSERT_TRUE(eventually([&] { return items("answerField").size() == 1; }));
    EXPECT_TRUE(eventually([&] { return field(0)->hasActiveFocus(); }));
}

TEST_F(DecisionsTabTest, AScreenReaderHearsWhichQuestionAnEditorIsFor)
{
    showDecisions(threePending, {390, 1200});
    const auto *button2 = QAccessible::queryAccessibleInterface(button(2));
    EXPECT_EQ(button2->text(QAccessible::Description), u"Where?");
    QAccessibleInterface *around = QAccessible::queryAccessibleInterface(field(1))->parent();
    while (around != nullptr && around->role() != QAccessible::ListItem) {
        around = around->parent();
    }
    ASSERT_NE(around, nullptr);
    EXPECT_EQ(around->text(QAccessible::Name), u"When?");
}

TEST_F(DecisionsTabTest, InAWindowThatShrinksForTheKeyboardFieldAndButtonStayInView)
{
    showDecisions(threePending, {360, 648});
    for (int number = 0; number < 3; ++number) {
        scene->window().resize(360, 648);
        field(number)->forceActiveFocus();
        scene->window().resize(360, 438);
        const auto isInView = [&](QQuickItem *shown) {
            return sceneRect(shown).top() >= tabTop() && sceneRect(shown).bottom() <= 438;
        };
        EXPECT_TRUE(eventually([&] {
            return isInView(items("answerField").at(number)) && isInView(button(number));
        })) << number;
    }
}

TEST_F(DecisionsTabTest, AnAnswerOfManyLinesStaysInViewWithItsButton)
{
    showDecisions(threePending, {360, 438});
    field(2)->setProperty("text", QString::fromStdString(numberedLines(30)));
    field(2)->forceActiveFocus();
    EXPECT_TRUE(eventually([&] {
        return sceneRect(items("answerField").at(2)).top() >= tabTop() &&
               sceneRect(button(2)).bottom() <= 438;
    }));
    EXPECT_EQ(items("answerField").at(2)->height(), 6 * 16 + 20);
}

TEST_F(DecisionsTabTest, TheKeyboardGoesFromCardToCard)
{
    showDecisions(threePending);
    field(0)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&scene->window(), Qt::Key_Tab);
    EXPECT_TRUE(button(0)->hasActiveFocus());
    QTest::keyClick(&scene->window(), Qt::Key_Tab);
    EXPECT_TRUE(field(1)->hasActiveFocus());
    QTest::keyClick(&scene->window(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(button(0)->hasActiveFocus());
}

} // namespace
} // namespace trellisport::test
