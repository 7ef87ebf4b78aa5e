import QtQuick
import TrellisportManager.Presentation

// A rounded group of a few rows under an optional header.
Column {
    id: root

    property string header
    default property alias rows: rowColumn.data

    Accessible.role: Accessible.Grouping
    Accessible.name: root.header

    SectionHeader {
        width: root.width
        visible: root.header.length > 0
        text: root.header
    }
    Column {
        id: rowColumn

        width: root.width
    }
}
