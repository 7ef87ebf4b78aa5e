import QtQuick
import TrellisportManager.Presentation

// The bar at a screen's top: a centred headline, and in a pushed screen the way back.
Rectangle {
    id: root

    property string title
    // How much of the headline is seen, 0 (the large title still shows) to 1.
    property real headlineOpacity: 1
    // The previous screen's title; empty where there is none to go back to.
    property string backTitle
    // Whether a hairline parts it from what lies below.
    property bool separated: true
    signal backRequested

    implicitHeight: SafeArea.top + Metrics.titleBarHeight
    color: Colors.background

    Item {
        id: bar

        readonly property real sideWidth: back.visible ? back.x + back.width + 8 : 16

        anchors.left: parent.left
        anchors.leftMargin: SafeArea.left
        anchors.right: parent.right
        anchors.rightMargin: SafeArea.right
        anchors.bottom: parent.bottom
        height: Metrics.titleBarHeight

        PressableControl {
            id: back

            objectName: "backButton"
            visible: root.backTitle.length > 0
            x: 8
            height: parent.height
            // Larger text leaves the room to the title.
            width: Math.min(implicitWidth, parent.width * (Metrics.largeText ? 0.3 : 0.4))
            onClicked: root.backRequested()
            Accessible.name: root.backTitle

            contentItem: BackLabel {
                text: root.backTitle
            }
        }
        Text {
            id: headline

            readonly property real room: parent.width - 2 * bar.sideWidth

            objectName: "headline"
            // Centred in the bar where there is room, else beside the back control.
            x: implicitWidth <= room ? (parent.width - width) / 2 : bar.sideWidth
            width: Math.min(implicitWidth, parent.width - bar.sideWidth - 16)
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            textFormat: Text.PlainText
            font: Typography.font(Typography.Headline, 0, false, Typography.textScale)
            color: Colors.white
            opacity: root.headlineOpacity
            verticalAlignment: Text.AlignVCenter
            fontSizeMode: Metrics.largeText ? Text.HorizontalFit : Text.FixedSize
            minimumPixelSize: 17
            elide: Text.ElideRight
            maximumLineCount: 1

            Accessible.role: Accessible.Heading
            Accessible.name: text
            Accessible.ignored: opacity === 0
        }
    }
    CopyGesture {
        area: bar
    }
    Hairline {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        visible: root.separated
        opacity: root.headlineOpacity
    }
}
