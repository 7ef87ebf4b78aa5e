import QtQuick
import TrellisportManager.Dashboard
import TrellisportManager.Presentation

Screen {
    id: root

    required property DashboardViewModel viewModel

    screenModel: viewModel
    announcement: {
        switch (root.viewModel.content) {
        case DashboardViewModel.Cards:
            return qsTr("Dashboard shown");
        case DashboardViewModel.Error:
            return root.viewModel.error;
        default:
            return "";
        }
    }

    NavigationPage {
        anchors.fill: parent
        title: qsTr("Dashboard")
        refreshable: true
        refreshing: root.viewModel.isRefreshing
        onRefreshRequested: root.viewModel.refresh()

        scrollArea: Flickable {
            objectName: "dashboardScroll"
            contentWidth: width
            contentHeight: column.height

            // Of the three, one is seen.
            Column {
                id: column

                x: Math.round(SafeArea.left + (parent.width - SafeArea.left - SafeArea.right - width) / 2)
                width: Math.min(parent.width - SafeArea.left - SafeArea.right, Metrics.readableWidth)

                Item {
                    visible: root.viewModel.content === DashboardViewModel.Spinner
                    width: parent.width
                    height: 200

                    Spinner {
                        objectName: "spinner"
                        anchors.centerIn: parent
                    }
                }
                Item {
                    visible: root.viewModel.content === DashboardViewModel.Error
                    width: parent.width
                    height: message.height + 2 * Metrics.inset

                    StyledText {
                        id: message

                        objectName: "error"
                        anchors.centerIn: parent
                        width: Math.min(implicitWidth, parent.width - 2 * Metrics.inset)
                        text: root.viewModel.error
                        color: Colors.red
                        Accessible.role: Accessible.AlertMessage
                    }
                }
                DashboardCardsView {
                    visible: root.viewModel.content === DashboardViewModel.Cards
                    width: parent.width
                    statCards: root.viewModel.statCards
                    revenueCards: root.viewModel.revenueCards
                }
            }
        }
    }
}
