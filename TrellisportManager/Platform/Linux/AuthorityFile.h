#pragma once

#include <optional>
#include <string>

namespace trellisport::platform {

/// Why this file can't add certificate authorities, as one sentence that names it; absent when it
/// is a file that holds at least one certificate in PEM form. Any thread.
[[nodiscard]] std::optional<std::string> authorityFileProblem(const std::string &file);

} // namespace trellisport::platform
