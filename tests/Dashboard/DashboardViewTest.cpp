#include "Dashboard/DashboardViewModel.h"
#include "Presentation/Colors.h"
#include "QmlSupport/QmlScene.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"
#include "Support/ManualClock.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

Q_IMPORT_QML_PLUGIN(TrellisportManager_DashboardPlugin)

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

const char *const summary =
    R"({"status_counts":{"discovered":12,"questions_sent":3,"bid_placed":5,"awarded":2,)"
    R"("completed":9},"bids_pending":12400,"total_earned":1234567.891,"pending_decisions":2})";

class DashboardViewTest : public ::testing::Test {
protected:
    std::unique_ptr<QmlScene> show(QSize size = {390, 844})
    {
        return std::make_unique<QmlScene>(
            QStringLiteral("Dashboard"), QStringLiteral("DashboardView"),
            QVariantMap{{QStringLiteral("viewModel"), QVariant::fromValue(&model)}}, size);
    }
    std::unique_ptr<QmlScene> showLoaded(QSize size = {390, 844})
    {
        session->queueReply(200, summary);
        auto scene = show(size);
        EXPECT_TRUE(eventually([&] { return scene->has(QStringLiteral("statCard5")); }));
        // Things find their places with the next picture.
        (void)scene->picture();
        return scene;
    }

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    ManualClock clock;
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    DashboardViewModel model{api, clock};
};

TEST_F(DashboardViewTest, ShowsASpinnerUntilTheFirstLoadEnds)
{
    session->hold();
    session->queueReply(200, summary);
    const auto scene = show();
    EXPECT_TRUE(scene->has(QStringLiteral("spinner")));
    EXPECT_THAT(scene->texts(), ElementsAre(u"Dashboard"));
    const QRectF spinner = sceneRect(scene->item(QStringLiteral("spinner")));
    EXPECT_EQ(spinner.size(), QSizeF(20, 20));
    EXPECT_EQ(spinner.center(), QPointF(390 / 2.0, 44 + 52 + 100));
}

TEST_F(DashboardViewTest, ShowsSixTilesAndTwoAmountsInTheirOrder)
{
    const auto scene = showLoaded();
    EXPECT_THAT(scene->texts(), ElementsAre(u"Dashboard", u"12", u"3", u"5", u"Discovered",
                                            u"Questions", u"Bids Active", u"2", u"2", u"9",
                                            u"Awarded", u"Decisions", u"Completed", u"Bids Pending",
                                            u"Total Earned", u"$12400.00", u"$1234567.89"));
    EXPECT_FALSE(scene->has(QStringLiteral("spinner")));
}

TEST_F(DashboardViewTest, TilesStandInThreeEqualColumns)
{
    const auto scene = showLoaded();
    QList<QRectF> tiles;
    for (int index = 0; index < 6; ++index) {
        tiles << sceneRect(scene->item(QStringLiteral("statCard%1").arg(index)));
    }
    EXPECT_EQ(tiles[0].topLeft(), QPointF(16, 44 + 52 + 16));
    EXPECT_NEAR(tiles[2].right(), 390 - 16, 0.01);
    EXPECT_NEAR(tiles[0].width(), tiles[1].width(), 1);
    EXPECT_NEAR(tiles[1].left() - tiles[0].right(), 8, 0.01);
    EXPECT_NEAR(tiles[3].top() - tiles[0].bottom(), 12, 0.01);
    const QRectF left = sceneRect(scene->item(QStringLiteral("revenueCard0")));
    const QRectF right = sceneRect(scene->item(QStringLiteral("revenueCard1")));
    EXPECT_NEAR(left.top() - tiles[3].bottom(), 16, 0.01);
    EXPECT_NEAR(right.left() - left.right(), 12, 0.01);
    EXPECT_NEAR(left.width(), right.width(), 1);
}

TEST_F(DashboardViewTest, ATileHasItsFrameTypeAndColours)
{
    const auto scene = showLoaded();
    QQuickItem *tile = scene->item(QStringLiteral("statCard2"));
    EXPECT_EQ(colorOf(tile), colors::surface());
    EXPECT_EQ(tile->property("radius"), 10);
    EXPECT_EQ(tile->property("outlineWidth"), 1);
    EXPECT_EQ(tile->property("outlineColor").value<QColor>(), colors::hairline());
    QQuickItem *value = scene->item(QStringLiteral("value"), tile);
    QQuickItem *label = scene->item(QStringLiteral("label"), tile);
    EXPECT_EQ(textOf(value), u"5");
    EXPECT_EQ(fontOf(value).pixelSize(), 28);
    EXPECT_EQ(fontOf(value).weight(), QFont::Bold);
    EXPECT_EQ(colorOf(value), colors::accent());
    EXPECT_EQ(fontOf(label).pixelSize(), 12);
    EXPECT_EQ(colorOf(label), colors::gray());
    EXPECT_EQ(sceneRect(value).top() - sceneRect(tile).top(), 12);
    EXPECT_EQ(sceneRect(label).top() - sceneRect(value).bottom(), 4);
    EXPECT_EQ(sceneRect(tile).bottom() - sceneRect(label).bottom(), 12);
}

