// Anybody on the bus may take a push service's name, and then describe himself as he likes.
#include "Push/ConnectorFixture.h"

#include <QDBusVirtualObject>

namespace trellisport::test {
namespace {

using HostileDistributorTest = PushConnectorTest;

/// Answers Introspect with any text, and counts what it is asked for afterwards.
class Describing : public QDBusVirtualObject {
public:
    Describing(const QDBusConnection &bus, QString description)
        : m_bus(bus)
        , m_description(std::move(description))
    {
        m_bus.registerVirtualObject(QStringLiteral("/org/unifiedpush/Distributor"), this);
        m_bus.registerService(QStringLiteral("org.unifiedpush.Distributor.hostile"));
    }
    Describing(const Describing &) = delete;
    Describing &operator=(const Describing &) = delete;
    ~Describing() override
    {
        m_bus.unregisterService(QStringLiteral("org.unifiedpush.Distributor.hostile"));
        m_bus.unregisterObject(QStringLiteral("/org/unifiedpush/Distributor"));
    }
    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection & /*bus*/) override
    {
        if (message.member() == QLatin1String("Introspect")) {
            m_bus.send(message.createReply(m_description));
            return true;
        }
        interfaces << message.interface();
        m_bus.send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no")));
        return true;
    }

    QStringList interfaces;

private:
    QDBusConnection m_bus;
    QString m_description;
};

const QString one = QStringLiteral("org.unifiedpush.Distributor1");
const QString two = QStringLiteral("org.unifiedpush.Distributor2");

TEST_F(HostileDistributorTest, NoDescriptionHoldsTheConsoleUp)
{
    QString laughs = QStringLiteral("<!DOCTYPE node [<!ENTITY a0 \"ha\">");
    for (int level = 1; level < 30; ++level) {
        laughs += QStringLiteral("<!ENTITY a%1 \"&a%2;&a%2;\">").arg(level).arg(level - 1);
    }
    for (const QString &description :
         {QString(), QStringLiteral("<"), QStringLiteral("<interface"),
          QStringLiteral("<interface name=\""), QStringLiteral("<:a:b:c xmlns:=''>"),
          QStringLiteral("<!DOCTYPE node [<!ENTITY a '&a;'>]><node a='&a;'>&a;</node>"),
          QStringLiteral("<!DOCTYPE node [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><node>&a;</node>"),
          QStringLiteral("<!DOCTYPE a [<!ENTITY e 'x'>]><a><!DOCTYPE b [<!ENTITY f '&e;&f;'>]>&f;"),
          laughs + QStringLiteral("]><node>&a29;</node>"), QString(4 << 20, QLatin1Char('<')),
          QStringLiteral("<interface ") + QStringLiteral("name ").repeated(1 << 20)}) {
        Describing distributor(m_bus.connect(), description);
        startAndRegister();
        EXPECT_TRUE(waitUntil([&] { return !distributor.interfaces.isEmpty(); }))
            << description.left(80).toStdString();
        EXPECT_EQ(distributor.interfaces.value(0), two) << "the newer is tried first";
    }
}

TEST_F(HostileDistributorTest, DescriptionsAreUnderstoodHoweverTheyAreWritten)
{
    for (const QString &description :
         {QStringLiteral("<node><interface name=\"%1\"/></node>"),
          QStringLiteral("<node><interface name='%1'></interface></node>"),
          QStringLiteral("<interface\n  a=\"b\"\tname = \"%1\" >"),
          QStringLiteral("<node><interface name=\"another\"><method name=\"%1\"/></interface>"
                         "<interface name=\"%1\"/></node>")}) {
        Describing distributor(m_bus.connect(), description.arg(one));
        startAndRegister();
        ASSERT_TRUE(waitUntil([&] { return !distributor.interfaces.isEmpty(); }));
        EXPECT_EQ(distributor.interfaces.value(0), one) << description.toStdString();
    }
    for (const QString &description :
         {QStringLiteral("<node><interface name=\"%1x\"/></node>"),
          QStringLiteral("<method name=\"%1\"/>"), QStringLiteral("<interfaces name=\"%1\"/>"),
          QStringLiteral("<interface surname=\"%1\"/>"),
          QStringLiteral("<interface name=\"another\"><method name=\"%1\"/></interface>")}) {
        Describing distributor(m_bus.connect(), description.arg(one));
        startAndRegister();
        ASSERT_TRUE(waitUntil([&] { return !distributor.interfaces.isEmpty(); }));
        EXPECT_EQ(distributor.interfaces.value(0), two) << description.toStdString();
    }
}

} // namespace
} // namespace trellisport::test
