#include "PracticeService/App/App.h"
#include "PracticeService/Certificates.h"
#include "PracticeService/Keeper.h"
#include "PracticeService/Listener.h"
#include "PracticeService/Options.h"
#include "PracticeService/Push/PushSender.h"
#include "PracticeService/Push/Vapid.h"
#include "PracticeService/Service.h"

#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QScopeGuard>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <future>
#include <iostream>
#include <memory>
#include <thread>

namespace {

using namespace trellisport::practice;

int complain(const std::string &sentence)
{
    std::cerr << sentence << '\n';
    return 1;
}

/// The signals that ask to stop. They are blocked everywhere and waited for by a thread of their
/// own, which ends the program at once as long as there is nothing to close.
class StopSignals {
public:
    StopSignals()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, nullptr);
        std::signal(SIGPIPE, SIG_IGN);
        // Detached, because without a signal it never ends.
        std::thread([signals, state = m_state] {
            int signal = 0;
            sigwait(&signals, &signal);
            if (!state->serving)
                std::_Exit(0);
            state->asked.set_value();
        }).detach();
    }

    /// From now on there is something to close.
    void servingBegins() { m_state->serving = true; }

    void waitForOne() { m_state->asked.get_future().wait(); }

private:
    struct State {
        std::atomic<bool> serving{false};
        std::promise<void> asked;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

int serve(const Options &options, StopSignals &stop)
{
    const QString folder = QString::fromStdString(options.dataFolder);
    if (!QDir().mkpath(folder))
        return complain("Cannot make the data folder " + options.dataFolder + ".");
    QLockFile lock(folder + QStringLiteral("/lock"));
    lock.setStaleLockTime(0); // a lock is stale when its process is gone, however old it is
    if (!lock.tryLock()) {
        return complain(lock.error() == QLockFile::LockFailedError
                            ? "Another practice service uses the data folder " +
                                  options.dataFolder + "."
                            : "Cannot write to the data folder " + options.dataFolder + ".");
    }

    const CertificateFiles certificates = ensureCertificates(options.dataFolder);
    Listener listener(certificates, options.port);
    const std::string address = "https://127.0.0.1:" + std::to_string(listener.port());
    const Vapid vapid(std::filesystem::path(options.dataFolder) / "push-key.pem", address);
    App app(options.appFolder, vapid.publicKey());
    PushSender pushes;
    Keeper keeper({std::filesystem::path(options.dataFolder) / "state.sqlite", options.seed,
                   options.scale, options.speed,
                   [&pushes](const Alert &alert) { pushes.push(alert); }, options.begin});
    pushes.start(
        {[&keeper] { return keeper.ask([](Keeper::Desk &desk) { return desk.store.devices(); }); },
         [&keeper](const std::string &token) {
             keeper.ask([&](Keeper::Desk &desk) { desk.store.removeDevice(token); });
         }},
        [&certificates, &vapid](const PushPost &message) {
            return post(message, vapid, certificates.authority.string());
        });
    const auto pushesEnd = qScopeGuard([&pushes] { pushes.stop(); }); // before the keeper goes
    Service service(keeper, options.control, &app);
    stop.servingBegins();
    listener.start(service, options.verbose);
    std::cout << "listening on " << address << "/api/v1, authority "
              << certificates.authority.string() << std::endl;

    stop.waitForOne();
    service.endWaiting();
    listener.stop();
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    StopSignals stop;
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trellisport-practice-service"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRELLISPORT_VERSION));

    const auto wish = readOptions(QCoreApplication::arguments());
    if (const auto *notice = std::get_if<Notice>(&wish)) {
        (notice->exitCode == 0 ? std::cout : std::cerr) << notice->text << '\n';
        return notice->exitCode;
    }
    try {
        return serve(std::get<Options>(wish), stop);
    } catch (const std::exception &error) {
        return complain(error.what());
    }
}
