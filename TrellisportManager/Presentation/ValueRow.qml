import QtQuick
import TrellisportManager.Presentation

// A row that names a thing and tells its value.
LabeledRow {
    id: root

    property string value

    StyledText {
        objectName: "rowValue"
        width: Math.min(implicitWidth, root.trailingRoom)
        text: root.value
        color: Colors.gray
        maximumLineCount: 1
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
    }
}
