#include "Presentation/CardRows.h"
#include "Platform/Platform.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace trellisport {
namespace {

using ::testing::ElementsAre;

struct Entry {
    std::string head;
    std::string body;

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
    QStringList heads;
    for (int row = 0; row < rows.rowCount(); ++row) {
        heads << rows.text(row, EntryList::Head);
    }
    EXPECT_THAT(heads, ElementsAre(u"a", u"b", u"b2", u"c", u"d"));
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
