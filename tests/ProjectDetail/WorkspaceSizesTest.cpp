#include "WorkspaceScene.h"

#include <QtGlobal>

#include <array>

namespace trellisport::test {
namespace {

const char *const record =
    R"({"id":"p1","title":"A bakery's web site with orders and deliveries",)"
    R"("ref_number":"TP-00421",)"
    R"("bid_status":"answers_received","bid_amount":12500,"freelancer_project_id":38013194,)"
    R"("github_repo_url":"https://code.example/p1","description":"A site for a bakery in town.",)"
    R"("delivery_plan":"1. Pages\n2. Orders\n3. Deliveries",)"
    R"("questionnaire":"1. Which pages are there to be, and in which languages?\n2. By when?",)"
    R"("owner_answers":"1. Four pages, in two languages."})";

struct List {
    const char *urlEnd;
    const char *json;
};

const std::array<List, 6> lists{{
    {"/messages", R"([{"id":"1","sender":"agent","message_text":"Hello, I have read all of your )"
                  R"(description and would like to ask some questions."},)"
                  R"({"id":"2","sender":"bakery_owner","message_text":"Of course"}])"},
    {"/bids",
     R"([{"username":"our_agent","amount":12500,"period":14,"is_ours":true},)"
     R"({"bidder_id":1,"username":"a_bidder_with_a_long_name",)"
     R"("display_name":"The Long Company Name",)"
     R"("country":"Bosnia and Herzegovina","rating":4.9,"reviews":12345,"amount":123456.5,)"
     R"("period":120,"description":"I have done many such sites and can begin at once."}])"},
    {"/timeline", R"([{"time":"2024-05-01T09:30:00Z","event":"Discovered on the marketplace",)"
                  R"("detail":"A bakery's web site with orders","type":"discovery"},)"
                  R"({"event":"Analysed"}])"},
    {"/logs",
     R"([{"id":"1","log_type":"claude_response","content":"npm run build -- --production",)"
     R"("created_at":"2024-05-01T09:30:00Z"}])"},
    {"/decisions", R"([{"id":"1","question":"Which of the two payment services shall be used?",)"
                   R"("status":"pending","notified_at":"2024-05-01T09:30:00Z"},)"
                   R"({"id":"2","question":"Colour?","status":"answers_received","answer":"Blue",)"
                   R"("notified_at":"2024-05-01T09:30:00Z"}])"},
    {"/reports", R"([{"id":"1","report_date":"2024-05-01","commit_diff_summary":"3 files changed",)"
                 R"("claude_md_diff":"+ orders are kept for a year"}])"},
}};

bool isScroller(const QQuickItem *item)
{
    return item->inherits("QQuickFlickable");
}

/// What of an item is seen in the window.
QRectF shownPart(const QQuickItem *item)
{
    QRectF shown = sceneRect(item);
    for (const QQuickItem *at = item->parentItem(); at != nullptr; at = at->parentItem()) {
        if (at->clip() || isScroller(at)) {
            shown &= sceneRect(at);
        }
    }
    return shown;
}

bool scrollsSideways(const QQuickItem *item)
{
    for (const QQuickItem *at = item; at != nullptr; at = at->parentItem()) {
        if (at->objectName() == QLatin1String("stripScroll")) {
            return true;
        }
    }
    return false;
}

void collect(QQuickItem *item, QList<QQuickItem *> &texts, QList<QQuickItem *> &controls)
{
    if (!item->isVisible() || item->opacity() == 0) {
        return;
    }
    if (item->inherits("QQuickText") && !textOf(item).isEmpty()) {
        texts << item;
    }
    if (item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextArea")) {
        controls << item;
    }
    for (QQuickItem *child : item->childItems()) {
        collect(child, texts, controls);
    }
}

std::string nameOf(const QQuickItem *item)
{
    return (item->objectName() + QLatin1String(" \"") + textOf(item) + QLatin1Char('"'))
        .toStdString();
}

void expectApart(const QList<QQuickItem *> &items)
{
    for (int i = 0; i < items.size(); ++i) {
        for (int j = i + 1; j < items.size(); ++j) {
            const QRectF common = shownPart(items[i]) & shownPart(items[j]);
            EXPECT_FALSE(common.width() > 0.5 && common.height() > 0.5)
                << nameOf(items[i]) << " overlaps " << nameOf(items[j]);
        }
    }
}

class WorkspaceSizes : public WorkspaceScene, public ::testing::WithParamInterface<QSize> {
protected:
    void expectThatAllFits()
    {
        const double width = scene->window().width();
        QList<QQuickItem *> texts;
        QList<QQuickItem *> controls;
        collect(scene->root(), texts, controls);
        EXPECT_GE(texts.size(), 10);
        for (QQuickItem *shown : texts + controls) {
            if (!scrollsSideways(shown)) {
                EXPECT_GE(sceneRect(shown).left(), 0) << nameOf(shown);
                EXPECT_LE(sceneRect(shown).right(), width + 0.5) << nameOf(shown);
            }
        }
        for (QQuickItem *shown : texts) {
            EXPECT_LE(shown->property("contentWidth").toDouble(), shown->width() + 1)
                << nameOf(shown);
            EXPECT_LE(shown->property("contentHeight").toDouble(), shown->height() + 1)
                << nameOf(shown);
            EXPECT_GT(shown->width(), 0) << nameOf(shown);
        }
        expectApart(texts);
        expectApart(controls);
    }
};

TEST_P(WorkspaceSizes, EveryTabFitsWithoutClippedOrOverlappingItems)
{
    for (const List &list : lists) {
        session->alwaysReply(list.urlEnd, 200, list.json);
    }
    showLoaded(record, GetParam());
    for (int tab = 0; tab < 8; ++tab) {
        SCOPED_TRACE("tab " + std::to_string(tab));
        model.setSelectedTab(tab);
        ASSERT_TRUE(eventually([&] { return !has("spinner"); }));
        settle();
        expectThatAllFits();
        EXPECT_GE(tabTexts().size(), 2);
        // Room for content is left in every window.
        EXPECT_GT(item("tab")->height(), 120);
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, WorkspaceSizes,
                         ::testing::Values(QSize(320, 568), QSize(360, 648), QSize(844, 390),
                                           QSize(1280, 800)),
                         [](const auto &tested) {
                             return std::to_string(tested.param.width()) + "x" +
                                    std::to_string(tested.param.height());
                         });

} // namespace
} // namespace trellisport::test
