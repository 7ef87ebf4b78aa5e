#pragma once

#include <QUrl>

#include <optional>
#include <string>

namespace trellisport::platform {

/// The address as it may be handed to the desktop, or nothing when it must not leave the program.
/// Taken are absolute https addresses, and mailto addresses that do no more than write a letter:
/// any other field than its readers, subject and text ("attach" above all) is a program's own
/// and may do what it likes. The text comes from outside. Any thread.
[[nodiscard]] std::optional<QUrl> outsideAddress(const std::string &url);

} // namespace trellisport::platform
