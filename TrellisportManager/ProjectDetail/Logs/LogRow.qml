import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// A log entry: its type and time above its text in a fixed-width font.
CardRow {
    id: root

    required property string logType
    required property bool hasTime
    required property string time
    required property string body

    gap: 8
    inset: 10
    radius: 8
    outlineWidth: 0
    contentHeight: bodyText.y + bodyText.height

    Item {
        id: header

        width: parent.width
        height: badge.height
        visible: root.first

        LogTypeBadge {
            id: badge

            objectName: "logType"
            width: Math.min(implicitWidth, parent.width - (root.hasTime ? timeText.width + Metrics.spacing : 0))
            type: root.logType
        }
        StyledText {
            id: timeText

            objectName: "time"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, parent.width / 2)
            visible: root.hasTime
            text: root.time
            systemSize: 9
            color: Colors.dimText
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
        }
    }
    StyledText {
        id: bodyText

        objectName: "body"
        y: root.first ? header.height + 4 : 0
        width: parent.width
        text: root.body
        textStyle: Typography.Caption
        monospaced: true
        color: Colors.gray
    }
}
