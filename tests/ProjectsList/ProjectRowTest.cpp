#include "Presentation/Colors.h"
#include "ProjectsList/ProjectRowData.h"
#include "QmlSupport/QmlScene.h"

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

ProjectRowData fullRow()
{
    ProjectRowData row;
    row.id = QStringLiteral("p-1");
    row.hasRefNumber = true;
    row.refNumber = QStringLiteral("TR-0042");
    row.title = QStringLiteral("Bakery site");
    row.status = QStringLiteral("bid_placed");
    row.amount = QStringLiteral("$1500");
    row.owner = QStringLiteral("bakery_owner");
    row.marketplaceNumber = QStringLiteral("FL#39201234");
    return row;
}

class ProjectRowTest : public ::testing::Test {
protected:
    void show(const ProjectRowData &row, int width = 340)
    {
        scene = std::make_unique<QmlScene>(
            QStringLiteral("ProjectsList"), QStringLiteral("ProjectRow"),
            QVariantMap{{QStringLiteral("project"), QVariant::fromValue(row)}}, QSize(width, 100));
    }
    QQuickItem *item(const char *name) const { return scene->item(QString::fromLatin1(name)); }
    QRectF place(const char *name) const { return sceneRect(item(name)); }

    std::unique_ptr<QmlScene> scene;
};

TEST_F(ProjectRowTest, ShowsEverythingInItsOrder)
{
    show(fullRow());
    EXPECT_THAT(scene->texts(), ElementsAre(u"TR-0042", u"Bakery site", u"Bid Placed", u"$1500",
                                            u"bakery_owner", u"FL#39201234"));
}

TEST_F(ProjectRowTest, ShowsOnlyWhatThereIs)
{
    ProjectRowData row;
    row.title = QStringLiteral("Bare");
    row.status = QStringLiteral("discovered");
    row.marketplaceNumber = QStringLiteral("FL#0");
    show(row);
    EXPECT_THAT(scene->texts(), ElementsAre(u"Bare", u"Discovered", u"FL#0"));
    EXPECT_FALSE(scene->has(QStringLiteral("refTag")));
    EXPECT_EQ(place("projectTitle").x(), 0);
}

TEST_F(ProjectRowTest, TheReferenceNumberIsATagInTheAccentColour)
{
    show(fullRow());
    QQuickItem *tag = item("refTag");
    QQuickItem *number = scene->item(QStringLiteral("badgeLabel"), tag);
    EXPECT_EQ(tag->property("radius"), 4);
    EXPECT_EQ(colorOf(tag), Colors::faded(colors::accent(), 0.15));
    EXPECT_EQ(colorOf(number), colors::accent());
    EXPECT_EQ(fontOf(number).pixelSize(), 11);
    EXPECT_EQ(fontOf(number).weight(), QFont::DemiBold);
    EXPECT_EQ(fontOf(number).families().value(0), QStringLiteral("JetBrains Mono"));
    EXPECT_EQ(number->position(), QPointF(5, 2));
    EXPECT_EQ(textOf(number), u"TR-0042");
    EXPECT_EQ(tag->width(), number->width() + 10);
    EXPECT_EQ(tag->height(), number->height() + 4);
    EXPECT_EQ(place("projectTitle").x() - place("refTag").right(), 6);
}

TEST_F(ProjectRowTest, TextsHaveTheirFontsAndColours)
{
    show(fullRow());
    EXPECT_EQ(fontOf(item("projectTitle")).pixelSize(), 15);
    EXPECT_EQ(fontOf(item("projectTitle")).weight(), QFont::Medium);
    EXPECT_EQ(colorOf(item("projectTitle")), colors::white());
    for (const char *name : {"amount", "owner"}) {
        EXPECT_EQ(fontOf(item(name)).pixelSize(), 12) << name;
        EXPECT_EQ(colorOf(item(name)), colors::gray()) << name;
    }
    EXPECT_EQ(fontOf(item("marketplaceNumber")).pixelSize(), 11);
    EXPECT_EQ(colorOf(item("marketplaceNumber")), colors::dimText());
}

