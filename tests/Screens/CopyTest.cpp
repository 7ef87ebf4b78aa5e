#include "AllScreens.h"
#include "Geometry.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

class Copy : public AllScreens {
protected:
    void SetUp() override
    {
        fill();
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    }
    static QString copied() { return QGuiApplication::clipboard()->text(); }
    QPoint centre(const QQuickItem *item) const { return sceneRect(item).center().toPoint(); }
    void rightClick(QPoint place)
    {
        QTest::mouseClick(&scene->window(), Qt::RightButton, Qt::NoModifier, place);
    }
    QQuickItem *menuButton() const { return find(scene->window().contentItem()); }
    static QQuickItem *find(QQuickItem *item)
    {
        if (item->objectName() == QLatin1String("copyButton") && item->isVisible()) {
            return item;
        }
        for (QQuickItem *child : item->childItems()) {
            if (QQuickItem *found = find(child)) {
                return found;
            }
        }
        return nullptr;
    }
    void choose()
    {
        ASSERT_TRUE(eventually([&] { return menuButton() != nullptr; })) << "no menu";
        scene->tap(menuButton());
        EXPECT_TRUE(eventually([&] { return menuButton() == nullptr; })) << "it stays";
    }
    void chooseByKey()
    {
        ASSERT_TRUE(eventually([&] { return menuButton() != nullptr; })) << "no menu";
        QTest::keyClick(&scene->window(), Qt::Key_Return);
        EXPECT_TRUE(eventually([&] { return menuButton() == nullptr; })) << "it stays";
    }
    void copyText(const char *text)
    {
        rightClick(centre(scene->text(QString::fromUtf8(text))));
        choose();
    }
};

TEST_F(Copy, ARightClickOffersTheTextsOfCards)
{
    const struct {
        int tab;
        const char *text;
    } cases[] = {
        {0, "A site for a bakery in town."},
        {1, "1. Which pages, and in which languages?"},
        {1, "Four pages, in two languages."},
        {2, "Of course"},
        {3, "I have done many such sites."},
        {4, "Discovered"},
        {4, "A bakery's web site with orders"},
        {5, "npm run build -- --production"},
        {6, "Colour?"},
        {6, "Blue"},
        {7, "3 files changed"},
        {7, "+ orders are kept for a year"},
    };
    show();
    openTab(0);
    for (const auto &each : cases) {
        SCOPED_TRACE(each.text);
        showWorkspaceTab(each.tab);
        settle();
        copyText(each.text);
        EXPECT_EQ(copied(), QString::fromUtf8(each.text));
    }
}

TEST_F(Copy, ALongPressOffersTheSame)
{
    show();
    openTab(5);
    const QPoint place = centre(scene->text(QStringLiteral("done")));
    QTest::mousePress(&scene->window(), Qt::LeftButton, Qt::NoModifier, place);
    EXPECT_TRUE(eventually([&] { return menuButton() != nullptr; }));
    QTest::mouseRelease(&scene->window(), Qt::LeftButton, Qt::NoModifier, place);
    choose();
    EXPECT_EQ(copied(), u"done");
}

TEST_F(Copy, ATextOfManyRowsIsCopiedWhole)
{
    std::string lines = "line 0";
    for (int i = 1; i < 400; ++i) {
        lines += "\nline " + std::to_string(i);
    }
    std::string json = lines;
    for (std::size_t at = 0; (at = json.find('\n', at)) != std::string::npos; at += 2) {
        json.replace(at, 1, "\\n");
    }
    session->alwaysReply("/logs", 200,
                         R"([{"id":"1","log_type":"info","content":")" + json + R"("}])");
    show();
    openTab(5);
    rightClick({100, 500});
    choose();
    EXPECT_EQ(copied().toStdString(), lines);
}

TEST_F(Copy, TheTitleOfAProjectIsCopiedFromItsBarAndFromTheList)
{
    show();
    openTab(0);
    rightClick(centre(item("headline")));
    choose();
    EXPECT_EQ(copied(), u"A bakery's web site with orders and deliveries");
    QTest::keyClick(&scene->window(), Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return !has("workspace"); }));
    settle();
    copyText("Inventory for a workshop");
    EXPECT_EQ(copied(), u"Inventory for a workshop");
    EXPECT_FALSE(has("workspace")) << "the row was not pressed";
}

