#include "Platform/Toolkit/OutsideAddress.h"

#include <QStringList>
#include <QUrlQuery>

#include <algorithm>

namespace trellisport::platform {

namespace {

bool onlyWrites(const QUrl &mail)
{
    static const QStringList harmless{QStringLiteral("to"), QStringLiteral("cc"),
                                      QStringLiteral("bcc"), QStringLiteral("subject"),
                                      QStringLiteral("body")};
    const auto fields = QUrlQuery(mail).queryItems(QUrl::FullyDecoded);
    // Behind a # a program that knows no fragments would still find fields.
    return !mail.hasFragment() && std::all_of(fields.begin(), fields.end(), [](const auto &field) {
        return harmless.contains(field.first.trimmed(), Qt::CaseInsensitive);
    });
}

} // namespace

std::optional<QUrl> outsideAddress(const std::string &url)
{
    const QUrl address(QString::fromStdString(url), QUrl::StrictMode);
    if (!address.isValid()) {
        return {};
    }
    const bool isWeb = address.scheme() == QLatin1String("https") && !address.host().isEmpty();
    const bool isMail = address.scheme() == QLatin1String("mailto") && onlyWrites(address);
    return isWeb || isMail ? std::optional(address) : std::nullopt;
}

} // namespace trellisport::platform
