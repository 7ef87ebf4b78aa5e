#include "Platform/Linux/LinuxLinkOpener.h"

#include <QDesktopServices>
#include <QUrl>

namespace trellisport::platform {

bool LinuxLinkOpener::open(const std::string &url)
{
    const QUrl address(QString::fromStdString(url), QUrl::StrictMode);
    const bool mayLeave = address.isValid() && (address.scheme() == QLatin1String("https") ||
                                                address.scheme() == QLatin1String("mailto"));
    return mayLeave && QDesktopServices::openUrl(address);
}

} // namespace trellisport::platform
