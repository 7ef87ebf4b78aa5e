import QtQuick
import TrellisportManager.Presentation

// The agent's own bid, highlighted.
Surface {
    id: root

    required property string amount
    required property string period

    objectName: "ownBid"
    implicitHeight: amountText.y + amountText.height + Metrics.inset
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
        width: periodText.x - Metrics.spacing - x
        text: root.amount
        textStyle: Typography.Title2
        weight: Font.Bold
        color: Colors.accent
    }
    StyledText {
        id: periodText

        objectName: "ownPeriod"
        x: parent.width - Metrics.inset - width
        y: amountText.y + (amountText.height - height) / 2
        width: Math.min(implicitWidth, parent.width / 2)
        horizontalAlignment: Text.AlignRight
        text: root.period
        textStyle: Typography.Caption
        color: Colors.gray
    }
}
