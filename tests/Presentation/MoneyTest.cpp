#include "Presentation/Money.h"

#include <gtest/gtest.h>

#include <clocale>

namespace trellisport {
namespace {

TEST(Money, HasTwoDecimalsAndNoGrouping)
{
    EXPECT_EQ(moneyText(2500), QStringLiteral("$2500.00"));
    EXPECT_EQ(moneyText(1234567.891), QStringLiteral("$1234567.89"));
    EXPECT_EQ(moneyText(1234.5), QStringLiteral("$1234.50"));
    EXPECT_EQ(moneyText(0), QStringLiteral("$0.00"));
    EXPECT_EQ(moneyText(-12), QStringLiteral("$-12.00"));
}

TEST(Money, IsRoundedToWholeUnitsWhereAsked)
{
    EXPECT_EQ(moneyText(1499.6, 0), QStringLiteral("$1500"));
}

TEST(Money, RoundsAnExactHalfToTheEvenNeighbour)
{
    EXPECT_EQ(moneyText(250.5, 0), QStringLiteral("$250"));
    EXPECT_EQ(moneyText(251.5, 0), QStringLiteral("$252"));
    EXPECT_EQ(moneyText(0.125), QStringLiteral("$0.12"));
    EXPECT_EQ(moneyText(0.375), QStringLiteral("$0.38"));
    EXPECT_EQ(decimalText(4.25, 1), QStringLiteral("4.2"));
}

TEST(Money, KeepsTheSignOfWhatRoundsToZero)
{
    EXPECT_EQ(moneyText(-0.001), QStringLiteral("$-0.00"));
    EXPECT_EQ(moneyText(-0.0), QStringLiteral("$-0.00"));
}

TEST(Money, WritesTheLargestAmountWhole)
{
    EXPECT_EQ(moneyText(1.7976931348623157e308).size(), 1 + 309 + 3);
}

TEST(Money, KeepsThePointWhateverTheLocale)
{
    // The locale may be missing on this machine; then the default is tried, which holds as well.
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // NOLINT(concurrency-mt-unsafe): there is one thread
    EXPECT_EQ(moneyText(1234.5), QStringLiteral("$1234.50"));
    std::setlocale(LC_ALL, "C.UTF-8"); // NOLINT(concurrency-mt-unsafe): as above
}

} // namespace
} // namespace trellisport
