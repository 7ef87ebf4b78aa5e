#include "Platform/Toolkit/MainThreadQueue.h"
#include "Platform/Linux/Session/BusThread.h"
#include "Platform/Toolkit/NotificationRelay.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace trellisport::test {
namespace {

using platform::BusThread;
using platform::MainThreadQueue;
using ::testing::ElementsAre;

TEST(MainThreadQueue, RunsOnTheMainThreadInOrderAndNeverAtOnce)
{
    MainThreadQueue queue;
    queue.wake();
    std::vector<int> ran;
    const auto main = std::this_thread::get_id();
    bool onMain = true;
    queue.async([&] {
        ran.push_back(1);
        queue.async([&] { ran.push_back(3); });
    });
    std::thread([&] {
        queue.async([&] {
            ran.push_back(2);
            onMain = std::this_thread::get_id() == main;
        });
    }).join();
    EXPECT_THAT(ran, ElementsAre());
    ASSERT_TRUE(waitUntil([&] { return ran.size() == 3; }));
    EXPECT_THAT(ran, ElementsAre(1, 2, 3));
    EXPECT_TRUE(onMain);
}

TEST(MainThreadQueue, WhatIsQueuedBeforeThereIsAnEventLoopWaitsForIt)
{
    MainThreadQueue queue;
    bool ran = false;
    queue.async([&] { ran = true; });
    runPendingEvents();
    EXPECT_FALSE(ran);
    queue.wake();
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST(BusThread, StandsStillWhileItIsToldToAndLosesNothing)
{
    BusThread bus;
    std::atomic<int> ran = 0;
    bus.whileStill([&] {
        for (int count = 0; count < 100; ++count) {
            bus.run([&] { ++ran; });
        }
        EXPECT_EQ(ran, 0);
    });
    bus.runAndWait([] {});
    EXPECT_EQ(ran, 100);
}

TEST(NotificationRelay, WithoutASessionNothingIsGranted)
{
    platform::NotificationRelay center;
    std::optional<bool> granted;
    center.requestAuthorization({4}, [&](bool given, const auto &) { granted = given; });
    EXPECT_EQ(granted, false);
}

TEST(NotificationRelay, WithoutADelegateEverythingIsPresentedAndNothingOpened)
{
    platform::NotificationRelay center;
    std::optional<platform::PresentationOptions> options;
    center.willPresent({}, [&](platform::PresentationOptions given) { options = given; });
    ASSERT_TRUE(options);
    EXPECT_EQ(options->bits, 16U + 2U + 1U);
    EXPECT_NO_THROW(center.didReceive({}));
}

} // namespace
} // namespace trellisport::test
