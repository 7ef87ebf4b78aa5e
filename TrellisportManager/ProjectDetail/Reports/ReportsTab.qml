import QtQuick
import TrellisportManager.Presentation

// The agent's daily reports on a project.
ListScreen {
    required property ListScreenModel viewModel

    model: viewModel
    emptyText: qsTr("No daily reports yet")
    list.Accessible.name: qsTr("Reports")
    delegate: ReportRow {}
}
