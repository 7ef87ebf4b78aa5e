import QtQuick
import TrellisportManager.Shell

LaterScreen {
    screen: Qt.resolvedUrl("SettingsScreen.qml")
}
