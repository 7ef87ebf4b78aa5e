#include "Settings/SettingsViewModel.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"
#include "Support/ManualClock.h"
#include "Support/Waiting.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

#include <chrono>

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using ::testing::IsEmpty;
using SaveButton = SettingsViewModel::SaveButton;

const char *const loaded = R"({"preview_mode":"false","max_daily_bids":"12",)"
                           R"("daily_revenue_target":"2500.50","max_concurrent_projects":"3",)"
                           R"("model":"large","empty":""})";

class SettingsViewModelTest : public ::testing::Test {
protected:
    void load(const char *config)
    {
        session->queueReply(200, config);
        model.appear();
        ASSERT_TRUE(waitUntil([&] { return !model.isLoading(); }));
    }
    bool eventuallyShows(SaveButton button)
    {
        return waitUntil([&] { return model.saveButton() == button; });
    }
    std::string lastBody() { return session->requests().back().body.value_or("none"); }

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    ManualClock clock;
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    SettingsViewModel model{api, clock, parseServiceAddress("https://service.example/api/v1")};
};

TEST_F(SettingsViewModelTest, StartsLoadingWithNothing)
{
    EXPECT_TRUE(model.isLoading());
    EXPECT_THAT(model.config(), IsEmpty());
    EXPECT_FALSE(model.isSaving());
    EXPECT_FALSE(model.showSaved());
    EXPECT_EQ(session->requestCount(), 0U);
}

TEST_F(SettingsViewModelTest, ShowsWhatTheServiceHolds)
{
    load(loaded);
    EXPECT_EQ(session->requests().at(0).url, "https://service.example/api/v1/config");
    EXPECT_FALSE(model.previewMode());
    EXPECT_EQ(model.maxDailyBids(), u"12");
    EXPECT_EQ(model.dailyRevenueTarget(), u"2500.50");
    EXPECT_EQ(model.maxConcurrentProjects(), u"3");
}

TEST_F(SettingsViewModelTest, AMapWithoutPreviewModeShowsItOnAndSavingDoesNotAddTheKey)
{
    load(R"({"max_daily_bids":"12"})");
    EXPECT_TRUE(model.previewMode());
    session->queueReply(200, "{}");
    model.save();
    ASSERT_TRUE(eventuallyShows(SaveButton::Saved));
    EXPECT_EQ(lastBody(), R"({"max_daily_bids":"12"})");
}

TEST_F(SettingsViewModelTest, ATouchOfTheSwitchWritesTrueOrFalse)
{
    load("{}");
    model.setPreviewMode(false);
    EXPECT_EQ(model.config().at("preview_mode"), "false");
    EXPECT_FALSE(model.previewMode());
    model.setPreviewMode(true);
    EXPECT_EQ(model.config().at("preview_mode"), "true");
    EXPECT_TRUE(model.previewMode());
}

TEST_F(SettingsViewModelTest, TrueInAnyLetterCaseReadsAsOnAndEverythingElseAsOff)
{
    load("{}");
    for (const char *on : {"true", "TRUE", "True", "tRuE"}) {
        model.setConfigText("preview_mode", QString::fromLatin1(on));
        EXPECT_TRUE(model.previewMode()) << on;
    }
    for (const char *off : {"1", "yes", "false", "", "true ", " true", "truee", "tru"}) {
        model.setConfigText("preview_mode", QString::fromLatin1(off));
        EXPECT_FALSE(model.previewMode()) << off;
    }
}

TEST_F(SettingsViewModelTest, AMissingKeyReadsAsEmptyText)
{
    load("{}");
    EXPECT_EQ(model.maxDailyBids(), QString());
    EXPECT_EQ(model.dailyRevenueTarget(), QString());
    EXPECT_EQ(model.maxConcurrentProjects(), QString());
    EXPECT_THAT(model.config(), IsEmpty());
}