TEST_F(DashboardViewTest, AnAmountStandsBelowItsTitle)
{
    const auto scene = showLoaded();
    QQuickItem *tile = scene->item(QStringLiteral("revenueCard0"));
    QQuickItem *title = scene->item(QStringLiteral("title"), tile);
    QQuickItem *amount = scene->item(QStringLiteral("amount"), tile);
    EXPECT_EQ(textOf(title), u"Bids Pending");
    EXPECT_EQ(fontOf(title).pixelSize(), 12);
    EXPECT_EQ(textOf(amount), u"$12400.00");
    EXPECT_EQ(fontOf(amount).pixelSize(), 28);
    EXPECT_EQ(fontOf(amount).weight(), QFont::Bold);
    EXPECT_EQ(colorOf(amount), colors::accent());
    EXPECT_EQ(sceneRect(amount).top() - sceneRect(title).bottom(), 4);
}

TEST_F(DashboardViewTest, AFigureThatIsWiderThanItsTileIsDrawnSmallerAndWhole)
{
    const auto scene = showLoaded({320, 568});
    QQuickItem *amount =
        scene->item(QStringLiteral("amount"), scene->item(QStringLiteral("revenueCard1")));
    EXPECT_FALSE(amount->property("truncated").toBool());
    EXPECT_LE(amount->property("contentWidth").toDouble(), amount->width());
    EXPECT_EQ(amount->property("lineCount"), 1);
}

TEST_F(DashboardViewTest, AFailureIsRedTextAlone)
{
    session->queueReply(500);
    const auto scene = show();
    ASSERT_TRUE(eventually([&] { return scene->has(QStringLiteral("error")); }));
    EXPECT_THAT(scene->texts(), ElementsAre(u"Dashboard", u"HTTP error 500"));
    EXPECT_EQ(colorOf(scene->item(QStringLiteral("error"))), colors::red());
    EXPECT_FALSE(scene->has(QStringLiteral("spinner")));
}

TEST_F(DashboardViewTest, AFailedReloadHidesTheTilesAndTheNextOneShowsThemAgain)
{
    const auto scene = showLoaded();
    session->queueReply(404);
    model.refresh();
    ASSERT_TRUE(eventually([&] { return scene->has(QStringLiteral("error")); }));
    EXPECT_FALSE(scene->has(QStringLiteral("statCard0")));
    session->queueReply(200, summary);
    model.refresh();
    EXPECT_TRUE(eventually([&] { return scene->has(QStringLiteral("statCard0")); }));
    EXPECT_FALSE(scene->has(QStringLiteral("error")));
}

TEST_F(DashboardViewTest, LoadsAgainEachTimeItComesIntoView)
{
    const auto scene = showLoaded();
    EXPECT_EQ(session->requestCount(), 1U);
    scene->root()->setVisible(false);
    session->queueReply(200, summary);
    scene->root()->setVisible(true);
    EXPECT_TRUE(eventually([&] { return session->requestCount() == 2; }));
}

TEST_F(DashboardViewTest, AWideWindowKeepsAReadableColumnInTheMiddle)
{
    const auto scene = showLoaded({1280, 800});
    const QRectF first = sceneRect(scene->item(QStringLiteral("statCard0")));
    const QRectF third = sceneRect(scene->item(QStringLiteral("statCard2")));
    EXPECT_EQ(first.left(), (1280 - 700) / 2 + 16);
    EXPECT_NEAR(third.right(), (1280 + 700) / 2.0 - 16, 0.01);
}

/// The windows of small phones, upright and lying.
class DashboardViewSizeTest : public DashboardViewTest,
                              public ::testing::WithParamInterface<QSize> {};

