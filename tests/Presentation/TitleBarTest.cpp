#include "QmlSupport/QmlScene.h"

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

TEST(TitleBar, ShowsTheTitleOfThePreviousScreenWhole)
{
    QmlScene scene(QStringLiteral("Presentation"), QStringLiteral("TitleBar"),
                   {{QStringLiteral("title"), QStringLiteral("Project")},
                    {QStringLiteral("backTitle"), QStringLiteral("Projects")}},
                   {390, 44});
    QQuickItem *label = scene.text(QStringLiteral("Projects"));
    ASSERT_NE(label, nullptr);
    EXPECT_FALSE(label->property("truncated").toBool());
    EXPECT_GE(label->width(), label->implicitWidth());
}

TEST(TitleBar, ShowsItAlsoWhenItComesLater)
{
    QmlScene scene(QStringLiteral("Presentation"), QStringLiteral("TitleBar"), {}, {390, 44});
    scene.root()->setProperty("backTitle", QStringLiteral("Projects"));
    QQuickItem *label = scene.text(QStringLiteral("Projects"));
    ASSERT_NE(label, nullptr);
    EXPECT_FALSE(label->property("truncated").toBool());
}

} // namespace
} // namespace trellisport::test
