import QtQuick
import TrellisportManager.Presentation

// A row with a label at its leading edge and whatever is placed inside it at the trailing one;
// larger text than usual stands above what it does not fit beside.
ListRow {
    id: root

    property string label
    // How wide what stands behind the label would like to be.
    property real trailingWidth: holder.implicitWidth
    readonly property bool stacked: Metrics.largeText && labelText.implicitWidth + Metrics.spacing + trailingWidth > availableWidth
    // The width that the label leaves to what stands behind it.
    readonly property real trailingRoom: stacked ? availableWidth : availableWidth - Math.min(labelText.implicitWidth, availableWidth / 2) - Metrics.spacing
    default property alias trailing: holder.data

    contentItem: body

    Item {
        id: body

        implicitWidth: labelText.implicitWidth + Metrics.spacing + holder.implicitWidth
        implicitHeight: labelText.implicitHeight + (root.stacked ? 4 + holder.implicitHeight : 0)

        Item {
            width: parent.width
            height: root.stacked ? labelText.implicitHeight : parent.height

            StyledText {
                id: labelText

                objectName: "rowLabel"
                width: root.stacked ? parent.width : parent.width - holder.width - Metrics.spacing
                anchors.verticalCenter: parent.verticalCenter
                text: root.label
            }
        }
        Item {
            y: root.stacked ? labelText.implicitHeight + 4 : 0
            width: parent.width
            height: parent.height - y

            Row {
                id: holder

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }
}
