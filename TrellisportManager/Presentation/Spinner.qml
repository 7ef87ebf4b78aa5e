import QtQuick
import TrellisportManager.Presentation

// An indeterminate progress indicator, 20 across.
SpinnerImage {
    implicitWidth: 20
    implicitHeight: 20

    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("Loading")
}
