import QtQuick
import TrellisportManager.Presentation

// The agent's own bid, highlighted.
Surface {
    id: root

    required property string amount
    required property string period

    // Larger text may have no room for both beside each other.
    readonly property bool stacked: Metrics.largeText && amountText.implicitWidth + Metrics.spacing + periodText.implicitWidth > width - 2 * Metrics.inset

    objectName: "ownBid"
    implicitHeight: (stacked ? periodText.y + periodText.height : amountText.y + amountText.height) + Metrics.inset
    color: Colors.faded(Colors.agentSurface, 0.3)
    radius: 12
    outlineColor: Colors.faded(Colors.accent, 0.5)

    StyledText {
        id: labelText

        objectName: "ownLabel"
        x: Metrics.inset
        y: Metrics.inset
        width: parent.width - 2 * Metrics.inset
        text: qsTr("OUR BID")
        textStyle: Typography.Caption2
        weight: Font.Bold
        color: Colors.accent
    }
    StyledText {
        id: amountText

        objectName: "ownAmount"
        x: Metrics.inset
        y: labelText.y + labelText.height + Metrics.spacing
        width: root.stacked ? parent.width - 2 * Metrics.inset : periodText.x - Metrics.spacing - x
        text: root.amount
        textStyle: Typography.Title2
        weight: Font.Bold
        color: Colors.accent
    }
    StyledText {
        id: periodText

        objectName: "ownPeriod"
        x: root.stacked ? Metrics.inset : parent.width - Metrics.inset - width
        y: root.stacked ? amountText.y + amountText.height + 2 : amountText.y + (amountText.height - height) / 2
        width: Math.min(implicitWidth, root.stacked ? parent.width - 2 * Metrics.inset : parent.width / 2)
        horizontalAlignment: Text.AlignRight
        text: root.period
        textStyle: Typography.Caption
        color: Colors.gray
    }
}
