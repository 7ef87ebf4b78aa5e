#include "Platform/Linux/Session/LinuxApplication.h"

#include "Platform/Linux/Desktop/DesktopSettings.h"
#include "Platform/Linux/Desktop/ScreenKeyboard.h"
#include "Platform/Linux/Push/PrivateFile.h"
#include "Platform/Linux/Session/AppIdentity.h"
#include "Platform/Linux/Session/BusSession.h"
#include "Platform/Linux/Session/BusThread.h"
#include "Platform/Linux/Session/Display.h"
#include "Platform/Linux/Session/ToolkitApplication.h"
#include "Platform/Linux/Session/UserEnvironment.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include <iostream>
#include <utility>

namespace trellisport::platform {

namespace {

constexpr const char *connectionName = "trellisport";

/// A connection of our own: the toolkit's default one is also its own plugins'.
QDBusConnection sessionBus()
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                         QLatin1String(connectionName));
}

int complain(const char *sentence)
{
    std::cerr << "trellisport-manager: " << sentence << '\n';
    return 1;
}

} // namespace

LinuxApplication::LinuxApplication(MainThreadQueue &queue, NotificationRelay &center,
                                   LinuxAppearance &appearance, std::function<void()> finish)
    : m_queue(queue)
    , m_center(center)
    , m_appearance(appearance)
    , m_finish(std::move(finish))
{
}

LinuxApplication::~LinuxApplication() = default;

int LinuxApplication::run(int &argc, char **argv, LaunchReason reason, const MakeEntry &makeEntry)
{
    const ActivationToken token = ActivationToken::takeFromEnvironment();
    m_toolkit = std::make_unique<ToolkitApplication>(argc, argv, m_queue);
    m_bus = std::make_unique<BusThread>();
    startSession(reason == LaunchReason::User);
    const int status = live(reason, token, makeEntry);
    m_finish();
    m_entry.reset();
    m_keyboard.reset();
    endSession();
    m_bus.reset();
    m_toolkit.reset();
    return status;
}

bool LinuxApplication::canShowWindow() const
{
    return displayIsReachable();
}

void LinuxApplication::registerForRemoteNotifications()
{
    if (m_session) {
        m_bus->run([this] { m_session->registerDevice(); });
    }
}

void LinuxApplication::startSession(bool awaitsWindow)
{
    BusSession::Setup setup;
    setup.id = applicationId();
    setup.path = applicationPath();
    setup.name = applicationName();
    setup.stateFolder = stateFolder();
    setup.awaitsWindow = awaitsWindow;
    setup.distributor = qEnvironmentVariable("UNIFIEDPUSH_DISTRIBUTOR");
    BusSession::Events events;
    events.bringUp = [this](const ActivationToken &token, std::function<void(bool)> done) {
        m_queue.async([this, token, done = std::move(done)] { bringUp({token, done}); });
    };
    events.isInFront = [this] { return m_isInFront.load(); };
    events.willPresent = [this](const UserNotification &notification,
                                std::function<void(PresentationOptions)> completion) {
        m_center.willPresent(notification, std::move(completion));
    };
    events.didReceive = [this](const UserNotification &notification) {
        m_center.didReceive(notification);
    };
    events.registered = [this](std::vector<std::uint8_t> deviceToken) {
        m_queue.async([this, deviceToken = std::move(deviceToken)] {
            if (m_entry) {
                m_entry->delegate().didRegisterForRemoteNotifications(deviceToken);
            }
        });
    };
    events.refused = [this](const std::string &reason) {
        m_queue.async([this, reason] {
            if (m_entry) {
                m_entry->delegate().didFailToRegisterForRemoteNotifications(reason);
            }
        });
    };
    events.leave = [this] {
        m_queue.async([this] {
            m_hasEnded = true;
            QCoreApplication::quit();
        });
    };
    m_bus->runAndWait([&] {
        const QDBusConnection bus = sessionBus();
        if (bus.isConnected()) {
            m_session = new BusSession(bus, std::move(setup), std::move(events));
        }
    });
    if (m_session) {
        m_center.serveRequests([this](AuthorizationOptions options,
                                      UserNotificationCenter::AuthorizationCompletion completion) {
            m_bus->run([this, options, completion = std::move(completion)] {
                m_session->authorize(options, completion);
            });
        });
    }
}

