#include "BusSupport/FakeDistributor.h"
#include "BusSupport/FakeNotificationService.h"
#include "BusSupport/PrivateBus.h"
#include "Platform/Linux/Session/AppIdentity.h"
#include "Support/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>

namespace trellisport::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

/// The program itself on a bus of its own, with everything about it played.
class ProgramOnBusTest : public ::testing::Test {
protected:
    ProgramOnBusTest()
    {
        m_service.appear();
        m_distributor.appear();
    }
    void TearDown() override
    {
        if (const qint64 running = pid()) {
            ::kill(static_cast<pid_t>(running), SIGKILL);
        }
        for (const auto &program : m_programs) {
            program->kill();
            program->waitForFinished();
        }
    }

    /// What the program needs to run; no display, unless a platform that needs none is named.
    [[nodiscard]] QStringList environment(const char *platform) const
    {
        QStringList variables{
            QStringLiteral("DBUS_SESSION_BUS_ADDRESS=") + m_bus.address(),
            QStringLiteral("HOME=") + m_folder.path(),
            QStringLiteral("XDG_RUNTIME_DIR=") + m_folder.path(),
            QStringLiteral("XDG_STATE_HOME=") + m_folder.path(),
            QStringLiteral("TRELLISPORT_BASE_URL=https://127.0.0.1:1/api/v1"),
            QStringLiteral("QT_QUICK_BACKEND=software"),
        };
        if (platform) {
            variables << QStringLiteral("QT_QPA_PLATFORM=") + QLatin1String(platform);
        }
        return variables;
    }
    /// The bus can start it, as after an installation.
    void install(const char *platform = nullptr) { install(environment(platform)); }
    void install(const QStringList &variables)
    {
        m_bus.addService(platform::applicationId(),
                         QStringLiteral("/usr/bin/env -i %1 %2 --background")
                             .arg(variables.join(QLatin1Char(' ')), QStringLiteral(PROGRAM)));
    }
    QProcess &startByHand(const char *platform, const QStringList &arguments = {})
    {
        m_programs.push_back(std::make_unique<QProcess>());
        QProcess &program = *m_programs.back();
        QProcessEnvironment variables;
        for (const QString &entry : environment(platform)) {
            variables.insert(entry.section(QLatin1Char('='), 0, 0),
                             entry.section(QLatin1Char('='), 1));
        }
        program.setProcessEnvironment(variables);
        program.start(QStringLiteral(PROGRAM), arguments);
        return program;
    }
    void startOverBus()
    {
        m_ours.asyncCall(applicationCallToBus(QStringLiteral("StartServiceByName"),
                                              {platform::applicationId(), 0U}));
    }
    bool registered(std::size_t times)
    {
        return waitUntil([&] { return m_distributor.registrations().size() == times; });
    }
    /// The message is acknowledged.
    bool deliver(const QByteArray &message)
    {
        const QDBusPendingCall call = m_distributor.sendMessage1(m_distributor.token(), message);
        return waitUntil([&] { return call.isFinished(); }) && !call.isError();
    }
    /// Of the instance that runs; 0 when none does.
    [[nodiscard]] qint64 pid()
    {
        const QDBusReply<uint> reply = m_ours.interface()->servicePid(platform::applicationId());
        return reply.isValid() ? reply.value() : 0;
    }
    bool isGone()
    {
        return waitUntil([&] { return pid() == 0; });
    }
    static bool hasEnded(QProcess &program)
    {
        return waitUntil([&] { return program.state() == QProcess::NotRunning; });
    }
    static QDBusMessage applicationCall(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage call =
            QDBusMessage::createMethodCall(platform::applicationId(), platform::applicationPath(),
                                           QStringLiteral("org.freedesktop.Application"), method);
        call.setArguments(arguments);
        return call;
    }
    static QDBusMessage applicationCallToBus(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), method);
        call.setArguments(arguments);
        return call;
    }

    PrivateBus m_bus;
    QTemporaryDir m_folder;
    QDBusConnection m_ours = m_bus.connect();
    FakeNotificationService m_service{m_bus.connect()};
    FakeDistributor m_distributor{m_bus.connect(), QStringLiteral("fake"), true, true};
    std::vector<std::unique_ptr<QProcess>> m_programs;
};

