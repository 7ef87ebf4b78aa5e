import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// One tab of a workspace.
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
    containmentMask: touchArea

    Accessible.onPressAction: control.clicked()
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

    Item {
        id: touchArea

        x: Math.min(0, (control.width - width) / 2)
        y: Math.min(0, (control.height - height) / 2)
        width: Math.max(control.width, Metrics.touchTarget)
        height: Math.max(control.height, Metrics.touchTarget)
    }
    FocusRing {
        control: control
        anchors.margins: 1
    }
    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