TEST_F(SettingsViewModelTest, EachFieldWritesUnderItsOwnKeyWhateverWasTyped)
{
    load("{}");
    model.setMaxDailyBids(QStringLiteral("many"));
    model.setDailyRevenueTarget(QStringLiteral("1,5"));
    model.setMaxConcurrentProjects(QStringLiteral("07"));
    EXPECT_EQ(model.config(), (TextMap{{"max_daily_bids", "many"},
                                       {"daily_revenue_target", "1,5"},
                                       {"max_concurrent_projects", "07"}}));
    EXPECT_EQ(session->requestCount(), 1U);
}

TEST_F(SettingsViewModelTest, AClearedFieldStoresAndSendsTheEmptyText)
{
    load(R"({"max_daily_bids":"12"})");
    model.setMaxDailyBids(QString());
    EXPECT_EQ(model.config(), (TextMap{{"max_daily_bids", ""}}));
    session->queueReply(200, "{}");
    model.save();
    ASSERT_TRUE(eventuallyShows(SaveButton::Saved));
    EXPECT_EQ(lastBody(), R"({"max_daily_bids":""})");
}

TEST_F(SettingsViewModelTest, KeysThatAreNotShownSurviveTheRoundTrip)
{
    load(loaded);
    model.setMaxDailyBids(QStringLiteral("13"));
    session->queueReply(200, "{}");
    model.save();
    ASSERT_TRUE(eventuallyShows(SaveButton::Saved));
    EXPECT_EQ(session->requests().back().method, "PUT");
    EXPECT_EQ(lastBody(), R"({"daily_revenue_target":"2500.50","empty":"",)"
                          R"("max_concurrent_projects":"3","max_daily_bids":"13",)"
                          R"("model":"large","preview_mode":"false"})");
}

TEST_F(SettingsViewModelTest, AnEditIsSeenAtOnceAndAnnounced)
{
    load(loaded);
    const QSignalSpy changed(&model, &SettingsViewModel::configChanged);
    model.setMaxDailyBids(QStringLiteral("13"));
    EXPECT_EQ(model.maxDailyBids(), u"13");
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(SettingsViewModelTest, TheButtonShowsSavingSavedAndAfterTwoSecondsTheWayToSave)
{
    load(loaded);
    EXPECT_EQ(model.saveButton(), SaveButton::Save);
    session->hold();
    session->queueReply(200, "{}");
    model.save();
    EXPECT_EQ(model.saveButton(), SaveButton::Saving);
    session->release();
    ASSERT_TRUE(eventuallyShows(SaveButton::Saved));
    clock.advance(1999ms);
    EXPECT_EQ(model.saveButton(), SaveButton::Saved);
    clock.advance(1ms);
    EXPECT_EQ(model.saveButton(), SaveButton::Save);
}

TEST_F(SettingsViewModelTest, AFailedSaveKeepsTheEditsAndShowsNothing)
{
    load(loaded);
    model.setMaxDailyBids(QStringLiteral("99"));
    session->queueReply(500);
    model.save();
    ASSERT_TRUE(eventuallyShows(SaveButton::Save));
    EXPECT_FALSE(model.showSaved());
    EXPECT_EQ(model.maxDailyBids(), u"99");
    EXPECT_THAT(clock.runningTimers(), IsEmpty());
}

TEST_F(SettingsViewModelTest, PressingAgainWhileSavingSendsTheMapAgain)
{
    load(loaded);
    session->hold();
    session->queueReply(200, "{}");
    session->queueReply(200, "{}");
    model.save();
    model.setMaxDailyBids(QStringLiteral("13"));
    model.save();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 2; }));
    EXPECT_THAT(session->requests().at(1).body.value_or(""),
                ::testing::HasSubstr(R"("max_daily_bids":"12")"));
    EXPECT_THAT(lastBody(), ::testing::HasSubstr(R"("max_daily_bids":"13")"));
    session->release();
    EXPECT_TRUE(eventuallyShows(SaveButton::Saved));
}

