#pragma once

#include "PracticeService/App/AppFolder.h"
#include "PracticeService/ServiceMessages.h"

#include <optional>
#include <string>

namespace trellisport::practice {

/// What is at /app/: the console for browsers, and the key that its push subscriptions are made
/// for.
class App {
public:
    /// folder: the console's files; empty for none, the key is there all the same. pushKey: as
    /// browsers take it, in base64url. Throws AppFolderError.
    App(const std::string &folder, std::string pushKey);

    /// Whether the request is for /app or something below it.
    [[nodiscard]] static bool isAbout(const ServiceRequest &request);
    /// Adds what keeps the console's pages apart from the rest of the web to a reply below /app, of
    /// any status; leaves all others as they are.
    static void secure(const ServiceRequest &request, ServiceReply &reply);

    /// Any thread, any number at a time. Throws AppFolderError.
    [[nodiscard]] ServiceReply handle(const ServiceRequest &request);

private:
    std::optional<AppFolder> m_folder;
    std::string m_pushKey;
};

} // namespace trellisport::practice
