import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// A search field: a magnifier before the text, and behind it a cross that clears it.
T.TextField {
    id: control

    readonly property bool visualFocus: activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason)

    readonly property real textWidth: width - leftPadding - rightPadding

    // The owner empties its own text too.
    signal cleared

    function clearText(): void {
        control.clear();
        control.cleared();
    }

    implicitWidth: 200
    // 36 at the usual text size.
    implicitHeight: 14 + Typography.lineHeight(Typography.Body, Typography.textScale)
    // 32 at the usual size.
    leftPadding: 15 + Metrics.symbolSize(17)
    rightPadding: 12 + Metrics.symbolSize(20)
    verticalAlignment: TextInput.AlignVCenter
    font: Typography.font(Typography.Body, 0, false, Typography.textScale)
    color: Colors.white
    placeholderTextColor: Colors.placeholderText
    selectionColor: Colors.accent
    selectedTextColor: Colors.white
    clip: contentWidth > textWidth
    inputMethodHints: Qt.ImhNoPredictiveText
    containmentMask: touchArea
    cursorDelegate: TextCursor {}
    EnterKey.type: Qt.EnterKeySearch
    onAccepted: InputMethod.hide()
    Keys.onEscapePressed: event => {
        event.accepted = control.length > 0;
        if (control.length > 0)
            control.clearText();
    }

    Accessible.name: control.placeholderText
    Accessible.searchEdit: true

    background: Rectangle {
        objectName: "searchGround"
        radius: 10
        color: Colors.fieldFill
    }

    Item {
        id: touchArea

        y: (control.height - height) / 2
        width: control.width
        height: Metrics.touchTarget
    }
    SymbolImage {
        objectName: "magnifier"
        x: 8
        anchors.verticalCenter: parent.verticalCenter
        width: Metrics.symbolSize(17)
        height: width
        symbol: "magnifyingglass"
        color: Colors.secondaryText
    }
    StyledText {
        objectName: "placeholder"
        x: control.leftPadding
        width: control.textWidth
        anchors.verticalCenter: parent.verticalCenter
        visible: control.length === 0 && control.preeditText.length === 0
        text: control.placeholderText
        color: control.placeholderTextColor
        fontSizeMode: Metrics.largeText ? Text.HorizontalFit : Text.FixedSize
        minimumPixelSize: 12
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    PressableControl {
        objectName: "clearButton"
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        width: Metrics.symbolSize(20)
        height: width
        visible: control.length > 0
        onClicked: control.clearText()
        Accessible.name: qsTr("Clear text")

        contentItem: SymbolImage {
            symbol: "xmark.circle.fill"
            color: Colors.secondaryText
        }
    }
    FocusRing {
        control: control
        radius: 12
    }
}
