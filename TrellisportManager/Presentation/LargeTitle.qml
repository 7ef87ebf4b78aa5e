import QtQuick
import TrellisportManager.Presentation

// The large title that scrolls away under the title bar.
Item {
    id: root

    property string title

    implicitHeight: Metrics.largeTitleHeight

    Text {
        objectName: "largeTitle"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.inset
        anchors.rightMargin: Metrics.inset
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 8
        height: Typography.lineHeight(Typography.LargeTitle)
        verticalAlignment: Text.AlignVCenter
        text: root.title
        textFormat: Text.PlainText
        font: Typography.font(Typography.LargeTitle, Font.Bold, false)
        color: Colors.white
        elide: Text.ElideRight
        maximumLineCount: 1

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
