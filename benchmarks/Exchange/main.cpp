#include "Exchange/EasyHandle.h"
#include "Exchange/EventLoopWatch.h"
#include "Platform/Linux/CurlHttpSession.h"
#include "Platform/Platform.h"
#include "ServiceAccess/TrellisportAPI.h"
#include "Support/Bodies.h"
#include "Support/ScriptedServer.h"
#include "Support/Series.h"

#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

using namespace trellisport;

namespace {

constexpr int callsABatch = 50;
constexpr int callsAtOnce = 64;
constexpr int threads = 4;
constexpr std::chrono::milliseconds thinkingTime{5};

/// A service on this machine, the application's client of it, and the peer.
struct Setup {
    explicit Setup(std::chrono::milliseconds delay)
        : server(test::ScriptedServer::answering([delay](const std::string & /*request*/) {
            if (delay.count() > 0) {
                std::this_thread::sleep_for(delay);
            }
            return test::ScriptedServer::replyBytes(200, bench::dashboard(),
                                                    "Content-Type: application/json\r\n");
        }))
        , session(std::make_shared<platform::CurlHttpSession>(
              platform::CurlHttpOptions{.authorityFile = test::ScriptedServer::authorityFile()}))
        , api(server.origin() + "/api/v1", session, platform::Platform::current().executor())
    {
    }

    test::ScriptedServer server;
    std::shared_ptr<platform::CurlHttpSession> session;
    TrellisportAPI api;
};

QCoro::Task<> call(const TrellisportAPI &api, double &milliseconds)
{
    const auto start = bench::SteadyClock::now();
    const DashboardData data = co_await api.getDashboard();
    milliseconds = bench::millisecondsSince(start);
    if (data.pendingDecisions != 2) {
        throw std::runtime_error("another dashboard than the service's");
    }
}

double callOnce(const TrellisportAPI &api)
{
    double milliseconds = 0;
    QCoro::waitFor(call(api, milliseconds));
    return milliseconds;
}

/// Ours and the peer's by turns, so that both meet the machine in the same mood.
void compareExchanges(int batches)
{
    const Setup setup(std::chrono::milliseconds(0));
    bench::EasyHandle peer(setup.server.origin() + "/api/v1/dashboard",
                           test::ScriptedServer::authorityFile());
    (void)callOnce(setup.api);
    (void)peer.get();
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int batch = 0; batch < batches; ++batch) {
        std::vector<double> our;
        std::vector<double> their;
        for (int number = 0; number < callsABatch; ++number) {
            our.push_back(callOnce(setup.api));
            their.push_back(bench::millisecondsOf([&] { (void)peer.get(); }));
        }
        ours.push_back(bench::quantile(our, 0.5));
        theirs.push_back(bench::quantile(their, 0.5));
    }
    bench::report("dashboard-call/ours", "ms", ours);
    bench::report("dashboard-call/curl", "ms", theirs);
    const int exchanges = 2 * (batches * callsABatch + 1);
    if (setup.server.handshakes() != 2 || setup.server.requestCount() != exchanges) {
        throw std::runtime_error("a connection was not kept alive, or a reply not asked for");
    }

    const bench::EventLoopWatch watch;
    for (int number = 0; number < batches * callsABatch; ++number) {
        (void)callOnce(setup.api);
    }
    bench::report("stall/longest", "ms",
                  {*std::max_element(watch.stalls().begin(), watch.stalls().end())});
    bench::report("stall/longest-own", "ms",
                  {*std::max_element(watch.ownStalls().begin(), watch.ownStalls().end())});
}

/// Many calls under way on one thread; it ends when all have returned.
void callFromHere(const TrellisportAPI &api, int count)
{
    std::vector<double> milliseconds(static_cast<std::size_t>(count));
    std::vector<QCoro::Task<>> calls;
    calls.reserve(milliseconds.size());
    for (double &each : milliseconds) {
        calls.push_back(call(api, each));
    }
    for (QCoro::Task<> &each : calls) {
        QCoro::waitFor(each);
    }
}

void compareOverlap(int repetitions)
{
    const Setup setup(thinkingTime);
    std::vector<double> together;
    std::vector<double> inTurn;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        inTurn.push_back(bench::millisecondsOf([&] {
            for (int number = 0; number < callsAtOnce; ++number) {
                (void)callOnce(setup.api);
            }
        }));
        together.push_back(bench::millisecondsOf([&] {
            std::vector<std::thread> callers;
            callers.reserve(threads);
            for (int number = 0; number < threads; ++number) {
                callers.emplace_back([&] { callFromHere(setup.api, callsAtOnce / threads); });
            }
            for (std::thread &caller : callers) {
                caller.join();
            }
        }));
    }
    bench::report("calls-together", "ms", together);
    bench::report("calls-in-turn", "ms", inTurn);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int repetitions = argc > 1 ? std::max(1, std::atoi(argv[1])) : 20;
    compareExchanges(repetitions);
    compareOverlap(std::max(1, repetitions / 4));
    return 0;
}
