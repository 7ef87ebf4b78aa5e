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

        // Larger text stands below the badge where it does not fit beside it.
        readonly property bool stacked: Metrics.largeText && root.hasTime && badge.implicitWidth + Metrics.spacing + timeText.implicitWidth > width

        width: parent.width
        height: badge.height + (stacked ? 4 + timeText.height : 0)
        visible: root.first

        LogTypeBadge {
            id: badge

            objectName: "logType"
            width: Math.min(implicitWidth, parent.width - (root.hasTime && !header.stacked ? timeText.width + Metrics.spacing : 0))
            type: root.logType
        }
        Item {
            y: header.stacked ? badge.height + 4 : 0
            width: parent.width
            height: header.stacked ? timeText.height : badge.height

            LineText {
                id: timeText

                objectName: "time"
                x: header.stacked ? 0 : parent.width - width
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, Metrics.largeText ? parent.width : parent.width / 2)
                visible: root.hasTime
                text: root.time
                systemSize: 9
                color: Colors.dimText
            }
        }
    }
    PieceText {
        id: bodyText

        part: 0
        objectName: "body"
        y: root.first ? header.height + 4 : 0
        width: parent.width
        text: root.body
        textStyle: Typography.Caption
        monospaced: true
        color: Colors.gray
    }
}
