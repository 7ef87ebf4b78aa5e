#include "Platform/Platform.h"
#include "Presentation/CardRows.h"
#include "Presentation/Colors.h"
#include "QmlSupport/QmlScene.h"

#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellisport::test {
namespace {

class TextRows : public EntryRows<std::string> {
public:
    TextRows()
        : EntryRows(platform::Platform::current().textRules(), nullptr)
    {
    }
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override
    {
        return withCommonRoles({{FirstOwnRole, "body"}});
    }

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t number) const override { return {entry(number)}; }
    [[nodiscard]] QVariant value(const Slice &slice, int /*role*/) const override
    {
        return piece(slice, 0).shown();
    }
};

const QByteArray listOfTexts = R"(
import QtQuick
import TrellisportManager.Presentation

CardList {
    id: root

    required property var rows

    objectName: "list"
    model: root.rows
    delegate: CardRow {
        id: row

        required property string body

        objectName: "row"
        contentHeight: bodyText.height

        StyledText {
            id: bodyText

            objectName: "body"
            width: parent.width
            text: row.body
            textStyle: Typography.Caption
        }
    }
}
)";

class CardListTest : public ::testing::Test {
protected:
    std::unique_ptr<QmlScene> show(std::vector<std::string> texts, QSize size = {390, 844})
    {
        rows.show(std::move(texts));
        return std::make_unique<QmlScene>(
            listOfTexts,
            QVariantMap{{QStringLiteral("rows"),
                         QVariant::fromValue(static_cast<QAbstractItemModel *>(&rows))}},
            size);
    }
    static std::string lines(int count)
    {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += "this is the line of number " + std::to_string(i) + '\n';
        }
        return text + "end";
    }

    TextRows rows;
};

TEST_F(CardListTest, CardsStandInsetAndApart)
{
    const auto scene = show({"one", "two"});
    const auto cards = scene->items(QStringLiteral("card"));
    ASSERT_EQ(cards.size(), 2);
    EXPECT_EQ(sceneRect(cards[0]), QRectF(16, 16, 390 - 32, 16 + 16 + 16));
    EXPECT_EQ(sceneRect(cards[1]).top(), sceneRect(cards[0]).bottom() + 12);
    EXPECT_EQ(sceneRect(scene->text(QStringLiteral("one"))).topLeft(), QPointF(32, 32));
}

TEST_F(CardListTest, AListThatStopsScrollingKeepsTheKeyboardUntilItIsLeft)
{
    const auto scene = show({lines(170)});
    QQuickItem *list = scene->item(QStringLiteral("list"));
    EXPECT_TRUE(list->activeFocusOnTab());
    list->forceActiveFocus(Qt::TabFocusReason);
    rows.show({"one"});
    (void)scene->picture();
    EXPECT_TRUE(list->hasActiveFocus());
    list->setFocus(false);
    EXPECT_FALSE(list->activeFocusOnTab());
}

TEST_F(CardListTest, ACardOverSeveralRowsIsOneGround)
{
    const auto scene = show({lines(170), "next"}, {390, 4000});
    const auto cards = scene->items(QStringLiteral("card"));
    ASSERT_EQ(cards.size(), 4 + 1);
    for (int i = 1; i < 4; ++i) {
        EXPECT_EQ(sceneRect(cards[i]).top(), sceneRect(cards[i - 1]).bottom());
    }
    EXPECT_EQ(sceneRect(cards[0]).height() + sceneRect(cards[1]).height() +
                  sceneRect(cards[2]).height() + sceneRect(cards[3]).height(),
              171 * 16 + 32);
    // Ground and outline go on where the rows meet; the corners are round at the ends alone.
    const QImage picture = scene->picture();
    const double scale = picture.devicePixelRatio();
    const auto at = [&](double x, double y) {
        return picture.pixelColor((QPointF(x, y) * scale).toPoint());
    };
    for (int i = 1; i < 4; ++i) {
        const double seam = sceneRect(cards[i]).top();
        for (const double y : {seam - 1, seam, seam + 1}) {
            EXPECT_EQ(at(100, y), colors::surface());
            EXPECT_EQ(at(16, y), colors::hairline());
            EXPECT_EQ(at(15, y), QColor(Qt::black));
        }
    }
    EXPECT_EQ(at(17, 17), QColor(Qt::black));
    EXPECT_EQ(at(17, sceneRect(cards[3]).bottom() - 2), QColor(Qt::black));
}

