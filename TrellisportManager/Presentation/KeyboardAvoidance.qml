import QtQuick
import TrellisportManager.Presentation

// Keeps what has the focus in a scroll area in view: clear of the on-screen keyboard, of the bar
// over the area's top, and of the edge when the window shrinks for a keyboard.
Item {
    id: root

    required property Flickable scrollArea
    // What lies over the scroll area's top edge.
    property real coveredAbove: 0
    // The on-screen keyboard, in the window.
    property rect keyboard: InputMethod.visible ? InputMethod.keyboardRectangle : Qt.rect(0, 0, 0, 0)

    // How much of the scroll area's foot lies behind the keyboard; its owner adds this to the
    // bottom margin.
    readonly property real coveredBelow: {
        if (keyboard.height <= 0)
            return 0;
        const bottom = scrollArea.mapToItem(null, 0, scrollArea.height).y;
        return Math.max(0, Math.min(scrollArea.height, bottom - keyboard.y));
    }
    readonly property Item focused: {
        const item = root.Window.activeFocusItem;
        for (let at = item; at; at = at.parent) {
            if (at === scrollArea.contentItem)
                return item;
        }
        return null;
    }

    // The most that belongs to the focused item and still fits in the room, in the scroll area: the
    // outermost KeptInView around it, else one further in, else itself, else its cursor.
    function place(room: real): rect {
        const text = root.focused as TextEdit;
        const cursor = text ? text.cursorRectangle : Qt.rect(0, 0, root.focused.width, root.focused.height);
        let place = root.focused.mapToItem(root.scrollArea, cursor);
        for (let at = root.focused; at !== root.scrollArea.contentItem; at = at.parent) {
            if ((at === root.focused || at as KeptInView) && at.height <= room)
                place = at.mapToItem(root.scrollArea, Qt.rect(0, 0, at.width, at.height));
        }
        return place;
    }
    // Scrolls no further than needed.
    function reveal(): void {
        if (!root.focused || !root.scrollArea.visible)
            return;
        const gap = Metrics.spacing;
        const room = root.scrollArea.height - root.coveredAbove - root.coveredBelow - 2 * gap;
        const shown = root.place(room);
        const above = shown.y - root.coveredAbove - gap;
        const below = shown.y + shown.height + gap - (root.scrollArea.height - root.coveredBelow);
        if (above < 0)
            root.scrollBy(above);
        else if (below > 0)
            root.scrollBy(Math.min(below, above));
    }
    // The owner scrolls to where it wants to be.
    function rest(): void {
        soon.stop();
        slide.stop();
    }
    function scrollBy(distance: real): void {
        slide.to = root.scrollArea.contentY + distance;
        slide.restart();
    }

    onFocusedChanged: soon.restart()
    onCoveredBelowChanged: soon.restart()

    // When everything that the change moves has moved.
    Timer {
        id: soon

        interval: 0
        onTriggered: root.reveal()
    }
    NumberAnimation {
        id: slide

        target: root.scrollArea
        property: "contentY"
        duration: 200
        easing.type: Easing.OutCubic
    }
    Connections {
        function onHeightChanged(): void {
            soon.restart();
        }

        target: root.scrollArea
    }
    Connections {
        // A field that grows, or whose cursor moves on, must not grow out of sight.
        function onCursorRectangleChanged(): void {
            soon.restart();
        }

        target: root.focused
        ignoreUnknownSignals: true
    }
}
