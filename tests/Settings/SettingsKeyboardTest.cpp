#include "QmlSupport/FakeInputMethod.h"
#include "SettingsScene.h"

#include <QTest>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using SettingsKeyboardTest = SettingsViewTest;

TEST_F(SettingsKeyboardTest, TabWalksThroughTheControlsInOrderAndBack)
{
    showLoaded();
    const char *const order[] = {"previewMode",           "maxDailyBids", "dailyRevenueTarget",
                                 "maxConcurrentProjects", "saveButton",   "webLink"};
    for (const char *name : order) {
        QTest::keyClick(&scene->window(), Qt::Key_Tab);
        EXPECT_TRUE(item(name)->hasActiveFocus()) << name;
        EXPECT_TRUE(item(name)->property("visualFocus").toBool()) << name;
    }
    QTest::keyClick(&scene->window(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(item("saveButton")->hasActiveFocus());
}

TEST_F(SettingsKeyboardTest, TheFieldInUseStaysInViewWhenAKeyboardTakesHalfTheWindow)
{
    showLoaded(loadedSettings, {360, 648});
    scene->tap(item("maxConcurrentProjects"));
    scene->window().resize(360, 300);
    EXPECT_TRUE(eventually([&] {
        const QRectF field = sceneRect(item("maxConcurrentProjects"));
        return field.top() >= 44 && field.bottom() <= 300;
    }));
}

TEST_F(SettingsKeyboardTest, WhatIsStillBeingComposedIsSavedToo)
{
    showLoaded();
    FakeInputMethod inputMethod;
    scene->tap(item("maxDailyBids"));
    QTest::keyClick(&scene->window(), Qt::Key_End);
    inputMethod.compose(QStringLiteral("34"));
    EXPECT_EQ(model.maxDailyBids(), u"12");
    session->queueReply(200, "{}");
    scene->tap(item("saveButton"));
    EXPECT_FALSE(inputMethod.isComposing());
    ASSERT_TRUE(eventually([&] { return session->requestCount() == 2; }));
    EXPECT_THAT(session->requests()[1].body.value_or(""),
                ::testing::HasSubstr(R"("max_daily_bids":"1234")"));
}

TEST_F(SettingsKeyboardTest, KeysScrollWhatIsTallerThanTheWindow)
{
    showLoaded(loadedSettings, {320, 480});
    QQuickItem *area = item("settingsScroll");
    const double rested = area->property("contentY").toDouble();
    EXPECT_TRUE(has("scrollMark"));
    QTest::keyClick(&scene->window(), Qt::Key_Tab);
    EXPECT_TRUE(area->hasActiveFocus());
    QTest::keyClick(&scene->window(), Qt::Key_End);
    EXPECT_TRUE(area->property("atYEnd").toBool());
    EXPECT_LE(sceneRect(item("webLink")).bottom(), 480);
    QTest::keyClick(&scene->window(), Qt::Key_PageUp);
    QTest::keyClick(&scene->window(), Qt::Key_PageUp);
    EXPECT_EQ(area->property("contentY").toDouble(), rested);
    // From a control inside too.
    item("previewMode")->forceActiveFocus();
    QTest::keyClick(&scene->window(), Qt::Key_Down);
    EXPECT_EQ(area->property("contentY").toDouble(), rested + 48);
}

} // namespace
} // namespace trellisport::test
