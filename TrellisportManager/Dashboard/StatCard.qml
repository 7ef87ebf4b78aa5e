import QtQuick
import TrellisportManager.Presentation

// A figure above its label.
Surface {
    id: root

    required property string value
    required property string label
    required property color valueColor
    // How wide the label would like to be.
    readonly property alias labelWidth: labelText.implicitWidth

    implicitHeight: column.implicitHeight + 24
    Accessible.role: Accessible.Grouping
    Accessible.name: root.label

    Column {
        id: column

        x: 6
        y: 12
        width: parent.width - 12
        spacing: 4

        FigureText {
            objectName: "value"
            width: parent.width
            text: root.value
            color: root.valueColor
        }
        StyledText {
            id: labelText

            objectName: "label"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.label
            textStyle: Typography.Caption
            color: Colors.gray
        }
    }
}
