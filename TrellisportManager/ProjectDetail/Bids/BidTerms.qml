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

    implicitHeight: fits ? amountText.height : amountText.height + (standing.implicitWidth > 0 ? 2 + standing.implicitHeight : 0)

    Item {
        id: terms

        implicitWidth: amountText.implicitWidth + Metrics.spacing + periodText.implicitWidth
        width: parent.width
        height: amountText.height

        StyledText {
            id: amountText

            objectName: "amount"
            width: Math.min(implicitWidth, parent.width)
            text: root.amount
            textStyle: Typography.Subheadline
            weight: Font.Bold
            color: root.amountColor
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
        }
        StyledText {
            id: periodText

            objectName: "period"
            x: amountText.width + Metrics.spacing
            width: Math.max(0, Math.min(implicitWidth, parent.width - x))
            anchors.verticalCenter: amountText.verticalCenter
            text: root.period
            textStyle: Typography.Caption
            color: Colors.gray
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
        }
    }
    Row {
        id: standing

        x: parent.width - width
        y: root.fits ? (amountText.height - height) / 2 : amountText.height + 2
        spacing: Metrics.spacing

        Row {
            visible: root.rating.length > 0
            spacing: 2

            SymbolImage {
                objectName: "star"
                anchors.verticalCenter: parent.verticalCenter
                width: 9
                height: 9
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
