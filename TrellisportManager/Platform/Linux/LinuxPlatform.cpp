#include "Platform/Linux/LinuxPlatform.h"

#include "Platform/CallingThread.h"
#include "Platform/Linux/AuthorityFile.h"

namespace trellisport::platform {

namespace {

std::string authorityFile(const Environment &environment)
{
    return environment.variable("TRELLISPORT_CA_FILE").value_or("");
}

} // namespace

CurlHttpOptions httpOptions(const Environment &environment)
{
    return {.authorityFile = authorityFile(environment)};
}

Platform &Platform::current()
{
    // Never destroyed: a reply may still want its executor while the process ends.
    static auto *platform = new LinuxPlatform;
    return *platform;
}

std::optional<std::string> LinuxPlatform::setupProblem() const
{
    const std::string file = authorityFile(m_environment);
    return file.empty() ? std::nullopt : authorityFileProblem(file);
}

std::shared_ptr<HttpSession> LinuxPlatform::httpSession()
{
    // Made after the network library is set up and so gone before the library is taken down: at
    // the end of the process its thread must not be left running in there.
    static const auto session = [this] {
        auto curl = std::make_shared<CurlHttpSession>(httpOptions(m_environment));
        m_session = curl;
        return std::make_shared<CountingHttpSession>(std::move(curl), m_writes);
    }();
    return session;
}

void LinuxPlatform::endExchanges()
{
    m_writes->waitUntilNone(patienceAtEnd);
    if (const auto session = m_session.lock()) {
        session->stop();
    }
    // What waited for an exchange may end now, too; the event loop no longer sees to it.
    do {
        if (m_executor) {
            m_executor->finish();
        }
    } while (CallingThread::runPosted());
}

Executor &LinuxPlatform::executor()
{
    std::call_once(m_executorOnce, [this] { m_executor.emplace(); });
    return *m_executor;
}

const TextRules &LinuxPlatform::textRules()
{
    std::call_once(m_textRulesOnce, [this] { m_textRules.emplace(); });
    return *m_textRules;
}

} // namespace trellisport::platform
