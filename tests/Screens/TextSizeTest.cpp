#include "AllScreens.h"
#include "Geometry.h"

#include "Platform/Linux/Desktop/LinuxAppearance.h"
#include "Platform/Platform.h"
#include "Presentation/Typography.h"

#include <gmock/gmock.h>

#include <cmath>
#include <tuple>

namespace trellisport::test {
namespace {

/// Shortened by design, however much room there is.
bool mayBeShortened(const QQuickItem *text)
{
    static const QStringList names{
        QStringLiteral("projectTitle"), // two lines
        QStringLiteral("description"),  // four
        QStringLiteral("headline"),     // one
    };
    // At the usual size a project's row has one line for its facts.
    const bool isUsual = qEnvironmentVariable("TRELLISPORT_TEXT_SCALE").toDouble() <= 1;
    return names.contains(text->objectName()) ||
           (isUsual && text->objectName() == QLatin1String("owner"));
}

/// What an item must not reach out of: the nearest thing with a ground of its own around it.
const QQuickItem *groundOf(const QQuickItem *item)
{
    static const QStringList grounds{QStringLiteral("card"), QStringLiteral("bubble"),
                                     QStringLiteral("answerBox")};
    for (const QQuickItem *at = item->parentItem(); at != nullptr; at = at->parentItem()) {
        if (at->inherits("QQuickRectangle") || at->inherits("QQuickControl") ||
            grounds.contains(at->objectName())) {
            return at;
        }
    }
    return nullptr;
}

void expectWhole(const QQuickItem *text)
{
    EXPECT_LE(text->property("contentWidth").toDouble(), text->width() + 1) << nameOf(text);
    EXPECT_LE(text->property("contentHeight").toDouble(), text->height() + 1) << nameOf(text);
    EXPECT_GT(text->width(), 0) << nameOf(text);
    if (!mayBeShortened(text)) {
        EXPECT_FALSE(text->property("truncated").toBool()) << nameOf(text);
    }
}

void expectWithinItsGround(const QQuickItem *text)
{
    const QQuickItem *ground = groundOf(text);
    ASSERT_NE(ground, nullptr) << nameOf(text);
    const QRectF room = sceneRect(ground).adjusted(-0.5, -0.5, 0.5, 0.5);
    const QRectF place = sceneRect(text);
    // A page scrolls: what is above and below it is not cut off.
    const bool isPage = ground->height() > 200 && ground->objectName() != QLatin1String("card");
    EXPECT_GE(place.left(), room.left()) << nameOf(text);
    EXPECT_LE(place.right(), room.right()) << nameOf(text);
    if (!isPage) {
        EXPECT_GE(place.top(), room.top()) << nameOf(text) << " in " << nameOf(ground);
        EXPECT_LE(place.bottom(), room.bottom()) << nameOf(text) << " in " << nameOf(ground);
    }
}

void expectApart(const QList<QQuickItem *> &items)
{
    for (int i = 0; i < items.size(); ++i) {
        for (int j = i + 1; j < items.size(); ++j) {
            if (items[i]->isAncestorOf(items[j]) || items[j]->isAncestorOf(items[i])) {
                continue;
            }
            const QRectF common = shownPart(items[i]) & shownPart(items[j]);
            EXPECT_FALSE(common.width() > 0.5 && common.height() > 0.5)
                << nameOf(items[i]) << " overlaps " << nameOf(items[j]);
        }
    }
}

class TextSize : public AllScreens,
                 public ::testing::WithParamInterface<std::tuple<QSize, double>> {
protected:
    void expectThatAllFits()
    {
        const SeenItems seen = seenItems(scene->root());
        EXPECT_GE(seen.texts.size(), 5);
        const double width = scene->window().width();
        for (const QQuickItem *shown : seen.texts + seen.controls) {
            if (!scrollsSideways(shown)) {
                EXPECT_GE(sceneRect(shown).left(), 0) << nameOf(shown);
                EXPECT_LE(sceneRect(shown).right(), width + 0.5) << nameOf(shown);
            }
        }
        for (const QQuickItem *text : seen.texts) {
            expectWhole(text);
            expectWithinItsGround(text);
        }
        expectApart(seen.texts);
        expectApart(seen.controls);
    }
};

TEST_P(TextSize, NothingIsCutOffAndNothingOverlapsOnAnyScreen)
{
    const auto [size, scale] = GetParam();
    fill();
    show(size, scale);
    const auto look = [&](const std::string &name) {
        SCOPED_TRACE(name);
        expectThatAllFits();
    };
    visitAll(look);
}

TEST_P(TextSize, NothingIsCutOffWhereThereIsNothingToShow)
{
    const auto [size, scale] = GetParam();
    fillWithNothing();
    show(size, scale);
    visitAll([&](const std::string &name) {
        SCOPED_TRACE(name);
        expectThatAllFits();
    });
}

INSTANTIATE_TEST_SUITE_P(Windows, TextSize,
                         ::testing::Combine(::testing::Values(QSize(320, 568), QSize(390, 844),
                                                              QSize(1280, 800), QSize(844, 390),
                                                              QSize(2560, 1440)),
                                            ::testing::Values(0.8, 1.0, 1.3, 1.6, 2.0)),
                         [](const auto &tested) {
                             const QSize size = std::get<0>(tested.param);
                             return std::to_string(size.width()) + "x" +
                                    std::to_string(size.height()) + "_" +
                                    std::to_string(qRound(100 * std::get<1>(tested.param)));
                         });

class LargeText : public AllScreens {
protected:
    /// Where an item's text really is, by what differs from the ground beside it.
    QRectF drawnPart(const QQuickItem *text) const
    {
        const QImage picture = scene->picture();
        const double scale = picture.width() / double(scene->window().width());
        const QRect place =
            QRectF(sceneRect(text).topLeft() * scale, sceneRect(text).size() * scale)
                .toAlignedRect() &
            picture.rect();
        const QRgb ground = picture.pixel(place.topLeft());
        QRect drawn;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x) {
                if (picture.pixel(x, y) != ground) {
                    drawn |= QRect(x, y, 1, 1);
                }
            }
        }
        EXPECT_FALSE(drawn.isEmpty()) << nameOf(text);
        return {QPointF(drawn.topLeft()) / scale, QSizeF(drawn.size()) / scale};
    }
};

