import QtQuick
import TrellisportManager.Presentation

// Every text that the screens show. Plain text always: what a server sends is never interpreted.
Text {
    id: root

    property int textStyle: Typography.Body
    // When above 0: the system font at this size, in points, in place of the text style.
    property real systemSize: 0
    // Font.Weight, or 0 for the style's own.
    property int weight: 0
    property bool monospaced: false

    font: systemSize > 0 ? Typography.systemFont(systemSize, weight, monospaced, Typography.textScale)
                         : Typography.font(textStyle, weight, monospaced, Typography.textScale)
    lineHeightMode: Text.FixedHeight
    lineHeight: systemSize > 0 ? Typography.systemLineHeight(systemSize, Typography.textScale)
                               : Typography.lineHeight(textStyle, Typography.textScale)
    color: Colors.white
    textFormat: Text.PlainText
    wrapMode: Text.Wrap

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text.length === 0
}
