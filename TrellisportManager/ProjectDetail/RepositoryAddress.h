#pragma once

#include <QString>

#include <string_view>

namespace trellisport {

/// The address of a project's repository, which is taken for a URL without any check: a text that
/// is none (by RFC 3986, see isURLReference) stops the program with a message on standard error.
[[nodiscard]] QString repositoryAddress(std::string_view text);

} // namespace trellisport
