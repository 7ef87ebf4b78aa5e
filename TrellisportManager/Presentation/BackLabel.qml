import QtQuick
import TrellisportManager.Presentation

// What the back control shows: a chevron and the previous screen's title.
Item {
    id: root

    required property string text

    implicitWidth: label.x + label.implicitWidth

    SymbolImage {
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        symbol: "chevron.left"
        color: Colors.accent
    }
    StyledText {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        x: 22
        width: Math.min(implicitWidth, parent.width - x)
        text: root.text
        color: Colors.accent
        verticalAlignment: Text.AlignVCenter
        fontSizeMode: Metrics.largeText ? Text.HorizontalFit : Text.FixedSize
        minimumPixelSize: 17
        // Else what is drawn smaller would stand at the top of its line.
        lineHeightMode: Metrics.largeText ? Text.ProportionalHeight : Text.FixedHeight
        lineHeight: Metrics.largeText ? 1 : Typography.lineHeight(Typography.Body, Typography.textScale)
        elide: Text.ElideRight
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
}
