// Anybody on the bus may call what the program exports, with whatever they like. All that comes of
// it is the window.
#include "Session/SessionFixture.h"

#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QXmlStreamReader>

#include <set>
#include <utility>

namespace trellisport::test {
namespace {

using ::testing::SizeIs;

const char *const connectorPath = "/org/unifiedpush/Connector";
const char *const connector1 = "org.unifiedpush.Connector1";
const char *const connector2 = "org.unifiedpush.Connector2";
const char *const application = "org.freedesktop.Application";

struct Target {
    const char *path;
    const char *interface;
    const char *method;
};

const std::vector<Target> targets{
    {path, application, "Activate"},
    {path, application, "Open"},
    {path, application, "ActivateAction"},
    {connectorPath, connector1, "Message"},
    {connectorPath, connector1, "NewEndpoint"},
    {connectorPath, connector1, "Unregistered"},
    {connectorPath, connector2, "Message"},
    {connectorPath, connector2, "NewEndpoint"},
    {connectorPath, connector2, "Unregistered"},
};

QVariant nested(int depth)
{
    QVariant value = QStringLiteral("inmost");
    for (int level = 0; level < depth; ++level) {
        value = QVariant::fromValue(QDBusVariant(value));
    }
    return value;
}

/// Arguments of many kinds: none, wrong ones, long ones, and right types with unknown values.
std::vector<QVariantList> strangeArguments()
{
    const QString text = QStringLiteral("text");
    const QString longText(1 << 20, QLatin1Char('x'));
    const QString endpoint = QStringLiteral("https://stranger.example/take-it");
    const QVariantMap map{{QStringLiteral("token"), QStringLiteral("no-such-token")},
                          {QStringLiteral("message"), question},
                          {QStringLiteral("endpoint"), endpoint},
                          {QStringLiteral("id"), QStringLiteral("1")}};
    const QVariantMap wrongTypes{{QStringLiteral("token"), 7},
                                 {QStringLiteral("message"), QStringList{text}},
                                 {QStringLiteral("endpoint"), true},
                                 {QStringLiteral("id"), QByteArray(9, '\xFF')},
                                 {QStringLiteral("activation-token"), 5.5},
                                 {QStringLiteral("desktop-startup-id"), QVariantList{1, 2}}};
    QFile file(QStringLiteral("/dev/null"));
    file.open(QIODevice::ReadOnly);
    const QVariant descriptor = QVariant::fromValue(QDBusUnixFileDescriptor(file.handle()));
    return {
        {},
        {7},
        {-1.5, true},
        {text},
        {longText},
        {text, text, text, text, text, text},
        {QByteArray(1 << 20, '\xFF')},
        {QStringList(10'000, text)},
        {QVariant::fromValue(QDBusVariant(text))},
        {nested(30)},
        {descriptor},
        {QVariantMap()},
        {wrongTypes},
        {QVariantMap{{longText, longText}}},
        {map},
        {QStringList{QStringLiteral("file:///etc/passwd")}, wrongTypes},
        {QStringLiteral("quit"), QVariantList{nested(5)}, wrongTypes},
        {QStringLiteral("no-such-token"), question, QStringLiteral("1")},
        {QStringLiteral("no-such-token"), endpoint},
        {QString(), endpoint},
        {QString()},
        {longText, QByteArray(1 << 20, 'x'), longText},
    };
}

/// What a stranger can see of the program on the bus.
class StrangersTest : public BusSessionTest {
protected:
    QDBusMessage call(const char *to, const char *interface, const QString &method,
                      const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QLatin1String(name), QLatin1String(to), QLatin1String(interface), method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = m_stranger.asyncCall(message);
        EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); })) << method.toStdString();
        return pending.reply();
    }
    [[nodiscard]] QByteArray stateOnDisk() const
    {
        QFile file(m_folder.filePath(QStringLiteral("state/push-registration.json")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The interfaces of an object, each with its methods, and the objects below it.
    void look(const QString &at, std::set<std::string> &methods)
    {
        const QDBusMessage reply =
            call(at.toLatin1().constData(), "org.freedesktop.DBus.Introspectable",
                 QStringLiteral("Introspect"), {});
        QXmlStreamReader xml(reply.arguments().value(0).toString());
        QString interface;
        int depth = 0;
        while (!xml.atEnd()) {
            const auto token = xml.readNext();
            if (token == QXmlStreamReader::StartElement) {
                ++depth;
                const QString own = xml.attributes().value(QLatin1String("name")).toString();
                if (xml.name() == QLatin1String("interface")) {
                    interface = own;
                } else if (xml.name() == QLatin1String("node") && depth == 2) {
                    look((at == QLatin1String("/") ? at : at + QLatin1Char('/')) + own, methods);
                } else if (xml.name() != QLatin1String("arg") && depth == 3 &&
                           !interface.startsWith(QLatin1String("org.freedesktop.DBus."))) {
                    methods.insert(
                        (at + QLatin1Char(' ') + interface + QLatin1Char('.') + own).toStdString());
                }
            } else if (token == QXmlStreamReader::EndElement) {
                --depth;
            }
        }
    }

    QDBusConnection m_stranger = m_bus.connect();
};

TEST_F(StrangersTest, NothingCanBeCalledButWhatIsMeantToBe)
{
    start();
    registerDevice();
    std::set<std::string> seen;
    look(QStringLiteral("/"), seen);
    std::set<std::string> meant;
    for (const Target &target : targets) {
        meant.insert(std::string(target.path) + ' ' + target.interface + '.' + target.method);
    }
    EXPECT_EQ(seen, meant);
}

TEST_F(StrangersTest, StrangeCallsBringUpTheWindowAtMost)
{
    start();
    registerDevice();
    const QByteArray before = stateOnDisk();
    ASSERT_FALSE(before.isEmpty());
    const auto token = std::exchange(deviceToken, {});
    for (const Target &target : targets) {
        for (const QVariantList &arguments : strangeArguments()) {
            static_cast<void>(
                call(target.path, target.interface, QLatin1String(target.method), arguments));
        }
    }
    settle();
    EXPECT_EQ(std::count_if(log.begin(), log.end(),
                            [](const std::string &entry) { return entry != "bring up "; }),
              0);
    EXPECT_THAT(m_service.shown(), SizeIs(0));
    EXPECT_TRUE(std::exchange(deviceToken, token).empty());
    EXPECT_EQ(stateOnDisk(), before);
    ASSERT_TRUE(deliver(sealed(awarded))) << "the owner's messages still come";
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(StrangersTest, UnknownObjectsInterfacesAndMethodsAreErrors)
{
    start();
    for (const char *at : {"/", "/org", "/org/trellisport", "/nowhere", path, connectorPath}) {
        for (const char *interface :
             {"", "org.freedesktop.Application.Private", "org.trellisport.Settings",
              "org.freedesktop.Notifications"}) {
            for (const char *method : {"Quit", "deleteLater", "setWindow", "leave", "Notify"}) {
                EXPECT_EQ(call(at, interface, QLatin1String(method), {}).type(),
                          QDBusMessage::ErrorMessage)
                    << at << ' ' << interface << ' ' << method;
            }
        }
    }
    EXPECT_TRUE(log.empty());
}

TEST_F(StrangersTest, PropertiesCanNeitherBeReadNorWritten)
{
    start();
    for (const char *at : {path, connectorPath}) {
        for (const char *interface : {application, connector1, connector2, ""}) {
            const QString own = QLatin1String(interface);
            const char *const properties = "org.freedesktop.DBus.Properties";
            const QDBusMessage all = call(at, properties, QStringLiteral("GetAll"), {own});
            EXPECT_TRUE(qdbus_cast<QVariantMap>(all.arguments().value(0)).isEmpty());
            // "objectName" the toolkit lets anybody set; nothing of ours reads it.
            for (const char *property : {"window", "token", "endpoint", "receiver", "bus"}) {
                EXPECT_EQ(call(at, properties, QStringLiteral("Set"),
                               {own, QLatin1String(property),
                                QVariant::fromValue(QDBusVariant(QStringLiteral("x")))})
                              .type(),
                          QDBusMessage::ErrorMessage)
                    << interface << ' ' << property;
            }
        }
    }
}

TEST_F(StrangersTest, SignalsOfStrangersMeanNothing)
{
    start();
    registerDevice();
    ASSERT_TRUE(deliver(sealed(awarded)));
    const QList<quint32> ids{m_service.shown().front().id};
    const auto signal = [&](const char *at, const char *interface, const char *member,
                            const QVariantList &arguments) {
        for (const bool isTargeted : {false, true}) {
            QDBusMessage message =
                isTargeted
                    ? QDBusMessage::createTargetedSignal(QLatin1String(name), QLatin1String(at),
                                                         QLatin1String(interface),
                                                         QLatin1String(member))
                    : QDBusMessage::createSignal(QLatin1String(at), QLatin1String(interface),
                                                 QLatin1String(member));
            message.setArguments(arguments);
            m_stranger.send(message);
        }
    };
    const char *const notifications = "org.freedesktop.Notifications";
    const char *const notificationsPath = "/org/freedesktop/Notifications";
    const QString distributor = QStringLiteral("org.unifiedpush.Distributor.fake");
    for (const quint32 id : ids) {
        signal(notificationsPath, notifications, "ActionInvoked", {id, QStringLiteral("default")});
        signal(notificationsPath, notifications, "NotificationClosed", {id, 2U});
    }
    signal("/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged",
           {QLatin1String(notifications), QStringLiteral(":1.1"), QString()});
    signal("/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged",
           {distributor, QString(), QStringLiteral(":1.99")});
    settle();
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(m_service.closed().empty());
    EXPECT_THAT(m_distributor.registrations(), SizeIs(1));
    m_service.tap(ids.front());
    EXPECT_TRUE(logHas("open p1")) << "the notification still waited";
}

TEST_F(StrangersTest, NobodyCanTellItThatItsBusHasEnded)
{
    start(std::chrono::milliseconds(50));
    m_session->setWindow(true);
    registerDevice();
    ASSERT_TRUE(deliver(sealed(question)));
    m_session->setWindow(false); // it stays for the question alone, as long as there is a bus
    QDBusConnection stranger = m_bus.connect(); // the bus may end the connection over this
    stranger.send(QDBusMessage::createTargetedSignal(
        QLatin1String(name), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected")));
    stranger.send(QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/DBus/Local"),
                                             QStringLiteral("org.freedesktop.DBus.Local"),
                                             QStringLiteral("Disconnected")));
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    settle();
}

} // namespace
} // namespace trellisport::test
