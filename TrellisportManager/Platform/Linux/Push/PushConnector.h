#pragma once

#include "Platform/Linux/Push/ConnectorInterfaces.h"
#include "Platform/Linux/Push/DistributorCalls.h"
#include "Platform/Linux/Push/Distributors.h"
#include "Platform/Linux/Push/PushRegistration.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace trellisport::platform {

/// A message that a push service delivered for us: decrypted, or as it came when it was not
/// encrypted for our keys.
struct PushMessage {
    QByteArray content;
    /// Tells this message from every other; the same when it is delivered again. Empty when
    /// nothing does.
    QByteArray identity;
};

/// Keeps this program registered with a push service of the session and hands on what it delivers.
/// Push services come, go and return; the registration follows them, and another stands in while
/// the one in use is away. One thread, which runs an
/// event loop.
class PushConnector : public QObject, private PushReceiver {
    Q_OBJECT
public:
    struct Options {
        QString service;     ///< our bus name
        QString description; ///< names the program in a push service's own list
        QString distributor; ///< the last part of the only push service to use; empty: any
        int mostAtOnce = 32; ///< messages under way; further ones are turned away
    };
    struct Events {
        /// The device can be reached under this token. Once in a run, and when it changes.
        std::function<void(std::vector<std::uint8_t> token)> registered;
        std::function<void(QString reason)> refused;
        /// done is called once, when the message's fate is known. Any time later.
        std::function<void(PushMessage message, std::function<void(MessageFate)> done)> message;
    };

    /// Loads the registration and puts the interfaces on the bus; push services reach them once
    /// our name is on the bus, too.
    PushConnector(const QDBusConnection &bus, PushRegistrationStore store, Options options,
                  Events events, QObject *parent = nullptr);
    PushConnector(const PushConnector &) = delete;
    PushConnector &operator=(const PushConnector &) = delete;
    ~PushConnector() override;

    /// Registers with a push service, now or when one comes. Without one nothing happens.
    void registerDevice();

private:
    void message(const QString &token, const QByteArray &message, const QString &id,
                 std::function<void(MessageFate)> done) override;
    void newEndpoint(const QString &token, const QString &endpoint) override;
    void unregistered(const QString &token) override;

    /// The one in use is the last.
    [[nodiscard]] PushRegistration::Place &placeInUse() { return m_registration.places.last(); }
    /// Where the token was made; null when it is none of ours.
    [[nodiscard]] PushRegistration::Place *placeOf(const QString &token);
    void lookForDistributor();
    void use(const QString &distributor, const QStringList &running);
    void registerThere();
    void giveBack(const PushRegistration::Place &place, const QStringList &running);
    void distributorAppeared(const QString &name);
    void save();

    QDBusConnection m_bus;
    PushRegistrationStore m_store;
    Options m_options;
    Events m_events;
    PushRegistration m_registration;
    Distributors m_distributors;
    std::unique_ptr<DistributorCalls> m_distributor; ///< the one registered with in this run
    std::unique_ptr<DistributorCalls> m_former;
    QString m_endpoint; ///< the last that was handed on; empty when it holds no more
    bool m_isWanted = false;
    int m_underWay = 0;
};

} // namespace trellisport::platform
