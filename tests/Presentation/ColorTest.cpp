#include "Presentation/Color.h"
#include "Presentation/Colors.h"

#include <QMetaObject>
#include <QVariant>

#include <gtest/gtest.h>

#include <map>
#include <string>

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

TEST(Colors, HoldsThePlatformsNamedColours)
{
    EXPECT_EQ(colors::white(), QColor(255, 255, 255));
    EXPECT_EQ(colors::gray(), QColor(142, 142, 147));
    EXPECT_EQ(colors::red(), QColor(255, 69, 58));
    EXPECT_EQ(colors::orange(), QColor(255, 159, 10));
    EXPECT_EQ(colors::yellow(), QColor(255, 214, 10));
    EXPECT_EQ(colors::green(), QColor(48, 209, 88));
    EXPECT_EQ(colors::mint(), QColor(102, 212, 207));
    EXPECT_EQ(colors::cyan(), QColor(100, 210, 255));
    EXPECT_EQ(colors::blue(), QColor(10, 132, 255));
    EXPECT_EQ(colors::indigo(), QColor(94, 92, 230));
    EXPECT_EQ(colors::purple(), QColor(191, 90, 242));
}

TEST(Colors, HoldsTheColoursOfControls)
{
    // At 60, 30, 60 and 24 per cent.
    EXPECT_EQ(colors::secondaryText(), QColor(255, 255, 255, 153));
    EXPECT_EQ(colors::placeholderText(), QColor(255, 255, 255, 77));
    EXPECT_EQ(colors::separator(), QColor(84, 84, 88, 153));
    EXPECT_EQ(colors::fieldFill(), QColor(118, 118, 128, 61));
}

TEST(Colors, AreTheSameInQml)
{
    const Colors qml;
    const std::map<std::string, QColor> expected = {
        {"background", colors::background()},
        {"surface", colors::surface()},
        {"innerSurface", colors::innerSurface()},
        {"hairline", colors::hairline()},
        {"dimText", colors::dimText()},
        {"mutedText", colors::mutedText()},
        {"accent", colors::accent()},
        {"agentSurface", colors::agentSurface()},
        {"white", colors::white()},
        {"gray", colors::gray()},
        {"red", colors::red()},
        {"yellow", colors::yellow()},
        {"green", colors::green()},
        {"secondaryText", colors::secondaryText()},
        {"placeholderText", colors::placeholderText()},
        {"separator", colors::separator()},
        {"fieldFill", colors::fieldFill()},
    };
    const QMetaObject &type = Colors::staticMetaObject;
    EXPECT_EQ(type.propertyCount() - type.propertyOffset(), static_cast<int>(expected.size()));
    for (const auto &[name, color] : expected) {
        EXPECT_EQ(qml.property(name.c_str()).value<QColor>(), color) << name;
    }
}

TEST(Colors, FadesAColourWithoutChangingIt)
{
    const QColor faded = Colors::faded(colors::red(), 0.2);
    EXPECT_EQ(faded.rgb(), colors::red().rgb());
    EXPECT_NEAR(faded.alphaF(), 0.2, 0.001);
}

} // namespace
} // namespace trellisport
