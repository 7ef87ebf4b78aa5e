import QtQuick
import TrellisportManager.Dashboard
import TrellisportManager.Presentation
import TrellisportManager.Shell

// The root: three tabs over one tab bar. All three screens exist from the start; one is shown.
Rectangle {
    id: root

    property ContentViewModel viewModel: ContentViewModel {}
    property alias dashboard: dashboardLoader.sourceComponent

    color: Colors.background

    Item {
        id: screens

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: tabBar.top

        Loader {
            id: dashboardLoader

            anchors.fill: parent
            visible: root.viewModel.selectedTab === 0
            sourceComponent: Component {
                DashboardView {}
            }
        }
        TitleOnlyView {
            anchors.fill: parent
            visible: root.viewModel.selectedTab === 1
            title: qsTr("Projects")
        }
        TitleOnlyView {
            anchors.fill: parent
            visible: root.viewModel.selectedTab === 2
            title: qsTr("Settings")
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
