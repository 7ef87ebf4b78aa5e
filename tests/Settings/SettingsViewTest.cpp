#include "Presentation/Colors.h"
#include "SettingsScene.h"

#include <QAccessible>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

#include <gmock/gmock.h>

#include <chrono>

Q_IMPORT_QML_PLUGIN(TrellisportManager_SettingsPlugin)

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

TEST_F(SettingsViewTest, BeforeTheFirstLoadEndsOnlyTheSpinnersRowIsShown)
{
    session->hold();
    session->queueReply(200, loadedSettings);
    show();
    EXPECT_THAT(scene->texts(), ElementsAre(u"Settings"));
    EXPECT_TRUE(has("spinner"));
    EXPECT_EQ(item("spinnerRow")->width(), 390 - 32);
    EXPECT_EQ(colorOf(scene->item(QStringLiteral("ground"), item("spinnerRow"))),
              colors::background());
    session->release();
    EXPECT_TRUE(eventually([&] { return has("sections"); }));
    EXPECT_FALSE(has("spinnerRow"));
}

TEST_F(SettingsViewTest, ShowsTheFourSectionsInTheirOrder)
{
    showLoaded();
    EXPECT_THAT(scene->texts(),
                ElementsAre(u"Settings", u"Operation Mode", u"Preview Mode",
                            u"When enabled, only 1 active bid at a time", u"Bid Limits",
                            u"Max Daily Bids", u"12", u"Revenue Target ($)", u"2500",
                            u"Max Concurrent", u"3", u"Save Changes", u"About", u"Server",
                            u"trellisport-base", u"Dashboard", u"agent.example"));
}

TEST_F(SettingsViewTest, AFailedFirstLoadShowsTheSectionsWithEmptyFieldsAndTheSwitchOn)
{
    session->queueReply(500);
    show();
    ASSERT_TRUE(eventually([&] { return has("sections"); }));
    (void)scene->picture();
    EXPECT_THAT(scene->texts(),
                ElementsAre(u"Settings", u"Operation Mode", u"Preview Mode",
                            u"When enabled, only 1 active bid at a time", u"Bid Limits",
                            u"Max Daily Bids", u"10", u"Revenue Target ($)", u"10000",
                            u"Max Concurrent", u"5", u"Save Changes", u"About", u"Server",
                            u"trellisport-base", u"Dashboard", u"agent.example"));
    EXPECT_EQ(colorOf(text("10")), colors::placeholderText());
    EXPECT_TRUE(item("previewMode")->property("checked").toBool());
}

TEST_F(SettingsViewTest, RowsStandOnTheSurfaceInRoundedGroups)
{
    showLoaded();
    for (const char *label : {"Preview Mode", "Max Daily Bids", "Max Concurrent", "Server"}) {
        QQuickItem *row = rowOf(text(label));
        EXPECT_EQ(colorOf(scene->item(QStringLiteral("ground"), row)), colors::surface()) << label;
        EXPECT_EQ(sceneRect(row).left(), 16) << label;
        EXPECT_EQ(sceneRect(row).width(), 390 - 32) << label;
        EXPECT_GE(row->height(), 44) << label;
        EXPECT_EQ(sceneRect(text(label)).left(), 32) << label;
    }
    QQuickItem *note = text("When enabled, only 1 active bid at a time");
    EXPECT_EQ(fontOf(note).pixelSize(), 12);
    EXPECT_EQ(colorOf(note), colors::gray());
}

TEST_F(SettingsViewTest, FieldsStandAtTheTrailingEdgeInTheirWidths)
{
    showLoaded();
    const std::pair<const char *, int> fields[] = {
        {"maxDailyBids", 60}, {"dailyRevenueTarget", 80}, {"maxConcurrentProjects", 60}};
    for (const auto &[name, width] : fields) {
        EXPECT_EQ(item(name)->width(), width) << name;
        EXPECT_EQ(sceneRect(item(name)).right(), 390 - 32) << name;
        EXPECT_EQ(item(name)->property("effectiveHorizontalAlignment").toInt(), Qt::AlignRight)
            << name;
    }
}