TEST_F(LargeText, TheLabelsOfTheRootTabsKeepApart)
{
    fill();
    show({320, 568}, 2);
    settle();
    const QList<QQuickItem *> tabs = scene->items(QStringLiteral("rootTab"));
    ASSERT_EQ(tabs.size(), 3);
    for (QQuickItem *tab : tabs) {
        const QQuickItem *label = scene->item(QStringLiteral("label"), tab);
        EXPECT_LE(label->property("contentWidth").toDouble(), tab->width() - 8) << nameOf(label);
    }
}

TEST_F(LargeText, TheWayBackLeavesMostOfTheBarToTheTitle)
{
    fill();
    show({320, 568}, 2);
    openTab(0);
    QQuickItem *workspace = item("workspace");
    EXPECT_GE(scene->item(QStringLiteral("headline"), workspace)->width(), 0.6 * 320);
    const QQuickItem *back = scene->text(QStringLiteral("Projects"), workspace);
    EXPECT_FALSE(back->property("truncated").toBool());
}

TEST_F(LargeText, WhatIsShrunkStandsInTheMiddle)
{
    fill();
    show({320, 568}, 2);
    settle();
    const QList<QQuickItem *> tabs = scene->items(QStringLiteral("rootTab"));
    const QRectF shrunk = drawnPart(scene->item(QStringLiteral("label"), tabs.at(0)));
    const QRectF whole = drawnPart(scene->item(QStringLiteral("label"), tabs.at(2)));
    EXPECT_NEAR(shrunk.bottom(), whole.bottom() - 5, 2) << "the other has a g";
    showTab(1);
    settle();
    QQuickItem *search = item("searchField");
    const QRectF field = sceneRect(search);
    EXPECT_NEAR(drawnPart(scene->item(QStringLiteral("placeholder"), search)).center().y(),
                field.center().y(), 3);
    openTab(0);
    const QRectF back = drawnPart(scene->text(QStringLiteral("Projects"), item("workspace")));
    EXPECT_NEAR(back.center().y(), 22, 3) << "the bar is 44 points high";
}