TEST_F(CardListTest, OfAHundredThousandCardsOnlyThoseNearTheWindowExist)
{
    const auto scene = show(std::vector<std::string>(100'000, "an entry"));
    EXPECT_EQ(scene->root()->property("count"), 100'000);
    EXPECT_LT(scene->items(QStringLiteral("row")).size(), 60);
    QMetaObject::invokeMethod(scene->root(), "positionViewAtEnd");
    (void)scene->picture();
    EXPECT_LT(scene->items(QStringLiteral("row")).size(), 60);
}

TEST_F(CardListTest, OfATextOfMegabytesOnlyThePiecesNearTheWindowExist)
{
    const auto scene = show({lines(500'000)});
    EXPECT_GT(scene->root()->property("count").toInt(), 1000);
    const auto pieces = scene->items(QStringLiteral("body"));
    EXPECT_LT(pieces.size(), 10);
    for (QQuickItem *piece : pieces) {
        EXPECT_LE(textOf(piece).size(), 2000);
    }
}

TEST_F(CardListTest, KeepsItsPlaceWhenTheListIsShownAgain)
{
    std::vector<std::string> texts;
    texts.reserve(200);
    for (int i = 0; i < 200; ++i) {
        texts.push_back("entry " + std::to_string(i));
    }
    const auto scene = show(texts);
    scene->root()->setProperty("contentY", 3000);
    (void)scene->picture();
    const auto placeOfEntry60 = [&] {
        for (QQuickItem *text : scene->items(QStringLiteral("body"))) {
            if (textOf(text) == QLatin1String("entry 60")) {
                return sceneRect(text).top();
            }
        }
        return -1.0;
    };
    const double before = placeOfEntry60();
    ASSERT_GT(before, 0);
    texts.push_back("one more");
    rows.show(texts);
    (void)scene->picture();
    EXPECT_EQ(scene->root()->property("contentY"), 3000);
    EXPECT_EQ(placeOfEntry60(), before);
}

TEST_F(CardListTest, KeysScrollIt)
{
    const auto scene = show(std::vector<std::string>(200, "an entry"));
    const auto place = [&] { return scene->root()->property("contentY").toDouble(); };
    EXPECT_EQ(place(), -16);
    QTest::keyClick(&scene->window(), Qt::Key_Tab);
    EXPECT_TRUE(scene->has(QStringLiteral("scrollFocus")));
    QTest::keyClick(&scene->window(), Qt::Key_Down);
    EXPECT_EQ(place(), -16 + 48);
    QTest::keyClick(&scene->window(), Qt::Key_PageDown);
    EXPECT_NEAR(place(), 32 + 0.9 * 844, 1);
    QTest::keyClick(&scene->window(), Qt::Key_PageUp);
    QTest::keyClick(&scene->window(), Qt::Key_Up);
    QTest::keyClick(&scene->window(), Qt::Key_Up);
    EXPECT_EQ(place(), -16);
    QTest::keyClick(&scene->window(), Qt::Key_End);
    EXPECT_TRUE(scene->root()->property("atYEnd").toBool());
    QTest::keyClick(&scene->window(), Qt::Key_Home);
    EXPECT_TRUE(scene->root()->property("atYBeginning").toBool());
}

TEST_F(CardListTest, ATitledCardHasItsTitleAboveItsFirstRowAlone)
{
    rows.show({lines(70)});
    QByteArray titled = listOfTexts;
    titled.replace("objectName: \"row\"", "objectName: \"row\"\n title: \"Plan\"\n titled: true");
    const QmlScene scene(
        titled,
        QVariantMap{{QStringLiteral("rows"),
                     QVariant::fromValue(static_cast<QAbstractItemModel *>(&rows))}},
        {390, 4000});
    QQuickItem *title = scene.text(QStringLiteral("Plan"));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(sceneRect(title).topLeft(), QPointF(32, 32));
    EXPECT_EQ(fontOf(title).weight(), QFont::Bold);
    EXPECT_EQ(fontOf(title).pixelSize(), 12);
    EXPECT_EQ(colorOf(title), colors::white());
    EXPECT_EQ(scene.texts().count(QStringLiteral("Plan")), 1);
    const auto bodies = scene.items(QStringLiteral("body"));
    ASSERT_EQ(bodies.size(), 2);
    EXPECT_EQ(sceneRect(bodies[0]).top(), 32 + 16 + 8);
    EXPECT_EQ(sceneRect(bodies[1]).top(), sceneRect(bodies[0]).bottom());
}

TEST_F(CardListTest, AWideWindowKeepsAReadableColumnInTheMiddle)
{
    const auto scene = show({"one"}, {1280, 800});
    const QRectF card = sceneRect(scene->items(QStringLiteral("card")).first());
    EXPECT_EQ(card.left(), (1280 - 700) / 2 + 16);
    EXPECT_EQ(card.width(), 700 - 32);
}

TEST_F(CardListTest, AWordWiderThanTheCardIsBrokenWithinIt)
{
    const auto scene = show({std::string(300, 'W')}, {320, 568});
    QQuickItem *text = scene->items(QStringLiteral("body")).first();
    EXPECT_GT(text->property("lineCount").toInt(), 3);
    EXPECT_LE(text->property("contentWidth").toDouble(), text->width());
}

} // namespace
} // namespace trellisport::test
