#include "Platform/Linux/LinuxLinkOpener.h"

#include "Platform/Toolkit/OutsideAddress.h"

#include <QDesktopServices>

namespace trellisport::platform {

bool LinuxLinkOpener::open(const std::string &url)
{
    const auto address = outsideAddress(url);
    return address && QDesktopServices::openUrl(*address);
}

} // namespace trellisport::platform
