#include "Presentation/Colors.h"
#include "QmlSupport/QmlScene.h"

#include <QQuickTextDocument>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

#include <gtest/gtest.h>

#include <cmath>

namespace trellisport::test {
namespace {

const QByteArray form = R"(
import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    property string kept
    property var leaving: []

    MultilineField {
        objectName: "multiline"
        width: 300
        text: root.kept
        placeholder: "Type your answer..."
        onEdited: text => root.kept = text
        onTabbed: forward => root.leaving = [...root.leaving, forward]
    }
}
)";

class MultilineFieldTest : public ::testing::Test {
protected:
    [[nodiscard]] QQuickItem *whole() const { return scene.item(QStringLiteral("multiline")); }
    [[nodiscard]] QQuickItem *field() const { return scene.item(QStringLiteral("field")); }
    [[nodiscard]] QString kept() const { return scene.root()->property("kept").toString(); }
    void keep(const QString &text) { scene.root()->setProperty("kept", text); }
    void type(const QString &text)
    {
        field()->forceActiveFocus();
        for (const QChar c : text) {
            QTest::keyClick(&scene.window(),
                            c == u'\n' ? Qt::Key_Return : Qt::Key(c.toUpper().unicode()),
                            Qt::NoModifier);
        }
    }
    [[nodiscard]] bool eventuallyIsHigh(double height) const
    {
        return eventually([&] { return std::abs(whole()->height() - height) < 0.5; });
    }

    QmlScene scene{form};
};

TEST_F(MultilineFieldTest, StartsThreeLinesHighAndShowsItsPlaceholder)
{
    EXPECT_EQ(whole()->height(), 3 * 16 + 20);
    EXPECT_TRUE(scene.has(QStringLiteral("placeholder")));
    EXPECT_EQ(colorOf(scene.item(QStringLiteral("placeholder"))), colors::placeholderText());
    QQuickItem *ground = scene.item(QStringLiteral("fieldGround"));
    EXPECT_EQ(colorOf(ground), colors::innerSurface());
    EXPECT_EQ(ground->property("radius"), 8);
    EXPECT_EQ(ground->property("outlineColor").value<QColor>(), colors::hairline());
    EXPECT_EQ(fontOf(field()).pixelSize(), 12);
    EXPECT_EQ(sceneRect(scene.item(QStringLiteral("placeholder"))).topLeft(), QPointF(10, 10));
}

TEST_F(MultilineFieldTest, GrowsToSixLinesAndThenScrolls)
{
    keep(QStringLiteral("1\n2\n3\n4"));
    EXPECT_TRUE(eventuallyIsHigh(4 * 16 + 20));
    keep(QStringLiteral("1\n2\n3\n4\n5\n6\n7\n8\n9"));
    EXPECT_TRUE(eventuallyIsHigh(6 * 16 + 20));
    EXPECT_GT(field()->height(), whole()->height());
    keep({});
    EXPECT_TRUE(eventuallyIsHigh(3 * 16 + 20));
}

TEST_F(MultilineFieldTest, TheLineThatIsTypedOnStaysInView)
{
    type(QStringLiteral("a\nb\nc\nd\ne\nf\ng\nh"));
    EXPECT_TRUE(eventually([&] {
        const QRectF cursor =
            field()->mapRectToScene(field()->property("cursorRectangle").toRectF());
        return cursor.top() >= 0 && cursor.bottom() <= whole()->height();
    }));
    EXPECT_EQ(kept(), u"a\nb\nc\nd\ne\nf\ng\nh");
}

TEST_F(MultilineFieldTest, TypingInTheMiddleKeepsTheCursor)
{
    keep(QStringLiteral("ad"));
    field()->setProperty("cursorPosition", 1);
    type(QStringLiteral("bc"));
    EXPECT_EQ(kept(), u"abcd");
    EXPECT_EQ(field()->property("cursorPosition"), 3);
}

TEST_F(MultilineFieldTest, KeepsNoBreakSpacesAndLineBreaksAsTheyWereTyped)
{
    const auto *document = field()->property("textDocument").value<QQuickTextDocument *>();
    QTextCursor(document->textDocument()).insertText(QStringLiteral("a\u00A0b\nc "));
    EXPECT_EQ(kept(), u"a\u00A0b\nc ");
}

TEST_F(MultilineFieldTest, TabLeavesItAndChangesNothing)
{
    type(QStringLiteral("a"));
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    QTest::keyClick(&scene.window(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(scene.root()->property("leaving").toList(), (QVariantList{true, false}));
    EXPECT_EQ(kept(), u"a");
}

TEST_F(MultilineFieldTest, ShowsThatTheKeyboardBroughtTheFocus)
{
    EXPECT_FALSE(field()->property("visualFocus").toBool());
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    EXPECT_TRUE(field()->hasActiveFocus());
    EXPECT_TRUE(field()->property("visualFocus").toBool());
}

} // namespace
} // namespace trellisport::test
