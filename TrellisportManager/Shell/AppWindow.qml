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
    // What the keyboard of a phone on its side leaves is 108.
    minimumHeight: 96
    flags: content.hasFrame ? Qt.Window : Qt.Window | Qt.FramelessWindowHint
    title: "TrellisportManager"
    color: Colors.background
    visible: true

    ContentView {
        anchors.fill: parent
        viewModel: root.content
    }
}
