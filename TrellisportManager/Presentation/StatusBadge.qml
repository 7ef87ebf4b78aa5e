import QtQuick
import TrellisportManager.Presentation

// A project's status word on a faint ground of its colour.
Badge {
    id: root

    required property string status
    readonly property color statusColor: StatusStyle.color(status)

    text: StatusStyle.label(status)
    tint: statusColor
}
