#pragma once

#include "Platform/Platform.h"
#include "ProjectSamples.h"
#include "ProjectsList/ProjectsListViewModel.h"
#include "QmlSupport/QmlScene.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>

#include <gmock/gmock.h>

namespace trellisport::test {

// Stands for a project's workspace.
inline const char *const workspaceQml = R"(
import QtQuick
import TrellisportManager.Presentation

Rectangle {
    required property string projectId
    required property string backTitle
    signal backRequested

    objectName: "workspace"
    color: "black"

    StyledText {
        text: "workspace of " + parent.projectId + " from " + parent.backTitle
    }
    PressableControl {
        objectName: "back"
        y: 100
        width: 100
        height: 44
        onClicked: parent.backRequested()
    }
}
)";

class ProjectsListViewTest : public ::testing::Test {
protected:
    void show(QSize size = {390, 844})
    {
        engine.addImportPath(QStringLiteral(":/qt/qml"));
        workspace.setData(workspaceQml, QUrl(QStringLiteral("qrc:/workspace.qml")));
        scene = std::make_unique<QmlScene>(
            QStringLiteral("ProjectsList"), QStringLiteral("ProjectsListView"),
            QVariantMap{{QStringLiteral("viewModel"), QVariant::fromValue(&model)},
                        {QStringLiteral("workspace"), QVariant::fromValue(&workspace)}},
            size);
    }
    void showLoaded(const std::vector<std::string> &projects, QSize size = {390, 844})
    {
        session->queueReply(200, listJson(projects));
        show(size);
        ASSERT_TRUE(eventually([&] { return scene->has(QStringLiteral("chipStrip")); }));
        settle();
    }
    /// Lays out what has changed.
    void settle() { QMetaObject::invokeMethod(list(), "forceLayout"); }
    QQuickItem *item(const char *name) const { return scene->item(QString::fromLatin1(name)); }
    QQuickItem *list() const { return item("projectsList"); }
    bool has(const char *name) const { return scene->has(QString::fromLatin1(name)); }
    QQuickItem *text(const char *text) const { return scene->text(QString::fromUtf8(text)); }
    /// What is seen below the chips: headers and titles.
    QStringList listed() const
    {
        QStringList found;
        for (const QString &text : scene->texts()) {
            if (text.startsWith(QLatin1String("Title")) || text == text.toUpper()) {
                found << text;
            }
        }
        found.removeAll(QStringLiteral("FL#0"));
        return found;
    }
    /// The rows that the list has made, seen or not.
    QList<QQuickItem *> rows() const { return scene->items(QStringLiteral("projectRow")); }
    /// How far the list is from its beginning, which moves while rows come and go.
    double scrolled() const
    {
        return list()->property("contentY").toDouble() + list()->property("topMargin").toDouble() -
               list()->property("originY").toDouble();
    }
    int depth() const { return item("projectsStack")->property("depth").toInt(); }
    bool stackRests() const
    {
        return eventually([&] { return !item("projectsStack")->property("moving").toBool(); });
    }

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    NotificationManager notifications;
    ProjectsListViewModel model{api, platform::Platform::current().textRules(),
                                InlineExecutor::shared(), notifications};
    QQmlEngine engine;
    QQmlComponent workspace{&engine};
    std::unique_ptr<QmlScene> scene;
};

} // namespace trellisport::test
