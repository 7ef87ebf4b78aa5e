import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// One tab of a workspace. Not a PressableControl, which a screen reader would hear as a button.
T.TabButton {
    id: control

    objectName: "tabButton"
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 12
    rightPadding: 12
    topPadding: 8
    bottomPadding: 8
    focusPolicy: Qt.TabFocus
    opacity: down ? 0.5 : 1
    containmentMask: parts

    Accessible.selectable: true
    Accessible.selected: control.checked
    Accessible.onPressAction: control.clicked()
    Accessible.onToggleAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    background: Rectangle {
        objectName: "tabGround"
        radius: 8
        color: control.checked ? Colors.faded(Colors.accent, 0.3) : "transparent"
    }
    contentItem: StyledText {
        objectName: "tabLabel"
        text: control.text
        textStyle: Typography.Caption
        weight: control.checked ? Font.Bold : Font.Normal
        color: control.checked ? Colors.white : Colors.gray
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }

    PressableParts {
        id: parts

        control: control
        ringMargin: 1
    }
}
