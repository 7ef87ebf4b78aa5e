import QtQuick
import TrellisportManager.Presentation

// A text that leads out of the application, to the system's browser. It wraps within the width it
// is given. Not a control of the toolkit, which would present it to a screen reader as a button.
Item {
    id: root

    required property string url
    required property LinkController links
    property alias text: label.text
    property alias textStyle: label.textStyle
    property alias horizontalAlignment: label.horizontalAlignment
    property alias wrapMode: label.wrapMode
    property alias elide: label.elide
    property alias maximumLineCount: label.maximumLineCount
    // Only the keyboard gives it the focus, so that having it is reason enough to show it.
    readonly property bool visualFocus: activeFocus

    function open(): void {
        root.links.open(root.url);
    }

    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight
    activeFocusOnTab: true
    containmentMask: parts
    opacity: tap.pressed ? 0.5 : 1

    Accessible.role: Accessible.Link
    Accessible.name: root.text
    Accessible.focusable: true
    Accessible.onPressAction: root.open()
    Keys.onReturnPressed: root.open()
    Keys.onEnterPressed: root.open()
    Keys.onSpacePressed: root.open()

    StyledText {
        id: label

        objectName: "linkLabel"
        width: root.width
        height: root.height
        textStyle: Typography.Caption
        color: Colors.accent
        Accessible.ignored: true
    }
    PressableParts {
        id: parts

        control: root
    }
    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.open()
    }
}
