#include "Presentation/SymbolPath.h"

#include <QRectF>

#include <gtest/gtest.h>

namespace trellisport {
namespace {

TEST(SymbolPath, EverySymbolFillsItsSquareWithoutLeavingIt)
{
    const QRectF square(0, 0, 24, 24);
    for (const char *name :
         {"chart.bar.fill", "folder.fill", "gearshape.fill", "checkmark.circle.fill", "star.fill",
          "chevron.left", "chevron.right", "magnifyingglass", "xmark.circle.fill"}) {
        const QRectF bounds = symbolPath(QString::fromLatin1(name)).boundingRect();
        EXPECT_TRUE(square.contains(bounds)) << name;
        EXPECT_GT(bounds.height(), 14) << name;
    }
}

TEST(SymbolPath, TheCheckMarkIsCutOut)
{
    const QPainterPath path = symbolPath(QStringLiteral("checkmark.circle.fill"));
    EXPECT_TRUE(path.contains(QPointF(5, 7)));
    EXPECT_FALSE(path.contains(QPointF(10.8, 15.5)));
}

TEST(SymbolPath, TheGearHasAHole)
{
    const QPainterPath path = symbolPath(QStringLiteral("gearshape.fill"));
    EXPECT_FALSE(path.contains(QPointF(12, 12)));
    EXPECT_TRUE(path.contains(QPointF(12, 6)));
}

TEST(SymbolPath, AnUnknownNameDrawsNothing)
{
    EXPECT_TRUE(symbolPath(QStringLiteral("no.such.symbol")).isEmpty());
}

} // namespace
} // namespace trellisport
