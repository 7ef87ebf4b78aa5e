import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// The small menu by which a text is copied.
T.Popup {
    id: popup

    property string text
    // The arrow keys ask for the text of another card, so many further on.
    signal stepped(int distance)

    // At a place in the window.
    function openAt(place: point): void {
        if (!popup.visible) {
            d.focused = popup.parent.Window.activeFocusItem;
            d.reason = d.focused?.["focusReason"] ?? Qt.PopupFocusReason;
        }
        popup.x = place.x - popup.implicitWidth / 2;
        popup.y = place.y - popup.implicitHeight - Metrics.spacing;
        popup.open();
    }

    objectName: "copyMenu"
    margins: Metrics.spacing
    padding: 0
    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onOpened: contentItem.forceActiveFocus(Qt.PopupFocusReason)
    // The toolkit forgets which of a page's items it was.
    onClosed: {
        if (d.focused?.visible)
            d.focused.forceActiveFocus(d.reason);
    }

    QtObject {
        id: d

        // What had the keyboard before; it may be gone by then.
        property Item focused
        property int reason
    }

    background: Surface {
        color: Colors.surface
        radius: 10
        outlineColor: Colors.gray
    }
    contentItem: PressableControl {
        objectName: "copyButton"
        implicitHeight: Math.max(Metrics.touchTarget, implicitContentHeight)
        leftPadding: Metrics.inset
        rightPadding: Metrics.inset
        focusRingMargin: 3
        onClicked: {
            Clipboard.copy(popup.text);
            Announcements.say(qsTr("Copied"));
            popup.close();
        }
        // Escape closes the menu before it leads back from the page below.
        Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
        Keys.onEscapePressed: popup.close()
        Keys.onUpPressed: popup.stepped(-1)
        Keys.onDownPressed: popup.stepped(1)
        Accessible.name: qsTr("Copy")

        contentItem: StyledText {
            text: qsTr("Copy")
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
}
