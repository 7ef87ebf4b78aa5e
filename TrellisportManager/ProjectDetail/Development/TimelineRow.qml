import QtQuick
import TrellisportManager.Presentation

// An event: a dot on the line that joins all events, and beside it what happened and when. An event
// too long for one row goes on in the next.
Item {
    id: root

    required property bool first
    required property bool last
    required property color dotColor
    required property string event
    required property bool showsEvent
    required property string detail
    required property bool showsDetail
    required property bool hasTime
    required property string time

    readonly property CardList list: ListView.view as CardList
    readonly property bool showsTime: last && hasTime
    readonly property real eventBottom: showsEvent ? eventText.height : 0
    readonly property real detailTop: showsEvent ? eventBottom + 2 : 0
    readonly property real detailBottom: showsDetail ? detailTop + detailText.height : eventBottom
    readonly property real textBottom: showsTime ? timeText.y + timeText.height : detailBottom

    Accessible.role: Accessible.ListItem

    width: list ? list.width : 0
    height: Math.ceil(Math.max(first ? 10 + 30 : 0, textBottom + (last ? 12 : 0)))

    Item {
        x: root.list ? root.list.cardX : 0
        width: root.list ? root.list.cardWidth : 0
        height: parent.height

        Rectangle {
            objectName: "dot"
            visible: root.first
            width: 10
            height: 10
            radius: 5
            color: root.dotColor
        }
        Rectangle {
            objectName: "line"
            x: 4.5
            y: root.first ? 10 : 0
            width: 1
            height: parent.height - y
            color: Colors.hairline
        }
        Item {
            x: 10 + 12
            width: parent.width - x
            height: parent.height

            PieceText {
                id: eventText

                part: 0
                objectName: "event"
                width: parent.width
                visible: root.showsEvent
                text: root.event
                textStyle: Typography.Caption
                weight: Font.Medium
            }
            PieceText {
                id: detailText

                part: 1
                objectName: "detail"
                y: root.detailTop
                width: parent.width
                visible: root.showsDetail
                text: root.detail
                textStyle: Typography.Caption2
                color: Colors.gray
            }
            StyledText {
                id: timeText

                objectName: "time"
                y: root.detailBottom + 2
                width: parent.width
                visible: root.showsTime
                text: root.time
                systemSize: 9
                color: Colors.dimText
            }
        }
    }
}
