import QtQuick
import TrellisportManager.Presentation

// What the agent and a project's client have written to each other.
ListScreen {
    required property ListScreenModel viewModel

    model: viewModel
    emptyText: qsTr("No messages yet")
    list.Accessible.name: qsTr("Chat")
    delegate: MessageRow {}
}
