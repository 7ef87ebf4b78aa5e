import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// One root tab: a symbol above its label, in the tint while it is the selected one.
T.TabButton {
    id: control

    required property string symbol
    readonly property color tint: checked ? Colors.accent : Colors.gray

    objectName: "rootTab"
    implicitWidth: Metrics.touchTarget
    implicitHeight: Metrics.tabBarHeight
    focusPolicy: Qt.TabFocus
    opacity: down ? 0.5 : 1

    // Choosing the chosen tab again changes nothing.
    function choose(): void {
        if (!control.checked)
            control.toggle();
    }

    Accessible.selectable: true
    Accessible.selected: control.checked
    Accessible.onPressAction: control.choose()
    Accessible.onToggleAction: control.choose()
    Keys.onReturnPressed: control.choose()
    Keys.onEnterPressed: control.choose()

    contentItem: Item {
        SymbolImage {
            objectName: "symbol"
            anchors.horizontalCenter: parent.horizontalCenter
            y: 5
            width: 25
            height: 25
            symbol: control.symbol
            color: control.tint
        }
        StyledText {
            readonly property real inset: Metrics.largeText ? 4 : 0

            objectName: "label"
            x: inset
            width: parent.width - 2 * inset
            y: 33
            horizontalAlignment: Text.AlignHCenter
            text: control.text
            systemSize: 10
            weight: Font.Medium
            color: control.tint
            fontSizeMode: Metrics.largeText ? Text.HorizontalFit : Text.FixedSize
            minimumPixelSize: 10
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
        // Not in the button itself, which would then take every button of the mouse.
        HoverHandler {
            cursorShape: Qt.PointingHandCursor
        }
    }
    FocusRing {
        control: control
        anchors.margins: 2
    }
}
