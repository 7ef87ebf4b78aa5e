import QtQuick
import TrellisportManager.Presentation

// A text, or a piece of one, below a small label.
Item {
    id: root

    required property string label
    // Which of the card's long texts it is.
    required property int part
    required property bool showsLabel
    required property string text
    required property color textColor
    property alias monospaced: bodyText.monospaced

    implicitHeight: bodyText.y + bodyText.height

    StyledText {
        id: labelText

        objectName: "label"
        width: parent.width
        visible: root.showsLabel
        text: root.label
        systemSize: 10
        color: Colors.gray
    }
    PieceText {
        id: bodyText

        part: root.part
        objectName: "body"
        y: root.showsLabel ? labelText.height + Metrics.spacing : 0
        width: parent.width
        text: root.text
        textStyle: Typography.Caption
        color: root.textColor
    }
}
