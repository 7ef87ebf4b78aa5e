#include "Presentation/CardRows.h"
#include "Platform/Platform.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QPersistentModelIndex>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

namespace trellisport {
namespace {

using ::testing::ElementsAre;

struct Entry {
    std::string head;
    std::string body;

    [[nodiscard]] const std::string &identity() const { return head; }
    friend bool operator==(const Entry &, const Entry &) = default;
};

class EntryList : public EntryRows<Entry> {
public:
    enum OwnRole { Head = FirstOwnRole, HeadShown, HeadEnds, Body, BodyStarts, BodyEnds };

    EntryList()
        : EntryRows(platform::Platform::current().textRules(), nullptr)
    {
    }

    [[nodiscard]] QString text(int row, int role) const
    {
        return data(index(row), role).toString();
    }
    [[nodiscard]] bool is(int row, int role) const { return data(index(row), role).toBool(); }

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t number) const override
    {
        return {entry(number).head, entry(number).body};
    }
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override
    {
        switch (role) {
        case Head:
            return piece(slice, 0).shown();
        case HeadShown:
            return piece(slice, 0).isShown;
        case HeadEnds:
            return piece(slice, 0).ends;
        case Body:
            return piece(slice, 1).shown();
        case BodyStarts:
            return piece(slice, 1).starts;
        case BodyEnds:
            return piece(slice, 1).ends;
        default:
            return {};
        }
    }
};

std::string lines(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "this is the line of number " + std::to_string(i) + '\n';
    }
    return text + "last";
}

class CardRowsTest : public ::testing::Test {
protected:
    [[nodiscard]] QStringList heads() const
    {
        QStringList heads;
        for (int row = 0; row < rows.rowCount(); ++row) {
            heads << rows.text(row, EntryList::Head);
        }
        return heads;
    }
    /// What stands at a row, to see where it is later.
    [[nodiscard]] QPersistentModelIndex at(int row) const { return rows.index(row); }

