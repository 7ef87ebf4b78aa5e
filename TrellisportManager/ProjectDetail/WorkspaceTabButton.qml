import QtQuick
import TrellisportManager.Presentation

// One tab of a workspace.
PressableControl {
    id: control

    // Only the model decides which.
    property bool selected: false

    objectName: "tabButton"
    leftPadding: 12
    rightPadding: 12
    topPadding: 8
    bottomPadding: 8
    focusRingMargin: 1
    Accessible.role: Accessible.PageTab
    Accessible.name: control.text
    Accessible.selectable: true
    Accessible.selected: control.selected

    background: Rectangle {
        objectName: "tabGround"
        radius: 8
        color: control.selected ? Colors.faded(Colors.accent, 0.3) : "transparent"
    }
    contentItem: StyledText {
        objectName: "tabLabel"
        text: control.text
        textStyle: Typography.Caption
        weight: control.selected ? Font.Bold : Font.Normal
        color: control.selected ? Colors.white : Colors.gray
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
}
