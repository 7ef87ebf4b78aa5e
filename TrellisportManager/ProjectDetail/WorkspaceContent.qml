pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// A loaded workspace below its title bar.
Item {
    id: root

    required property ProjectDetailViewModel viewModel
    required property LinkController links
    // Whether there is room for what stands above the tab.
    property bool showsHeader: true

    readonly property real columnWidth: Math.min(width - SafeArea.left - SafeArea.right, Metrics.readableWidth)
    readonly property real columnX: Math.round(SafeArea.left + (width - SafeArea.left - SafeArea.right - columnWidth) / 2)

    WorkspaceHeader {
        id: header

        objectName: "header"
        x: root.columnX
        width: root.columnWidth
        height: root.showsHeader ? implicitHeight : 0
        visible: root.showsHeader
        viewModel: root.viewModel
        links: root.links
    }
    WorkspaceTabStrip {
        id: strip

        objectName: "tabStrip"
        y: header.height
        width: parent.width
        height: root.showsHeader ? implicitHeight : 0
        visible: root.showsHeader
        sideInset: root.columnX + Metrics.inset
        viewModel: root.viewModel
    }
    Rectangle {
        id: divider

        objectName: "divider"
        y: strip.y + strip.height
        width: parent.width
        height: root.showsHeader ? 1 : 0
        color: Colors.hairline
    }
    ItemHolder {
        objectName: "tab"
        anchors.top: divider.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        component: {
            switch (root.viewModel.selectedTab) {
            case ProjectDetailViewModel.Overview:
                return overview;
            case ProjectDetailViewModel.Questions:
                return questions;
            case ProjectDetailViewModel.Chat:
                return chat;
            case ProjectDetailViewModel.Bids:
                return bids;
            case ProjectDetailViewModel.Development:
                return development;
            case ProjectDetailViewModel.Logs:
                return logs;
            case ProjectDetailViewModel.Decisions:
                return decisions;
            case ProjectDetailViewModel.Reports:
                return reports;
            default:
                return null;
            }
        }
    }

    Component {
        id: overview

        OverviewTab {
            project: root.viewModel.project
        }
    }
    Component {
        id: questions

        QuestionsTab {
            project: root.viewModel.project
        }
    }
    Component {
        id: chat

        ChatTab {
            id: chatTab

            viewModel: root.viewModel.newChat(chatTab)
        }
    }
    Component {
        id: bids

        BidsTab {
            id: bidsTab

            project: root.viewModel.project
            viewModel: root.viewModel.newBids(bidsTab)
        }
    }
    Component {
        id: development

        DevelopmentTab {
            id: developmentTab

            viewModel: root.viewModel.newDevelopment(developmentTab)
        }
    }
    Component {
        id: logs

        LogsTab {
            id: logsTab

            viewModel: root.viewModel.newLogs(logsTab)
        }
    }
    Component {
        id: decisions

        DecisionsTab {
            id: decisionsTab

            viewModel: root.viewModel.newDecisions(decisionsTab)
        }
    }
    Component {
        id: reports

        ReportsTab {
            id: reportsTab

            viewModel: root.viewModel.newReports(reportsTab)
        }
    }
}