TEST_F(ProjectRowTest, ItsTwoLinesAreSixApartWithFourAboveAndBelow)
{
    show(fullRow());
    EXPECT_EQ(place("projectTitle").top(), 4);
    EXPECT_EQ(place("statusBadge").top() - place("projectTitle").bottom(), 6);
    EXPECT_EQ(scene->root()->implicitHeight() - place("statusBadge").bottom(), 4);
    EXPECT_NEAR(place("statusBadge").center().y(), place("owner").center().y(), 0.5);
}

TEST_F(ProjectRowTest, TheFactsAreEightApartAndTheNumberStandsAtTheTrailingEdge)
{
    show(fullRow());
    EXPECT_EQ(place("statusBadge").left(), 0);
    EXPECT_EQ(place("amount").left() - place("statusBadge").right(), 8);
    EXPECT_EQ(place("owner").left() - place("amount").right(), 8);
    EXPECT_EQ(place("marketplaceNumber").right(), 340);
}

TEST_F(ProjectRowTest, WithoutAnAmountTheOwnerFollowsTheBadge)
{
    ProjectRowData row = fullRow();
    row.amount.clear();
    show(row);
    EXPECT_EQ(place("owner").left() - place("statusBadge").right(), 8);
    EXPECT_FALSE(scene->has(QStringLiteral("amount")));
}

TEST_F(ProjectRowTest, ALongTitleTakesTwoLinesAndNoMore)
{
    ProjectRowData row = fullRow();
    row.title = QStringLiteral("word ").repeated(100);
    show(row);
    EXPECT_EQ(item("projectTitle")->property("maximumLineCount"), 2);
    EXPECT_EQ(item("projectTitle")->property("lineCount"), 2);
    EXPECT_EQ(item("projectTitle")->height(), 40);
    EXPECT_TRUE(item("projectTitle")->property("truncated").toBool());
    EXPECT_EQ(place("refTag").center().y(), place("projectTitle").center().y());
}

TEST_F(ProjectRowTest, OverlongFactsAreShortenedAndNeverOverlap)
{
    ProjectRowData row = fullRow();
    row.refNumber = QString(200, QLatin1Char('R'));
    row.status = QStringLiteral("answers_received");
    row.amount = QStringLiteral("$") + QString(308, QLatin1Char('9'));
    row.owner = QString(200, QLatin1Char('o'));
    row.marketplaceNumber = QStringLiteral("FL#-9223372036854775808");
    show(row, 236);
    EXPECT_LE(place("refTag").right(), 236 / 2.0);
    EXPECT_LE(place("projectTitle").right(), 236);
    for (const char *squeezed : {"amount", "owner"}) {
        EXPECT_TRUE(place(squeezed).width() == 0 ||
                    place(squeezed).right() <= place("marketplaceNumber").left())
            << squeezed;
    }
    EXPECT_LE(place("marketplaceNumber").right(), 236);
    EXPECT_GE(place("marketplaceNumber").left(), place("statusBadge").right());
}

TEST_F(ProjectRowTest, ATitleWrittenFromRightToLeftReadsRight)
{
    ProjectRowData row = fullRow();
    row.hasRefNumber = false;
    row.title = QString::fromUtf8("\u05d0\u05ea\u05e8 \u05dc\u05de\u05d0\u05e4\u05d9\u05d4");
    show(row);
    EXPECT_EQ(item("projectTitle")->property("effectiveHorizontalAlignment").toInt(),
              Qt::AlignRight);
}

TEST_F(ProjectRowTest, MarkupInATitleIsShownAsItStands)
{
    ProjectRowData row = fullRow();
    row.title = QStringLiteral("<b>bold</b>");
    show(row);
    EXPECT_NE(scene->text(QStringLiteral("<b>bold</b>")), nullptr);
    EXPECT_EQ(item("projectTitle")->property("textFormat").toInt(), Qt::PlainText);
}

} // namespace
} // namespace trellisport::test
