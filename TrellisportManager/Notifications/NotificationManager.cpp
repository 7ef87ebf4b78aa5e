#include "Notifications/NotificationManager.h"

#include "Platform/Platform.h"

#include <string_view>
#include <utility>

namespace trellisport {

using platform::AuthorizationOptions;
using platform::PresentationOptions;

namespace {

std::optional<std::string> textFor(const platform::UserInfo &userInfo, std::string_view key)
{
    const auto found = userInfo.find(key);
    const std::string *text = found == userInfo.end() ? nullptr : found->second.text();
    return text ? std::optional(*text) : std::nullopt;
}

std::string hexadecimal(const std::vector<std::uint8_t> &bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
    }
    return text;
}

QCoro::Task<> upload(const TrellisportAPI &api, std::string token)
{
    try {
        co_await api.registerDevice(std::move(token));
    } catch (...) { // NOLINT(bugprone-empty-catch): nobody is told, nothing is tried again
    }
}

} // namespace

NotificationManager &NotificationManager::shared()
{
    static NotificationManager manager = [] {
        platform::Platform &platform = platform::Platform::current();
        return NotificationManager(TrellisportAPI::shared(), platform.userNotificationCenter(),
                                   platform.application(), platform.mainQueue());
    }();
    return manager;
}

NotificationManager::NotificationManager(const TrellisportAPI &api,
                                         platform::UserNotificationCenter &center,
                                         platform::Application &application,
                                         platform::MainQueue &mainQueue, QObject *parent)
    : QObject(parent)
    , m_api(&api)
    , m_center(&center)
    , m_application(&application)
    , m_mainQueue(&mainQueue)
    , m_self(this, [](NotificationManager *) {})
{
    m_center->setDelegate(this);
}

NotificationManager::NotificationManager(QObject *parent)
    : QObject(parent)
{
}

NotificationManager::~NotificationManager()
{
    if (m_center) {
        m_center->setDelegate(nullptr);
    }
}

void NotificationManager::setPendingProjectId(std::optional<std::string> id)
{
    if (m_pendingProjectId != id) {
        m_pendingProjectId = std::move(id);
        Q_EMIT pendingProjectIdChanged();
    }
}

void NotificationManager::setPendingDecisionId(std::optional<std::string> id)
{
    if (m_pendingDecisionId != id) {
        m_pendingDecisionId = std::move(id);
        Q_EMIT pendingDecisionIdChanged();
    }
}

void NotificationManager::setPendingTab(std::optional<std::string> tab)
{
    if (m_pendingTab != tab) {
        m_pendingTab = std::move(tab);
        Q_EMIT pendingTabChanged();
    }
}

void NotificationManager::requestPermission()
{
    if (!m_center) {
        return;
    }
    constexpr AuthorizationOptions all{AuthorizationOptions::alert | AuthorizationOptions::badge |
                                       AuthorizationOptions::sound |
                                       AuthorizationOptions::criticalAlert};
    m_center->requestAuthorization(
        all, [queue = m_mainQueue, application = m_application](
                 bool granted, const std::optional<std::string> & /*error*/) {
            if (granted) {
                queue->async([application] { application->registerForRemoteNotifications(); });
            }
        });
}

void NotificationManager::registerDeviceToken(const std::vector<std::uint8_t> &token)
{
    if (m_api) {
        upload(*m_api, hexadecimal(token));
    }
}

void NotificationManager::willPresent(const platform::UserNotification & /*notification*/,
                                      std::function<void(PresentationOptions)> completion)
{
    completion(
        {PresentationOptions::banner | PresentationOptions::sound | PresentationOptions::badge});
}

void NotificationManager::didReceive(const platform::UserNotificationResponse &response,
                                     std::function<void()> completion)
{
    const platform::UserInfo &userInfo = response.notification.userInfo;
    if (m_mainQueue) {
        m_mainQueue->async([self = std::weak_ptr(m_self),
                            type = textFor(userInfo, "type").value_or(std::string()),
                            projectId = textFor(userInfo, "project_id"), userInfo] {
            if (const auto manager = self.lock()) {
                manager->route(type, projectId, userInfo);
            }
        });
    }
    completion();
}

void NotificationManager::route(const std::string &type, std::optional<std::string> projectId,
                                const platform::UserInfo &userInfo)
{
    setPendingProjectId(std::move(projectId));
    if (type == "decision_needed") {
        setPendingDecisionId(textFor(userInfo, "decision_id"));
        setPendingTab("decisions");
    } else if (type == "project_awarded") {
        setPendingTab("overview");
    } else if (type == "dev_error") {
        setPendingTab("logs");
    } else {
        // The decision of an earlier notification stays; it is not of this one.
        setPendingTab(std::nullopt);
    }
}

} // namespace trellisport
