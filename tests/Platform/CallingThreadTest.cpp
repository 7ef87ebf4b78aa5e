#include "Platform/CallingThread.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace trellisport::platform {
namespace {

TEST(CallingThread, RunsWorkLaterOnTheThreadThatItStandsFor)
{
    const CallingThread home = CallingThread::current();
    std::thread::id ranOn;
    std::thread other([&] { home.post([&] { ranOn = std::this_thread::get_id(); }); });
    other.join();
    EXPECT_EQ(ranOn, std::thread::id());
    EXPECT_TRUE(test::waitUntil([&] { return ranOn == std::this_thread::get_id(); }));
}

TEST(CallingThread, NeverRunsWorkWithinPost)
{
    bool ran = false;
    CallingThread::current().post([&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(test::waitUntil([&] { return ran; }));
}

TEST(CallingThread, KeepsTheOrderOfWork)
{
    std::vector<int> order;
    const CallingThread home = CallingThread::current();
    for (int i = 0; i < 10; ++i) {
        home.post([&, i] { order.push_back(i); });
    }
    ASSERT_TRUE(test::waitUntil([&] { return order.size() == 10; }));
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(CallingThread, RunsWhatWaitsWithoutAnEventLoopWhenTold)
{
    std::vector<int> order;
    const CallingThread home = CallingThread::current();
    home.post([&] {
        order.push_back(1);
        home.post([&] { order.push_back(3); });
    });
    std::thread([&] { home.post([&] { order.push_back(2); }); }).join();
    EXPECT_TRUE(CallingThread::runPosted());
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    EXPECT_FALSE(CallingThread::runPosted());
    test::runPendingEvents();
    EXPECT_EQ(order.size(), 3U) << "once is enough";
}

TEST(CallingThread, DropsWorkForAThreadThatHasEnded)
{
    std::optional<CallingThread> ended;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = held;
    bool ran = false;
    std::thread([&] {
        ended = CallingThread::current();
        ended->post([&, held] { ran = true; }); // its loop does not run any more
    }).join();
    ended->post([&, held = std::move(held)] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(watch.expired());
}

TEST(CallingThread, PostingWhileThreadsEndIsHarmless)
{
    for (int round = 0; round < 200; ++round) {
        std::atomic<bool> mayPost = false;
        std::optional<CallingThread> home;
        std::thread ending([&] {
            home = CallingThread::current();
            mayPost = true;
        });
        while (!mayPost) {
            std::this_thread::yield();
        }
        for (int i = 0; i < 20; ++i) {
            home->post([] {});
        }
        ending.join();
        home->post([] {});
    }
}

} // namespace
} // namespace trellisport::platform
