import QtQuick
import TrellisportManager.Presentation

// The menu key offers to copy the text of a card: of the one that the keyboard is in, else of the
// topmost that begins in sight. While it does, a frame shows which, and the arrow keys lead to the
// others. Place it in the list's content, as wide as the cards.
Rectangle {
    id: root

    required property ListView cards
    required property CopyGesture copying
    // Of the card that is offered; -1 when none is, or the menu came by another way.
    property int row: -1

    function rowOfFocus(): int {
        for (let at = root.Window.activeFocusItem; at; at = at.parent) {
            if (at.parent === root.cards.contentItem)
                return root.cards.indexAt(root.cards.width / 2, at.y);
        }
        return -1;
    }
    function topRow(): int {
        const row = root.cards.indexAt(root.cards.width / 2, Math.max(root.cards.contentY, root.cards.originY));
        const next = root.cards.model.cardRow(row, 1);
        const cutOff = row >= 0 && root.cards.itemAtIndex(row).y < root.cards.contentY - 0.5;
        const nextItem = cutOff && next >= 0 ? root.cards.itemAtIndex(next) : null;
        return nextItem && nextItem.y < root.cards.contentY + root.cards.height ? next : row;
    }
    function offer(row: int): void {
        const item = root.cards.itemAtIndex(row);
        const text = root.cards.model.cardText(row);
        if (!item || text.length === 0)
            return;
        const top = Math.max(item.y, root.cards.contentY);
        const bottom = Math.min(item.y + item.height, root.cards.contentY + root.cards.height);
        root.y = item.y;
        root.height = item.height;
        root.copying.offerText(text, root.cards.contentItem.mapToItem(null, root.cards.width / 2, (top + bottom) / 2));
        root.row = row;
    }

    z: 1
    visible: row >= 0 && copying.offers
    color: "transparent"
    radius: 12
    border.width: 2
    border.color: Colors.white

    Shortcut {
        sequences: ["Menu", "Shift+F10"]
        enabled: root.cards.visible && root.cards.count > 0
        onActivated: {
            const focused = root.rowOfFocus();
            root.offer(focused >= 0 ? focused : root.topRow());
        }
    }
    Connections {
        function onOffersChanged(): void {
            if (!root.copying.offers)
                root.row = -1;
        }
        function onStepped(distance: int): void {
            const next = root.cards.model.cardRow(root.row, distance);
            if (next < 0)
                return;
            root.cards.positionViewAtIndex(next, ListView.Contain);
            root.offer(next);
            Announcements.say(root.cards.model.cardText(next).slice(0, 200));
        }

        target: root.copying
    }
}
