#pragma once

#include <string>
#include <vector>

namespace trellisport {

struct JsonCase {
    const char *name;
    std::string json;
};

/// What the standard calls JSON. Among it is what it leaves to the reader, with our decision: taken
/// are numbers of any size, halves of surrogate pairs, repeated keys and any depth.
[[nodiscard]] const std::vector<JsonCase> &acceptedJson();

/// What it does not.
[[nodiscard]] const std::vector<JsonCase> &refusedJson();

} // namespace trellisport
