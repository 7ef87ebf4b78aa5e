#include "AccessibleTree.h"
#include "AllScreens.h"
#include "Geometry.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlProperty>
#include <QTest>
#include <QtQml/qqml.h>

#include <gmock/gmock.h>

#include <array>
#include <string>

namespace trellisport::test {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

const QString press = QAccessibleActionInterface::pressAction();
const QString toggle = QAccessibleActionInterface::toggleAction();

class Accessibility : public AllScreens {
protected:
    void expectAllTold(const std::string &name)
    {
        EXPECT_THAT(untold(scene->window(), scene->root()), IsEmpty()) << name;
        EXPECT_GE(seenItems(scene->root()).texts.size(), 3) << name;
    }
    AccessibleNode node(QAccessible::Role role, const char *name)
    {
        return accessibleNode(scene->window(), role, QString::fromUtf8(name));
    }
    QStringList named(QAccessible::Role role)
    {
        QStringList names;
        for (const AccessibleNode &each : accessibleTree(scene->window())) {
            if (each.role == role) {
                names << each.name;
            }
        }
        return names;
    }
};

TEST_F(Accessibility, EverythingSeenOnEveryScreenIsTold)
{
    fill();
    show();
    visitAll([&](const std::string &name) { expectAllTold(name); });
}

TEST_F(Accessibility, EverythingSeenIsToldWhereThereIsNothingToShow)
{
    fillWithNothing();
    show();
    visitAll([&](const std::string &name) { expectAllTold(name); });
}

TEST_F(Accessibility, EverythingSeenIsToldWhenNothingCanBeLoaded)
{
    show();
    settle();
    expectAllTold("dashboard");
    EXPECT_THAT(named(QAccessible::AlertMessage), Not(IsEmpty()));
    for (const int tab : {1, 2}) {
        showTab(tab);
        settle();
        expectAllTold(std::to_string(tab));
    }
    showTab(1);
    openProject();
    settle();
    expectAllTold("workspace");
    // The lists of a project that could be loaded.
    session->alwaysReply("/projects/p1", 200, R"({"id":"p1","title":"Bare"})");
    closeProject();
    openProject();
    settle();
    visitProject([&](const std::string &name) { expectAllTold(name); });
}

TEST_F(Accessibility, EverythingSeenIsToldWhileLoading)
{
    fill();
    session->hold();
    show();
    for (const int tab : {0, 1, 2}) {
        showTab(tab);
        (void)scene->picture();
        expectAllTold(std::to_string(tab));
        EXPECT_THAT(named(QAccessible::ProgressBar), Contains(u"Loading"));
    }
}

TEST_F(Accessibility, EverythingSeenIsToldWhileAProjectIsLoading)
{
    fill();
    show();
    showTab(1);
    settle();
    session->hold();
    openProject();
    (void)scene->picture();
    EXPECT_THAT(untold(scene->window(), scene->root()), IsEmpty());
    node(QAccessible::Button, "Projects");
    EXPECT_THAT(named(QAccessible::ProgressBar), Contains(u"Loading"));
}

TEST_F(Accessibility, EverythingSeenIsToldWhileAProjectsListsAreLoading)
{
    fill();
    show();
    openTab(0);
    session->hold();
    constexpr std::array loadingTabs{2, 3, 4, 5, 6, 7};
    for (const int tab : loadingTabs) {
        showWorkspaceTab(tab);
        (void)scene->picture();
        expectAllTold(std::to_string(tab));
        EXPECT_THAT(named(QAccessible::ProgressBar), Contains(u"Loading")) << tab;
    }
}

TEST_F(Accessibility, TheMenuForCopyingIsToldAndCanBePressed)
{
    fill();
    show();
    openTab(5);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    const QQuickItem *text = scene->text(QStringLiteral("npm run build -- --production"));
    QTest::mouseClick(&scene->window(), Qt::RightButton, Qt::NoModifier,
                      sceneRect(text).center().toPoint());
    ASSERT_TRUE(
        eventually([&] { return named(QAccessible::Button).contains(QStringLiteral("Copy")); }));
    (void)scene->picture();
    EXPECT_THAT(untold(scene->window(), scene->window().contentItem()), IsEmpty());
    EXPECT_TRUE(node(QAccessible::Button, "Copy").state.focused);
    act(node(QAccessible::Button, "Copy"), press);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), textOf(text));
}

