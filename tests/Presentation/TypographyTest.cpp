#include "Presentation/Typography.h"

#include <gtest/gtest.h>

namespace trellisport {
namespace {

TEST(Typography, TextStylesHaveTheirSizesAndLineHeights)
{
    const struct {
        Typography::TextStyle style;
        double size;
        double lineHeight;
    } rows[] = {
        {Typography::LargeTitle, 34, 41}, {Typography::Title, 28, 34},
        {Typography::Title2, 22, 28},     {Typography::Title3, 20, 25},
        {Typography::Headline, 17, 22},   {Typography::Body, 17, 22},
        {Typography::Callout, 16, 21},    {Typography::Subheadline, 15, 20},
        {Typography::Footnote, 13, 18},   {Typography::Caption, 12, 16},
        {Typography::Caption2, 11, 13},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Typography::size(row.style), row.size) << row.style;
        EXPECT_EQ(Typography::lineHeight(row.style, 1), row.lineHeight) << row.style;
        EXPECT_EQ(Typography::font(row.style, 0, false, 1).pixelSize(), row.size) << row.style;
    }
}

TEST(Typography, OnlyTheHeadlineIsSemiboldByItself)
{
    EXPECT_EQ(Typography::font(Typography::Headline, 0, false, 1).weight(), QFont::DemiBold);
    EXPECT_EQ(Typography::font(Typography::Body, 0, false, 1).weight(), QFont::Normal);
    EXPECT_EQ(Typography::font(Typography::Body, QFont::Bold, false, 1).weight(), QFont::Bold);
}

TEST(Typography, TheFixedWidthDesignHasItsOwnFamily)
{
    EXPECT_EQ(Typography::font(Typography::Caption, 0, true, 1).families().first(),
              QStringLiteral("JetBrains Mono"));
    EXPECT_EQ(Typography::systemFont(13, QFont::Bold, true, 1).families().first(),
              QStringLiteral("JetBrains Mono"));
    EXPECT_EQ(Typography::systemFont(13, 0, false, 1).families().first(), QStringLiteral("Inter"));
}

TEST(Typography, LargerTextHasLargerFontsAndLinesOfWholePoints)
{
    EXPECT_EQ(Typography::font(Typography::Body, 0, false, 2).pixelSize(), 34);
    EXPECT_EQ(Typography::lineHeight(Typography::Body, 2), 44);
    EXPECT_EQ(Typography::font(Typography::Caption, 0, false, 1.3).pixelSize(), 16);
    EXPECT_EQ(Typography::lineHeight(Typography::Caption, 1.3), 21);
    EXPECT_EQ(Typography::systemFont(10, 0, false, 0.8).pixelSize(), 8);
    EXPECT_DOUBLE_EQ(Typography::systemLineHeight(9, 1), 10.8);
    EXPECT_EQ(Typography::systemLineHeight(9, 1.6), 17);
}

} // namespace
} // namespace trellisport
