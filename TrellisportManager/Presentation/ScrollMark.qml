import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// The thin mark at the edge that tells how far a scroll area has been scrolled, while it moves.
T.ScrollIndicator {
    id: control

    implicitWidth: 9
    implicitHeight: 9
    padding: 3
    minimumSize: 0.05
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 3
        implicitHeight: 3
        radius: 1.5
        color: Colors.secondaryText
        opacity: control.active ? 1 : 0

        Behavior on opacity {
            NumberAnimation { duration: 250 }
        }
    }
}
