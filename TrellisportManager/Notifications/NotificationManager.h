#pragma once

#include "Platform/Application.h"
#include "Platform/MainQueue.h"
#include "Platform/UserNotificationCenter.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellisport {

/// Deals with push notifications: asks for permission, sends the device's token to the service, and
/// records which project, which decision and which workspace tab the last opened notification is
/// about, for the screens to act on. It navigates nowhere itself and resets nothing: a consumer
/// sets a value back to absent when it has taken it. Writing the value that is there already
/// notifies nobody. Main thread only, but for the delegate's two callbacks.
class NotificationManager : public QObject, public platform::UserNotificationCenterDelegate {
    Q_OBJECT
public:
    /// The instance of the process, made on first use.
    [[nodiscard]] static NotificationManager &shared();

    /// Becomes the centre's delegate. All must outlive the manager.
    NotificationManager(const TrellisportAPI &api, platform::UserNotificationCenter &center,
                        platform::Application &application, platform::MainQueue &mainQueue,
                        QObject *parent = nullptr);
    /// One that hears of no notification, for views that are shown by themselves.
    explicit NotificationManager(QObject *parent = nullptr);
    NotificationManager(const NotificationManager &) = delete;
    NotificationManager &operator=(const NotificationManager &) = delete;
    ~NotificationManager() override;

    [[nodiscard]] const std::optional<std::string> &pendingProjectId() const
    {
        return m_pendingProjectId;
    }
    void setPendingProjectId(std::optional<std::string> id);
    [[nodiscard]] const std::optional<std::string> &pendingDecisionId() const
    {
        return m_pendingDecisionId;
    }
    void setPendingDecisionId(std::optional<std::string> id);
    /// "decisions", "overview", "logs" or absent.
    [[nodiscard]] const std::optional<std::string> &pendingTab() const { return m_pendingTab; }
    void setPendingTab(std::optional<std::string> tab);

    /// Asks for permission to notify; when it is granted, the application registers for remote
    /// notifications. Nobody hears of a refusal.
    void requestPermission();
    /// Sends the token to the service as lower-case hexadecimal text. Failures are dropped.
    void registerDeviceToken(const std::vector<std::uint8_t> &token);

    /// Shown with banner, sound and badge; routes nothing. Any thread.
    void willPresent(const platform::UserNotification &notification,
                     std::function<void(platform::PresentationOptions)> completion) override;
    /// Queues the routing step and completes without waiting for it. Any thread.
    void didReceive(const platform::UserNotificationResponse &response,
                    std::function<void()> completion) override;

Q_SIGNALS:
    void pendingProjectIdChanged();
    void pendingDecisionIdChanged();
    void pendingTabChanged();

private:
    void route(const std::string &type, std::optional<std::string> projectId,
               const platform::UserInfo &userInfo);

    const TrellisportAPI *m_api = nullptr;
    platform::UserNotificationCenter *m_center = nullptr;
    platform::Application *m_application = nullptr;
    platform::MainQueue *m_mainQueue = nullptr;
    std::optional<std::string> m_pendingProjectId;
    std::optional<std::string> m_pendingDecisionId;
    std::optional<std::string> m_pendingTab;
    /// Owns nothing: what waits on the main queue holds it weakly, to learn whether this still is.
    std::shared_ptr<NotificationManager> m_self;
};

} // namespace trellisport
