import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// One row of a rounded group: its content inset on a ground of its own. In a positioner it finds
// its own place in the group; a list's delegate says it.
T.Control {
    id: root

    property color groundColor: Colors.surface
    property bool first: Positioner.isFirstItem
    property bool last: Positioner.isLastItem
    property bool separated: !last

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Metrics.touchTarget, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: Metrics.inset
    rightPadding: Metrics.inset
    topPadding: Metrics.rowPadding
    bottomPadding: Metrics.rowPadding

    background: RowGround {
        color: root.groundColor
        first: root.first
        last: root.last
        separated: root.separated
    }
}
