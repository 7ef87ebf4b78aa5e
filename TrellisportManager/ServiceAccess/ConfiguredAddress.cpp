#include "ServiceAccess/ConfiguredAddress.h"

#include <stdexcept>
#include <string>

namespace trellisport {

namespace {
constexpr const char *builtInBaseURL = TRELLISPORT_BASE_URL;
}

ServiceAddress configuredServiceAddress(const platform::Environment &environment)
{
    const std::string given = environment.variable("TRELLISPORT_BASE_URL").value_or("");
    const std::string address = given.empty() ? builtInBaseURL : given;
    if (address.empty()) {
        std::string sentence = "No service is named: set TRELLISPORT_BASE_URL to its address, such "
                               "as https://agent.example/api/v1";
        if (const std::string way = environment.wayToSet(); !way.empty()) {
            sentence += ", " + way;
        }
        throw std::invalid_argument(sentence + '.');
    }
    return parseServiceAddress(address);
}

} // namespace trellisport
