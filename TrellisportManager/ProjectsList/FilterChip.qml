import QtQuick
import TrellisportManager.Presentation

// A label that turns a filter on or off when it is pressed.
PressableControl {
    id: root

    required property string label
    required property bool isSelected

    leftPadding: 12
    rightPadding: 12
    topPadding: 6
    bottomPadding: 6
    // To a screen reader it is a button that is on or off. Only the model decides which.
    checkable: true
    checked: isSelected
    onToggled: checked = Qt.binding(() => root.isSelected)
    Accessible.name: root.label

    background: Surface {
        objectName: "chipGround"
        radius: 16
        color: root.isSelected ? Colors.accent : Colors.surface
        outlineWidth: root.isSelected ? 0 : 1
    }
    contentItem: StyledText {
        objectName: "chipLabel"
        text: root.label
        textStyle: Typography.Caption
        color: root.isSelected ? Colors.white : Colors.gray
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
}
