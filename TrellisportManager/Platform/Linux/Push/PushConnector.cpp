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
        QStringList before;
        for (const PushRegistration::Place &place : m_registration.places) {
            before.append(place.distributor);
        }
        if (const auto chosen = chooseDistributor(names, m_options.distributor, before)) {
            use(*chosen, names.running);
        }
    });
}

void PushConnector::use(const QString &distributor, const QStringList &running)
{
    QList<PushRegistration::Place> &places = m_registration.places;
    // The first place is kept while it is away, unless the user named another. What stood in for it
    // is not needed any more.
    const bool isFirst = places.isEmpty() || places.first().distributor == distributor ||
                         !m_options.distributor.isEmpty();
    const QString before = places.isEmpty() ? QString() : placeInUse().distributor;
    QList<PushRegistration::Place> kept;
    for (const PushRegistration::Place &place : places) {
        if (place.distributor == distributor || (!isFirst && kept.isEmpty())) {
            kept.append(place);
        } else {
            giveBack(place, running);
        }
    }
    if (kept.isEmpty() || kept.last().distributor != distributor) {
        kept.append({distributor, {}});
    }
    places = kept;
    if (distributor != before) {
        m_endpoint.clear();
    }
    registerThere();
}

void PushConnector::giveBack(const PushRegistration::Place &place, const QStringList &running)
{
    if (running.contains(place.distributor) && !place.token.isEmpty()) {
        m_former = std::make_unique<DistributorCalls>(m_bus, place.distributor, m_options.service);
        m_former->unregisterToken(place.token);
    }
}

void PushConnector::registerThere()
{
    PushRegistration::Place &place = placeInUse();
    if (m_registration.keys.publicKey.isEmpty()) {
        const auto keys = PushKeys::generate();
        if (!keys) {
            m_events.refused(QStringLiteral("no keys could be made"));
            return;
        }
        m_registration.keys = *keys;
    }
    if (place.token.isEmpty()) {
        place.token = QUuid::createUuid().toString(QUuid::WithoutBraces);
    }
    // Before the call: the endpoint may arrive before its reply.
    save();
    m_distributor = std::make_unique<DistributorCalls>(m_bus, place.distributor, m_options.service);
    m_distributor->registerToken(place.token, m_options.description,
                                 [this](RegisterOutcome outcome, const QString &reason) {
                                     if (outcome == RegisterOutcome::Refused) {
                                         m_events.refused(reason);
                                     }
                                 });
}

void PushConnector::distributorAppeared(const QString &name)
{
    // One in use that comes again may have forgotten us, and the one that another stands in for is
    // returned to. Others beside them change nothing.
    const bool isFirst =
        !m_registration.places.isEmpty() && m_registration.places.first().distributor == name;
    if (m_isWanted && (!m_distributor || m_distributor->name() == name || isFirst)) {
        lookForDistributor();
    }
}

PushRegistration::Place *PushConnector::placeOf(const QString &token)
{
    for (PushRegistration::Place &place : m_registration.places) {
        if (!token.isEmpty() && place.token == token) {
            return &place;
        }
    }
    return nullptr;
}

void PushConnector::newEndpoint(const QString &token, const QString &endpoint)
{
    const PushRegistration::Place *place = placeOf(token);
    if (!place || place != &placeInUse()) {
        return;
    }
    if (endpoint.isEmpty()) {
        // There is none for now. Whoever knows it may drop it by the time that it is back.
        m_endpoint.clear();
        return;
    }
    if (isPushEndpoint(endpoint) && endpoint != m_endpoint) {
        m_endpoint = endpoint;
        m_events.registered(deviceToken(endpoint, m_registration.keys));
    }
}

void PushConnector::unregistered(const QString &token)
{
    PushRegistration::Place *place = placeOf(token);
    if (!place) {
        return;
    }
    // Registering again at once would go round in circles with a push service that does not want
    // us. The next start registers anew, and so does the push service's own return.
    place->token.clear();
    if (place == &placeInUse()) {
        m_endpoint.clear();
    }
    save();
}

void PushConnector::message(const QString &token, const QByteArray &message, const QString &id,
                            std::function<void(MessageFate)> done)
{
    if (!placeOf(token) || message.isEmpty() || message.size() > largestMessage) {
        done(MessageFate::Done);
        return;
    }
    if (m_underWay >= m_options.mostAtOnce) {
        done(MessageFate::TooMany);
        return;
    }
    ++m_underWay;
    const auto finish = [self = QPointer<PushConnector>(this),
                         done = std::move(done)](MessageFate fate) {
        if (self) {
            --self->m_underWay;
        }
        done(fate);
    };
    if (auto content = decryptPushMessage(m_registration.keys, message)) {
        // No two messages are encrypted to the same bytes.
        m_events.message({*std::move(content), "sealed " + message}, finish);
    } else {
        // Push services count anew when they feel like it: the same id may come with other content.
        const QByteArray identity =
            id.isEmpty() ? QByteArray() : "plain " + id.toUtf8() + '\0' + message;
        m_events.message({message, identity}, finish);
    }
}

void PushConnector::save()
{
    // When it can't be kept, the next start makes a new one.
    m_store.save(m_registration);
}

} // namespace trellisport::platform