TEST_F(Accessibility, WhatIsNotToldIsNoticed)
{
    fill();
    show();
    settle();
    ASSERT_THAT(untold(scene->window(), scene->root()), IsEmpty());
    QQuickItem *label = scene->text(QStringLiteral("Awarded"));
    QQmlProperty(label, QStringLiteral("Accessible.ignored"), qmlContext(label)).write(true);
    QQmlProperty(item("statCard3"), QStringLiteral("Accessible.name"), qmlContext(label))
        .write(QString());
    EXPECT_THAT(untold(scene->window(), scene->root()), Not(IsEmpty()));
}

TEST_F(Accessibility, ThingsHaveTheRolesThatTheyPlay)
{
    fill();
    show();
    settle();
    EXPECT_TRUE(node(QAccessible::PageTab, "Dashboard").state.selected);
    EXPECT_FALSE(node(QAccessible::PageTab, "Settings").state.selected);
    node(QAccessible::Heading, "Dashboard");
    showTab(1);
    settle();
    node(QAccessible::EditableText, "Search projects");
    node(QAccessible::Heading, "ANSWERS RECEIVED");
    node(QAccessible::Button, "Logo");
    EXPECT_GE(named(QAccessible::ListItem).size(), 3);
    node(QAccessible::List, "Projects");
    EXPECT_TRUE(node(QAccessible::CheckBox, "All").state.checked);
    EXPECT_FALSE(node(QAccessible::CheckBox, "Awarded").state.checked);
    showTab(2);
    settle();
    EXPECT_FALSE(node(QAccessible::CheckBox, "Preview Mode").state.checked);
    node(QAccessible::EditableText, "Max Daily Bids");
    node(QAccessible::Link, "agent.example");
    node(QAccessible::Button, "Save Changes");
}

TEST_F(Accessibility, AProjectsRowIsDescribedByItsFacts)
{
    fill();
    show();
    showTab(1);
    settle();
    EXPECT_EQ(
        node(QAccessible::Button, "A bakery's web site with orders, deliveries and a calendar")
            .description,
        u"TP-00421, Discovered, $12500, bakery_owner, FL#38013194");
    EXPECT_EQ(node(QAccessible::Button, "Logo").description, u"Discovered, FL#0");
}

TEST_F(Accessibility, CardsAreItemsOfAListWithAName)
{
    fill();
    show();
    openTab(5);
    node(QAccessible::List, "Logs");
    EXPECT_EQ(named(QAccessible::ListItem).size(), 2);
    showWorkspaceTab(6);
    settle();
    node(QAccessible::ListItem, "Colour?");
}

TEST_F(Accessibility, EverythingCanBeOperatedFromOutside)
{
    fill();
    show();
    settle();
    act(node(QAccessible::PageTab, "Projects"), press);
    EXPECT_EQ(content.selectedTab(), 1);
    settle();
    act(node(QAccessible::CheckBox, "Discovered"), press);
    EXPECT_EQ(projects.selectedStatus(), "discovered");
    EXPECT_TRUE(node(QAccessible::CheckBox, "Discovered").state.checked);
    act(node(QAccessible::Button, "Logo"), press);
    EXPECT_TRUE(eventually([&] { return has("workspace"); }));
    EXPECT_TRUE(eventually([&] { return !item("projectsStack")->property("moving").toBool(); }));
    settle();
    act(node(QAccessible::PageTab, "Logs"), press);
    EXPECT_EQ(detail.selectedTab(), 5);
    settle();
    EXPECT_TRUE(node(QAccessible::PageTab, "Logs").state.selected);
    act(node(QAccessible::Link, "GitHub"), press);
    EXPECT_EQ(opener.opened.size(), 1U);
    act(node(QAccessible::Button, "Projects"), press);
    EXPECT_TRUE(eventually([&] { return !has("workspace"); }));
    act(node(QAccessible::PageTab, "Settings"), press);
    settle();
    act(node(QAccessible::CheckBox, "Preview Mode"), toggle);
    EXPECT_TRUE(settings.previewMode());
    EXPECT_TRUE(node(QAccessible::CheckBox, "Preview Mode").state.checked);
}

