#include "Platform/Web/WebEnvironment.h"

#include "Platform/Web/JsText.h"

extern "C" void trellisport_page_origin(); // Script/Page.js

namespace trellisport::platform {

std::optional<std::string> WebEnvironment::variable(const std::string &name) const
{
    if (name != "TRELLISPORT_BASE_URL") {
        return std::nullopt;
    }
    trellisport_page_origin();
    return takeText() + "/api/v1";
}

} // namespace trellisport::platform
