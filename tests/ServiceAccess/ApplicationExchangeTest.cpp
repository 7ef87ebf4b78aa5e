#include "Platform/CallingThread.h"
#include "Support/Waiting.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <memory>
#include <thread>
#include <vector>

namespace trellisport {
namespace {

TEST(ApplicationExchange, NoReplyIsLostBeforeInBetweenOrAfter)
{
    int count = 1;
    std::string name = "test";
    char *arguments[] = {name.data(), nullptr};
    auto application = std::make_unique<QCoreApplication>(count, arguments);
    const platform::CallingThread home = platform::CallingThread::current();
    std::vector<int> arrived;
    const auto postFromElsewhere = [&](int number) {
        std::thread([&, number] { home.post([&, number] { arrived.push_back(number); }); }).join();
    };
    postFromElsewhere(1);
    postFromElsewhere(2);
    application.reset();
    postFromElsewhere(3);
    application = std::make_unique<QCoreApplication>(count, arguments);
    postFromElsewhere(4);
    EXPECT_TRUE(test::waitUntil([&] { return arrived.size() == 4; }));
    EXPECT_THAT(arrived, ::testing::ElementsAre(1, 2, 3, 4));
}

} // namespace
} // namespace trellisport
