import QtQuick
import TrellisportManager.Presentation

// A row of a rounded group that is pressed as a whole.
PressableControl {
    id: root

    // Whether it shows at its trailing edge that it leads to a page of its own.
    property bool disclosure: false
    property color groundColor: Colors.surface
    property bool first: Positioner.isFirstItem
    property bool last: Positioner.isLastItem
    property bool separated: !last

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Metrics.touchTarget, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: Metrics.inset
    rightPadding: disclosure ? Metrics.inset + 20 : Metrics.inset
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

    SymbolImage {
        objectName: "disclosure"
        visible: root.disclosure
        anchors.right: parent.right
        anchors.rightMargin: Metrics.inset
        anchors.verticalCenter: parent.verticalCenter
        width: 12
        height: 12
        symbol: "chevron.right"
        color: Colors.placeholderText
        opacity: root.down ? 0.5 : 1
    }
    Binding {
        target: root.contentItem
        property: "opacity"
        value: root.down ? 0.5 : 1
        restoreMode: Binding.RestoreNone
    }
}
