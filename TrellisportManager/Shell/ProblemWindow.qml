import QtQuick
import TrellisportManager.Presentation

// In place of the console when it can't know its service.
Window {
    id: root

    required property string problem

    width: 390
    height: 300
    minimumWidth: 320
    minimumHeight: 200
    title: "TrellisportManager"
    color: Colors.background
    visible: true

    StyledText {
        objectName: "problem"
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Metrics.inset, Metrics.readableWidth)
        horizontalAlignment: Text.AlignHCenter
        text: root.problem
        Accessible.role: Accessible.AlertMessage
    }
}
