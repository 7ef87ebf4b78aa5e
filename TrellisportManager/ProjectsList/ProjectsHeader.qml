import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectsList

// What stands above the groups and scrolls with them: the search field, and below it the chips or,
// until the first load has ended, the spinner.
Item {
    id: root

    required property ProjectsListViewModel viewModel
    required property real columnX
    required property real columnWidth
    // The owner changed the search text.
    signal searched

    // Puts the keyboard into the search field, ready for another search.
    function takeKeyboard(): void {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    height: chips.y + chips.height

    SearchField {
        id: search

        objectName: "searchField"
        x: root.columnX + Metrics.inset
        y: 4
        width: root.columnWidth - 2 * Metrics.inset
        placeholderText: qsTr("Search projects")
        text: root.viewModel.searchText
        onTextEdited: {
            root.viewModel.searchText = text;
            root.searched();
        }
        onCleared: {
            root.viewModel.searchText = "";
            root.searched();
        }
    }
    SpinnerRow {
        visible: root.viewModel.isLoading
        x: search.x
        y: chips.y
        width: search.width
    }
    ChipStrip {
        id: chips

        objectName: "chipStrip"
        visible: !root.viewModel.isLoading
        x: root.columnX
        y: search.y + search.height + 8
        width: root.columnWidth
        chips: root.viewModel.chips
        onPressed: place => root.viewModel.pressChip(place)
    }
}