    EntryList rows;
    QAbstractItemModelTester tester{&rows, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(CardRowsTest, AShortEntryIsOneRow)
{
    rows.show({{"head", "body"}, {"", ""}});
    ASSERT_EQ(rows.rowCount(), 2);
    for (int row = 0; row < 2; ++row) {
        EXPECT_TRUE(rows.is(row, EntryList::First));
        EXPECT_TRUE(rows.is(row, EntryList::Last));
        EXPECT_TRUE(rows.is(row, EntryList::HeadShown));
        EXPECT_TRUE(rows.is(row, EntryList::HeadEnds));
        EXPECT_TRUE(rows.is(row, EntryList::BodyStarts));
        EXPECT_TRUE(rows.is(row, EntryList::BodyEnds));
    }
    EXPECT_EQ(rows.text(0, EntryList::Head), u"head");
    EXPECT_EQ(rows.text(0, EntryList::Body), u"body");
}

TEST_F(CardRowsTest, EveryRowGivesTheWholeOfItsEntrysTexts)
{
    const std::string head = lines(120);
    rows.show({{"before", ""}, {head, "body\r\nend"}});
    ASSERT_EQ(rows.rowCount(), 4);
    for (int row = 1; row < 4; ++row) {
        EXPECT_EQ(rows.wholeText(row, 0), QString::fromStdString(head));
        EXPECT_EQ(rows.wholeText(row, 1), u"body\nend");
    }
    EXPECT_EQ(rows.wholeText(0, 0), u"before");
    for (const auto &[row, number] : {std::pair(-1, 0), {4, 0}, {0, -1}, {0, 3}}) {
        EXPECT_EQ(rows.wholeText(row, number), u"") << row << ", " << number;
    }
}

TEST_F(CardRowsTest, EveryRowGivesAllOfItsCardToBeCopied)
{
    const std::string head = lines(120);
    rows.show({{"before", ""}, {head, "body\r\nend"}, {"", ""}});
    ASSERT_EQ(rows.rowCount(), 5);
    EXPECT_EQ(rows.cardText(0), u"before");
    for (int row = 1; row < 4; ++row) {
        EXPECT_EQ(rows.cardText(row), QString::fromStdString(head + "\n\nbody\nend"));
    }
    for (const int row : {4, -1, 5}) {
        EXPECT_EQ(rows.cardText(row), u"") << row;
    }
}

TEST_F(CardRowsTest, EveryRowKnowsWhereTheCardsAroundItsOwnBegin)
{
    rows.show({{"before", ""}, {lines(120), ""}, {"behind", ""}});
    ASSERT_EQ(rows.rowCount(), 5);
    for (int row = 1; row < 4; ++row) {
        EXPECT_EQ(rows.cardRow(row, -1), 0);
        EXPECT_EQ(rows.cardRow(row, 0), 1);
        EXPECT_EQ(rows.cardRow(row, 1), 4);
        EXPECT_EQ(rows.cardRow(row, 2), -1);
        EXPECT_EQ(rows.cardRow(row, -2), -1);
    }
    EXPECT_EQ(rows.cardRow(-1, 1), -1);
    EXPECT_EQ(rows.cardRow(5, -1), -1);
    EXPECT_EQ(EntryList().cardRow(0, 0), -1);
}

TEST_F(CardRowsTest, ALongEntryIsCutWithinItsTexts)
{
    const std::string head = lines(120);
    const std::string body = lines(130);
    rows.show({{head, body}});
    ASSERT_EQ(rows.rowCount(), 5); // 50, 50 and the rest of the head; two more of the body

    QStringList heads;
    QStringList bodies;
    for (int row = 0; row < rows.rowCount(); ++row) {
        EXPECT_EQ(rows.is(row, EntryList::First), row == 0);
        EXPECT_EQ(rows.is(row, EntryList::Last), row == 4);
        EXPECT_EQ(rows.is(row, EntryList::HeadShown), row <= 2);
        EXPECT_EQ(rows.is(row, EntryList::HeadEnds), row == 2);
        EXPECT_EQ(rows.is(row, EntryList::BodyStarts), row == 2);
        EXPECT_EQ(rows.is(row, EntryList::BodyEnds), row == 4);
        heads << rows.text(row, EntryList::Head);
        bodies << rows.text(row, EntryList::Body);
    }
    EXPECT_EQ(heads.mid(0, 3).join(u'\n'), QString::fromStdString(head));
    EXPECT_EQ(bodies.mid(2).join(u'\n'), QString::fromStdString(body));
}

TEST_F(CardRowsTest, APlaceOfAnEntryIsItsRowsNotItsContent)
{
    rows.show({{"same", ""}, {"same", ""}, {"same", ""}});
    EXPECT_EQ(rows.rowCount(), 3);
}

TEST_F(CardRowsTest, AListShownAgainMovesNothing)
{
    rows.show({{"a", ""}, {lines(200), "b"}, {"c", ""}});
    const QSignalSpy removed(&rows, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy inserted(&rows, &QAbstractItemModel::rowsInserted);
    rows.show({{"a", ""}, {lines(200), "b"}, {"c", ""}});
    EXPECT_EQ(removed.size(), 0);
    EXPECT_EQ(inserted.size(), 0);
    EXPECT_EQ(rows.text(rows.rowCount() - 1, EntryList::Head), u"c");
}

TEST_F(CardRowsTest, AChangeLeavesTheEntriesAroundItWhereTheyAre)
{
    rows.show({{"a", ""}, {lines(200), ""}, {"c", ""}, {"d", ""}});
    const int before = rows.rowCount();
    const QSignalSpy removed(&rows, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy inserted(&rows, &QAbstractItemModel::rowsInserted);
    rows.show({{"a", ""}, {"b", ""}, {"b2", ""}, {"c", ""}, {"d", ""}});
    ASSERT_EQ(removed.size(), 1);
    EXPECT_EQ(removed[0][1], 1);
    EXPECT_EQ(removed[0][2], before - 3);
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted[0][1], 1);
    EXPECT_EQ(inserted[0][2], 2);
    EXPECT_THAT(heads(), ElementsAre(u"a", u"b", u"b2", u"c", u"d"));
}

TEST_F(CardRowsTest, AnEntryBetweenTwoThatChangeStaysWhereItIs)
{
    rows.show({{"1", "pending"}, {"2", "pending"}, {"3", "pending"}});
    const QPersistentModelIndex second = at(1);
    rows.show({{"1", "answered"}, {"2", "pending"}, {"3", "answered"}});
    ASSERT_TRUE(second.isValid());
    EXPECT_EQ(second.row(), 1);
    EXPECT_THAT(heads(), ElementsAre(u"1", u"2", u"3"));
    EXPECT_EQ(rows.text(0, EntryList::Body), u"answered");
}

TEST_F(CardRowsTest, AnEntryStaysAmongManyNewOnesAndOnesThatGo)
{
    rows.show({{"gone", ""}, {"1", ""}, {"2", lines(200)}, {"3", ""}, {"end", "old"}});
    const QPersistentModelIndex first = at(1);
    const QPersistentModelIndex secondsEnd = at(5);
    ASSERT_TRUE(secondsEnd.data(EntryList::Last).toBool());
    std::vector<Entry> entries(100);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].head = "new " + std::to_string(i);
    }
    entries.insert(entries.end(), {{"1", ""}, {"more", ""}, {"2", lines(200)}, {"end", "new"}});
    rows.show(entries);
    ASSERT_TRUE(first.isValid() && secondsEnd.isValid());
    EXPECT_EQ(first.row(), 100);
    EXPECT_EQ(secondsEnd.row(), 105);
    EXPECT_TRUE(secondsEnd.data(EntryList::Last).toBool());
}

TEST_F(CardRowsTest, WhenOneEntryMovesTheOthersStay)
{
    rows.show({{"1", ""}, {"2", ""}, {"3", ""}, {"4", ""}});
    const std::vector<QPersistentModelIndex> stay{at(0), at(1), at(2)};
    rows.show({{"4", ""}, {"1", ""}, {"2", ""}, {"3", ""}});
    for (std::size_t i = 0; i < stay.size(); ++i) {
        EXPECT_EQ(stay[i].row(), static_cast<int>(i) + 1);
    }
    EXPECT_THAT(heads(), ElementsAre(u"4", u"1", u"2", u"3"));
}

TEST_F(CardRowsTest, ShowsEveryListAfterEveryOther)
{
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::vector<Entry> entries(random() % 12);
        QStringList expected;
        for (Entry &entry : entries) {
            entry.head = std::string(1, static_cast<char>('a' + random() % 6));
            entry.body = random() % 8 == 0 ? lines(70) : "";
            expected << QString::fromStdString(entry.head);
            if (!entry.body.empty()) {
                expected << QString(); // the card's second row
            }
        }
        rows.show(entries);
        ASSERT_EQ(heads(), expected) << "round " << round;
    }
}

