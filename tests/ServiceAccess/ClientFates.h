#pragma once

#include "ServiceAccess/ClientFixture.h"
#include "ServiceAccess/CodingErrors.h"

#include <string>
#include <utility>

namespace trellisport::test {

inline constexpr const char *dashboard =
    R"({"status_counts":{"awarded":2},"bids_pending":1,"total_earned":2,"pending_decisions":3})";

inline ScriptedServer::Script answering(int status, std::string body)
{
    return ScriptedServer::answering([status, body = std::move(body)](const auto &) {
        return ScriptedServer::replyBytes(status, body);
    });
}

/// Reads one request, sends the bytes and closes.
inline ScriptedServer::Script sending(std::string bytes)
{
    return [bytes = std::move(bytes)](ServerConnection &connection) {
        connection.readRequest();
        connection.send(bytes);
        connection.close();
    };
}

/// What became of a call, in a line: the type of the error and what a screen would show.
template <typename T>
std::string fate(QCoro::Task<T> task)
{
    try {
        finish(std::move(task));
        return "success";
    } catch (const APIError &error) {
        return std::string("API: ") + error.what();
    } catch (const platform::TransportError &error) {
        return std::string("transport: ") + error.what();
    } catch (const DecodingError &) {
        return "decoding";
    } catch (const EncodingError &) {
        return "encoding";
    }
}

inline std::string dashboardFate(ScriptedServer::Script script, const ServerOptions &options = {})
{
    const ClientFixture fixture(std::move(script), options);
    return fate(fixture.api().getDashboard());
}

} // namespace trellisport::test
