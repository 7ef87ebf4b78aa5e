#include "AllScreens.h"
#include "Geometry.h"

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

/// A phone whose keyboard takes most of the screen.
class LowWindow : public AllScreens {
protected:
    void resize(QSize size) { scene->window().resize(size); }
    void openDecisions() { openTab(6); }
    static bool isWhole(const QQuickItem *item)
    {
        return shownPart(item).height() >= item->height() - 0.5;
    }
    void expectWhole(const char *name)
    {
        EXPECT_TRUE(eventually([&] { return isWhole(item(name)); }))
            << name << " is seen to " << shownPart(item(name)).height() << " of "
            << item(name)->height();
    }
};

TEST_F(LowWindow, AboveAKeyboardInPortraitTheFieldAndItsButtonAreSeen)
{
    fill();
    show({360, 648});
    openDecisions();
    scene->tap(item("field"));
    resize({360, 438});
    settle();
    expectWhole("answerField");
    expectWhole("submitButton");
    EXPECT_TRUE(has("rootTab"));
}

TEST_F(LowWindow, AboveAKeyboardInLandscapeTheFieldIsSeen)
{
    fill();
    show({720, 288});
    openDecisions();
    item("field")->forceActiveFocus(Qt::MouseFocusReason);
    resize({720, 108});
    settle();
    EXPECT_TRUE(eventually([&] { return !has("rootTab"); }));
    expectWhole("answerField");
    EXPECT_EQ(scene->window().activeFocusItem(), item("field"));
    EXPECT_FALSE(has("tabStrip"));
    // The keyboard leads on to the button, and the list follows.
    item("submitButton")->forceActiveFocus(Qt::TabFocusReason);
    expectWhole("submitButton");
    resize({720, 288});
    EXPECT_TRUE(eventually([&] { return has("rootTab"); }));
    EXPECT_TRUE(has("tabStrip"));
    EXPECT_TRUE(has("backButton"));
}

TEST_F(LowWindow, AboveAKeyboardInLandscapeTheOtherFieldsAreSeen)
{
    fill();
    show({720, 288});
    showTab(1);
    settle();
    scene->tap(item("searchField"));
    resize({720, 108});
    settle();
    expectWhole("searchField");
    resize({720, 288});
    showTab(2);
    settle();
    for (const char *name : {"maxDailyBids", "dailyRevenueTarget", "maxConcurrentProjects"}) {
        item(name)->forceActiveFocus(Qt::MouseFocusReason);
        resize({720, 108});
        settle();
        expectWhole(name);
        resize({720, 288});
        settle();
    }
}

TEST_F(LowWindow, AboveAKeyboardInLandscapeATitleIsWholeOrInTheBar)
{
    fill();
    show({720, 288});
    showTab(1);
    settle();
    EXPECT_TRUE(has("largeTitle"));
    scene->tap(item("searchField"));
    resize({720, 108});
    settle();
    expectWhole("searchField");
    EXPECT_TRUE(eventually([&] { return !has("largeTitle"); }));
    EXPECT_EQ(scene->item(QStringLiteral("headline"), item("projectsView"))->opacity(), 1);
    resize({720, 288});
    EXPECT_TRUE(eventually([&] { return has("largeTitle"); }));
}

TEST_F(LowWindow, OnItsSideAPhoneHasAllBars)
{
    fill();
    show({720, 288});
    openDecisions();
    for (const char *name : {"rootTab", "tabStrip", "backButton", "header"}) {
        EXPECT_TRUE(has(name)) << name;
    }
}

} // namespace
} // namespace trellisport::test