TEST_F(Accessibility, WhatHasBeenLoadedIsAnnounced)
{
    const HeardAnnouncements announcements;
    fill();
    show();
    settle();
    EXPECT_THAT(HeardAnnouncements::texts(), Contains(u"Dashboard shown"));
    show();
    openTab(5);
    EXPECT_THAT(HeardAnnouncements::texts(), Contains(u"Projects shown"));
    EXPECT_THAT(HeardAnnouncements::texts(),
                Contains(u"A bakery's web site with orders and deliveries shown"));
    EXPECT_THAT(HeardAnnouncements::texts(), Contains(u"Logs shown"));
}

TEST_F(Accessibility, WhatIsEmptyOrCouldNotBeLoadedIsAnnounced)
{
    const HeardAnnouncements announcements;
    session->queueReply(503, {}, "/dashboard");
    show();
    settle();
    EXPECT_THAT(HeardAnnouncements::texts(), Contains(u"HTTP error 503"));
    showTab(1);
    settle();
    openProject();
    settle();
    EXPECT_THAT(HeardAnnouncements::texts(), Contains(u"The project could not be loaded"));
    fillWithNothing();
    closeProject();
    openProject();
    settle();
    showWorkspaceTab(2);
    settle();
    EXPECT_THAT(HeardAnnouncements::texts(), Contains(u"No messages yet"));
}

TEST_F(Accessibility, HowASaveEndsIsAnnounced)
{
    fill();
    show();
    showTab(2);
    settle();
    const HeardAnnouncements announcements;
    session->queueReply(500, {}, "/config");
    act(node(QAccessible::Button, "Save Changes"), press);
    EXPECT_TRUE(eventually([&] { return HeardAnnouncements::texts().contains(u"Not saved"); }));
    session->queueReply(200, R"({"status":"ok"})", "/config");
    act(node(QAccessible::Button, "Save Changes"), press);
    EXPECT_TRUE(eventually([&] { return HeardAnnouncements::texts().contains(u"Saved"); }));
}

TEST_F(Accessibility, HowAnAnswerEndsIsAnnounced)
{
    fill();
    show();
    openTab(6);
    const HeardAnnouncements announcements;
    const auto submit = [&](const char *said) {
        item("field")->setProperty("text", QStringLiteral("the first"));
        act(node(QAccessible::Button, "Submit Answer"), press);
        EXPECT_TRUE(eventually([&] {
            return HeardAnnouncements::texts().contains(QLatin1String(said));
        })) << said
            << "; heard: " << HeardAnnouncements::texts().join(u'\n').toStdString();
    };
    session->queueReply(500, {}, "/answer");
    submit("Answer not sent");
    session->queueReply(200, R"({"status":"ok"})", "/answer");
    session->queueReply(500, {}, "/decisions");
    submit("Answer sent; the decisions could not be loaded again");
    session->queueReply(200, R"({"status":"ok"})", "/answer");
    submit("Answer sent");
}

TEST_F(Accessibility, NothingIsAnnouncedOfScreensThatAreNotSeen)
{
    fill();
    show();
    settle();
    const HeardAnnouncements announcements;
    settings.appear();
    EXPECT_TRUE(eventually([&] { return !settings.isLoading(); }));
    EXPECT_THAT(HeardAnnouncements::texts(), IsEmpty());
}

} // namespace
} // namespace trellisport::test
