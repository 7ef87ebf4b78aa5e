#include "Chaos/ChaosPlatform.h"

#include <cstdlib>
#include <utility>
#include <variant>

namespace trellisport::chaos {

using platform::HttpResult;
using platform::TransportError;
using platform::TransportFailure;

namespace {

/// A minute of the application's time.
constexpr std::chrono::milliseconds exchangeTimeout = std::chrono::seconds(60) / timeLapse;

std::shared_ptr<platform::CurlHttpSession> newSession(const platform::Environment &environment,
                                                      std::chrono::milliseconds timeout)
{
    platform::CurlHttpOptions options;
    options.timeout = timeout;
    options.authorityFile = environment.variable("TRELLISPORT_CA_FILE").value_or("");
    options.systemAuthorities = options.authorityFile; // a small one, soon read
    return std::make_shared<platform::CurlHttpSession>(std::move(options));
}

/// Whether a failed exchange may have ended before its request went out.
bool isBeforeRequest(TransportFailure failure)
{
    return failure == TransportFailure::CannotConnect ||
           failure == TransportFailure::SecureConnectionFailed ||
           failure == TransportFailure::TimedOut;
}

} // namespace

WatchedSession::WatchedSession(std::shared_ptr<platform::HttpSession> session)
    : m_session(std::move(session))
{
}

std::unique_ptr<platform::HttpExchange> WatchedSession::send(platform::HttpRequest request,
                                                             Completion completion)
{
    const bool isWrite = request.method != "GET";
    std::size_t place = 0;
    {
        const std::lock_guard lock(m_notes->mutex);
        ++m_notes->sent;
        ++m_notes->underWay;
        place = m_notes->writes.size();
        if (isWrite) {
            m_notes->writes.push_back({request.method, request.url, request.body.value_or(""), {}});
        }
    }
    return m_session->send(std::move(request), [notes = m_notes, isWrite, place,
                                                completion =
                                                    std::move(completion)](HttpResult result) {
        {
            const std::lock_guard lock(notes->mutex);
            --notes->underWay;
            if (isWrite) {
                SentWrite &write = notes->writes[place];
                if (const auto *error = std::get_if<TransportError>(&result)) {
                    write.outcome = error->what();
                    write.mayBeLost = isBeforeRequest(error->failure());
                } else {
                    write.outcome =
                        "status " + std::to_string(std::get<platform::HttpReply>(result).status);
                }
            }
        }
        completion(std::move(result));
    });
}

int WatchedSession::sent() const
{
    const std::lock_guard lock(m_notes->mutex);
    return m_notes->sent;
}

int WatchedSession::underWay() const
{
    const std::lock_guard lock(m_notes->mutex);
    return m_notes->underWay;
}

std::vector<SentWrite> WatchedSession::writes() const
{
    const std::lock_guard lock(m_notes->mutex);
    return m_notes->writes;
}

void PlayedNotificationCenter::setDelegate(platform::UserNotificationCenterDelegate *delegate)
{
    m_thread.finish();
    const std::lock_guard lock(m_mutex);
    m_delegate = delegate;
}

void PlayedNotificationCenter::requestAuthorization(platform::AuthorizationOptions /*options*/,
                                                    AuthorizationCompletion completion)
{
    m_thread.run([completion = std::move(completion)] { completion(true, {}); });
}

void PlayedNotificationCenter::deliver(platform::UserInfo userInfo, bool opened)
{
    m_thread.run([this, userInfo = std::move(userInfo), opened] {
        const std::lock_guard lock(m_mutex);
        if (m_delegate == nullptr) {
            return;
        }
        ++m_presented;
        m_delegate->willPresent({userInfo}, [](platform::PresentationOptions) {});
        if (opened) {
            ++m_opened;
            m_delegate->didReceive({{userInfo}}, [] {});
        }
    });
}

int PlayedNotificationCenter::presented() const
{
    const std::lock_guard lock(m_mutex);
    return m_presented;
}

int PlayedNotificationCenter::opened() const
{
    const std::lock_guard lock(m_mutex);
    return m_opened;
}

std::shared_ptr<void> PlayedAppearance::observe(std::function<void()> changed)
{
    auto observer = std::make_shared<std::function<void()>>(std::move(changed));
    std::erase_if(m_observers, [](const auto &other) { return other.expired(); });
    m_observers.push_back(observer);
    return observer;
}

void PlayedAppearance::setTextScale(double scale)
{
    m_textScale = scale;
    const auto observers = m_observers; // one may come or go meanwhile
    for (const auto &weak : observers) {
        if (const auto observer = weak.lock()) {
            (*observer)();
        }
    }
}

int PlayedApplication::run(int & /*argc*/, char ** /*argv*/, platform::LaunchReason /*reason*/,
                           const MakeEntry & /*makeEntry*/)
{
    return EXIT_FAILURE; // this program has its own life
}

ChaosPlatform::ChaosPlatform()
    : m_curl(newSession(m_environment, exchangeTimeout))
    , m_session(std::make_shared<WatchedSession>(m_curl))
    , m_ownSession(newSession(m_environment, std::chrono::seconds(30)))
{
}

void ChaosPlatform::end()
{
    m_curl->stop();
    m_ownSession->stop();
    m_executor.finish();
}

ChaosPlatform &chaosPlatform()
{
    // Never destroyed: a reply may still want its executor while the process ends.
    static auto *platform = new ChaosPlatform;
    return *platform;
}

} // namespace trellisport::chaos

namespace trellisport::platform {

// In the place of the system's own, which is not linked.
Platform &Platform::current()
{
    return chaos::chaosPlatform();
}

} // namespace trellisport::platform
