import QtQuick
import TrellisportManager.Presentation

// The one window.
Window {
    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 288
    title: "TrellisportManager"
    color: Colors.background
    visible: true

    ContentView {
        anchors.fill: parent
    }
}
