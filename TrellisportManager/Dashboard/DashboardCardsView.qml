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

            readonly property real pitch: (width + columnSpacing) / 3

            // Whole points, so that every edge is sharp and the last one ends with the grid.
            function cellWidth(column: int): real {
                return Math.round((column + 1) * pitch) - Math.round(column * pitch) - columnSpacing;
            }

            width: parent.width
            columns: 3
            columnSpacing: Metrics.spacing
            rowSpacing: 12

            Repeater {
                model: root.statCards.length

                StatCard {
                    required property int index

                    objectName: "statCard" + index
                    width: grid.cellWidth(index % 3)
                    value: root.statCards[index].value
                    label: root.statCards[index].label
                    valueColor: root.statCards[index].color
                }
            }
        }
        Row {
            id: money

            readonly property real pitch: (width + spacing) / 2

            function cellWidth(column: int): real {
                return Math.round((column + 1) * pitch) - Math.round(column * pitch) - spacing;
            }

            width: parent.width
            spacing: 12

            Repeater {
                model: root.revenueCards.length

                RevenueCard {
                    required property int index

                    objectName: "revenueCard" + index
                    width: money.cellWidth(index)
                    title: root.revenueCards[index].title
                    amount: root.revenueCards[index].amount
                    amountColor: root.revenueCards[index].color
                }
            }
        }
    }
}
