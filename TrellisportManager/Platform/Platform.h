#pragma once

#include "Platform/Appearance.h"
#include "Platform/Application.h"
#include "Platform/Clock.h"
#include "Platform/Environment.h"
#include "Platform/Executor.h"
#include "Platform/HttpSession.h"
#include "Platform/LinkOpener.h"
#include "Platform/MainQueue.h"
#include "Platform/TextRules.h"
#include "Platform/UserNotificationCenter.h"

#include <memory>
#include <optional>
#include <string>

namespace trellisport::platform {

/// What the application needs of the system it runs on. Each folder beside this file implements it
/// for one system; the build picks the folder.
class Platform {
public:
    Platform() = default;
    Platform(const Platform &) = delete;
    Platform &operator=(const Platform &) = delete;
    virtual ~Platform() = default;

    /// The platform that was built in, made on first use and kept for the life of the process.
    /// Each part of it is made when it is first asked for.
    [[nodiscard]] static Platform &current();

    /// What is wrong with how the platform was set up from outside, as one sentence for the person
    /// who starts the program; absent when nothing is. To be asked before anything below is used;
    /// a part that rests on what is wrong fails later. Reads files; any thread.
    [[nodiscard]] virtual std::optional<std::string> setupProblem() const = 0;

    [[nodiscard]] virtual std::shared_ptr<HttpSession> httpSession() = 0;
    [[nodiscard]] virtual Executor &executor() = 0;
    [[nodiscard]] virtual const TextRules &textRules() = 0;
    [[nodiscard]] virtual const Environment &environment() = 0;
    [[nodiscard]] virtual LinkOpener &linkOpener() = 0;
    [[nodiscard]] virtual Clock &clock() = 0;
    [[nodiscard]] virtual MainQueue &mainQueue() = 0;
    [[nodiscard]] virtual UserNotificationCenter &userNotificationCenter() = 0;
    [[nodiscard]] virtual Appearance &appearance() = 0;
    [[nodiscard]] virtual Application &application() = 0;
};

} // namespace trellisport::platform
