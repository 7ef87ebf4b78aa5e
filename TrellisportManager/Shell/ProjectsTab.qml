import QtQuick
import TrellisportManager.ProjectsList
import TrellisportManager.Shell

// The list's model follows notifications from the start, seen or not.
LaterScreen {
    id: root

    readonly property ProjectsListViewModel viewModel: ProjectsListViewModel {}

    screen: Qt.resolvedUrl("ProjectsScreen.qml")
    properties: ({
            viewModel: root.viewModel
        })
}
