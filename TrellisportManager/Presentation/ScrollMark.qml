import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// The thin mark at the edge that tells how far a scroll area has been scrolled, while it moves. Under
// a pointer it is wider and can be dragged; a finger never meets it.
T.ScrollBar {
    id: control

    implicitWidth: 12
    implicitHeight: 12
    topPadding: 3
    bottomPadding: 3
    rightPadding: 3
    leftPadding: interactive ? 3 : 6
    minimumSize: 0.05
    visible: size < 1
    hoverEnabled: true
    interactive: hovered || pressed
    Accessible.ignored: true

    contentItem: Rectangle {
        objectName: "scrollThumb"
        radius: width / 2
        color: Colors.secondaryText
        opacity: control.active || control.interactive ? 1 : 0

        Behavior on opacity {
            NumberAnimation { duration: 250 }
        }
    }
}
