#include "Shell/TrellisportManagerApp.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TrellisportManager_PresentationPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_DashboardPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_ShellPlugin)

namespace trellisport {

TrellisportManagerApp::TrellisportManagerApp(NotificationManager &notifications)
    : m_notifications(notifications)
{
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
}

bool TrellisportManagerApp::show()
{
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/TrellisportManager/Shell/AppWindow.qml")));
    return !m_engine.rootObjects().isEmpty();
}

} // namespace trellisport
