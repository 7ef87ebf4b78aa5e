#include "ProjectDetail/RepositoryAddress.h"

#include <gtest/gtest.h>

namespace trellisport {
namespace {

const char *const message = "^Unexpectedly found nil while unwrapping an Optional value\n$";

TEST(RepositoryAddress, IsTheTextWhenItIsAUrl)
{
    EXPECT_EQ(repositoryAddress("https://code.example/agent/p1?tab=1#readme"),
              u"https://code.example/agent/p1?tab=1#readme");
    EXPECT_EQ(repositoryAddress("agent/p1"), u"agent/p1");
}

TEST(RepositoryAddressDeathTest, ATextThatIsNoUrlStopsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT((void)repositoryAddress("https://code.example/a b"),
                ::testing::KilledBySignal(SIGABRT), message);
    EXPECT_EXIT((void)repositoryAddress("no url"), ::testing::KilledBySignal(SIGABRT), message);
}

TEST(RepositoryAddressDeathTest, AnEmptyAddressStopsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT((void)repositoryAddress(""), ::testing::KilledBySignal(SIGABRT), message);
}

} // namespace
} // namespace trellisport
