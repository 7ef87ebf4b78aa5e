#include "Platform/Toolkit/TextChange.h"

#include <gtest/gtest.h>

namespace trellisport::platform {
namespace {

TEST(TextChange, EqualTextsDifferByNothing)
{
    EXPECT_EQ(changeBetween(u"", u""), (TextChange{0, 0, {}}));
    const TextChange none = changeBetween(u"a word", u"a word");
    EXPECT_EQ(none.removed, 0);
    EXPECT_EQ(none.inserted, QString());
}

TEST(TextChange, WhatIsTypedIsAllThatComes)
{
    EXPECT_EQ(changeBetween(u"", u"a"), (TextChange{0, 0, QStringLiteral("a")}));
    EXPECT_EQ(changeBetween(u"one three", u"one two three"),
              (TextChange{5, 0, QStringLiteral("wo t")}));
    EXPECT_EQ(changeBetween(u"aa", u"aaa"), (TextChange{2, 0, QStringLiteral("a")}));
}

TEST(TextChange, WhatIsDeletedIsAllThatGoes)
{
    EXPECT_EQ(changeBetween(u"a", u""), (TextChange{0, 1, {}}));
    EXPECT_EQ(changeBetween(u"aaa", u"aa"), (TextChange{2, 1, {}}));
    EXPECT_EQ(changeBetween(u"one two", u"two"), (TextChange{0, 4, {}}));
}

TEST(TextChange, AWordThatIsCorrectedKeepsWhatIsRightInIt)
{
    EXPECT_EQ(changeBetween(u"the tset is on", u"the test is on"),
              (TextChange{5, 2, QStringLiteral("es")}));
}

TEST(TextChange, NoPairIsTakenApart)
{
    // These have one half in common, the first or the second.
    EXPECT_EQ(changeBetween(u"\U0001f44d", u"\U0001f44e"),
              (TextChange{0, 2, QStringLiteral("\U0001f44e")}));
    EXPECT_EQ(changeBetween(u"\U0001f44d", u"\U0001044d"),
              (TextChange{0, 2, QStringLiteral("\U0001044d")}));
    EXPECT_EQ(changeBetween(u"\U0001f44d\U0001f44d", u"\U0001f44d"), (TextChange{2, 2, {}}));
}

} // namespace
} // namespace trellisport::platform
