import QtQuick
import TrellisportManager.Presentation

// A row that names a thing and tells its value.
LabeledRow {
    id: root

    property string value

    trailingWidth: valueText.implicitWidth

    LineText {
        id: valueText

        objectName: "rowValue"
        width: Math.min(implicitWidth, root.trailingRoom)
        text: root.value
        color: Colors.gray
    }
}
