import QtQuick
import TrellisportManager.Presentation

// One row of a CardList: an entry's card, or a piece of one that is too long for a single row. What
// is placed inside is given the card's inner width and says with contentHeight how high it is.
Item {
    id: root

    required property int index
    required property bool first
    required property bool last
    // The room above a card that is not the list's first.
    property real gap: 12
    property real inset: Metrics.inset
    // Whether the card has a title above its content, as a CardView has.
    property bool titled: false
    property string title
    property alias color: ground.color
    property alias radius: ground.radius
    property alias outlineWidth: ground.outlineWidth
    property alias outlineColor: ground.outlineColor
    required property real contentHeight
    default property alias content: body.data

    readonly property real topGap: first && index > 0 ? gap : 0

    readonly property real contentTop: (first ? inset : 0) + (titled && first ? titleText.height + Metrics.spacing : 0)

    Accessible.role: Accessible.ListItem

    width: ListView.view?.width ?? 0
    // Whole points, so that the pieces of one ground meet without a seam.
    height: topGap + Math.ceil(contentTop + contentHeight + (last ? inset : 0))

    CardGround {
        id: ground

        readonly property CardList list: root.ListView.view as CardList

        objectName: "card"
        x: list ? list.cardX : 0
        y: root.topGap
        width: list ? list.cardWidth : 0
        height: root.height - y
        first: root.first
        last: root.last
        radius: 12

        CardTitle {
            id: titleText

            x: root.inset
            y: root.inset
            width: parent.width - 2 * root.inset
            visible: root.titled && root.first
            text: root.title
        }
        Item {
            id: body

            x: root.inset
            y: root.contentTop
            width: parent.width - 2 * root.inset
            height: root.contentHeight
        }
    }
}
