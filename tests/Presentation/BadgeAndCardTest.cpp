#include "Presentation/Colors.h"
#include "QmlSupport/QmlScene.h"

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

const QString presentation = QStringLiteral("Presentation");

QmlScene *badge(const char *status)
{
    return new QmlScene(presentation, QStringLiteral("StatusBadge"),
                        {{QStringLiteral("status"), QString::fromLatin1(status)}});
}

TEST(StatusBadge, ShowsItsLabelInItsColourOnAFaintGroundOfIt)
{
    const std::unique_ptr<QmlScene> scene(badge("bid_placed"));
    QQuickItem *label = scene->text(QStringLiteral("Bid Placed"));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(colorOf(label), colors::accent());
    EXPECT_EQ(fontOf(label).pixelSize(), 10);
    EXPECT_EQ(fontOf(label).weight(), QFont::Medium);
    EXPECT_EQ(label->position(), QPointF(6, 2));
    EXPECT_EQ(colorOf(scene->root()), Colors::faded(colors::accent(), 0.2));
    EXPECT_EQ(scene->root()->property("radius"), 4);
}

TEST(StatusBadge, IsAsWideAsItsText)
{
    const std::unique_ptr<QmlScene> scene(badge("awarded"));
    QQuickItem *label = scene->text(QStringLiteral("Awarded"));
    ASSERT_NE(label, nullptr);
    EXPECT_DOUBLE_EQ(scene->root()->implicitWidth(), label->implicitWidth() + 12);
    EXPECT_DOUBLE_EQ(scene->root()->implicitHeight(), label->height() + 4);
    EXPECT_EQ(colorOf(label), colors::green());
}

TEST(CardView, FramesItsTitleAndContent)
{
    QmlScene scene(presentation, QStringLiteral("CardView"),
                   {{QStringLiteral("title"), QStringLiteral("Description")}});
    QQuickItem *title = scene.text(QStringLiteral("Description"));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(sceneRect(title).topLeft(), QPointF(16, 16));
    EXPECT_EQ(sceneRect(title).width(), 390 - 32);
    EXPECT_EQ(fontOf(title).pixelSize(), 12);
    EXPECT_EQ(fontOf(title).weight(), QFont::Bold);
    EXPECT_EQ(colorOf(title), colors::white());
    EXPECT_EQ(colorOf(scene.root()), colors::surface());
    EXPECT_EQ(scene.root()->property("radius"), 10);
    EXPECT_EQ(scene.root()->property("outlineWidth"), 1);
    EXPECT_EQ(scene.root()->property("outlineColor").value<QColor>(), colors::hairline());
}

TEST(CardView, WithAnEmptyTitleKeepsTheTitlesLine)
{
    QmlScene scene(QByteArray(R"(
        import QtQuick
        import TrellisportManager.Presentation

        CardView {
            title: ""
            content: Item { objectName: "content"; implicitHeight: 10 }
        }
    )"));
    EXPECT_EQ(scene.item(QStringLiteral("cardTitle"))->height(), 16);
    EXPECT_EQ(sceneRect(scene.item(QStringLiteral("content"))).y(), 16 + 16 + 8);
    EXPECT_EQ(scene.root()->implicitHeight(), 16 + 16 + 8 + 10 + 16);
}

} // namespace
} // namespace trellisport::test
