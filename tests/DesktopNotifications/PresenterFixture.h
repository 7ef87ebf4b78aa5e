#pragma once

#include "BusSupport/FakeLauncher.h"
#include "BusSupport/FakeNotificationService.h"
#include "BusSupport/PrivateBus.h"
#include "Platform/Linux/Notifications/NotificationPresenter.h"
#include "Support/Waiting.h"

#include <QDBusMessage>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace trellisport::test {

using platform::PresentationOptions;
using platform::Presented;
using platform::RemoteNotification;

inline RemoteNotification question()
{
    return {QStringLiteral("A question"),
            QStringLiteral("Is 1 < 2 & \"so\"?"),
            true,
            {},
            {{{"project_id", {std::string("p1")}}}}};
}

inline RemoteNotification news(const QString &body = QStringLiteral("Awarded"))
{
    return {QStringLiteral("News"), body, false, {}, {}};
}

class PresenterTest : public ::testing::Test {
protected:
    void SetUp() override { m_service.appear(); }

    bool present(const RemoteNotification &notification)
    {
        const auto fates = std::make_shared<std::vector<Presented>>();
        m_presenter.present(notification, [fates](Presented fate) { fates->push_back(fate); });
        return waitUntil([&] { return !fates->empty(); }) && fates->back() == Presented::Settled;
    }
    std::optional<bool> authorize(unsigned options = 4 + 1 + 2 + 16)
    {
        std::optional<bool> granted;
        m_presenter.authorize(
            {options}, [&](bool given, const std::optional<std::string> &) { granted = given; });
        static_cast<void>(waitUntil([&] { return granted.has_value(); }));
        return granted;
    }

    /// What the launcher shows; nothing before it was told anything.
    [[nodiscard]] std::optional<qlonglong> badge() const
    {
        if (m_launcher.updates().empty()) {
            return std::nullopt;
        }
        const QVariantMap &last = m_launcher.updates().back().properties;
        const qlonglong count = last[QStringLiteral("count")].toLongLong();
        return last[QStringLiteral("count-visible")].toBool() ? count : 0;
    }

    PrivateBus m_bus;
    FakeLauncher m_launcher{m_bus.connect()};
    FakeNotificationService m_service{m_bus.connect()};
    bool m_isInFront = false;
    PresentationOptions m_options{16 + 2 + 1};
    int m_willPresent = 0;
    int m_waitingChanges = 0;
    std::vector<platform::UserNotification> m_opened;
    std::vector<QString> m_tokens;
    platform::NotificationPresenter m_presenter{
        m_bus.connect(),
        {QStringLiteral("The console"), QStringLiteral("org.trellisport.test"),
         std::chrono::milliseconds(20)},
        {[this] { return m_isInFront; },
         [this](const platform::UserNotification &, const auto &completion) {
             ++m_willPresent;
             completion(m_options);
         },
         [this](const platform::UserNotification &notification, const QString &token) {
             m_opened.push_back(notification);
             m_tokens.push_back(token);
         },
         [this] { ++m_waitingChanges; }}};
};

} // namespace trellisport::test