TEST_F(SettingsViewModelTest, OfTwoSavesTheFirstToEndEndsTheSpinner)
{
    load(loaded);
    session->hold();
    session->queueReply(200, "{}");
    session->queueReply(200, "{}");
    model.save();
    model.save();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 2; }));
    ASSERT_TRUE(session->releaseOne());
    EXPECT_TRUE(waitUntil([&] { return !model.isSaving(); }));
    EXPECT_EQ(session->held(), 1U);
}

TEST_F(SettingsViewModelTest, EachSuccessfulSaveShowsSavedForItsOwnTwoSeconds)
{
    load(loaded);
    session->queueReply(200, "{}");
    model.save();
    ASSERT_TRUE(eventuallyShows(SaveButton::Saved));
    clock.advance(1500ms);
    session->queueReply(200, "{}");
    model.save();
    ASSERT_TRUE(eventuallyShows(SaveButton::Saved));
    clock.advance(1500ms);
    EXPECT_TRUE(model.showSaved());
    clock.advance(500ms);
    EXPECT_FALSE(model.showSaved());
}

TEST_F(SettingsViewModelTest, SavedShowsAgainAfterItHasGone)
{
    load(loaded);
    for (int round = 0; round < 3; ++round) {
        session->queueReply(200, "{}");
        model.save();
        ASSERT_TRUE(eventuallyShows(SaveButton::Saved));
        clock.advance(2s);
        EXPECT_EQ(model.saveButton(), SaveButton::Save);
    }
}

TEST_F(SettingsViewModelTest, AFailedFirstLoadLeavesEmptyFieldsAndTheSwitchOn)
{
    session->queueReply(500);
    model.appear();
    ASSERT_TRUE(waitUntil([&] { return !model.isLoading(); }));
    EXPECT_TRUE(model.previewMode());
    EXPECT_EQ(model.maxDailyBids(), QString());
    EXPECT_THAT(model.config(), IsEmpty());
}

TEST_F(SettingsViewModelTest, EachAppearanceLoadsAgainAndReplacesTheEdits)
{
    load(loaded);
    model.setMaxDailyBids(QStringLiteral("99"));
    model.disappear();
    session->queueReply(200, R"({"max_daily_bids":"20"})");
    model.appear();
    EXPECT_FALSE(model.isLoading());
    EXPECT_TRUE(waitUntil([&] { return model.maxDailyBids() == u"20"; }));
    EXPECT_EQ(model.config().size(), 1U);
}

TEST_F(SettingsViewModelTest, AFailedReloadKeepsTheEdits)
{
    load(loaded);
    model.setMaxDailyBids(QStringLiteral("99"));
    model.disappear();
    session->queueReply(500);
    model.appear();
    EXPECT_TRUE(waitUntil([&] { return session->queued() == 0; }));
    runPendingEvents();
    EXPECT_EQ(model.maxDailyBids(), u"99");
}

TEST_F(SettingsViewModelTest, ASaveGoesOnWhenTheScreenIsLeft)
{
    load(loaded);
    session->hold();
    session->queueReply(200, "{}");
    model.save();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
    model.disappear();
    session->release();
    EXPECT_TRUE(eventuallyShows(SaveButton::Saved));
    EXPECT_EQ(session->cancelled(), 0U);
}

TEST_F(SettingsViewModelTest, ASaveOutlivesTheModelWithoutHarm)
{
    session->hold();
    session->queueReply(200, "{}");
    auto other = std::make_unique<SettingsViewModel>(
        api, clock, parseServiceAddress("https://service.example/api/v1"));
    other->save();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
    other.reset();
    session->release();
    runPendingEvents();
    EXPECT_EQ(session->held(), 0U);
    EXPECT_THAT(clock.runningTimers(), IsEmpty());
}

TEST_F(SettingsViewModelTest, ShowsTheServicesHostAndItsWebAddress)
{
    const SettingsViewModel other(api, clock,
                                  parseServiceAddress("https://agent.example:8443/api/v1"));
    EXPECT_EQ(other.hostName(), u"agent.example");
    EXPECT_EQ(other.webAddress(), u"https://agent.example:8443");
}

} // namespace
} // namespace trellisport::test