TEST_F(Copy, ALongPressOnARowOffersItsTitleAndOpensNothing)
{
    show();
    showTab(1);
    settle();
    const QPoint place = centre(scene->text(QStringLiteral("Logo")));
    QTest::mousePress(&scene->window(), Qt::LeftButton, Qt::NoModifier, place);
    EXPECT_TRUE(eventually([&] { return menuButton() != nullptr; }));
    QTest::mouseRelease(&scene->window(), Qt::LeftButton, Qt::NoModifier, place);
    choose();
    EXPECT_EQ(copied(), u"Logo");
    EXPECT_FALSE(has("workspace"));
}

TEST_F(Copy, TheKeyboardCopiesTheTitleOfARow)
{
    show();
    showTab(1);
    settle();
    item("projectRow")->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&scene->window(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), u"A bakery's web site with orders, deliveries and a calendar");
    QGuiApplication::clipboard()->setText(QStringLiteral("again"));
    QTest::keyClick(&scene->window(), Qt::Key_Menu);
    EXPECT_TRUE(eventually([&] { return menuButton() != nullptr; }));
    QTest::keyClick(&scene->window(), Qt::Key_Return);
    EXPECT_EQ(copied(), u"A bakery's web site with orders, deliveries and a calendar");
}

TEST_F(Copy, TheKeyboardCopiesTheTextsOfCards)
{
    const struct {
        int tab;
        const char *text;
    } cases[] = {
        {0, "A site for a bakery in town."},
        {1, "1. Which pages, and in which languages?\n\nFour pages, in two languages."},
        {2, "Hello, I have read all of your description and would like to ask some questions."},
        {3, "I have done many such sites."},
        {4, "Discovered\n\nA bakery's web site with orders"},
        {5, "npm run build -- --production"},
        {6, "Which of the two services shall be used?"},
        {7, "2024-05-01\n\n3 files changed\n\n+ orders are kept for a year"},
    };
    show();
    openTab(0);
    for (const auto &each : cases) {
        SCOPED_TRACE(each.text);
        showWorkspaceTab(each.tab);
        settle();
        QTest::keyClick(&scene->window(), Qt::Key_Menu);
        chooseByKey();
        EXPECT_EQ(copied(), QString::fromUtf8(each.text));
    }
}

TEST_F(Copy, TheArrowKeysChooseAnotherCard)
{
    show();
    openTab(5);
    QTest::keyClick(&scene->window(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(eventually([&] { return menuButton() != nullptr; }));
    const double above = sceneRect(menuButton()).y();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down}) {
        QTest::keyClick(&scene->window(), key);
    }
    EXPECT_TRUE(eventually([&] { return sceneRect(menuButton()).y() > above; }));
    chooseByKey();
    EXPECT_EQ(copied(), u"done") << "there is nothing behind the last card";
}

TEST_F(Copy, TheKeyboardCopiesTheCardThatItIsIn)
{
    session->alwaysReply("/decisions", 200,
                         R"([{"id":"1","question":"First?","status":"answered","answer":"Yes"},)"
                         R"({"id":"2","question":"Second?","status":"pending"}])");
    show();
    openTab(6);
    item("field")->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&scene->window(), Qt::Key_Menu);
    chooseByKey();
    EXPECT_EQ(copied(), u"Second?");
    EXPECT_TRUE(eventually([&] { return scene->window().activeFocusItem() == item("field"); }))
        << "the keyboard does not go back to the field";
    EXPECT_TRUE(item("field")->property("visualFocus").toBool());
}

TEST_F(Copy, AMenuThatWasClickedOpenKnowsNoOtherCards)
{
    show();
    openTab(5);
    rightClick(centre(scene->text(QStringLiteral("done"))));
    ASSERT_TRUE(eventually([&] { return menuButton() != nullptr; }));
    QTest::keyClick(&scene->window(), Qt::Key_Up);
    chooseByKey();
    EXPECT_EQ(copied(), u"done");
}

TEST_F(Copy, EscapeClosesTheMenuAndNothingElse)
{
    show();
    openTab(5);
    rightClick(centre(scene->text(QStringLiteral("done"))));
    ASSERT_TRUE(eventually([&] { return menuButton() != nullptr; }));
    QTest::keyClick(&scene->window(), Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return menuButton() == nullptr; }));
    EXPECT_TRUE(has("workspace"));
    EXPECT_EQ(copied(), u"before");
}

TEST_F(Copy, ThereIsNoMenuWhereThereIsNoTextAndOnButtons)
{
    show();
    openTab(6);
    rightClick({2, 600});
    rightClick(centre(item("submitButton")));
    rightClick(centre(item("tabButton")));
    // The menu would be there by the time that another has come and gone.
    copyText("Colour?");
    EXPECT_EQ(copied(), u"Colour?");
}

} // namespace
} // namespace trellisport::test
