import QtQuick
import TrellisportManager.Presentation

// Shows which control has the keyboard. Fill the control with it.
Rectangle {
    property Item control: parent

    anchors.fill: parent
    anchors.margins: -3
    z: 1
    visible: control?.visualFocus ?? false
    color: "transparent"
    radius: 8
    border.width: 2
    border.color: Colors.white
}
