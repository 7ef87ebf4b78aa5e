#include "ProjectsList/ProjectRowData.h"
#include "Platform/Platform.h"
#include "ProjectSamples.h"

#include <gtest/gtest.h>

#include <limits>

namespace trellisport::test {
namespace {

ProjectRowData row(const Project &project)
{
    return projectRowData(project, platform::Platform::current().textRules());
}

TEST(ProjectRowData, HoldsWhatTheProjectHolds)
{
    const ProjectRowData data = row({.id = "p-1",
                                     .refNumber = "TR-0042",
                                     .freelancerProjectId = 39201234,
                                     .title = "Bakery site",
                                     .bidAmount = 1500.0,
                                     .bidStatus = "bid_placed",
                                     .ownerUsername = "bakery_owner"});
    EXPECT_EQ(data.id, u"p-1");
    EXPECT_TRUE(data.hasRefNumber);
    EXPECT_EQ(data.refNumber, u"TR-0042");
    EXPECT_EQ(data.title, u"Bakery site");
    EXPECT_EQ(data.status, u"bid_placed");
    EXPECT_EQ(data.amount, u"$1500");
    EXPECT_EQ(data.owner, u"bakery_owner");
    EXPECT_EQ(data.marketplaceNumber, u"FL#39201234");
}

TEST(ProjectRowData, WhatIsMissingIsEmptyTheStatusUnknownAndTheNumberNought)
{
    const ProjectRowData data = row(project("1", std::nullopt, "Title"));
    EXPECT_FALSE(data.hasRefNumber);
    EXPECT_EQ(data.status, u"unknown");
    EXPECT_TRUE(data.amount.isEmpty());
    EXPECT_TRUE(data.owner.isEmpty());
    EXPECT_EQ(data.marketplaceNumber, u"FL#0");
}

TEST(ProjectRowData, AnEmptyReferenceNumberIsPresent)
{
    EXPECT_TRUE(row({.id = "1", .refNumber = "", .title = ""}).hasRefNumber);
}

TEST(ProjectRowData, AmountsAreRoundedToWholeUnitsWithoutGrouping)
{
    const auto amount = [](double value) {
        return row({.id = "1", .title = "", .bidAmount = value}).amount;
    };
    EXPECT_EQ(amount(1499.6), u"$1500");
    EXPECT_EQ(amount(1499.4), u"$1499");
    EXPECT_EQ(amount(1234567), u"$1234567");
    EXPECT_EQ(amount(0), u"$0");
    EXPECT_EQ(amount(-12.7), u"$-13");
}

TEST(ProjectRowData, TheLargestNumbersAreShownWhole)
{
    const Project largest{
        .id = "1", .freelancerProjectId = std::numeric_limits<std::int64_t>::min(), .title = ""};
    EXPECT_EQ(row(largest).marketplaceNumber, u"FL#-9223372036854775808");
}

TEST(ProjectRowData, TextsThatNoRowHoldsAreShortened)
{
    const std::string word(1'000'000, 'x');
    const ProjectRowData data = row({.id = "1",
                                     .refNumber = Text(word),
                                     .title = Text(word),
                                     .bidStatus = Text(word),
                                     .ownerUsername = Text(word)});
    for (const QString &shown : {data.refNumber, data.title, data.status, data.owner}) {
        EXPECT_EQ(shown.size(), 501);
        EXPECT_TRUE(shown.endsWith(QChar(0x2026)));
    }
}

TEST(ProjectRowData, ATitleOfAMegabyteIsCutBetweenTwoCharacters)
{
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    std::string title;
    while (title.size() < 1'000'000) {
        title += family;
    }
    QString shown = row(project("1", "awarded", title.c_str())).title;
    ASSERT_TRUE(shown.endsWith(QChar(0x2026)));
    shown.chop(1);
    const QString character = QString::fromStdString(family);
    EXPECT_LT(shown.size(), 10'000);
    EXPECT_GT(shown.size(), 0);
    EXPECT_EQ(shown.size() % character.size(), 0);
    EXPECT_TRUE(shown.endsWith(character));
}

TEST(ProjectRowData, OneEndlessCharacterIsCutAtItsCodePoints)
{
    std::string title = "e";
    while (title.size() < 1'000'000) {
        title += "\u0301";
    }
    const QString shown = row(project("1", "awarded", title.c_str())).title;
    EXPECT_LT(shown.size(), 20'000);
    EXPECT_FALSE(shown.contains(QChar::ReplacementCharacter));
}

} // namespace
} // namespace trellisport::test
