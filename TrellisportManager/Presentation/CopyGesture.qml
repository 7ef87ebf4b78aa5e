pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// A long press or a right click on a text in the area offers to copy it.
Item {
    id: root

    required property Item area
    // The list of cards that the area belongs to, which has the whole of a text shown in pieces.
    property ListView cards: null

    readonly property bool offers: d.menu?.visible ?? false
    // While a text is offered, the arrow keys ask for that of a card so many further on.
    signal stepped(int distance)

    // The text at a place in the item; null where there is none. What is typed has its own ways to be
    // copied, and what a button is called is nothing to copy.
    function textAt(item: Item, place: point): Text {
        for (let i = item.children.length - 1; i >= 0; --i) {
            const child = item.children[i];
            const inside = child.mapFromItem(item, place);
            const isButton = child as T.AbstractButton && !(child as PressableRow);
            if (child.visible && child.opacity > 0 && child.contains(inside) && !isButton && !(child as TextInput) && !(child as TextEdit)) {
                const found = root.textAt(child, inside);
                if (found)
                    return found;
            }
        }
        const text = item as Text;
        return text && text.text.length > 0 ? text : null;
    }
    function wholeText(text: Text): string {
        const piece = text as PieceText;
        if (!piece || !root.cards)
            return text.text;
        const place = text.mapToItem(root.cards.contentItem, 0, 0);
        const row = root.cards.indexAt(root.cards.width / 2, place.y);
        return row < 0 ? text.text : root.cards.model.wholeText(row, piece.part);
    }
    // Offers the text at a place in the item; nothing where there is none.
    function offer(item: Item, place: point): void {
        const text = root.textAt(item, place);
        if (text)
            root.offerText(root.wholeText(text), item.mapToItem(null, place));
    }
    // Offers a text at a place in the window.
    function offerText(text: string, place: point): void {
        if (!d.menu)
            d.menu = menuComponent.createObject(root.Window.contentItem) as CopyMenu;
        d.menu.text = text;
        d.menu.openAt(place);
    }

    Component.onDestruction: d.menu?.destroy()

    QtObject {
        id: d

        property CopyMenu menu: null
    }
    Component {
        id: menuComponent

        CopyMenu {
            onStepped: distance => root.stepped(distance)
        }
    }
    TapHandler {
        parent: root.area
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onLongPressed: root.offer(root.area, point.position)
        onTapped: (eventPoint, button) => {
            if (button === Qt.RightButton)
                root.offer(root.area, eventPoint.position);
        }
    }
}