TEST_P(DashboardViewSizeTest, EverythingIsWithinReachAndNothingIsCut)
{
    const auto scene = showLoaded(GetParam());
    const QRectF window({}, QSizeF(GetParam()));
    for (const QString &name : {QStringLiteral("statCard%1"), QStringLiteral("revenueCard%1")}) {
        for (int index = 0; scene->has(name.arg(index)); ++index) {
            QQuickItem *tile = scene->item(name.arg(index));
            const QRectF place = sceneRect(tile);
            EXPECT_GE(place.left(), 16) << name.arg(index).toStdString();
            EXPECT_LE(place.right(), window.right() - 16 + 0.01) << name.arg(index).toStdString();
            for (const char *part : {"value", "label", "title", "amount"}) {
                for (const QQuickItem *text : scene->items(QString::fromLatin1(part), tile)) {
                    EXPECT_TRUE(place.contains(sceneRect(text))) << textOf(text).toStdString();
                    EXPECT_FALSE(text->property("truncated").toBool())
                        << textOf(text).toStdString();
                    EXPECT_LE(text->property("contentWidth").toDouble(), text->width() + 0.01)
                        << textOf(text).toStdString();
                }
            }
        }
    }
    // What does not fit is scrolled to.
    QQuickItem *area = scene->item(QStringLiteral("dashboardScroll"));
    area->setProperty("contentY",
                      std::max(area->property("originY").toDouble(),
                               area->property("originY").toDouble() +
                                   area->property("contentHeight").toDouble() - area->height()));
    (void)scene->picture();
    EXPECT_LE(sceneRect(scene->item(QStringLiteral("revenueCard1"))).bottom(), window.bottom());
}

INSTANTIATE_TEST_SUITE_P(Windows, DashboardViewSizeTest,
                         ::testing::Values(QSize(360, 648), QSize(844, 390), QSize(320, 568)),
                         [](const auto &size) {
                             return std::to_string(size.param.width()) + "x" +
                                    std::to_string(size.param.height());
                         });

TEST_F(DashboardViewTest, APullLoadsAgainAndItsSpinnerStaysUntilTheLoadEnds)
{
    const auto scene = showLoaded();
    session->hold();
    session->queueReply(200, QByteArray(summary).replace("12,", "77,").toStdString());
    const QPoint start(200, 300);
    QTest::mousePress(&scene->window(), Qt::LeftButton, Qt::NoModifier, start);
    for (int step = 1; step <= 20; ++step) {
        QTest::mouseMove(&scene->window(), start + QPoint(0, 11 * step));
    }
    EXPECT_TRUE(eventually([&] { return session->requestCount() == 2; }));
    QTest::mouseRelease(&scene->window(), Qt::LeftButton, Qt::NoModifier, start + QPoint(0, 220));
    EXPECT_TRUE(scene->has(QStringLiteral("refreshSpinner")));
    EXPECT_TRUE(scene->has(QStringLiteral("statCard0"))) << "the tiles stay meanwhile";
    session->release();
    EXPECT_TRUE(eventually([&] { return !scene->has(QStringLiteral("refreshSpinner")); }));
    EXPECT_NE(scene->text(QStringLiteral("77")), nullptr);
    EXPECT_EQ(session->requestCount(), 2U);
}

TEST_F(DashboardViewTest, ALightPaletteOfTheSystemChangesNothing)
{
    const auto picture = [&] { return showLoaded()->picture(); };
    const QImage usual = picture();
    const QPalette before = QGuiApplication::palette();
    QGuiApplication::setPalette(QPalette(Qt::white));
    const QImage underLight = picture();
    QGuiApplication::setPalette(before);
    EXPECT_TRUE(underLight == usual);
    EXPECT_EQ(underLight.pixelColor(5, underLight.height() - 5), colors::background());
}

TEST_F(DashboardViewTest, TheGroundIsTheScreensBackground)
{
    const auto scene = showLoaded();
    EXPECT_EQ(scene->colorAt({5, 600}), colors::background());
}

TEST_F(DashboardViewTest, KeysScrollWhatIsTallerThanTheWindow)
{
    const auto scene = showLoaded({568, 320});
    QQuickItem *area = scene->item(QStringLiteral("dashboardScroll"));
    const double rested = area->property("contentY").toDouble();
    EXPECT_TRUE(scene->has(QStringLiteral("scrollMark")));
    QTest::keyClick(&scene->window(), Qt::Key_Tab);
    EXPECT_TRUE(area->hasActiveFocus());
    QTest::keyClick(&scene->window(), Qt::Key_End);
    EXPECT_TRUE(area->property("atYEnd").toBool());
    QTest::keyClick(&scene->window(), Qt::Key_Home);
    EXPECT_EQ(area->property("contentY").toDouble(), rested);
    QTest::keyClick(&scene->window(), Qt::Key_PageDown);
    EXPECT_GT(area->property("contentY").toDouble(), rested);
}

} // namespace
} // namespace trellisport::test
