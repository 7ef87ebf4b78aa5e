import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// A text field at the trailing edge of a row, as high as the row for the finger.
T.TextField {
    id: control

    // What the field is for, as the row's label says it.
    required property string label
    readonly property bool visualFocus: activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason)

    implicitWidth: 60
    implicitHeight: Metrics.touchTarget
    padding: 0
    horizontalAlignment: TextInput.AlignRight
    verticalAlignment: TextInput.AlignVCenter
    font: Typography.font(Typography.Body, 0, false, Typography.textScale)
    color: Colors.white
    placeholderTextColor: Colors.placeholderText
    selectionColor: Colors.accent
    selectedTextColor: Colors.white
    clip: contentWidth > width
    cursorDelegate: TextCursor {}

    Accessible.name: control.label

    StyledText {
        objectName: "placeholder"
        anchors.fill: parent
        visible: control.length === 0 && control.preeditText.length === 0
        text: control.placeholderText
        color: control.placeholderTextColor
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
    FocusRing {
        control: control
        anchors.topMargin: 4
        anchors.bottomMargin: 4
        anchors.leftMargin: -6
        anchors.rightMargin: -6
    }
}
