import QtQuick
import TrellisportManager.Presentation

// The one sentence of a list that has nothing to show.
Item {
    id: root

    required property string text
    property real topInset: 40

    implicitHeight: topInset + label.implicitHeight

    StyledText {
        id: label

        objectName: "emptyText"
        x: Metrics.inset
        y: root.topInset
        width: parent.width - 2 * Metrics.inset
        horizontalAlignment: Text.AlignHCenter
        text: root.text
        color: Colors.gray
    }
}
