#pragma once

#include "Platform/Platform.h"
#include "ServiceAccess/TrellisportAPI.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"

#include <gtest/gtest.h>

#include <memory>

namespace trellisport::test {

/// A service that answers as the test says.
class ServiceFixture : public ::testing::Test {
protected:
    static const platform::TextRules &rules() { return platform::Platform::current().textRules(); }

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
};

} // namespace trellisport::test
