import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectsList

// One place of the projects list: a project's row, under its group's header when it is the first
// of the group.
FocusScope {
    id: root

    required property projectRowData project
    required property bool first
    required property bool last
    required property string header
    required property color headerColor
    // The readable column, in the list.
    required property real columnX
    required property real columnWidth
    // Whether Tab stops here: it does at one row of the list, and the arrow keys lead to the others.
    property bool takesTab: false
    signal opened(string id)
    // A finger rests at a place in the row, or the other button was pressed there.
    signal held(point place)

    // Takes the keyboard, and shows that it has it.
    function takeKeyboard(): void {
        row.forceActiveFocus();
        row.focusReason = Qt.TabFocusReason;
    }

    Accessible.role: Accessible.ListItem

    height: row.y + row.height
    // A row that waits to be used again is kept from the eye by the list, but not from a screen
    // reader.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true

    StyledText {
        id: headerText

        objectName: "groupHeader"
        visible: root.first
        x: row.x + Metrics.inset
        y: Metrics.groupSpacing - 8
        width: row.width - 2 * Metrics.inset
        text: root.header
        textStyle: Typography.Caption
        weight: Font.Bold
        color: root.headerColor
        Accessible.role: Accessible.Heading
    }
    PressableRow {
        id: row

        objectName: "projectRow"
        x: root.columnX + Metrics.inset
        y: root.first ? headerText.y + headerText.height + 6 : 0
        width: root.columnWidth - 2 * Metrics.inset
        first: root.first
        last: root.last
        focus: true
        focusPolicy: root.takesTab || activeFocus ? Qt.TabFocus : Qt.NoFocus
        disclosure: true
        Accessible.name: root.project.title
        // What stands below the title, in the same order.
        Accessible.description: {
            const project = root.project;
            return [project.refNumber, StatusStyle.label(project.status), project.amount, project.owner, project.marketplaceNumber].filter(fact => fact.length > 0).join(", ");
        }
        onPressAndHold: root.held(row.mapToItem(root, row.pressX, row.pressY))
        onClicked: {
            // What comes back from the project's page comes back to this row.
            row.forceActiveFocus(Qt.MouseFocusReason);
            root.opened(root.project.id);
        }

        contentItem: ProjectRow {
            project: root.project
        }

        Item {
            anchors.fill: parent

            TapHandler {
                acceptedButtons: Qt.RightButton
                // A tap of a finger counts as one of any button.
                acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
                gesturePolicy: TapHandler.ReleaseWithinBounds
                onTapped: eventPoint => root.held(row.mapToItem(root, eventPoint.position))
            }
        }
    }
}
