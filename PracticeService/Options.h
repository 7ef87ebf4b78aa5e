#pragma once

#include "PracticeService/Moment.h"

#include <QStringList>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace trellisport::practice {

/// What the command line asks for.
struct Options {
    int port = 8443;        ///< 0: any free port
    std::string dataFolder; ///< absolute
    std::string appFolder;  ///< absolute; empty: none
    std::uint64_t seed = 1;
    std::optional<Moment> begin; ///< of the agent's time; nothing: now
    int scale = 1;               ///< times the usual number of projects, 1 ... 1000
    double speed = 1.0; ///< agent's seconds per second, 0 ... 100000; 0: its time stands still
    bool control = false;
    bool verbose = false;
};

/// A text to print instead of serving: the help or the version (exit code 0), or what is wrong with
/// the command line (exit code 2).
struct Notice {
    std::string text;
    int exitCode = 0;
};

/// arguments: the whole command line, the program's name first. Needs a QCoreApplication.
[[nodiscard]] std::variant<Options, Notice> readOptions(const QStringList &arguments);

} // namespace trellisport::practice
