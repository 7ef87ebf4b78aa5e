import QtQuick
import TrellisportManager.Presentation

// A project's status word on a faint ground of its colour.
Rectangle {
    id: root

    required property string status
    readonly property color statusColor: StatusStyle.color(status)

    implicitWidth: label.implicitWidth + 12
    implicitHeight: label.implicitHeight + 4
    radius: 4
    color: Colors.faded(statusColor, 0.2)

    StyledText {
        id: label

        objectName: "badgeLabel"
        x: 6
        y: 2
        text: StatusStyle.label(root.status)
        systemSize: 10
        weight: Font.Medium
        color: root.statusColor
        wrapMode: Text.NoWrap
    }
}
