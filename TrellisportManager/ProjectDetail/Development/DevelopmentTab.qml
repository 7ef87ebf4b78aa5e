import QtQuick
import TrellisportManager.Presentation

// A project's history as a line of events.
ListScreen {
    required property ListScreenModel viewModel

    model: viewModel
    emptyText: qsTr("No development activity yet")
    list.Accessible.name: qsTr("Development")
    delegate: TimelineRow {}
}
