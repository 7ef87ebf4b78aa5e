#include "Platform/CancellationToken.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace trellisport::platform {
namespace {

using Registration = CancellationToken::Registration;

TEST(CancellationToken, ADefaultMadeOneIsNeverCancelled)
{
    const CancellationToken token;
    int calls = 0;
    {
        const Registration registration = token.onCancel([&] { ++calls; });
        EXPECT_FALSE(token.isCancelled());
    }
    EXPECT_EQ(calls, 0);
}

TEST(CancellationToken, CopiesAreOneToken)
{
    const CancellationSource source;
    const std::vector<CancellationToken> tokens(2, source.token());
    EXPECT_FALSE(tokens[0].isCancelled());
    source.cancel();
    EXPECT_TRUE(tokens[0].isCancelled());
    EXPECT_TRUE(tokens[1].isCancelled());
    EXPECT_TRUE(source.token().isCancelled());
}

TEST(CancellationToken, CallsEachCallbackOnce)
{
    const CancellationSource source;
    int first = 0;
    int second = 0;
    const Registration one = source.token().onCancel([&] { ++first; });
    const Registration two = source.token().onCancel([&] { ++second; });
    source.cancel();
    source.cancel();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST(CancellationToken, CallsAtOnceWhenAlreadyCancelled)
{
    const CancellationSource source;
    source.cancel();
    int calls = 0;
    const Registration registration = source.token().onCancel([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    source.cancel();
    EXPECT_EQ(calls, 1);
}

TEST(CancellationToken, DestroyingTheRegistrationTakesTheCallbackBack)
{
    const CancellationSource source;
    int calls = 0;
    {
        const Registration registration = source.token().onCancel([&] { ++calls; });
    }
    source.cancel();
    EXPECT_EQ(calls, 0);
}

TEST(CancellationToken, DestroyingTheRegistrationFreesWhatTheCallbackHolds)
{
    const CancellationSource source;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = held;
    {
        const Registration registration = source.token().onCancel([held = std::move(held)] {});
        EXPECT_FALSE(watch.expired());
    }
    EXPECT_TRUE(watch.expired());
}

TEST(CancellationToken, AMovedRegistrationKeepsItsCallback)
{
    const CancellationSource source;
    int calls = 0;
    Registration first = source.token().onCancel([&] { ++calls; });
    const Registration second = std::move(first);
    source.cancel();
    EXPECT_EQ(calls, 1);
}

TEST(CancellationToken, AssigningTakesTheFormerCallbackBack)
{
    const CancellationSource source;
    int former = 0;
    int latter = 0;
    Registration registration = source.token().onCancel([&] { ++former; });
    registration = source.token().onCancel([&] { ++latter; });
    source.cancel();
    EXPECT_EQ(former, 0);
    EXPECT_EQ(latter, 1);
}

TEST(CancellationToken, DestroyingTheSourceCancelsNothing)
{
    std::optional<CancellationSource> source(std::in_place);
    const CancellationToken token = source->token();
    int calls = 0;
    const Registration registration = token.onCancel([&] { ++calls; });
    source.reset();
    EXPECT_FALSE(token.isCancelled());
    EXPECT_EQ(calls, 0);
}

TEST(CancellationToken, ACallbackMayTakeItselfBack)
{
    const CancellationSource source;
    std::optional<Registration> registration;
    int calls = 0;
    registration = source.token().onCancel([&] {
        registration.reset();
        ++calls;
    });
    source.cancel();
    EXPECT_EQ(calls, 1);
}

TEST(CancellationToken, ACallbackMayRegisterAnotherAndCancelAgain)
{
    const CancellationSource source;
    int inner = 0;
    Registration other;
    const Registration registration = source.token().onCancel([&] {
        other = source.token().onCancel([&] { ++inner; });
        source.cancel();
    });
    source.cancel();
    EXPECT_EQ(inner, 1);
}

TEST(CancellationToken, ACallbackMayDropTheSource)
{
    std::optional<CancellationSource> source(std::in_place);
    int calls = 0;
    const Registration first = source->token().onCancel([&] {
        source.reset();
        ++calls;
    });
    const Registration second = source->token().onCancel([&] {
        source.reset();
        ++calls;
    });
    source->cancel();
    EXPECT_EQ(calls, 2);
}

TEST(CancellationToken, DestroyingTheRegistrationWaitsForARunningCallback)
{
    const CancellationSource source;
    std::atomic<bool> runs = false;
    std::atomic<bool> mayEnd = false;
    std::atomic<bool> hasEnded = false;
    std::optional<Registration> registration = source.token().onCancel([&] {
        runs = true;
        while (!mayEnd) {
            std::this_thread::yield();
        }
        hasEnded = true;
    });
    std::thread canceller([&] { source.cancel(); });
    ASSERT_TRUE(test::waitUntil([&] { return runs.load(); }));
    std::thread releaser([&] { mayEnd = true; });
    registration.reset();
    EXPECT_TRUE(hasEnded);
    canceller.join();
    releaser.join();
}

TEST(CancellationToken, AfterTheRegistrationIsGoneNoCallbackRuns)
{
    for (int round = 0; round < 2'000; ++round) {
        const CancellationSource source;
        auto alive = std::make_unique<std::atomic<bool>>(true);
        std::atomic<bool> calledTooLate = false;
        std::optional<Registration> registration =
            source.token().onCancel([&, state = alive.get()] { calledTooLate = !*state; });
        std::thread canceller([&] { source.cancel(); });
        registration.reset();
        *alive = false;
        canceller.join();
        ASSERT_FALSE(calledTooLate);
    }
}

TEST(CancellationToken, ManyThreadsMayUseOneToken)
{
    const CancellationSource source;
    std::atomic<int> calls = 0;
    std::atomic<int> registered = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            const CancellationToken token = source.token();
            std::vector<Registration> kept;
            kept.reserve(500);
            for (int i = 0; i < 500; ++i) {
                kept.push_back(token.onCancel([&] { ++calls; }));
                const Registration shortLived = token.onCancel([] {});
            }
            ++registered;
            while (!token.isCancelled()) {
                std::this_thread::yield();
            }
            EXPECT_TRUE(test::waitUntil([&] { return calls == 2'000; }));
        });
    }
    EXPECT_TRUE(test::waitUntil([&] { return registered == 4; }));
    source.cancel();
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(calls, 2'000);
}

} // namespace
} // namespace trellisport::platform
