import QtQuick
import TrellisportManager.Presentation

// The ground of a card, or of the piece of one that a row shows: rounded where the card begins and
// ends, with straight edges that go on in the next row elsewhere.
Item {
    id: root

    property bool first: true
    property bool last: true
    property alias color: surface.color
    property alias radius: surface.radius
    property alias outlineWidth: surface.outlineWidth
    property alias outlineColor: surface.outlineColor

    clip: !first || !last

    Surface {
        id: surface

        objectName: "cardSurface"
        y: root.first ? 0 : -radius - 1
        width: root.width
        height: root.height - y + (root.last ? 0 : radius + 1)
    }
}
