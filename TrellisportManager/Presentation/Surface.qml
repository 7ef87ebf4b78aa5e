import QtQuick
import TrellisportManager.Presentation

// A filled, rounded ground with an optional outline drawn inside its edge.
Rectangle {
    id: root

    property real outlineWidth: 1
    property color outlineColor: Colors.hairline

    color: Colors.surface
    radius: 10
    border.width: outlineWidth
    border.color: outlineWidth > 0 ? outlineColor : "transparent"
}
