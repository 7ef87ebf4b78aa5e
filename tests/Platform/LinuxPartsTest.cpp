#include "Platform/FakeDesktop.h"
#include "Platform/Linux/LinuxEnvironment.h"
#include "Platform/Linux/LinuxLinkOpener.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/ThreadPoolExecutor.h"
#include "Platform/Platform.h"
#include "Platform/Toolkit/QtClock.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::platform {
namespace {

using namespace std::chrono_literals;
using test::waitUntil;
using SteadyClock = std::chrono::steady_clock;

TEST(QtClock, TicksEachTimeTheIntervalHasPassed)
{
    QtClock clock;
    const auto start = SteadyClock::now();
    int ticks = 0;
    const auto timer = clock.every(20ms, [&] { ++ticks; });
    ASSERT_TRUE(waitUntil([&] { return ticks == 5; }));
    EXPECT_GE(SteadyClock::now() - start, 99ms);
}

TEST(QtClock, CallsOnceWhenTheDelayHasPassed)
{
    QtClock clock;
    const auto start = SteadyClock::now();
    int calls = 0;
    std::optional<SteadyClock::time_point> called;
    const auto timer = clock.after(30ms, [&] {
        ++calls;
        called = SteadyClock::now();
    });
    const auto later = clock.after(90ms, [&] { ++calls; });
    ASSERT_TRUE(waitUntil([&] { return calls == 2; }));
    EXPECT_GE(*called - start, 29ms);
    test::runPendingEvents();
    EXPECT_EQ(calls, 2);
}

TEST(QtClock, ADestroyedTimerIsSilent)
{
    QtClock clock;
    int wrong = 0;
    bool isOver = false;
    clock.every(5ms, [&] { ++wrong; }).reset();
    clock.after(5ms, [&] { ++wrong; }).reset();
    const auto end = clock.after(30ms, [&] { isOver = true; });
    ASSERT_TRUE(waitUntil([&] { return isOver; }));
    EXPECT_EQ(wrong, 0);
}

TEST(QtClock, ATimerMayDestroyItselfFromItsCallback)
{
    QtClock clock;
    int calls = 0;
    std::unique_ptr<Timer> repeating;
    std::unique_ptr<Timer> single;
    auto held = std::make_shared<int>(1);
    repeating = clock.every(5ms, [&, held] {
        repeating.reset();
        calls += *held;
    });
    single = clock.after(5ms, [&, held] {
        single.reset();
        calls += *held;
    });
    ASSERT_TRUE(waitUntil([&] { return calls == 2; }));
    test::runPendingEvents();
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(QtClock, WithoutADelayItIsStillNotWithinTheCall)
{
    QtClock clock;
    bool called = false;
    const auto timer = clock.after(0ms, [&] { called = true; });
    EXPECT_FALSE(called);
    EXPECT_TRUE(waitUntil([&] { return called; }));
}

TEST(LinuxEnvironment, TellsASetVariableFromAnEmptyAndAMissingOne)
{
    qputenv("TRELLISPORT_TEST_SET", "a=b é");
    qputenv("TRELLISPORT_TEST_EMPTY", "");
    const LinuxEnvironment environment;
    EXPECT_EQ(environment.variable("TRELLISPORT_TEST_SET"), "a=b é");
    EXPECT_EQ(environment.variable("TRELLISPORT_TEST_EMPTY"), "");
    EXPECT_EQ(environment.variable("TRELLISPORT_TEST_MISSING"), std::nullopt);
}

TEST(LinuxEnvironment, AnyThreadSeesAVariableWholeOrNotAtAll)
{
    constexpr const char *name = "TRELLISPORT_TEST_CHANGING";
    const std::string whole(100, 'x');
    std::atomic<bool> isOver = false;
    std::thread changing([&] {
        while (!isOver) {
            qputenv(name, QByteArray::fromStdString(whole));
            qunsetenv(name);
        }
    });
    const LinuxEnvironment environment;
    int others = 0;
    for (int i = 0; i < 1'000'000; ++i) {
        const std::optional<std::string> value = environment.variable(name);
        others += value && *value != whole ? 1 : 0;
    }
    isOver = true;
    changing.join();
    EXPECT_EQ(others, 0);
}

TEST(HttpOptions, GiveAnExchangeSixtySecondsAndAddTheNamedAuthorities)
{
    qputenv("TRELLISPORT_CA_FILE", "/some/authorities.pem");
    const CurlHttpOptions options = httpOptions(LinuxEnvironment());
    qunsetenv("TRELLISPORT_CA_FILE");
    EXPECT_EQ(options.timeout, 60s);
    EXPECT_EQ(options.authorityFile, "/some/authorities.pem");
    EXPECT_EQ(options.systemAuthorities, "") << "the system's own";
    EXPECT_EQ(httpOptions(LinuxEnvironment()).authorityFile, "");
}

TEST(LinuxLinkOpener, HandsSecureAndMailAddressesOverUnchanged)
{
    test::FakeDesktop desktop;
    LinuxLinkOpener opener;
    const std::vector<std::string> urls{"https://host.example/a%20b?c=%2F#d",
                                        "mailto:a@host.example", "https://host.example",
                                        "mailto:a@host.example?Subject=b&cc=c@host.example&body=d"};
    for (const std::string &url : urls) {
        EXPECT_TRUE(opener.open(url)) << url;
    }
    EXPECT_EQ(desktop.opened(), urls);
    EXPECT_TRUE(opener.open("HTTPS://host.example/"));
}

TEST(LinuxLinkOpener, LetsNothingElseLeaveTheProgram)
{
    test::FakeDesktop desktop;
    LinuxLinkOpener opener;
    for (const char *url : {"",
                            "http://host.example/",
                            "file:///etc/hostname",
                            "ssh://host.example",
                            "data:text/html,x",
                            "javascript:alert(1)",
                            "host.example",
                            "/a",
                            "//a/b",
                            "https://host example/",
                            " https://host.example/",
                            "https:",
                            "https:///a",
                            "https:/a",
                            "https://host.example/\n",
                            "-https://host.example/",
                            "vbscript:x",
                            "intent://a#Intent;end",
                            "mailto:a@host.example?attach=/etc/hostname",
                            "mailto:?subject=a&ATTACH=b",
                            "mailto:a@host.example#?attach=b",
                            "mailto:?%61ttachment=/etc/hostname",
                            "mailto:a@host.example?x-header=1"}) {
        EXPECT_FALSE(opener.open(url)) << url;
    }
    EXPECT_TRUE(desktop.opened().empty());
}

TEST(ThreadPoolExecutor, RunsWorkOnceOnAnotherThread)
{
    ThreadPoolExecutor executor;
    std::atomic<int> runs = 0;
    std::thread::id ranOn;
    executor.run([&] {
        ranOn = std::this_thread::get_id();
        ++runs;
    });
    ASSERT_TRUE(waitUntil([&] { return runs == 1; }));
    EXPECT_NE(ranOn, std::this_thread::get_id());
}

TEST(ThreadPoolExecutor, DestroyingItWaitsForTheWork)
{
    std::atomic<int> runs = 0;
    {
        ThreadPoolExecutor executor;
        for (int i = 0; i < 1'000; ++i) {
            executor.run([&] { ++runs; });
        }
    }
    EXPECT_EQ(runs, 1'000);
}

TEST(LinuxPlatform, EveryPartIsMadeOnceWhicheverThreadAsksFirst)
{
    Platform &platform = Platform::current();
    std::atomic<int> different = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            if (&Platform::current() != &platform || platform.httpSession() == nullptr ||
                platform.httpSession() != platform.httpSession() ||
                &platform.executor() != &platform.executor() ||
                &platform.textRules() != &platform.textRules()) {
                ++different;
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(different, 0);
}

} // namespace
} // namespace trellisport::platform
