import QtQuick
import TrellisportManager.Presentation

// The ground of one row of a rounded group: rounded above at the group's first row, below at its
// last, with a hairline to the next row. Plain boxes, so that a long list needs no clipping; the
// colour must be opaque.
Item {
    id: root

    property color color: Colors.surface
    property bool first: true
    property bool last: true
    property bool separated: !last

    Rectangle {
        objectName: "ground"
        anchors.fill: parent
        radius: root.first || root.last ? Metrics.groupRadius : 0
        color: root.color
    }
    Rectangle {
        objectName: "squareEnd"
        visible: root.first !== root.last
        y: root.first ? Metrics.groupRadius : 0
        width: parent.width
        height: parent.height - Metrics.groupRadius
        color: root.color
    }
    Hairline {
        objectName: "rowSeparator"
        visible: root.separated
        anchors.left: parent.left
        anchors.leftMargin: Metrics.inset
        anchors.right: parent.right
        anchors.bottom: parent.bottom
    }
}
