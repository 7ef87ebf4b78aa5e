import QtQuick
import TrellisportManager.Presentation

// A row with a label at its leading edge and whatever is placed inside it at the trailing one.
ListRow {
    id: root

    property string label
    // The width that the label leaves to what stands behind it.
    readonly property real trailingRoom: availableWidth - Math.min(labelText.implicitWidth, availableWidth / 2) - Metrics.spacing
    default property alias trailing: holder.data

    contentItem: body

    Item {
        id: body

        implicitWidth: labelText.implicitWidth + Metrics.spacing + holder.implicitWidth
        implicitHeight: labelText.implicitHeight

        StyledText {
            id: labelText

            objectName: "rowLabel"
            width: parent.width - holder.width - Metrics.spacing
            anchors.verticalCenter: parent.verticalCenter
            text: root.label
        }
        Row {
            id: holder

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
