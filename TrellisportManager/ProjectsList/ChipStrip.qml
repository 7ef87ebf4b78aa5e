pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectsList

// The filter chips in one line that scrolls sideways.
Flickable {
    id: root

    required property list<filterChipData> chips
    // What keeps the first and the last chip from the strip's ends.
    property real sideInset: Metrics.inset
    signal pressed(int place)

    // A chip that the keyboard reaches is scrolled into view, and a little of its neighbour.
    function reveal(chip: Item): void {
        const left = chip.x + row.x;
        const wanted = Math.max(left + chip.width + 40 - width, Math.min(contentX, left - 40));
        contentX = Math.max(0, Math.min(wanted, contentWidth - width));
    }

    implicitHeight: Math.max(Metrics.touchTarget, row.chipHeight)
    clip: true
    contentWidth: row.width + 2 * sideInset
    contentHeight: height
    flickableDirection: Flickable.HorizontalFlick
    boundsBehavior: contentWidth > width ? Flickable.DragAndOvershootBounds : Flickable.StopAtBounds

    Row {
        id: row

        x: root.sideInset
        height: root.height
        topPadding: (height - chipHeight) / 2
        spacing: Metrics.spacing

        readonly property real chipHeight: 12 + Typography.lineHeight(Typography.Caption, Typography.textScale)

        Repeater {
            model: root.chips.length

            FilterChip {
                id: chip

                required property int index

                objectName: "chip" + index
                label: root.chips[index].label
                isSelected: root.chips[index].isSelected
                onClicked: root.pressed(index)
                onVisualFocusChanged: {
                    if (visualFocus)
                        root.reveal(chip);
                }
            }
        }
    }
}
