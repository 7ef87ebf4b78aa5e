#include "Platform/Web/PageLinkOpener.h"

#include "Platform/Toolkit/OutsideAddress.h"

#include <QUrl>

extern "C" void trellisport_open_link(const char *url); // Script/Page.js

namespace trellisport::platform {

bool PageLinkOpener::open(const std::string &url)
{
    const auto address = outsideAddress(url);
    if (address) {
        trellisport_open_link(address->toEncoded().constData());
    }
    return address.has_value();
}

} // namespace trellisport::platform
