#include "Platform/Linux/Push/PushConnector.h"

#include "Platform/Linux/Push/PushEndpoint.h"
#include "Platform/Linux/Push/WebPushDecryption.h"

#include <QPointer>
#include <QUuid>

#include <utility>

namespace trellisport::platform {

namespace {

constexpr qsizetype largestMessage = 4096;
constexpr const char *objectPath = "/org/unifiedpush/Connector";

} // namespace

PushConnector::PushConnector(const QDBusConnection &bus, PushRegistrationStore store,
                             Options options, Events events, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_store(std::move(store))
    , m_options(std::move(options))
    , m_events(std::move(events))
    , m_registration(m_store.load().value_or(PushRegistration()))
    , m_distributors(bus)
{
    // A push service keeps to the generation that it first registered us with: both are there.
    new ConnectorInterface1(*this, bus, this);
    new ConnectorInterface2(*this, bus, this);
    m_bus.registerObject(QLatin1String(objectPath), this);
    connect(&m_distributors, &Distributors::appeared, this, &PushConnector::distributorAppeared);
    connect(&m_distributors, &Distributors::vanished, this, [this](const QString &name) {
        if (m_distributor && m_distributor->name() == name) {
            m_distributor.reset();
        }
    });
}

PushConnector::~PushConnector()
{
    m_bus.unregisterObject(QLatin1String(objectPath));
}

void PushConnector::registerDevice()
{
    m_isWanted = true;
    lookForDistributor();
}

void PushConnector::lookForDistributor()
{
    m_distributors.list([this](const DistributorNames &names) {
        const auto chosen =
            chooseDistributor(names, m_options.distributor, m_registration.distributor);
        if (!chosen) {
            return;
        }
        if (*chosen != m_registration.distributor) {
            leaveFormerDistributor(names.running);
        }
        registerWith(*chosen);
    });
}

void PushConnector::leaveFormerDistributor(const QStringList &running)
{
    if (running.contains(m_registration.distributor) && !m_registration.token.isEmpty()) {
        m_former = std::make_unique<DistributorCalls>(m_bus, m_registration.distributor,
                                                      m_options.service);
        m_former->unregisterToken(m_registration.token);
    }
    m_registration.token.clear();
}

void PushConnector::registerWith(const QString &distributor)
{
    m_registration.distributor = distributor;
    if (m_registration.keys.publicKey.isEmpty()) {
        const auto keys = PushKeys::generate();
        if (!keys) {
            m_events.refused(QStringLiteral("no keys could be made"));
            return;
        }
        m_registration.keys = *keys;
    }
    if (m_registration.token.isEmpty()) {
        m_registration.token = QUuid::createUuid().toString(QUuid::WithoutBraces);
    }
    // Before the call: the endpoint may arrive before its reply.
    save();
    m_distributor = std::make_unique<DistributorCalls>(m_bus, distributor, m_options.service);
    m_distributor->registerToken(m_registration.token, m_options.description,
                                 [this](RegisterOutcome outcome, const QString &reason) {
                                     if (outcome == RegisterOutcome::Refused) {
                                         m_events.refused(reason);
                                     }
                                 });
}

void PushConnector::distributorAppeared(const QString &name)
{
    // One in use that comes again may have forgotten us. Others beside it change nothing.
    if (m_isWanted && (!m_distributor || m_distributor->name() == name)) {
        lookForDistributor();
    }
}

bool PushConnector::isOurs(const QString &token) const
{
    return !token.isEmpty() && token == m_registration.token;
}

void PushConnector::newEndpoint(const QString &token, const QString &endpoint)
{
    // An empty one means that there is none for now.
    if (!isOurs(token) || !isPushEndpoint(endpoint) || endpoint == m_endpoint) {
        return;
    }
    m_endpoint = endpoint;
    m_events.registered(deviceToken(endpoint, m_registration.keys));
}

void PushConnector::unregistered(const QString &token)
{
    if (!isOurs(token)) {
        return;
    }
    // Registering again at once would go round in circles with a push service that does not want
    // us. The next start registers anew, and so does the push service's own return.
    m_registration.token.clear();
    m_endpoint.clear();
    save();
}

void PushConnector::message(const QString &token, const QByteArray &message, const QString &id,
                            std::function<void(bool isDone)> done)
{
    if (!isOurs(token) || message.isEmpty() || message.size() > largestMessage) {
        done(true);
        return;
    }
    if (m_underWay >= m_options.mostAtOnce) {
        done(false);
        return;
    }
    ++m_underWay;
    const auto finish = [self = QPointer<PushConnector>(this), done = std::move(done)] {
        if (self) {
            --self->m_underWay;
        }
        done(true);
    };
    if (auto content = decryptPushMessage(m_registration.keys, message)) {
        // No two messages are encrypted to the same bytes.
        m_events.message({*std::move(content), message}, finish);
    } else {
        m_events.message({message, id.toUtf8()}, finish);
    }
}

void PushConnector::save()
{
    // When it can't be kept, the next start makes a new one.
    m_store.save(m_registration);
}

} // namespace trellisport::platform
