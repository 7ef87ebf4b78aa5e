import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// The small menu by which a text is copied.
T.Popup {
    id: popup

    property string text

    // At a place in the window.
    function openAt(place: point): void {
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
        Accessible.name: qsTr("Copy")

        contentItem: StyledText {
            text: qsTr("Copy")
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
}
