import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectsList

// What a row tells of its project: the reference number and the title, and below them the stage,
// the bid, the client and the marketplace's number.
Item {
    id: root

    required property projectRowData project

    implicitHeight: facts.y + facts.height + 4

    Item {
        id: head

        // Larger text that does not fit beside the tag on one line has the whole width below it.
        readonly property bool stacked: Metrics.largeText && tag.visible && tag.implicitWidth + 6 + Typography.lineWidth(title.text, title.font) > width

        readonly property real lineHeight: Math.max(tag.visible ? tag.height : 0, title.height)

        y: 4
        width: parent.width
        height: stacked ? tag.height + 4 + title.height : lineHeight

        Badge {
            id: tag

            objectName: "refTag"
            visible: root.project.hasRefNumber
            y: head.stacked ? 0 : Metrics.centered(head.lineHeight, height)
            width: Math.min(implicitWidth, head.width / 2)
            text: root.project.refNumber
            tint: Colors.accent
            fontSize: 11
            weight: Font.DemiBold
            monospaced: true
            horizontalInset: 5
            groundOpacity: 0.15
        }
        StyledText {
            id: title

            objectName: "projectTitle"
            x: tag.visible && !head.stacked ? tag.width + 6 : 0
            y: head.stacked ? tag.height + 4 : Metrics.centered(head.lineHeight, height)
            width: parent.width - x
            text: root.project.title
            textStyle: Typography.Subheadline
            weight: Font.Medium
            elide: Text.ElideRight
            maximumLineCount: 2
        }
    }
    Item {
        id: facts

        // Larger text that does not fit on one line stands on two, or on more.
        readonly property bool stacked: Metrics.largeText && badge.width + amountWidth + ownerWidth + numberWidth + 3 * Metrics.spacing > width
        // Larger text wraps, and how it does must not decide how much room it gets.
        readonly property real amountWidth: Metrics.largeText ? Typography.lineWidth(amount.text, amount.font) : amount.implicitWidth
        readonly property real ownerWidth: Metrics.largeText ? Typography.lineWidth(owner.text, owner.font) : owner.implicitWidth
        readonly property real numberWidth: Metrics.largeText ? Typography.lineWidth(number.text, number.font) : number.implicitWidth
        readonly property real room: stacked ? width : number.x - Metrics.spacing
        readonly property bool amountBeside: !stacked || badge.width + Metrics.spacing + amountWidth <= width
        readonly property bool numberBeside: ownerWidth + Metrics.spacing + numberWidth <= width
        readonly property real firstBottom: Math.max(badge.height, amount.visible ? amount.y + amount.height : 0)
        readonly property real ownerBottom: owner.visible ? owner.y + owner.height : firstBottom

        readonly property real lineHeight: Math.max(badge.height, number.height)

        y: head.y + head.height + 6
        width: parent.width
        height: stacked ? number.y + number.height : lineHeight

        StatusBadge {
            id: badge

            objectName: "statusBadge"
            y: facts.stacked ? 0 : Metrics.centered(facts.lineHeight, height)
            status: root.project.status
        }
        LineText {
            id: amount

            objectName: "amount"
            visible: text.length > 0
            x: facts.amountBeside ? badge.width + Metrics.spacing : 0
            y: facts.stacked ? (facts.amountBeside ? Metrics.centered(badge.height, height) : badge.height + 4) : Metrics.centered(facts.lineHeight, height)
            width: Math.max(0, Math.min(facts.amountWidth, facts.room - x))
            text: root.project.amount
            textStyle: Typography.Caption
            color: Colors.gray
        }
        LineText {
            id: owner

            objectName: "owner"
            visible: text.length > 0
            x: facts.stacked ? 0 : amount.visible ? amount.x + amount.width + Metrics.spacing : amount.x
            y: facts.stacked ? facts.firstBottom + 4 : Metrics.centered(facts.lineHeight, height)
            width: Math.max(0, Math.min(facts.ownerWidth, facts.room - x))
            text: root.project.owner
            textStyle: Typography.Caption
            color: Colors.gray
        }
        LineText {
            id: number

            objectName: "marketplaceNumber"
            x: facts.stacked && !facts.numberBeside ? 0 : parent.width - width
            y: {
                if (!facts.stacked)
                    return Metrics.centered(facts.lineHeight, height);
                if (facts.numberBeside && owner.visible)
                    return owner.y + Metrics.centered(owner.height, height);
                return facts.ownerBottom + 4;
            }
            width: Math.min(facts.numberWidth, facts.stacked ? parent.width : parent.width - badge.width - Metrics.spacing)
            text: root.project.marketplaceNumber
            textStyle: Typography.Caption2
            color: Colors.dimText
        }
    }
}
