pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// The buttons of a workspace's tabs, side by side in a scroller.
Item {
    id: root

    required property ProjectDetailViewModel viewModel
    // Where the first button stands.
    property real sideInset: Metrics.inset

    implicitHeight: row.height + 4

    // As far as needed for the button to be seen whole, with the inset beside it.
    function reveal(button: Item): void {
        if (!button || scroll.width <= 0)
            return;
        const end = Math.max(0, scroll.contentWidth - scroll.width);
        const least = button.x + button.width + 2 * root.sideInset - scroll.width;
        scroll.contentX = Math.max(0, Math.min(end, Math.max(least, Math.min(scroll.contentX, button.x))));
    }
    function revealSelected(): void {
        root.reveal(buttons.itemAt(root.viewModel.selectedTab));
    }

    Flickable {
        id: scroll

        objectName: "stripScroll"
        width: parent.width
        height: row.height
        contentWidth: row.width + 2 * root.sideInset
        flickableDirection: Flickable.HorizontalFlick
        // What fits has nothing to be scrolled for.
        interactive: contentWidth > width
        onWidthChanged: root.revealSelected()
        onContentWidthChanged: root.revealSelected()

        Row {
            id: row

            x: root.sideInset

            Accessible.role: Accessible.PageTabList
            Accessible.name: qsTr("Workspace")

            Repeater {
                id: buttons

                model: root.viewModel.tabs

                WorkspaceTabButton {
                    required property int index
                    required property string modelData
                    text: modelData
                    checked: root.viewModel.selectedTab === index
                    onClicked: root.viewModel.selectedTab = index
                    onActiveFocusChanged: {
                        if (activeFocus)
                            root.reveal(this);
                    }
                }
            }
        }
    }
    Connections {
        function onSelectedTabChanged(): void {
            root.revealSelected();
        }

        target: root.viewModel
    }
}
