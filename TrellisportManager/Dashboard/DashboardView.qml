import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.Dashboard

Screen {
    id: root

    required property DashboardViewModel viewModel

    screenModel: viewModel

    NavigationPage {
        id: page

        anchors.fill: parent
        title: qsTr("Dashboard")
        refreshable: true
        refreshing: root.viewModel.isRefreshing
        onRefreshRequested: root.viewModel.refresh()

        scrollArea: Flickable {
            objectName: "dashboardScroll"
            contentWidth: width
            contentHeight: content.height

            Item {
                id: content

                readonly property real columnWidth: Math.min(width - SafeArea.left - SafeArea.right, Metrics.readableWidth)

                width: parent.width
                height: body.height

                Loader {
                    id: body

                    x: SafeArea.left + (parent.width - SafeArea.left - SafeArea.right - width) / 2
                    width: content.columnWidth
                    sourceComponent: {
                        switch (root.viewModel.content) {
                        case DashboardViewModel.Spinner:
                            return spinner;
                        case DashboardViewModel.Error:
                            return failure;
                        case DashboardViewModel.Cards:
                            return cards;
                        default:
                            return null;
                        }
                    }
                }
            }
        }
    }

    Component {
        id: spinner

        Item {
            implicitHeight: 200

            Spinner {
                objectName: "spinner"
                anchors.centerIn: parent
            }
        }
    }
    Component {
        id: failure

        Item {
            implicitHeight: message.implicitHeight + 2 * Metrics.inset

            StyledText {
                id: message

                objectName: "error"
                anchors.horizontalCenter: parent.horizontalCenter
                y: Metrics.inset
                width: Math.min(implicitWidth, parent.width - 2 * Metrics.inset)
                text: root.viewModel.error
                color: Colors.red
                Accessible.role: Accessible.AlertMessage
            }
        }
    }
    Component {
        id: cards

        DashboardCardsView {
            statCards: root.viewModel.statCards
            revenueCards: root.viewModel.revenueCards
        }
    }
}
