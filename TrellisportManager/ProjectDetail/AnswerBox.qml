import QtQuick
import TrellisportManager.Presentation

// An answer, or a piece of one, on a ground of its own inside a card; a label may stand above its
// beginning.
CardGround {
    id: root

    required property string text
    // Which of the card's long texts it is.
    property int part: 1
    property string label
    readonly property bool hasLabel: first && label.length > 0

    implicitHeight: answerText.y + answerText.height + (last ? 10 : 0)
    color: Colors.innerSurface
    radius: 8
    outlineWidth: 0

    StyledText {
        id: labelText

        objectName: "answerLabel"
        x: 10
        y: 10
        width: parent.width - 20
        visible: root.hasLabel
        text: root.label
        systemSize: 10
        color: Colors.green
    }
    PieceText {
        id: answerText

        part: root.part
        objectName: "answer"
        x: 10
        y: (root.first ? 10 : 0) + (root.hasLabel ? labelText.height + 2 : 0)
        width: parent.width - 20
        text: root.text
        textStyle: Typography.Caption
        color: Colors.gray
    }
}
