import QtQuick
import TrellisportManager.Presentation

// A row of a rounded group that is pressed as a whole.
PressableControl {
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
    // Inside the row: the next one is drawn over what reaches out of it.
    focusRingMargin: 3
    // The ground's boxes overlap and must stay opaque: its colour is dimmed in place of the whole.
    opacity: 1

    background: RowGround {
        color: root.down ? Qt.tint(root.groundColor, Colors.faded(Colors.background, 0.5)) : root.groundColor
        first: root.first
        last: root.last
        separated: root.separated
    }

    Binding {
        target: root.contentItem
        property: "opacity"
        value: root.down ? 0.5 : 1
    }
}