TEST_F(LargeText, SymbolsGrowWithTheTextBesideThem)
{
    const auto sizes = [&](double scale) {
        show({390, 844}, scale);
        showTab(1);
        settle();
        QList<double> widths{item("magnifier")->width()};
        openTab(3);
        widths << item("star")->width();
        return widths;
    };
    fill();
    EXPECT_EQ(sizes(0.8), (QList<double>{17, 9}));
    EXPECT_EQ(sizes(1), (QList<double>{17, 9}));
    EXPECT_EQ(sizes(1.3), (QList<double>{22, 12}));
    EXPECT_EQ(sizes(2), (QList<double>{26, 14}));
}

class DesktopTextSize : public AllScreens {
protected:
    static platform::LinuxAppearance &desktop()
    {
        return dynamic_cast<platform::LinuxAppearance &>(
            platform::Platform::current().appearance());
    }
    void TearDown() override
    {
        desktop().setDesktopTextScale(1);
        AllScreens::TearDown();
    }
};

/// Of titles and names of many lengths, some of them absent.
std::string manyProjects()
{
    std::string list;
    for (int i = 0; i < 40; ++i) {
        list += list.empty() ? '[' : ',';
        list += R"({"id":"p)" + std::to_string(i) + R"(","bid_status":"awarded","title":"Title )";
        list.append(static_cast<std::size_t>(i) * 3, 'w').append("\"");
        list += i % 2 == 0 ? R"(,"ref_number":"TP-00421")" : "";
        list += i % 3 == 0 ? R"(,"bid_amount":12500)" : "";
        if (i % 4 != 0) {
            list += R"(,"owner_username":")" + std::string(static_cast<std::size_t>(i), 'o') + '"';
        }
        list += R"(,"freelancer_project_id":38013194})";
    }
    return list + ']';
}

TEST_F(DesktopTextSize, AChangeIsFollowedWhileTheConsoleRuns)
{
    fill();
    show();
    qunsetenv("TRELLISPORT_TEXT_SCALE");
    settle();
    const QQuickItem *label = scene->text(QStringLiteral("Discovered"));
    const double lineBefore = label->property("lineHeight").toDouble();
    const double tileBefore = item("statCard0")->height();
    desktop().setDesktopTextScale(1.5);
    EXPECT_EQ(fontOf(label).pixelSize(), 18);
    EXPECT_EQ(label->property("lineHeight").toDouble(), 1.5 * lineBefore);
    settle();
    EXPECT_GT(item("statCard0")->height(), tileBefore);
    desktop().setDesktopTextScale(1);
    settle();
    EXPECT_EQ(fontOf(label).pixelSize(), 12);
    EXPECT_EQ(item("statCard0")->height(), tileBefore);
}

TEST_F(DesktopTextSize, ALinesWidthIsWhatATextItemWants)
{
    fill();
    show();
    settle();
    for (const char *text : {"Discovered", "Questions", "Bids Active", "Total Earned"}) {
        const QQuickItem *label = scene->text(QString::fromLatin1(text));
        EXPECT_EQ(Typography::lineWidth(textOf(label), fontOf(label)),
                  std::ceil(label->implicitWidth()))
            << text;
    }
}

// A binding that goes in a circle would be warned about, which the scene takes for a failure.
TEST_F(DesktopTextSize, MayChangeOnEveryScreenAgainAndAgain)
{
    fill();
    session->alwaysReply("/projects", 200, manyProjects());
    show({360, 720});
    qunsetenv("TRELLISPORT_TEXT_SCALE");
    visitAll([&](const std::string & /*name*/) {
        for (const double scale : {1.5, 2.0, 0.8, 1.2, 1.0, 1.7, 1.0}) {
            desktop().setDesktopTextScale(scale);
            settle();
        }
    });
}

} // namespace
} // namespace trellisport::test
