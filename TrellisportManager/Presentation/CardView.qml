import QtQuick
import TrellisportManager.Presentation

// A titled card: the title in bold above its content, framed. Its height follows the content.
Surface {
    id: root

    property string title
    // One item; it is given the card's inner width.
    property Component content
    readonly property Item contentItem: holder.item

    implicitHeight: column.implicitHeight + 2 * Metrics.inset

    Column {
        id: column

        x: Metrics.inset
        y: Metrics.inset
        width: parent.width - 2 * Metrics.inset
        spacing: Metrics.spacing

        CardTitle {
            width: parent.width
            text: root.title
        }
        ItemHolder {
            id: holder

            width: parent.width
            component: root.content
        }
    }
}
