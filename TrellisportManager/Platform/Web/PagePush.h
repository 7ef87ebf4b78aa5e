#pragma once

#include "Platform/Toolkit/NotificationRelay.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace trellisport::platform {

/// Push messages by the browser's own service: the page asks for permission and for an address, and
/// a service worker receives them, shows them, and tells the page which the user opened. One of
/// these lives at a time. Main thread.
class PagePush {
public:
    struct Events {
        std::function<void(std::vector<std::uint8_t> deviceToken)> registered;
        std::function<void(const std::string &reason)> refused;
    };

    /// relay must outlive it.
    PagePush(NotificationRelay &relay, Events events);
    PagePush(const PagePush &) = delete;
    PagePush &operator=(const PagePush &) = delete;
    ~PagePush();

    /// Asks for an address; one of the events follows.
    void registerDevice();
    /// Takes up what the service worker tells, and told since the page was opened.
    void receiveMessages();

    // For the scripts.
    void subscribed(bool isThere, const std::string &tokenOrReason);
    void messageOpened(const std::string &content);
    void messageArrived(int number, const std::string &content);

private:
    NotificationRelay &m_relay;
    Events m_events;
};

} // namespace trellisport::platform
