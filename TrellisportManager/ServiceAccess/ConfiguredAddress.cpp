#include "ServiceAccess/ConfiguredAddress.h"

#include <string>

namespace trellisport {

namespace {
constexpr const char *builtInBaseURL = TRELLISPORT_BASE_URL;
}

ServiceAddress configuredServiceAddress(const platform::Environment &environment)
{
    const std::string given = environment.variable("TRELLISPORT_BASE_URL").value_or("");
    return parseServiceAddress(given.empty() ? builtInBaseURL : given);
}

} // namespace trellisport
