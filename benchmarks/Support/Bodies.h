#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trellisport::bench {

// Replies of the service in every size, the same ones in every run. Texts are words with line ends,
// quotes and a few characters beyond ASCII, as logs and titles have them.

/// Log entries of about 200 bytes each: 100,000 of them are 20 MB.
[[nodiscard]] std::string shortLogs(std::size_t count);
/// Log entries of about 1,750 bytes each: 20,000 of them are 35 MB.
[[nodiscard]] std::string longLogs(std::size_t count);
/// A list of one log entry with a text of so many bytes.
[[nodiscard]] std::string oneLog(std::size_t bytes);
[[nodiscard]] std::string projects(std::size_t count);
[[nodiscard]] std::string messages(std::size_t count);
/// A list of one report with a diff of so many bytes.
[[nodiscard]] std::string oneReport(std::size_t bytes);
[[nodiscard]] std::string project();
[[nodiscard]] std::string dashboard();

/// Numbered lines: of questions, or of answers to them, each of which goes on in a second line.
[[nodiscard]] std::string questions(std::size_t count);
[[nodiscard]] std::string answers(std::size_t count);

/// A copy as the network hands it over: with the room that decoding wants behind it.
[[nodiscard]] std::string received(std::string_view body);

} // namespace trellisport::bench
