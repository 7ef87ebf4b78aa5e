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
        height: Typography.lineHeight(Typography.LargeTitle, Typography.textScale)
        verticalAlignment: Text.AlignVCenter
        text: root.title
        textFormat: Text.PlainText
        font: Typography.font(Typography.LargeTitle, Font.Bold, false, Typography.textScale)
        color: Colors.white
        // A larger one that is wider than the screen is drawn smaller.
        fontSizeMode: Metrics.largeText ? Text.HorizontalFit : Text.FixedSize
        minimumPixelSize: 34
        elide: Text.ElideRight
        maximumLineCount: 1

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
