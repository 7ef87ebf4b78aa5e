import QtQuick
import TrellisportManager.Presentation

// A competitor's bid: who, on what terms, and how the proposal begins.
CardRow {
    id: root

    required property string username
    required property string displayName
    required property string country
    required property string amount
    required property color amountColor
    required property string period
    required property string rating
    required property string reviews
    required property string description

    radius: 10
    contentHeight: descriptionText.visible ? descriptionText.y + descriptionText.height : terms.y + terms.height

    BidIdentity {
        id: identity

        width: parent.width
        username: root.username
        displayName: root.displayName
        country: root.country
    }
    BidTerms {
        id: terms

        y: identity.height + 6
        width: parent.width
        amount: root.amount
        amountColor: root.amountColor
        period: root.period
        rating: root.rating
        reviews: root.reviews
    }
    StyledText {
        id: descriptionText

        objectName: "description"
        y: terms.y + terms.height + 6
        width: parent.width
        visible: root.description.length > 0
        text: root.description
        textStyle: Typography.Caption2
        color: Colors.mutedText
        maximumLineCount: 4
        elide: Text.ElideRight
    }
}
