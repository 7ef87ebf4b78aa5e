pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// What is known of a project at a glance, and the way to its repository.
Item {
    id: root

    required property ProjectDetailViewModel viewModel
    required property LinkController links

    readonly property projectHeader header: viewModel.header
    readonly property real lineHeight: Math.max(badge.implicitHeight, amount.implicitHeight, header.hasReference ? reference.implicitHeight : 0)

    implicitHeight: number.y + number.height + Metrics.spacing

    // One line where there is room for it. What there is no room for goes to a second one.
    Flow {
        id: facts

        objectName: "facts"
        x: Metrics.inset
        width: parent.width - 2 * Metrics.inset - (link.item ? link.width + Metrics.spacing : 0)
        spacing: Metrics.spacing

        component Fact: Item {
            default property Item content

            children: [content]
        }

        Fact {
            visible: root.header.hasReference
            width: reference.width
            height: root.lineHeight

            Badge {
                id: reference

                objectName: "reference"
                anchors.verticalCenter: parent?.verticalCenter
                width: Math.min(implicitWidth, facts.width)
                text: root.header.reference
                tint: Colors.accent
                fontSize: 13
                weight: Font.Bold
                monospaced: true
                verticalInset: 3
                groundOpacity: 0.15
            }
        }
        Fact {
            width: badge.width
            height: root.lineHeight

            StatusBadge {
                id: badge

                objectName: "status"
                anchors.verticalCenter: parent?.verticalCenter
                width: Math.min(implicitWidth, facts.width)
                status: root.header.status
            }
        }
        Fact {
            visible: root.header.bidAmount.length > 0
            width: amount.width
            height: root.lineHeight

            StyledText {
                id: amount

                objectName: "bidAmount"
                anchors.verticalCenter: parent?.verticalCenter
                width: Math.min(implicitWidth, facts.width)
                text: root.header.bidAmount
                textStyle: Typography.Caption
                color: Colors.gray
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
            }
        }
    }
    ItemHolder {
        id: link

        x: parent.width - Metrics.inset - width
        y: (root.lineHeight - height) / 2
        component: root.header.hasRepository ? repositoryLink : null
    }
    StyledText {
        id: number

        objectName: "marketplaceNumber"
        x: Metrics.inset
        y: facts.height + 4
        width: parent.width - 2 * Metrics.inset
        text: root.header.marketplaceNumber
        textStyle: Typography.Caption2
        color: Colors.dimText
    }

    CopyGesture {
        area: root
    }
    Component {
        id: repositoryLink

        LinkText {
            objectName: "repositoryLink"
            text: qsTr("GitHub")
            url: root.viewModel.repositoryAddress
            links: root.links
        }
    }
}
