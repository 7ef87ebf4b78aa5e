import QtQuick
import TrellisportManager.Presentation

// Some pieces, one below the other. It is as high as they are.
Rectangle {
    id: root

    required property string title
    default property alias specimens: column.data

    implicitWidth: 390
    implicitHeight: column.height + 2 * Metrics.inset
    color: Colors.background

    Column {
        id: column

        x: Metrics.inset
        y: Metrics.inset
        width: root.width - 2 * Metrics.inset
        spacing: 20

        StyledText {
            text: root.title
            textStyle: Typography.Title2
            weight: Font.Bold
        }
    }
}
