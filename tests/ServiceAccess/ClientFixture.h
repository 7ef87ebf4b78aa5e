#pragma once

#include "Platform/Linux/CurlHttpSession.h"
#include "Platform/Linux/ThreadPoolExecutor.h"
#include "ServiceAccess/TrellisportAPI.h"
#include "Support/ScriptedServer.h"
#include "Support/TaskOutcome.h"

#include <chrono>
#include <memory>
#include <string>
#include <utility>

namespace trellisport::test {

/// The client with everything that it has in the application, talking to a scripted server.
class ClientFixture {
public:
    explicit ClientFixture(ScriptedServer::Script script, const ServerOptions &options = {},
                           std::chrono::milliseconds timeout = std::chrono::seconds(20))
        : m_server(std::move(script), options)
        , m_api(m_server.origin() + "/api/v1", makeSession(timeout), m_executor)
    {
    }

    [[nodiscard]] ScriptedServer &server() { return m_server; }
    [[nodiscard]] const TrellisportAPI &api() const { return m_api; }

private:
    static std::shared_ptr<platform::HttpSession> makeSession(std::chrono::milliseconds timeout)
    {
        platform::CurlHttpOptions options;
        options.timeout = timeout;
        options.authorityFile = ScriptedServer::authorityFile();
        options.systemAuthorities = options.authorityFile; // a small one, soon read
        return std::make_shared<platform::CurlHttpSession>(std::move(options));
    }

    ScriptedServer m_server;
    platform::ThreadPoolExecutor m_executor;
    TrellisportAPI m_api;
};

} // namespace trellisport::test
