#pragma once

#include "ServiceAccess/TrellisportAPI.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"
#include "Support/TaskOutcome.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace trellisport {

inline constexpr const char *base = "https://agent.example/api/v1";
inline constexpr const char *dashboard =
    R"({"status_counts":{},"bids_pending":1,"total_earned":2,"pending_decisions":3})";

/// The client on a session that answers what a test says.
class TrellisportAPITest : public testing::Test {
protected:
    std::shared_ptr<test::FakeHttpSession> m_session = std::make_shared<test::FakeHttpSession>();
    test::InlineExecutor m_executor;
    TrellisportAPI m_api{base, m_session, m_executor};

    /// The one request that the operation sends when it is answered with this.
    template <typename T>
    platform::HttpRequest request(QCoro::Task<T> task)
    {
        test::finish(std::move(task));
        const std::vector<platform::HttpRequest> requests = m_session->requests();
        EXPECT_THAT(requests, testing::SizeIs(1));
        return requests.front();
    }
    void reply(int status, std::string body) { m_session->queueReply(status, std::move(body)); }

    /// What the dashboard fails with when the service answers so.
    APIError httpFailure(int status, std::string body = "{}")
    {
        reply(status, std::move(body));
        try {
            test::finish(m_api.getDashboard());
        } catch (const APIError &error) {
            return error;
        }
        ADD_FAILURE() << "no HTTP error for " << status;
        return APIError::invalidURL();
    }
};

} // namespace trellisport
