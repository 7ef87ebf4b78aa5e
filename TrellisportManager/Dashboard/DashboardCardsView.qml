pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.Dashboard

// The six statistic tiles in three columns, and the two money tiles below them.
Item {
    id: root

    required property list<statCardData> statCards
    required property list<revenueCardData> revenueCards

    implicitHeight: stack.height + 2 * Metrics.inset

    Column {
        id: stack

        x: Metrics.inset
        y: Metrics.inset
        width: parent.width - 2 * Metrics.inset
        spacing: 16

        Grid {
            id: grid

            readonly property real pitch: (width + columnSpacing) / columns
            readonly property real widestLabel: {
                let widest = 0;
                for (let i = 0; i < tiles.count; ++i)
                    widest = Math.max(widest, (tiles.itemAt(i) as StatCard)?.labelWidth ?? 0);
                return widest;
            }

            // Whole points, so that every edge is sharp and the last one ends with the grid.
            function cellWidth(column: int): real {
                return Math.round((column + 1) * pitch) - Math.round(column * pitch) - columnSpacing;
            }

            width: parent.width
            // Larger text may have room for fewer.
            columns: !Metrics.largeText ? 3 : Math.max(1, Math.min(3, Math.floor((width + columnSpacing) / (widestLabel + 13 + columnSpacing))))
            columnSpacing: Metrics.spacing
            rowSpacing: 12

            Repeater {
                id: tiles

                model: root.statCards.length

                StatCard {
                    required property int index

                    objectName: "statCard" + index
                    width: grid.cellWidth(index % grid.columns)
                    value: root.statCards[index].value
                    label: root.statCards[index].label
                    valueColor: root.statCards[index].color
                }
            }
        }
        Grid {
            id: money

            readonly property real pitch: (width + columnSpacing) / columns
            readonly property real widestTitle: {
                let widest = 0;
                for (let i = 0; i < moneyTiles.count; ++i)
                    widest = Math.max(widest, (moneyTiles.itemAt(i) as RevenueCard)?.titleWidth ?? 0);
                return widest;
            }

            function cellWidth(column: int): real {
                return Math.round((column + 1) * pitch) - Math.round(column * pitch) - columnSpacing;
            }

            width: parent.width
            columns: Metrics.largeText && (width - columnSpacing) / 2 - 12 < widestTitle ? 1 : 2
            columnSpacing: 12
            rowSpacing: 12

            Repeater {
                id: moneyTiles

                model: root.revenueCards.length

                RevenueCard {
                    required property int index

                    objectName: "revenueCard" + index
                    width: money.cellWidth(index % money.columns)
                    title: root.revenueCards[index].title
                    amount: root.revenueCards[index].amount
                    amountColor: root.revenueCards[index].color
                }
            }
        }
    }
}
