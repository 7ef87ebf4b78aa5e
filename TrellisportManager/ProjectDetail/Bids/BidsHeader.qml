pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// What stands above the competing bids: the own bid, and their heading or the sentence that there
// are none.
Item {
    id: root

    required property CardList list
    required property BidsViewModel viewModel

    readonly property bool hasOwnBid: viewModel.ownBid !== BidsViewModel.None
    readonly property bool hasOthers: viewModel.otherCount > 0
    readonly property real othersTop: hasOwnBid ? ownBid.height + 12 : 0

    width: list.width
    // The competitors' first row is one more part of the stack, 12 below.
    implicitHeight: hasOthers ? heading.y + heading.height + 12 : none.y + none.height

    ItemHolder {
        id: ownBid

        x: root.list.cardX
        width: root.list.cardWidth
        component: {
            switch (root.viewModel.ownBid) {
            case BidsViewModel.Highlighted:
                return highlighted;
            case BidsViewModel.FromProject:
                return fromProject;
            default:
                return null;
            }
        }
    }
    StyledText {
        id: heading

        objectName: "heading"
        x: root.list.cardX
        y: root.othersTop + 4
        width: root.list.cardWidth
        visible: root.hasOthers
        text: qsTr("COMPETING BIDS (%1)").arg(root.viewModel.otherCount)
        textStyle: Typography.Caption2
        weight: Font.Bold
        color: Colors.gray
        Accessible.role: Accessible.Heading
    }
    StyledText {
        id: none

        objectName: "emptyText"
        x: root.list.cardX
        y: root.othersTop + 20
        width: root.list.cardWidth
        visible: !root.hasOthers
        text: qsTr("No competing bids yet")
        color: Colors.gray
    }

    Component {
        id: highlighted

        OwnBidCard {
            amount: root.viewModel.ownAmount
            period: root.viewModel.ownPeriod
        }
    }
    Component {
        id: fromProject

        CardView {
            objectName: "ownBid"
            title: qsTr("Our Bid")
            content: StyledText {
                objectName: "ownAmount"
                text: root.viewModel.ownAmount
                textStyle: Typography.Title2
                weight: Font.Bold
                color: Colors.accent
            }
        }
    }
}
