#include "Presentation/LinkController.h"

#include "Platform/Platform.h"

namespace trellisport {

LinkController::LinkController()
    : LinkController(platform::Platform::current().linkOpener())
{
}

LinkController::LinkController(platform::LinkOpener &opener, QObject *parent)
    : QObject(parent)
    , m_opener(opener)
{
}

bool LinkController::open(const QString &url)
{
    return m_opener.open(url.toStdString());
}

} // namespace trellisport