TEST_F(SettingsViewTest, FieldsAskForTheFittingKeyboards)
{
    showLoaded();
    const auto hints = [&](const char *name) {
        return item(name)->property("inputMethodHints").toInt();
    };
    EXPECT_EQ(hints("maxDailyBids"), Qt::ImhDigitsOnly);
    EXPECT_EQ(hints("dailyRevenueTarget"), Qt::ImhFormattedNumbersOnly);
    EXPECT_EQ(hints("maxConcurrentProjects"), Qt::ImhDigitsOnly);
}

TEST_F(SettingsViewTest, TheSwitchShowsAndChangesPreviewMode)
{
    showLoaded();
    QQuickItem *control = item("previewMode");
    EXPECT_FALSE(control->property("checked").toBool());
    scene->tap(control);
    EXPECT_EQ(model.config().at("preview_mode"), "true");
    EXPECT_TRUE(control->property("checked").toBool());
    EXPECT_EQ(control->property("tint").value<QColor>(), colors::accent());
    scene->tap(control);
    EXPECT_EQ(model.config().at("preview_mode"), "false");
}

TEST_F(SettingsViewTest, TypingChangesTheSettings)
{
    showLoaded();
    type("maxDailyBids", "25");
    type("dailyRevenueTarget", "99.5");
    type("maxConcurrentProjects", "");
    EXPECT_EQ(model.config().at("max_daily_bids"), "25");
    EXPECT_EQ(model.config().at("daily_revenue_target"), "99.5");
    EXPECT_EQ(model.config().at("max_concurrent_projects"), "");
    EXPECT_NE(text("5"), nullptr);
}

TEST_F(SettingsViewTest, AReloadShowsInTheFieldsAndTheSwitchAlsoAfterEdits)
{
    showLoaded();
    type("maxDailyBids", "25");
    scene->tap(item("previewMode"));
    session->queueReply(200, R"({"preview_mode":"false","max_daily_bids":"7"})");
    scene->root()->setVisible(false);
    scene->root()->setVisible(true);
    EXPECT_TRUE(eventually([&] { return textOf(item("maxDailyBids")) == u"7"; }));
    EXPECT_FALSE(item("previewMode")->property("checked").toBool());
}

TEST_F(SettingsViewTest, TheSaveButtonIsFilledWithTheAccentAndItsLabelIsCentred)
{
    showLoaded();
    QQuickItem *label = text("Save Changes");
    QQuickItem *button = item("saveButton");
    EXPECT_EQ(colorOf(label), colors::white());
    EXPECT_EQ(colorOf(scene->item(QStringLiteral("ground"), button)), colors::accent());
    EXPECT_NEAR(sceneRect(label).center().x(), 390 / 2.0, 1);
    EXPECT_EQ(button->height(), 11 + 4 + 22 + 4 + 11);
}

TEST_F(SettingsViewTest, SavingShowsAWhiteSpinnerThenSavedInGreenForTwoSeconds)
{
    showLoaded();
    session->hold();
    session->queueReply(200, "{}");
    scene->tap(item("saveButton"));
    EXPECT_TRUE(has("savingSpinner"));
    EXPECT_EQ(colorOf(item("savingSpinner")), colors::white());
    EXPECT_FALSE(scene->texts().contains(QStringLiteral("Save Changes")));

    session->release();
    ASSERT_TRUE(eventually([&] { return has("savedLabel"); }));
    EXPECT_FALSE(has("savingSpinner"));
    EXPECT_EQ(colorOf(text("Saved")), colors::green());
    EXPECT_EQ(item("savedSymbol")->property("symbol"), QStringLiteral("checkmark.circle.fill"));
    EXPECT_EQ(colorOf(item("savedSymbol")), colors::green());
    clock.advance(2s);
    EXPECT_FALSE(has("savedLabel"));
    EXPECT_NE(text("Save Changes"), nullptr);
}

