#include "Platform/Linux/Session/LinuxApplication.h"
#include "Platform/Linux/LinuxEnvironment.h"

#include "BusSupport/FakeDesktop.h"
#include "BusSupport/PrivateBus.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace trellisport::platform {
namespace {

using ::testing::ElementsAre;

class NoDelegate : public ApplicationDelegate {
public:
    bool didFinishLaunching() override { return true; }
    void didRegisterForRemoteNotifications(const std::vector<std::uint8_t> & /*token*/) override {}
};

/// An application whose window is a bare one; logs what is asked of it.
class BareEntry : public ApplicationEntry {
public:
    BareEntry(std::vector<std::string> &log, std::function<void(QWindow &)> shown)
        : m_log(log)
        , m_shown(std::move(shown))
    {
    }
    ApplicationDelegate &delegate() override { return m_delegate; }
    bool showWindow() override
    {
        m_log.push_back("show " + qgetenv("XDG_ACTIVATION_TOKEN").toStdString());
        m_window = std::make_unique<QWindow>();
        m_window->show();
        QTimer::singleShot(0, m_window.get(), [this] { m_shown(*m_window); });
        return true;
    }
    void closeWindow() override
    {
        m_log.emplace_back("close");
        m_window.reset();
    }

private:
    std::vector<std::string> &m_log;
    std::function<void(QWindow &)> m_shown;
    NoDelegate m_delegate;
    std::unique_ptr<QWindow> m_window;
};

/// The application on a machine without a session bus and without a screen.
class LinuxApplicationTest : public ::testing::Test {
protected:
    LinuxApplicationTest()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS",
                "unix:path=" + m_folder.filePath(QStringLiteral("none")).toUtf8());
        qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8());
        qputenv("XDG_STATE_HOME", m_folder.path().toUtf8());
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    /// shown is called from the event loop once the window is there.
    int run(LaunchReason reason, const std::function<void(QWindow &)> &shown = {})
    {
        int count = 1;
        std::string name = "test";
        char *arguments[] = {name.data(), nullptr};
        return m_application.run(count, arguments, reason,
                                 [&] { return std::make_unique<BareEntry>(m_log, shown); });
    }

    QTemporaryDir m_folder;
    std::vector<std::string> m_log;
    MainThreadQueue m_queue;
    NotificationRelay m_center;
    LinuxEnvironment m_environment;
    LinuxAppearance m_appearance{m_environment};
    LinuxApplication m_application{m_queue, m_center, m_appearance,
                                   [this] { m_log.emplace_back("finish"); }};
};

// The first: the toolkit finds no session bus any more where it once has found none.
TEST_F(LinuxApplicationTest, FollowsTheDesktopsTextScaleWhileItRuns)
{
    test::PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    std::unique_ptr<test::FakeSettingsPortal> portal;
    const std::shared_ptr<void> observation = m_appearance.observe([&] {
        m_log.push_back("text " + std::to_string(m_appearance.textScale()));
        QCoreApplication::quit();
    });
    const auto change = [&] {
        portal->change(QStringLiteral("org.gnome.desktop.interface"),
                       QStringLiteral("text-scaling-factor"), 1.5);
    };
    EXPECT_EQ(run(LaunchReason::User,
                  [&](QWindow &window) {
                      portal = std::make_unique<test::FakeSettingsPortal>(bus.connect());
                      portal->appear();
                      // What comes right with a name is not known to be that name's.
                      auto *timer = new QTimer(&window);
                      QObject::connect(timer, &QTimer::timeout, portal.get(), change);
                      timer->start(10);
                  }),
              0);
    EXPECT_THAT(m_log, ElementsAre("show ", "text 1.500000", "finish"));
}

TEST_F(LinuxApplicationTest, EndsWithItsWindowAndFinishesWhatMustNotBeCutOff)
{
    EXPECT_EQ(run(LaunchReason::User, [](QWindow &window) { window.close(); }), 0);
    EXPECT_THAT(m_log, ElementsAre("show ", "close", "finish"));
}

TEST_F(LinuxApplicationTest, AWindowThatIsBackBeforeItsClosingIsDealtWithStays)
{
    std::vector<std::string> beforeTheEnd;
    EXPECT_EQ(run(LaunchReason::User,
                  [&](QWindow &window) {
                      window.close();
                      window.show();
                      m_queue.async([&] { // after the news of the closing
                          beforeTheEnd = m_log;
                          window.close();
                      });
                  }),
              0);
    EXPECT_THAT(beforeTheEnd, ElementsAre("show "));
    EXPECT_THAT(m_log, ElementsAre("show ", "close", "finish"));
}

TEST_F(LinuxApplicationTest, TheActivationTokenIsThereForTheWindowAndGoneAfterIt)
{
    qputenv("XDG_ACTIVATION_TOKEN", "token-1");
    bool isStillThere = true;
    EXPECT_EQ(run(LaunchReason::User,
                  [&](QWindow &window) {
                      isStillThere = qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN") ||
                                     qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID");
                      window.close();
                  }),
              0);
    EXPECT_THAT(m_log, ElementsAre("show token-1", "close", "finish"));
    EXPECT_FALSE(isStillThere);
}

TEST_F(LinuxApplicationTest, WithoutASessionBusThereIsNothingToReceiveMessagesFrom)
{
    EXPECT_EQ(run(LaunchReason::Message), 1);
    EXPECT_THAT(m_log, ElementsAre("finish"));
}

} // namespace
} // namespace trellisport::platform
