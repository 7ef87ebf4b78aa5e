#include "ProjectDetail/Bids/BidColor.h"
#include "Presentation/Colors.h"

#include <gtest/gtest.h>

#include <limits>

namespace trellisport {
namespace {

TEST(BidColor, IsRedBelowOursGreenAboveItAndElseWhite)
{
    EXPECT_EQ(bidColor(90, 100), colors::red());
    EXPECT_EQ(bidColor(110, 100), colors::green());
    EXPECT_EQ(bidColor(100, 100), colors::white());
}

TEST(BidColor, IsWhiteWhenEitherIsAbsentOrNoNumber)
{
    EXPECT_EQ(bidColor({}, 100), colors::white());
    EXPECT_EQ(bidColor(90, {}), colors::white());
    EXPECT_EQ(bidColor({}, {}), colors::white());
    EXPECT_EQ(bidColor(std::numeric_limits<double>::quiet_NaN(), 100), colors::white());
}

} // namespace
} // namespace trellisport
