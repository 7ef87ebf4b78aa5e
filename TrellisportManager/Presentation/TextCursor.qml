import QtQuick
import TrellisportManager.Presentation

// The blinking mark in a text field.
Rectangle {
    id: root

    property bool seen: true

    width: 2
    color: Colors.accent
    visible: parent?.activeFocus ?? false
    opacity: seen ? 1 : 0
    onXChanged: restart()
    onYChanged: restart()
    onVisibleChanged: restart()

    function restart(): void {
        root.seen = true;
        timer.restart();
    }

    Timer {
        id: timer

        interval: Application.styleHints.cursorFlashTime / 2
        repeat: true
        running: root.visible && interval > 0
        onTriggered: root.seen = !root.seen
    }
}
