import QtQuick
import TrellisportManager.Presentation

// A project's development log, every entry whole.
ListScreen {
    required property ListScreenModel viewModel

    model: viewModel
    emptyText: qsTr("No development logs yet")
    list.Accessible.name: qsTr("Logs")
    delegate: LogRow {}
}
