import QtQuick
import TrellisportManager.Dashboard
import TrellisportManager.Presentation
import TrellisportManager.Shell

// The root: three tabs over one tab bar. All three exist from the start; one is shown.
Rectangle {
    id: root

    required property ContentViewModel viewModel
    property Component dashboard: Component {
        DashboardView {
            viewModel: DashboardViewModel {}
        }
    }
    property Component projects: Component {
        ProjectsTab {}
    }
    property Component settings: Component {
        SettingsTab {}
    }

    // The keyboard of a phone on its side leaves room for what is typed in and nothing else.
    readonly property bool isLow: height < Metrics.lowHeight

    color: Colors.background

    Item {
        id: screens

        width: parent.width
        height: parent.height - (root.isLow ? SafeArea.bottom : tabBar.height)

        Loader {
            anchors.fill: parent
            visible: root.viewModel.selectedTab === 0
            sourceComponent: root.dashboard
        }
        Loader {
            anchors.fill: parent
            visible: root.viewModel.selectedTab === 1
            sourceComponent: root.projects
        }
        Loader {
            anchors.fill: parent
            visible: root.viewModel.selectedTab === 2
            sourceComponent: root.settings
        }
    }
    RootTabBar {
        id: tabBar

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        visible: !root.isLow
        selectedTab: root.viewModel.selectedTab
        onSelected: tab => root.viewModel.selectedTab = tab
    }
    // What was typed in on another tab must not get what is typed now, nor keep a phone's keyboard up.
    Timer {
        id: leaving

        interval: 0
        onTriggered: {
            if (root.Window.activeFocusItem?.visible === false)
                root.forceActiveFocus();
        }
    }
    Connections {
        function onSelectedTabChanged(): void {
            leaving.restart();
        }

        target: root.viewModel
    }
    Announcer {}
    Shortcut {
        sequence: "Ctrl+1"
        onActivated: root.viewModel.selectedTab = 0
    }
    Shortcut {
        sequence: "Ctrl+2"
        onActivated: root.viewModel.selectedTab = 1
    }
    Shortcut {
        sequence: "Ctrl+3"
        onActivated: root.viewModel.selectedTab = 2
    }
}