TEST(CardRows, AHundredThousandEntriesOfWhichEverySecondHasChangedAreShownAtOnce)
{
    std::vector<Entry> entries(100'000);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].head = std::to_string(i);
    }
    EntryList rows;
    rows.show(entries);
    for (std::size_t i = 0; i < entries.size(); i += 2) {
        entries[i].body = "changed";
    }
    QElapsedTimer timer;
    timer.start();
    rows.show(entries);
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_EQ(rows.rowCount(), 100'000);
    EXPECT_EQ(rows.text(4, EntryList::Body), u"changed");
}

TEST(CardRows, AHundredThousandEntriesOfOneIdentityAreShownAtOnce)
{
    std::vector<Entry> entries(100'000);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].body = std::to_string(i);
    }
    EntryList rows;
    rows.show(entries);
    for (Entry &entry : entries) {
        entry.body += '+';
    }
    QElapsedTimer timer;
    timer.start();
    rows.show(entries);
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_EQ(rows.text(4, EntryList::Body), u"4+");
}

TEST_F(CardRowsTest, AListMayGrowShrinkAndEmpty)
{
    rows.show({{"a", ""}, {"a", ""}});
    rows.show({{"a", ""}, {"a", ""}, {"a", ""}});
    EXPECT_EQ(rows.rowCount(), 3);
    rows.show({{"a", ""}});
    EXPECT_EQ(rows.rowCount(), 1);
    rows.show(std::vector<Entry>());
    EXPECT_EQ(rows.rowCount(), 0);
    rows.show({{"b", ""}});
    EXPECT_EQ(rows.text(0, EntryList::Head), u"b");
}

} // namespace
} // namespace trellisport
