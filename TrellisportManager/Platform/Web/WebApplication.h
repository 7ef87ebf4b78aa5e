#pragma once

#include "Platform/Application.h"
#include "Platform/Toolkit/MainThreadQueue.h"
#include "Platform/Toolkit/NotificationRelay.h"
#include "Platform/Web/PageAccessibility.h"
#include "Platform/Web/PageField.h"
#include "Platform/Web/PagePush.h"

#include <QGuiApplication>

#include <memory>
#include <optional>

namespace trellisport::platform {

/// The program's life in a page: it has one window, which fills the page and lives as long. Several
/// tabs are several consoles; only a browser that has installed it comes back to the one that runs,
/// by its manifest. A tapped message goes to one that is there.
class WebApplication final : public Application {
public:
    /// Both must outlive it.
    WebApplication(MainThreadQueue &queue, NotificationRelay &relay);

    /// Does not return when all is well: the browser has no place to wait in.
    int run(int &argc, char **argv, LaunchReason reason, const MakeEntry &makeEntry) override;
    [[nodiscard]] bool canShowWindow() const override { return true; }
    void registerForRemoteNotifications() override;

private:
    MainThreadQueue &m_queue;
    PagePush m_push;
    std::unique_ptr<QGuiApplication> m_toolkit;
    std::unique_ptr<ApplicationEntry> m_entry;
    std::optional<PageAccessibility> m_accessibility;
    std::optional<PageField> m_field;
};

} // namespace trellisport::platform