const QByteArray question =
    R"({"aps":{"alert":{"title":"Decision"}},"type":"decision_needed","project_id":"p7"})";

TEST_F(ProgramOnBusTest, AMessageStartsItWithoutAnyDisplayAndItWaitsForTheTap)
{
    install();
    startOverBus();
    ASSERT_TRUE(registered(1));
    ::kill(static_cast<pid_t>(pid()), SIGKILL);
    ASSERT_TRUE(isGone());
    // It does not run, and the message is all that comes.
    ASSERT_TRUE(deliver(question));
    ASSERT_THAT(m_service.shown(), SizeIs(1));
    const qint64 running = pid();
    EXPECT_NE(running, 0);
    // There is nothing to show a window on: it goes on as it was.
    m_service.tap(m_service.shown().front().id);
    ASSERT_TRUE(waitUntil([&] { return m_service.closed().size() == 1; }));
    ASSERT_TRUE(deliver("another"));
    EXPECT_THAT(m_service.shown(), SizeIs(2));
    EXPECT_EQ(pid(), running);
}

TEST_F(ProgramOnBusTest, ASecondStartBringsUpTheFirstAndEndsWell)
{
    QProcess &first = startByHand("offscreen");
    ASSERT_TRUE(registered(1));
    QProcess &second = startByHand("offscreen");
    ASSERT_TRUE(hasEnded(second));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(pid(), first.processId());
}

TEST_F(ProgramOnBusTest, AStartInTheBackgroundGetsItsWindowFromASecondStart)
{
    QProcess &first = startByHand("offscreen", {QStringLiteral("--background")});
    ASSERT_TRUE(registered(1));
    QProcess &second = startByHand("offscreen");
    ASSERT_TRUE(hasEnded(second));
    EXPECT_EQ(second.exitCode(), 0);
    ASSERT_TRUE(deliver("hello")); // the exchange for a window lost nothing that it needs
    EXPECT_EQ(pid(), first.processId());
}

/// An instance that leaves as soon as somebody wants it.
class Leaving : public QDBusVirtualObject {
public:
    explicit Leaving(const QDBusConnection &bus)
        : m_bus(bus)
    {
        m_bus.registerVirtualObject(platform::applicationPath(), this);
        m_bus.registerService(platform::applicationId());
    }
    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection & /*bus*/) override
    {
        m_bus.unregisterService(platform::applicationId());
        m_bus.send(message.createErrorReply(QDBusError::NoReply, QStringLiteral("it has gone")));
        return true;
    }

private:
    QDBusConnection m_bus;
};

TEST_F(ProgramOnBusTest, AStartDuringTheLeaveOfAnotherTakesItsPlace)
{
    const Leaving other(m_bus.connect());
    QProcess &program = startByHand("offscreen");
    ASSERT_TRUE(registered(1));
    EXPECT_EQ(pid(), program.processId());
}

TEST_F(ProgramOnBusTest, WithoutAWindowItEndsWithItsSession)
{
    QProcess &program = startByHand(nullptr, {QStringLiteral("--background")});
    ASSERT_TRUE(registered(1));
    m_bus.end();
    ASSERT_TRUE(hasEnded(program));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
}

TEST_F(ProgramOnBusTest, ALauncherGetsAWindowWhereNoServiceIsNamed)
{
    install(
        environment("offscreen").filter(QRegularExpression(QStringLiteral("^(?!TRELLISPORT)"))));
    // As launchers start it: without a window first, which they then ask for.
    const QDBusPendingCall call = m_ours.asyncCall(
        applicationCall(QStringLiteral("Activate"), {QVariant::fromValue(QVariantMap())}));
    ASSERT_TRUE(waitUntil([&] { return call.isFinished(); }));
    EXPECT_FALSE(call.isError());
    // It is the window that keeps it here.
    EXPECT_NE(pid(), 0);
    EXPECT_THAT(m_distributor.registrations(), IsEmpty());
}

TEST_F(ProgramOnBusTest, WithoutADisplayAUsersStartIsRefusedInOneSentence)
{
    QProcess &program = startByHand(nullptr);
    ASSERT_TRUE(hasEnded(program));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.readAllStandardError(),
              QByteArray("trellisport-manager: there is no display to show the window on.\n"));
}

} // namespace
} // namespace trellisport::test
