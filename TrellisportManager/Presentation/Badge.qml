import QtQuick
import TrellisportManager.Presentation

// A short text on a faint, rounded ground of its own colour. It is as wide as its text; made
// narrower, it shortens the text.
Rectangle {
    id: root

    required property string text
    required property color tint
    property real fontSize: 10
    property int weight: Font.Medium
    property bool monospaced: false
    property real horizontalInset: 6
    property real verticalInset: 2
    property real groundOpacity: 0.2

    implicitWidth: label.implicitWidth + 2 * horizontalInset
    implicitHeight: label.implicitHeight + 2 * verticalInset
    radius: 4
    color: Colors.faded(tint, groundOpacity)

    StyledText {
        id: label

        objectName: "badgeLabel"
        x: root.horizontalInset
        y: root.verticalInset
        width: Math.max(0, Math.min(implicitWidth, root.width - 2 * root.horizontalInset))
        text: root.text
        systemSize: root.fontSize
        weight: root.weight
        monospaced: root.monospaced
        color: root.tint
        wrapMode: Text.NoWrap
        maximumLineCount: 1
        elide: Text.ElideRight
    }
}
