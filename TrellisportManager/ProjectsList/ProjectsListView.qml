import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectsList

// The second root tab: the projects list, and over it the workspace of the project that was opened.
Item {
    id: root

    required property ProjectsListViewModel viewModel
    // Makes a project's workspace. It has the properties projectId and backTitle and the signal
    // backRequested.
    required property Component workspace

    function open(id: string): void {
        stack.push(root.workspace, {
            projectId: id,
            backTitle: qsTr("Projects")
        });
    }

    objectName: "projectsView"

    NavigationStack {
        id: stack

        objectName: "projectsStack"
        anchors.fill: parent
        rootPage: ProjectsPage {
            anchors.fill: parent
            viewModel: root.viewModel
            onProjectOpened: id => root.open(id)
        }
    }
}
