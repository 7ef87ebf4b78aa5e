#pragma once

#include "Support/FakeHttpSession.h"

namespace trellisport::test {

/// A member of a fixture, behind all that calls under way may still use: when a test is over, they
/// end. Without it they would wait for ever, as nobody runs their thread's events any more.
class CallsEnd {
public:
    explicit CallsEnd(FakeHttpSession &session)
        : m_session(session)
    {
    }
    CallsEnd(const CallsEnd &) = delete;
    CallsEnd &operator=(const CallsEnd &) = delete;
    ~CallsEnd() { m_session.finish(); }

private:
    FakeHttpSession &m_session;
};

} // namespace trellisport::test
