import QtQuick
import TrellisportManager.Presentation

// A bid's amount and time, and at the trailing edge how the bidder is rated.
Item {
    id: root

    required property string amount
    required property color amountColor
    required property string period
    required property string rating
    required property string reviews

    // What does not fit beside each other stands below each other.
    readonly property bool fits: terms.implicitWidth + Metrics.spacing + standing.implicitWidth <= width

    // The time stands below an amount of larger text that leaves it no room.
    readonly property bool termsFit: !Metrics.largeText || terms.implicitWidth <= width

    implicitHeight: fits ? terms.height : terms.height + (standing.implicitWidth > 0 ? 2 + standing.implicitHeight : 0)

    Item {
        id: terms

        implicitWidth: amountText.implicitWidth + Metrics.spacing + periodText.implicitWidth
        width: parent.width
        height: root.termsFit ? amountText.height : periodText.y + periodText.height

        LineText {
            id: amountText

            objectName: "amount"
            width: Math.min(implicitWidth, parent.width)
            text: root.amount
            textStyle: Typography.Subheadline
            weight: Font.Bold
            color: root.amountColor
        }
        LineText {
            id: periodText

            objectName: "period"
            x: root.termsFit ? amountText.width + Metrics.spacing : 0
            y: root.termsFit ? Metrics.centered(amountText.height, height) : amountText.height + 2
            width: Math.max(0, Math.min(implicitWidth, parent.width - x))
            text: root.period
            textStyle: Typography.Caption
            color: Colors.gray
        }
    }
    Row {
        id: standing

        x: parent.width - width
        y: root.fits ? (amountText.height - height) / 2 : terms.height + 2
        spacing: Metrics.spacing

        Row {
            visible: root.rating.length > 0
            spacing: 2

            SymbolImage {
                objectName: "star"
                anchors.verticalCenter: parent.verticalCenter
                width: Metrics.symbolSize(9)
                height: width
                symbol: "star.fill"
                color: Colors.yellow
            }
            StyledText {
                objectName: "rating"
                text: root.rating
                textStyle: Typography.Caption2
                color: Colors.gray
            }
        }
        StyledText {
            objectName: "reviews"
            visible: root.reviews.length > 0
            text: root.reviews
            textStyle: Typography.Caption2
            color: Colors.gray
        }
    }
}