void LinuxApplication::endSession()
{
    m_center.serveRequests({});
    m_bus->runAndWait([this] {
        delete std::exchange(m_settings, nullptr);
        delete std::exchange(m_session, nullptr);
        QDBusConnection::disconnectFromBus(QLatin1String(connectionName));
    });
}

int LinuxApplication::live(LaunchReason reason, const ActivationToken &token,
                           const MakeEntry &makeEntry)
{
    const bool wantsWindow = reason == LaunchReason::User;
    if (!m_session && !wantsWindow) {
        return complain("there is no session bus to receive messages from.");
    }
    if (!claimName()) {
        bool answered = true;
        if (wantsWindow) {
            m_bus->runAndWait([&] { answered = m_session->activateOther(token); });
        }
        if (answered) {
            return 0;
        }
        // It may have been about to leave.
        if (!claimName()) {
            return complain("it runs already, but does not answer.");
        }
    }
    if (wantsWindow && !becomeGraphical(token)) {
        return complain("there is no display to show the window on.");
    }
    m_entry = makeEntry();
    if (!m_entry->delegate().didFinishLaunching()) {
        return 1;
    }
    if (wantsWindow && !show(token)) {
        return 1;
    }
    return runEventLoop();
}

bool LinuxApplication::claimName()
{
    bool isOurs = true;
    if (m_session) {
        m_bus->runAndWait([&] { isOurs = m_session->claimName(); });
    }
    return isOurs;
}

int LinuxApplication::runEventLoop()
{
    for (;;) {
        const int status = QCoreApplication::exec();
        if (m_hasEnded || m_wishes.empty()) {
            return status;
        }
        // The toolkit's application can be exchanged only while no event loop runs.
        const bool canShow = becomeGraphical(m_wishes.front().token);
        if (!canShow) {
            complain("there is no display to show the window on.");
        }
        for (const Wish &wish : std::exchange(m_wishes, {})) {
            wish.done(canShow && show(wish.token));
        }
    }
}

void LinuxApplication::bringUp(Wish wish)
{
    if (m_toolkit->isGraphical()) {
        wish.done(show(wish.token));
    } else {
        m_wishes.push_back(std::move(wish));
        QCoreApplication::quit();
    }
}

bool LinuxApplication::show(const ActivationToken &token)
{
    token.putIntoEnvironment();
    const bool isThere = m_entry->showWindow();
    // The toolkit has taken it or will not; programs that this one starts must not.
    ActivationToken().putIntoEnvironment();
    if (isThere && m_session) {
        m_bus->run([this] { m_session->setWindow(true); });
    }
    return isThere;
}

bool LinuxApplication::becomeGraphical(const ActivationToken &token)
{
    if (!displayIsReachable() && m_session) {
        QStringList environment;
        m_bus->runAndWait([&] { environment = userEnvironment(sessionBus()); });
        adoptDisplay(environment);
    }
    if (!displayIsReachable()) {
        return false;
    }
    preferReachableDisplay();
    // On one kind of display the toolkit looks for it now, on the other when the window shows.
    token.putIntoEnvironment();
    m_toolkit->becomeGraphical(
        *m_bus, [this](bool isInFront) { m_isInFront = isInFront; },
        [this] { m_queue.async([this] { windowClosed(); }); });
    followDesktop();
    serveFields();
    return true;
}

void LinuxApplication::followDesktop()
{
    if (!m_session || m_settings) {
        return;
    }
    // Not waited for: the answer usually comes before the first picture.
    m_bus->runAndWait([this] {
        m_settings = new DesktopSettings(sessionBus(), [this](double scale) {
            m_queue.async([this, scale] { m_appearance.setDesktopTextScale(scale); });
        });
    });
}

void LinuxApplication::serveFields()
{
    if (m_session) {
        m_keyboard = std::make_unique<ScreenKeyboard>(
            [this](bool isVisible) {
                m_bus->run([isVisible] { showShellKeyboard(sessionBus(), isVisible); });
            },
            toolkitShowsKeyboard);
    }
}

void LinuxApplication::windowClosed()
{
    if (m_toolkit->showsWindow()) {
        return; // it was brought up again meanwhile
    }
    m_entry->closeWindow();
    m_isInFront = false;
    if (m_session) {
        // It stays as long as somebody may open a notification.
        m_bus->run([this] { m_session->setWindow(false); });
    } else {
        m_hasEnded = true;
        QCoreApplication::quit();
    }
}

} // namespace trellisport::platform
