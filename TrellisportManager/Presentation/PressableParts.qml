import QtQuick
import TrellisportManager.Presentation

// What everything that is pressed has besides its look: at least 44 by 44 to the finger, the
// keyboard's ring and the pointer's hand. It goes into the control, which takes it for its
// containment mask.
Item {
    id: root

    required property Item control
    // The ring's distance from the control's edge; below 0 it lies around the control.
    property real ringMargin: -3
    property real ringRadius: 8

    x: Math.min(0, (control.width - width) / 2)
    y: Math.min(0, (control.height - height) / 2)
    width: Math.max(control.width, Metrics.touchTarget)
    height: Math.max(control.height, Metrics.touchTarget)

    FocusRing {
        parent: root.control
        control: root.control
        anchors.margins: root.ringMargin
        radius: root.ringRadius
    }
    // Not in the control itself, which would then take every button of the mouse.
    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
