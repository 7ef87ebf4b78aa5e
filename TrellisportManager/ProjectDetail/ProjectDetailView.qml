pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// One project's workspace: what is known at a glance, a strip of tabs, and the tab that is
// selected.
Screen {
    id: root

    required property string projectId
    property string backTitle
    required property ProjectDetailViewModel viewModel
    property LinkController links: LinkController {}
    signal backRequested

    // The keyboard of a phone on its side leaves room for what is typed in and nothing else.
    readonly property bool isLow: Window.height < Metrics.lowHeight

    objectName: "workspace"
    screenModel: viewModel
    announcement: {
        switch (root.viewModel.content) {
        case ProjectDetailViewModel.Workspace:
            return qsTr("%1 shown").arg(root.viewModel.title);
        case ProjectDetailViewModel.Spinner:
            return "";
        default:
            return qsTr("The project could not be loaded");
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Colors.background
    }
    TitleBar {
        id: bar

        width: parent.width
        height: root.isLow ? 0 : implicitHeight
        visible: !root.isLow
        title: root.viewModel.title
        backTitle: root.backTitle
        separated: false
        onBackRequested: root.backRequested()
    }
    Spinner {
        objectName: "spinner"
        anchors.horizontalCenter: parent.horizontalCenter
        y: bar.height + (parent.height - bar.height - height) / 2
        visible: root.viewModel.content === ProjectDetailViewModel.Spinner
    }
    ItemHolder {
        anchors.top: bar.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        component: root.viewModel.content === ProjectDetailViewModel.Workspace ? content : null
    }

    Component {
        id: content

        WorkspaceContent {
            viewModel: root.viewModel
            links: root.links
            showsHeader: !root.isLow
        }
    }
}
