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

            readonly property real cellWidth: (width - 2 * columnSpacing) / 3

            width: parent.width
            columns: 3
            columnSpacing: Metrics.spacing
            rowSpacing: 12

            Repeater {
                model: 6

                StatCard {
                    required property int index

                    objectName: "statCard" + index
                    width: grid.cellWidth
                    value: root.statCards[index].value
                    label: root.statCards[index].label
                    valueColor: root.statCards[index].color
                }
            }
        }
        Row {
            id: money

            readonly property real cellWidth: (width - spacing) / 2

            width: parent.width
            spacing: 12

            Repeater {
                model: 2

                RevenueCard {
                    required property int index

                    objectName: "revenueCard" + index
                    width: money.cellWidth
                    title: root.revenueCards[index].title
                    amount: root.revenueCards[index].amount
                    amountColor: root.revenueCards[index].color
                }
            }
        }
    }
}
