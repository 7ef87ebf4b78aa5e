import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.Shell

// The one window.
Window {
    id: root

    required property ContentViewModel content

    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 288
    title: "TrellisportManager"
    color: Colors.background
    visible: true

    ContentView {
        anchors.fill: parent
        viewModel: root.content
    }
}
