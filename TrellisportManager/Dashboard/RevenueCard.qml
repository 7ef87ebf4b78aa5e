import QtQuick
import TrellisportManager.Presentation

// A title above an amount of money.
Surface {
    id: root

    required property string title
    required property string amount
    required property color amountColor
    // How wide the title would like to be.
    readonly property alias titleWidth: titleText.implicitWidth

    implicitHeight: column.implicitHeight + 24
    Accessible.role: Accessible.Grouping
    Accessible.name: root.title

    Column {
        id: column

        x: 6
        y: 12
        width: parent.width - 12
        spacing: 4

        StyledText {
            id: titleText

            objectName: "title"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.title
            textStyle: Typography.Caption
            color: Colors.gray
        }
        FigureText {
            objectName: "amount"
            width: parent.width
            text: root.amount
            color: root.amountColor
        }
    }
}
