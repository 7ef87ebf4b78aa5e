#include "Platform/Linux/Session/BusSession.h"

#include "Platform/Linux/Notifications/RemoteNotification.h"
#include "Platform/Linux/Session/ApplicationInterface.h"

#include <utility>

namespace trellisport::platform {

BusSession::BusSession(const QDBusConnection &bus, Setup setup, Events events)
    : m_bus(bus)
    , m_setup(std::move(setup))
    , m_events(std::move(events))
    , m_seen(m_setup.stateFolder + QStringLiteral("/push-seen"))
    , m_presenter(bus, {m_setup.name, m_setup.id},
                  {m_events.isInFront, m_events.willPresent,
                   [this](const UserNotification &notification, const QString &token) {
                       activate({token}, [didReceive = m_events.didReceive, notification] {
                           didReceive(notification);
                       });
                   },
                   [this] { update(); }})
    , m_connector(
          bus,
          PushRegistrationStore(m_setup.stateFolder + QStringLiteral("/push-registration.json")),
          {.service = m_setup.id, .description = m_setup.name, .distributor = m_setup.distributor},
          {[this](std::vector<std::uint8_t> token) {
               m_idle.touch();
               m_events.registered(std::move(token));
           },
           [this](const QString &reason) { m_events.refused(reason.toStdString()); },
           [this](const PushMessage &message, std::function<void()> done) {
               messageArrived(message, std::move(done));
           }})
    , m_idle(m_setup.grace, [this] { leave(); })
{
    new ApplicationInterface([this](const ActivationToken &token) { activate(token, [] {}); },
                             this);
    m_bus.registerObject(m_setup.path, this);
}

BusSession::~BusSession()
{
    m_bus.unregisterService(m_setup.id);
    m_bus.unregisterObject(m_setup.path);
}

bool BusSession::claimName()
{
    return claimApplicationName(m_bus, m_setup.id);
}

bool BusSession::activateOther(const ActivationToken &token) const
{
    return activateRunningApplication(m_bus, m_setup.id, m_setup.path, token);
}

void BusSession::authorize(AuthorizationOptions options,
                           UserNotificationCenter::AuthorizationCompletion completion)
{
    m_presenter.authorize(options, std::move(completion));
}

void BusSession::registerDevice()
{
    m_connector.registerDevice();
}

void BusSession::setWindow(bool isThere)
{
    const bool hadWindow = std::exchange(m_hasWindow, isThere);
    update();
    if (hadWindow && !m_idle.isBusy()) {
        m_idle.finish();
    }
}

void BusSession::activate(const ActivationToken &token, std::function<void()> then)
{
    ++m_underWay;
    update();
    m_events.bringUp(token, [this, then = std::move(then)](bool isThere) {
        if (isThere) {
            then();
        }
        // setWindow() has told of the window before.
        QMetaObject::invokeMethod(this, [this] {
            --m_underWay;
            update();
        });
    });
}

void BusSession::messageArrived(const PushMessage &message, std::function<void()> done)
{
    m_idle.touch();
    const auto notification = parseRemoteNotification(message.content, m_setup.name);
    if (!notification) {
        done();
        return;
    }
    const QByteArray identity =
        notification->id.isEmpty() ? message.identity : QByteArray("id ") + notification->id;
    if (!identity.isEmpty()) {
        if (m_seen.contains(identity)) {
            done();
            return;
        }
        m_seen.add(identity);
    }
    ++m_underWay;
    update();
    m_presenter.present(*notification, [this, done = std::move(done)] {
        done();
        --m_underWay;
        update();
    });
}

void BusSession::update()
{
    m_idle.setBusy(m_hasWindow || m_underWay > 0 || m_presenter.waiting() > 0);
}

void BusSession::leave()
{
    // Once the name is given back, the bus starts the program anew for whoever calls it. Who called
    // before is in our queue by now and comes first.
    m_bus.unregisterService(m_setup.id);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_idle.isBusy()) {
                m_events.leave();
            } else {
                // When another instance has the name by now, this one only ends what it began.
                static_cast<void>(claimName());
            }
        },
        Qt::QueuedConnection);
}

} // namespace trellisport::platform
