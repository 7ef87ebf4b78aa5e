pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Dashboard
import TrellisportManager.Presentation
import TrellisportManager.Shell

// The root: three tabs over one tab bar. All three screens exist from the start; one is shown.
Rectangle {
    id: root

    property ContentViewModel viewModel: ContentViewModel {}
    property Component dashboard: Component {
        DashboardView {
            viewModel: DashboardViewModel {}
        }
    }
    property Component projects: Component {
        TitleOnlyView {
            title: qsTr("Projects")
        }
    }
    property Component settings: Component {
        TitleOnlyView {
            title: qsTr("Settings")
        }
    }

    color: Colors.background

    Repeater {
        model: [root.dashboard, root.projects, root.settings]

        Loader {
            required property int index
            required property Component modelData

            width: root.width
            height: root.height - tabBar.height
            visible: root.viewModel.selectedTab === index
            sourceComponent: modelData
        }
    }
    RootTabBar {
        id: tabBar

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        selectedTab: root.viewModel.selectedTab
        onSelected: tab => root.viewModel.selectedTab = tab
    }
}
