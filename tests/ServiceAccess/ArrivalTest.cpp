#include "ServiceAccess/Arrival.h"
#include "Support/TaskOutcome.h"
#include "Support/Waiting.h"

#include <QCoroTask>

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <utility>

namespace trellisport {
namespace {

/// Can be moved only, so that a copy on the way would not compile, and tells if it was copied.
QCoro::Task<std::unique_ptr<int>> receive(Arrival<std::unique_ptr<int>> arrival)
{
    std::unique_ptr<int> value = co_await arrival;
    co_return std::move(value);
}

TEST(Arrival, BringsAValueFromAnotherThread)
{
    const Arrival<std::unique_ptr<int>> arrival;
    const auto outcome = test::observe(receive(arrival));
    std::thread([&] { arrival.deliver(std::make_unique<int>(5)); }).join();
    EXPECT_FALSE(outcome->isDone());
    ASSERT_TRUE(test::waitUntil([&] { return outcome->isDone(); }));
    EXPECT_EQ(*outcome->take(), 5);
    EXPECT_EQ(outcome->endedOn(), std::this_thread::get_id());
}

TEST(Arrival, MayComeBeforeItIsAwaited)
{
    const Arrival<std::unique_ptr<int>> arrival;
    arrival.deliver(std::make_unique<int>(5));
    test::runPendingEvents();
    const auto outcome = test::observe(receive(arrival));
    EXPECT_TRUE(outcome->isDone());
    EXPECT_EQ(*outcome->take(), 5);
}

} // namespace
} // namespace trellisport
