#include "Platform/Platform.h"
#include "Shell/TrellisportManagerApp.h"
#include "Start/Readings.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickItem>

#include <memory>

using namespace trellisport;

namespace {

bool isSeen(const QQuickItem *item, const QString &objectName)
{
    if (!item->isVisible()) {
        return false;
    }
    if (item->objectName() == objectName) {
        return true;
    }
    const auto children = item->childItems();
    return std::any_of(children.begin(), children.end(),
                       [&](const QQuickItem *child) { return isSeen(child, objectName); });
}

QQuickWindow *window()
{
    for (QWindow *each : QGuiApplication::allWindows()) {
        if (auto *found = qobject_cast<QQuickWindow *>(each)) {
            return found;
        }
    }
    return nullptr;
}

/// The application as it is, watched from outside.
class WatchedApp : public TrellisportManagerApp {
public:
    bool showWindow() override
    {
        const bool isShown = TrellisportManagerApp::showWindow();
        if (isShown) {
            m_readings.watch(*window());
        }
        return isShown;
    }

private:
    bench::Readings m_readings{
        "console", [] { return isSeen(window()->contentItem(), QStringLiteral("statCard5")); }};
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("trellisport-manager"));
    return platform::Platform::current().application().run(
        argc, argv, platform::LaunchReason::User, [] { return std::make_unique<WatchedApp>(); });
}
