#include "Platform/Web/PagePush.h"

#include "Platform/Toolkit/RemoteNotification.h"
#include "Platform/Web/JsText.h"

#include <QByteArray>

#include <emscripten/em_macros.h>

#include <unordered_map>
#include <utility>

// Script/Push.js
extern "C" void trellisport_ask_permission(int number);
extern "C" void trellisport_subscribe();
extern "C" void trellisport_watch_messages();
extern "C" void trellisport_present(int number, unsigned options);

namespace trellisport::platform {

namespace {

PagePush *current = nullptr;
std::unordered_map<int, UserNotificationCenter::AuthorizationCompletion> questions;
int lastQuestion = 0;

UserNotification notification(const std::string &content)
{
    return parseRemoteNotification(QByteArray::fromStdString(content), {}).notification;
}

} // namespace

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_permission(int number, bool isGranted)
{
    questions.extract(number).mapped()(isGranted, std::nullopt);
}

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_subscribed(bool isThere)
{
    const std::string text = takeText();
    if (current) {
        current->subscribed(isThere, text);
    }
}

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_message_opened()
{
    const std::string content = takeText();
    if (current) {
        current->messageOpened(content);
    }
}

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_message_arrived(int number)
{
    const std::string content = takeText();
    if (current) {
        current->messageArrived(number, content);
    }
}

PagePush::PagePush(NotificationRelay &relay, Events events)
    : m_relay(relay)
    , m_events(std::move(events))
{
    current = this;
    m_relay.serveRequests([](AuthorizationOptions /*what a browser may is its own matter*/,
                             UserNotificationCenter::AuthorizationCompletion completion) {
        questions.emplace(++lastQuestion, std::move(completion));
        trellisport_ask_permission(lastQuestion);
    });
}

PagePush::~PagePush()
{
    m_relay.serveRequests({});
    current = nullptr;
}

void PagePush::registerDevice()
{
    trellisport_subscribe();
}

void PagePush::receiveMessages()
{
    trellisport_watch_messages();
}

void PagePush::subscribed(bool isThere, const std::string &tokenOrReason)
{
    if (isThere) {
        m_events.registered({tokenOrReason.begin(), tokenOrReason.end()});
    } else {
        m_events.refused(tokenOrReason);
    }
}

void PagePush::messageOpened(const std::string &content)
{
    m_relay.didReceive(notification(content));
}

void PagePush::messageArrived(int number, const std::string &content)
{
    m_relay.willPresent(notification(content), [number](PresentationOptions options) {
        trellisport_present(number, options.bits);
    });
}

} // namespace trellisport::platform
