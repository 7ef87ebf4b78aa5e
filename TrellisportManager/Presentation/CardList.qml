import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// A virtual list of cards over CardRows, in a readable column in the middle of wide windows. The
// cards keep their distance themselves, because the rows of one card have none.
ListView {
    id: root

    readonly property real columnWidth: Math.min(width - SafeArea.left - SafeArea.right, Metrics.readableWidth)
    readonly property real columnX: Math.round(SafeArea.left + (width - SafeArea.left - SafeArea.right - columnWidth) / 2)
    // Where the cards stand, the default inset taken off the column.
    readonly property real cardX: columnX + Metrics.inset
    readonly property real cardWidth: columnWidth - 2 * Metrics.inset
    // Whether the list itself takes the keyboard, to be scrolled by keys; a list of controls leaves
    // it to them.
    property bool scrolledByKeys: true
    // What stands above the cards and scrolls with them. (A component of the list itself can't know
    // the ids of the file it stands in before Qt 6.5.)
    property Item lead: null

    topMargin: Metrics.inset + (lead?.height ?? 0)
    bottomMargin: Metrics.inset
    clip: true
    keyNavigationEnabled: false
    // There is no current row: whenever it changed, it would take the keyboard from a field.
    currentIndex: -1
    // Short lists too can be pulled, as everywhere on a phone.
    boundsBehavior: Flickable.DragAndOvershootBounds
    activeFocusOnTab: scrolledByKeys && keys.takesTab

    Accessible.role: Accessible.List

    Keys.forwardTo: scrolledByKeys ? [keys] : []

    // What rests at the top stays there when the room above the cards changes.
    onTopMarginChanged: {
        const rested = contentY <= originY - d.topMargin + 0.5;
        d.topMargin = topMargin;
        if (rested && !dragging)
            contentY = originY - topMargin;
    }
    Component.onCompleted: d.topMargin = topMargin

    T.ScrollBar.vertical: ScrollMark {}

    QtObject {
        id: d

        property real topMargin: 0
    }
    Binding {
        target: root.lead
        property: "parent"
        value: root.contentItem
        when: root.lead
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: root.lead
        property: "y"
        value: root.originY - (root.lead?.height ?? 0)
        when: root.lead
        restoreMode: Binding.RestoreNone
    }

    CopyGesture {
        id: copying

        area: root.contentItem
        cards: root
    }
    CopyKeys {
        parent: root.contentItem
        x: root.cardX
        width: root.cardWidth
        cards: root
        copying: copying
    }
    ScrollKeys {
        id: keys

        parent: root
        anchors.fill: parent
        scrollArea: root
    }
}
