#include "Platform/Linux/LinuxLinkOpener.h"

#include <QDesktopServices>
#include <QUrl>

namespace trellisport::platform {

bool LinuxLinkOpener::open(const std::string &url)
{
    const QUrl address(QString::fromStdString(url), QUrl::StrictMode);
    const bool isWeb = address.scheme() == QLatin1String("https") && !address.host().isEmpty();
    const bool isMail = address.scheme() == QLatin1String("mailto");
    return address.isValid() && (isWeb || isMail) && QDesktopServices::openUrl(address);
}

} // namespace trellisport::platform
