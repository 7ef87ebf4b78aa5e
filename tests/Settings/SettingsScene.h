#pragma once

#include "Presentation/LinkController.h"
#include "QmlSupport/QmlScene.h"
#include "Settings/SettingsViewModel.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/FakeLinkOpener.h"
#include "Support/InlineExecutor.h"
#include "Support/ManualClock.h"

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace trellisport::test {

inline const char *const loadedSettings =
    R"({"preview_mode":"false","max_daily_bids":"12",)"
    R"("daily_revenue_target":"2500","max_concurrent_projects":"3"})";

/// The settings screen over a service that answers as the test says.
class SettingsViewTest : public ::testing::Test {
protected:
    void show(QSize size = {390, 844})
    {
        scene = std::make_unique<QmlScene>(
            QStringLiteral("Settings"), QStringLiteral("SettingsView"),
            QVariantMap{{QStringLiteral("viewModel"), QVariant::fromValue(&model)},
                        {QStringLiteral("links"), QVariant::fromValue(&links)}},
            size);
    }
    void showLoaded(const char *config = loadedSettings, QSize size = {390, 844})
    {
        session->queueReply(200, config);
        show(size);
        ASSERT_TRUE(eventually([&] { return has("sections"); }));
        // Things find their places with the next picture.
        (void)scene->picture();
    }
    QQuickItem *item(const char *name) const { return scene->item(QString::fromLatin1(name)); }
    QQuickItem *text(const char *text) const { return scene->text(QString::fromLatin1(text)); }
    bool has(const char *name) const { return scene->has(QString::fromLatin1(name)); }
    /// The row's box that holds an item.
    static QQuickItem *rowOf(QQuickItem *inside)
    {
        while (inside != nullptr && !inside->inherits("QQuickControl")) {
            inside = inside->parentItem();
        }
        return inside;
    }
    void type(const char *name, const char *keys)
    {
        scene->tap(item(name));
        QTest::keyClick(&scene->window(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&scene->window(), Qt::Key_Backspace);
        for (const char *key = keys; *key != 0; ++key) {
            QTest::keyClick(&scene->window(), *key);
        }
    }

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    ManualClock clock;
    FakeLinkOpener opener;
    LinkController links{opener};
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    SettingsViewModel model{api, clock, parseServiceAddress("https://agent.example:8443/api/v1")};
    std::unique_ptr<QmlScene> scene;
};

} // namespace trellisport::test
