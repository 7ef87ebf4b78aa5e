pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectsList

// The projects in their groups, with the search field and the chips above them.
Screen {
    id: root

    required property ProjectsListViewModel viewModel
    signal projectOpened(string id)

    screenModel: viewModel

    NavigationPage {
        id: page

        anchors.fill: parent
        title: qsTr("Projects")
        header: projectsHeader
        scrolledByKeys: false
        refreshable: true
        refreshing: root.viewModel.isRefreshing
        onRefreshRequested: root.viewModel.refresh()

        scrollArea: ListView {
            id: list

            readonly property real columnWidth: Math.min(page.safeWidth, Metrics.readableWidth)
            // The row that had the keyboard last, and the one at which Tab stops: that one as long as
            // it is near, else the first that is seen.
            property int lastRow: 0
            readonly property int firstSeenRow: Math.max(0, indexAt(width / 2, contentY + topMargin))
            readonly property int tabRow: Math.abs(lastRow - firstSeenRow) < 20 ? Math.min(lastRow, count - 1) : firstSeenRow
            readonly property real columnX: Math.round(SafeArea.left + (page.safeWidth - columnWidth) / 2)

            function scrollToTop(): void {
                cancelFlick();
                // Where the list begins is only an estimate until its first rows are there.
                positionViewAtBeginning();
                contentY = originY - topMargin;
            }
            // The keyboard walks through the rows with the arrow keys; Tab leaves the list.
            function moveTo(row: int): void {
                if (row < 0 || row >= count)
                    return;
                positionViewAtIndex(row, ListView.Contain);
                (itemAtIndex(row) as ProjectListRow).takeKeyboard();
            }

            objectName: "projectsList"
            bottomMargin: Metrics.groupSpacing + avoidance.coveredBelow
            reuseItems: true
            highlightFollowsCurrentItem: false
            keyNavigationEnabled: false
            // There is no current row: whenever it changed, it would take the keyboard from the field.
            currentIndex: -1
            model: root.viewModel.rows
            delegate: Component {
                ProjectListRow {
                    id: row

                    required property int index

                    width: list.width
                    columnX: list.columnX
                    columnWidth: list.columnWidth
                    takesTab: index === list.tabRow
                    onActiveFocusChanged: {
                        if (activeFocus)
                            list.lastRow = index;
                    }
                    onOpened: id => root.projectOpened(id)
                    Keys.onUpPressed: list.moveTo(row.index - 1)
                    Keys.onDownPressed: list.moveTo(row.index + 1)
                }
            }

            ProjectsHeader {
                id: projectsHeader

                parent: list.contentItem
                width: list.width
                columnX: list.columnX
                columnWidth: list.columnWidth
                viewModel: root.viewModel
                onSearched: {
                    avoidance.rest();
                    list.scrollToTop();
                }
            }
        }
    }
    KeyboardAvoidance {
        id: avoidance

        scrollArea: list
        coveredAbove: page.barHeight
    }
}
