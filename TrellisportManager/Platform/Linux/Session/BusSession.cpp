#include "Platform/Linux/Session/BusSession.h"

#include "Platform/Linux/Session/ApplicationInterface.h"
#include "Platform/Toolkit/RemoteNotification.h"

#include <utility>

namespace trellisport::platform {

namespace {
/// Stands before a number where a message has no identity of its own.
const QByteArray nameless = "nameless ";
} // namespace

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
           [this](const PushMessage &message, std::function<void(MessageFate)> done) {
               messageArrived(message, std::move(done));
           }})
    , m_idle(m_setup.grace, [this] { leave(); })
    , m_hasWindow(m_setup.awaitsWindow)
{
    new ApplicationInterface([this](const ActivationToken &token) { activate(token, {}); }, this);
    m_bus.registerObject(m_setup.path, this);
    m_bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                  this, SLOT(busHasGone()));
    update();
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
    // However many want the window while it is being brought up: it comes up once more for them.
    if (!m_nextActivation) {
        m_nextActivation.emplace();
    }
    if (!token.value.isEmpty()) {
        m_nextActivation->token = token;
    }
    if (then) {
        m_nextActivation->thens.push_back(std::move(then));
    }
    activateNext();
}

void BusSession::activateNext()
{
    if (m_isActivating || !m_nextActivation) {
        return;
    }
    m_isActivating = true;
    update();
    Activation activation = *std::exchange(m_nextActivation, {});
    m_events.bringUp(activation.token, [this, thens = std::move(activation.thens)](bool isThere) {
        if (isThere) {
            for (const auto &then : thens) {
                then();
            }
        }
        // setWindow() has told of the window before.
        QMetaObject::invokeMethod(this, [this] {
            m_isActivating = false;
            activateNext();
            update();
        });
    });
}

void BusSession::messageArrived(const PushMessage &message, std::function<void(MessageFate)> done)
{
    m_idle.touch();
    const RemoteNotification notification = parseRemoteNotification(message.content, m_setup.name);
    QByteArray identity =
        notification.id.isEmpty() ? message.identity : QByteArray("id ") + notification.id;
    if (identity.isEmpty()) {
        identity = nameless + QByteArray::number(++m_nameless);
    } else if (m_seen.contains(identity)) {
        done(MessageFate::Done);
        return;
    }
    if (const auto known = m_unsettled.find(identity); known != m_unsettled.end()) {
        if (known->isPostponed) {
            done(MessageFate::NotNow);
        } else {
            known->answers.push_back(std::move(done));
        }
        return;
    }
    m_unsettled[identity].answers.push_back(std::move(done));
    m_presenter.present(notification,
                        [this, identity](Presented fate) { presented(identity, fate); });
}

void BusSession::presented(const QByteArray &identity, Presented fate)
{
    const bool isSettled = fate == Presented::Settled;
    if (isSettled && !identity.startsWith(nameless)) {
        m_seen.add(identity);
    }
    Unsettled &message = m_unsettled[identity];
    for (const auto &answer : std::exchange(message.answers, {})) {
        answer(isSettled ? MessageFate::Done : MessageFate::NotNow);
    }
    message.isPostponed = true;
    if (fate != Presented::Later) {
        m_unsettled.remove(identity);
    }
}

void BusSession::busHasGone()
{
    m_hasBus = false;
    m_unsettled.clear();
    m_presenter.forgetAll();
    update();
    if (!m_idle.isBusy()) {
        m_idle.finish();
    }
}

void BusSession::update()
{
    m_idle.setBusy(m_hasWindow || m_isActivating || (m_hasBus && m_presenter.waiting() > 0));
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
