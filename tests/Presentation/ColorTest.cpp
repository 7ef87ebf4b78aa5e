#include "Presentation/Color.h"
#include "Presentation/Colors.h"

#include <gtest/gtest.h>

namespace trellisport {
namespace {

TEST(Color, SixDigitsAreRedGreenAndBlue)
{
    const QColor color = colorFromHex("3B82F6");
    EXPECT_EQ(color, QColor(59, 130, 246));
    EXPECT_FLOAT_EQ(color.redF(), 59 / 255.0F);
    EXPECT_FLOAT_EQ(color.greenF(), 130 / 255.0F);
    EXPECT_FLOAT_EQ(color.blueF(), 246 / 255.0F);
    EXPECT_FLOAT_EQ(color.alphaF(), 1.0F);
}

TEST(Color, LetterCaseMakesNoDifference)
{
    EXPECT_EQ(colorFromHex("1A1A1A"), colorFromHex("1a1a1a"));
    EXPECT_EQ(colorFromHex("1a1a1a"), QColor(26, 26, 26));
}

TEST(Color, WhatCannotBeReadIsOpaqueBlack)
{
    for (const char *text :
         {"#3B82F6", "", "xyz", "   ", "-3B82F6", "+3B82F6", "0x", "0xg", "\xC3\xA9"}) {
        EXPECT_EQ(colorFromHex(text), QColor(0, 0, 0, 255)) << text;
    }
}

TEST(Color, ThreeDigitsAreOneNumber)
{
    EXPECT_EQ(colorFromHex("FFF"), QColor(0, 15, 255));
}

TEST(Color, OfALongerTextTheLastSixDigitsCount)
{
    EXPECT_EQ(colorFromHex("3B82F680"), QColor(0x82, 0xF6, 0x80));
    EXPECT_EQ(colorFromHex("123456789012345678903B82F6"), QColor(59, 130, 246));
}

TEST(Color, APrefixOf0xIsRead)
{
    EXPECT_EQ(colorFromHex("0x3B82F6"), QColor(59, 130, 246));
    EXPECT_EQ(colorFromHex("0X3b82f6"), QColor(59, 130, 246));
}

TEST(Color, LeadingWhiteSpaceIsSkippedAndReadingStopsAtTheFirstOtherCharacter)
{
    EXPECT_EQ(colorFromHex(" \t\n3B82F6"), QColor(59, 130, 246));
    EXPECT_EQ(colorFromHex("3B82F6 FF"), QColor(59, 130, 246));
    EXPECT_EQ(colorFromHex("FFg000"), QColor(0, 0, 255));
}

TEST(Colors, HoldsTheColoursOfTheDarkScheme)
{
    EXPECT_EQ(colors::background(), QColor(10, 10, 10));
    EXPECT_EQ(colors::surface(), QColor(26, 26, 26));
    EXPECT_EQ(colors::innerSurface(), QColor(17, 17, 17));
    EXPECT_EQ(colors::hairline(), QColor(51, 51, 51));
    EXPECT_EQ(colors::dimText(), QColor(85, 85, 85));
    EXPECT_EQ(colors::mutedText(), QColor(136, 136, 136));
    EXPECT_EQ(colors::accent(), QColor(59, 130, 246));
    EXPECT_EQ(colors::agentSurface(), QColor(30, 58, 95));
}

TEST(Colors, FadesAColourWithoutChangingIt)
{
    const QColor faded = Colors::faded(colors::red(), 0.2);
    EXPECT_EQ(faded.rgb(), colors::red().rgb());
    EXPECT_NEAR(faded.alphaF(), 0.2, 0.001);
}

} // namespace
} // namespace trellisport
