import QtQuick
import TrellisportManager.Presentation

// One piece in one state, under a line that says what it is.
Column {
    id: root

    required property string caption
    default property alias piece: place.data

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

        width: parent.width
    }
}
