import QtQuick
import TrellisportManager.Presentation

// The one row of a list that has not been loaded yet.
ListRow {
    objectName: "spinnerRow"
    first: true
    last: true
    groundColor: Colors.background

    contentItem: Item {
        implicitHeight: 22

        Spinner {
            objectName: "spinner"
            anchors.centerIn: parent
        }
    }
}
