import QtQuick
import TrellisportManager.Presentation

// A message: its sender's name above a bubble, which is as wide as its text asks for. The agent's
// stand at the trailing edge. A message too long for one row goes on in the next.
Item {
    id: root

    required property int index
    required property bool first
    required property bool last
    required property string sender
    required property bool isAgent
    required property string body

    readonly property CardList list: ListView.view as CardList
    readonly property real columnWidth: Math.min(280 * Math.max(1, Typography.textScale), list ? list.cardWidth : 280)
    readonly property real textWidth: columnWidth - 20
    readonly property real topGap: first && index > 0 ? 8 : 0

    Accessible.role: Accessible.ListItem

    width: list ? list.width : 0
    height: topGap + bubble.y + bubble.height

    Item {
        id: column

        x: root.list ? root.list.cardX + (root.isAgent ? root.list.cardWidth - width : 0) : 0
        y: root.topGap
        width: root.columnWidth
        height: parent.height - y

        StyledText {
            id: senderText

            objectName: "sender"
            width: parent.width
            visible: root.first
            horizontalAlignment: root.isAgent ? Text.AlignRight : Text.AlignLeft
            text: root.sender
            systemSize: 10
            color: root.isAgent ? Colors.accent : Colors.gray
        }
        CardGround {
            id: bubble

            objectName: "bubble"
            x: root.isAgent ? parent.width - width : 0
            y: root.first ? senderText.height + 2 : 0
            width: root.first && root.last ? Math.min(Math.ceil(bodyText.implicitWidth), root.textWidth) + 20 : root.columnWidth
            height: bodyText.y + bodyText.height + (root.last ? 10 : 0)
            first: root.first
            last: root.last
            color: root.isAgent ? Colors.agentSurface : Colors.surface
            radius: 12
            outlineWidth: 0

            PieceText {
                id: bodyText

                part: 0
                objectName: "body"
                x: 10
                y: root.first ? 10 : 0
                width: parent.width - 20
                text: root.body
                textStyle: Typography.Caption
            }
        }
    }
}
