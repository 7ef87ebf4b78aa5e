#include "Shell/TrellisportManagerApp.h"

#include "Platform/Platform.h"
#include "Presentation/Typography.h"
#include "ServiceAccess/TrellisportAPI.h"

#include <QWindow>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TrellisportManager_PresentationPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_DashboardPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_ProjectDetailPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_ProjectsListPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_SettingsPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_ShellPlugin)

namespace trellisport {

TrellisportManagerApp::TrellisportManagerApp(NotificationManager &notifications)
    : m_notifications(notifications)
    , m_appDelegate(notifications)
{
}

bool TrellisportManagerApp::showWindow()
{
    if (!m_engine) {
        // What the screens will wait for begins on other threads while they are made: the
        // certificate authorities, which the session reads first, and the fonts.
        (void)TrellisportAPI::shared();
        platform::Platform::current().executor().run([] { Typography::readAhead(); });
        m_content = std::make_unique<ContentViewModel>(m_notifications);
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_engine->setInitialProperties(
            {{QStringLiteral("content"), QVariant::fromValue(m_content.get())}});
        m_engine->addImportPath(QStringLiteral(":/qt/qml"));
        m_engine->load(QUrl(QStringLiteral("qrc:/qt/qml/TrellisportManager/Shell/AppWindow.qml")));
    }
    const auto roots = m_engine->rootObjects();
    auto *window = roots.isEmpty() ? nullptr : qobject_cast<QWindow *>(roots.first());
    if (!window) {
        closeWindow();
        return false;
    }
    if (window->windowStates().testFlag(Qt::WindowMinimized)) {
        window->showNormal();
    }
    window->show();
    window->raise();
    window->requestActivate();
    return true;
}

void TrellisportManagerApp::closeWindow()
{
    m_engine.reset();
    m_content.reset();
}

} // namespace trellisport
