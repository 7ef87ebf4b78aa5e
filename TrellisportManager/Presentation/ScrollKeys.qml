import QtQuick
import TrellisportManager.Presentation

// Scrolls a scroll area by the keys of the area or the page that forwards them here (Keys.forwardTo),
// and shows that the area has the keyboard. Lay it over what is seen of the area.
Item {
    id: root

    required property Flickable scrollArea
    // What the keys go by: the page up and down moves by a little less than is seen.
    property real pageHeight: height

    readonly property real topY: scrollArea.originY - scrollArea.topMargin
    readonly property real bottomY: Math.max(topY, scrollArea.originY + scrollArea.contentHeight + scrollArea.bottomMargin - scrollArea.height)
    // Whether there is anything to be scrolled.
    readonly property bool scrolls: bottomY > topY
    // Whether Tab is to stop at the area: as long as it can be scrolled, and until it is left when it
    // no longer can. What has the keyboard can't be taken out of Tab's way.
    readonly property bool takesTab: scrolls || root.Window.activeFocusItem === scrollArea

    function scrollBy(distance: real): void {
        root.scrollTo(root.scrollArea.contentY + distance);
    }
    function scrollTo(place: real): void {
        root.scrollArea.cancelFlick();
        root.scrollArea.contentY = Math.max(root.topY, Math.min(root.bottomY, place));
    }
    // Where a long list begins and ends is only an estimate until the rows there exist.
    function scrollToTop(): void {
        (root.scrollArea as ListView)?.positionViewAtBeginning();
        root.scrollTo(root.topY);
    }
    function scrollToBottom(): void {
        (root.scrollArea as ListView)?.positionViewAtEnd();
        root.scrollTo(root.bottomY);
    }

    Keys.onUpPressed: scrollBy(-3 * 16)
    Keys.onDownPressed: scrollBy(3 * 16)
    Keys.onPressed: event => {
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_PageUp:
            scrollBy(-0.9 * pageHeight);
            break;
        case Qt.Key_PageDown:
        case Qt.Key_Space:
            scrollBy(0.9 * pageHeight);
            break;
        case Qt.Key_Home:
            scrollToTop();
            break;
        case Qt.Key_End:
            scrollToBottom();
            break;
        default:
            event.accepted = false;
        }
    }

    Rectangle {
        objectName: "scrollFocus"
        anchors.fill: parent
        anchors.margins: 2
        // Not while something in the area has it, and not when the area has it because what a finger
        // pressed is gone.
        visible: KeyboardUse.isLast && root.Window.activeFocusItem === root.scrollArea
        color: "transparent"
        radius: 8
        border.width: 2
        border.color: Colors.white
    }
}
