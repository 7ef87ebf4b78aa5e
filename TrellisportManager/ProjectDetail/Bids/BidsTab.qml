pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// The own bid, and what the competitors have bid.
ListScreen {
    id: root

    required property projectRecord project
    required property BidsViewModel viewModel

    model: viewModel
    emptyText: ""
    list.Accessible.name: qsTr("Bids")
    delegate: BidRow {}
    lead: BidsHeader {
        list: root.list
        viewModel: root.viewModel
    }

    Binding {
        target: root.viewModel
        property: "project"
        value: root.project
        restoreMode: Binding.RestoreNone
    }
}
