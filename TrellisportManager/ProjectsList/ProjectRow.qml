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

        y: 4
        width: parent.width
        height: Math.max(tag.visible ? tag.height : 0, title.height)

        Badge {
            id: tag

            objectName: "refTag"
            visible: root.project.hasRefNumber
            anchors.verticalCenter: parent.verticalCenter
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
            x: tag.visible ? tag.width + 6 : 0
            width: parent.width - x
            anchors.verticalCenter: parent.verticalCenter
            text: root.project.title
            textStyle: Typography.Subheadline
            weight: Font.Medium
            elide: Text.ElideRight
            maximumLineCount: 2
        }
    }
    Item {
        id: facts

        readonly property real room: number.x - Metrics.spacing

        y: head.y + head.height + 6
        width: parent.width
        height: Math.max(badge.height, number.height)

        StatusBadge {
            id: badge

            objectName: "statusBadge"
            anchors.verticalCenter: parent.verticalCenter
            status: root.project.status
        }
        StyledText {
            id: amount

            objectName: "amount"
            visible: text.length > 0
            x: badge.width + Metrics.spacing
            width: Math.max(0, Math.min(implicitWidth, facts.room - x))
            anchors.verticalCenter: parent.verticalCenter
            text: root.project.amount
            textStyle: Typography.Caption
            color: Colors.gray
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            maximumLineCount: 1
        }
        StyledText {
            objectName: "owner"
            visible: text.length > 0
            x: amount.visible ? amount.x + amount.width + Metrics.spacing : amount.x
            width: Math.max(0, Math.min(implicitWidth, facts.room - x))
            anchors.verticalCenter: parent.verticalCenter
            text: root.project.owner
            textStyle: Typography.Caption
            color: Colors.gray
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            maximumLineCount: 1
        }
        StyledText {
            id: number

            objectName: "marketplaceNumber"
            anchors.right: parent.right
            width: Math.min(implicitWidth, parent.width - badge.width - Metrics.spacing)
            anchors.verticalCenter: parent.verticalCenter
            text: root.project.marketplaceNumber
            textStyle: Typography.Caption2
            color: Colors.dimText
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            maximumLineCount: 1
        }
    }
}