TEST_F(SettingsViewTest, TheSaveButtonCanBePressedAgainWhileSaving)
{
    showLoaded();
    session->hold();
    session->queueReply(200, "{}");
    session->queueReply(200, "{}");
    scene->tap(item("saveButton"));
    scene->tap(item("saveButton"));
    EXPECT_TRUE(eventually([&] { return session->held() == 2; }));
}

TEST_F(SettingsViewTest, AFailedSaveLeavesSaveChangesOnTheButton)
{
    showLoaded();
    type("maxDailyBids", "25");
    session->queueReply(500);
    scene->tap(item("saveButton"));
    EXPECT_TRUE(eventually([&] { return session->requestCount() == 2 && !model.isSaving(); }));
    EXPECT_NE(text("Save Changes"), nullptr);
    EXPECT_EQ(textOf(item("maxDailyBids")), u"25");
}

TEST_F(SettingsViewTest, TheLinkOpensTheServicesWebAddress)
{
    showLoaded();
    QQuickItem *link = text("agent.example");
    EXPECT_EQ(colorOf(link), colors::accent());
    EXPECT_EQ(fontOf(link).pixelSize(), 12);
    EXPECT_EQ(sceneRect(link).right(), 390 - 32);
    scene->tap(link);
    EXPECT_THAT(opener.opened, ElementsAre("https://agent.example:8443"));
    EXPECT_EQ(colorOf(text("trellisport-base")), colors::gray());
}

TEST_F(SettingsViewTest, EveryControlHasItsNameAndRoleForAScreenReader)
{
    showLoaded();
    const auto accessible = [&](const char *name) {
        return QAccessible::queryAccessibleInterface(item(name));
    };
    EXPECT_EQ(accessible("previewMode")->text(QAccessible::Name), u"Preview Mode");
    EXPECT_EQ(accessible("maxDailyBids")->text(QAccessible::Name), u"Max Daily Bids");
    EXPECT_EQ(accessible("dailyRevenueTarget")->text(QAccessible::Name), u"Revenue Target ($)");
    EXPECT_EQ(accessible("saveButton")->role(), QAccessible::Button);
    EXPECT_EQ(accessible("saveButton")->text(QAccessible::Name), u"Save Changes");
    EXPECT_EQ(accessible("webLink")->role(), QAccessible::Link);
    session->queueReply(200, "{}");
    accessible("saveButton")
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(eventually([&] { return has("savedLabel"); }));
    EXPECT_EQ(accessible("saveButton")->text(QAccessible::Name), u"Saved");
}

TEST_F(SettingsViewTest, NothingIsClippedInTheNarrowestWindow)
{
    showLoaded(loadedSettings, {320, 568});
    for (const char *label : {"Preview Mode", "Max Daily Bids", "Revenue Target ($)",
                              "Max Concurrent", "Server", "trellisport-base", "Dashboard"}) {
        QQuickItem *shown = text(label);
        ASSERT_NE(shown, nullptr);
        EXPECT_FALSE(shown->property("truncated").toBool()) << label;
        EXPECT_EQ(shown->property("lineCount").toInt(), 1) << label;
        EXPECT_LE(sceneRect(shown).right(), 320 - 32 + 0.5) << label;
    }
}

TEST_F(SettingsViewTest, AWideWindowKeepsAReadableColumnInTheMiddle)
{
    showLoaded(loadedSettings, {1280, 800});
    const QRectF row = sceneRect(rowOf(text("Server")));
    EXPECT_EQ(row.left(), (1280 - 700) / 2 + 16);
    EXPECT_EQ(row.right(), (1280 + 700) / 2 - 16);
}

} // namespace
} // namespace trellisport::test
