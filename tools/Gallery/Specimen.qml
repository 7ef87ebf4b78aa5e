import QtQuick
import TrellisportManager.Presentation

// Pieces in one state or in several, under a line that says what it is.
Column {
    id: root

    required property string caption
    default property alias piece: place.data
    // Drawn with this having the keyboard, which one thing at a time can have.
    property Item keyboardAt: null

    width: parent?.width ?? 0
    spacing: 6

    StyledText {
        width: parent.width
        text: root.caption
        textStyle: Typography.Caption2
        color: Colors.mutedText
    }
    Column {
        id: place

        objectName: "specimenPlace"
        width: parent.width
    }
}
