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
    announcement: {
        if (root.viewModel.isLoading)
            return "";
        return list.count > 0 ? qsTr("Projects shown") : qsTr("No projects to show");
    }

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
                avoidance.rest();
                cancelFlick();
                // Where the list begins is only an estimate until its first rows are there.
                positionViewAtBeginning();
                contentY = originY - topMargin;
            }
            // The keyboard walks through the rows with the arrow keys; Tab leaves the list.
            function moveTo(row: int): void {
                if (row < 0 || row >= count)
                    return;
                avoidance.rest();
                positionViewAtIndex(row, ListView.Contain);
                (itemAtIndex(row) as ProjectListRow).takeKeyboard();
            }

            // By as many rows as are seen at once, but one.
            function moveByPage(row: int, direction: int): void {
                const seen = (height - page.barHeight) / Math.max(1, itemAtIndex(row)?.height ?? 1);
                moveTo(Math.max(0, Math.min(count - 1, row + direction * Math.max(1, Math.floor(seen) - 1))));
            }

            objectName: "projectsList"
            bottomMargin: Metrics.groupSpacing + avoidance.coveredBelow
            reuseItems: true
            highlightFollowsCurrentItem: false
            keyNavigationEnabled: false
            // There is no current row: whenever it changed, it would take the keyboard from the field.
            currentIndex: -1
            Accessible.role: Accessible.List
            Accessible.name: page.title
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
                    Keys.onPressed: event => {
                        event.accepted = true;
                        if (event.key === Qt.Key_PageUp)
                            list.moveByPage(row.index, -1);
                        else if (event.key === Qt.Key_PageDown)
                            list.moveByPage(row.index, 1);
                        else if (event.key === Qt.Key_Home)
                            list.moveTo(0);
                        else if (event.key === Qt.Key_End)
                            list.moveTo(list.count - 1);
                        else if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier))
                            page.copying.offerText(row.project.title, row.mapToItem(null, row.width / 2, row.height / 2));
                        else if (event.matches(StandardKey.Copy))
                            Clipboard.copy(row.project.title);
                        else
                            event.accepted = false;
                    }
                    onHeld: place => page.copying.offer(row, place)
                }
            }

            ProjectsHeader {
                id: projectsHeader

                parent: list.contentItem
                width: list.width
                columnX: list.columnX
                columnWidth: list.columnWidth
                viewModel: root.viewModel
                onSearched: list.scrollToTop()
            }
        }
    }
    Shortcut {
        sequence: "Ctrl+F"
        enabled: root.visible
        onActivated: {
            list.scrollToTop();
            projectsHeader.takeKeyboard();
        }
    }
    KeyboardAvoidance {
        id: avoidance

        scrollArea: list
        coveredAbove: page.barHeight
    }
}
