import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// The base of everything that is pressed: dimmed while it is, at least 44 by 44 to the finger
// whatever it draws, reached by Tab, pressed by Space, Return or a screen reader.
T.AbstractButton {
    id: control

    // The distance of the keyboard's ring from the edge; below 0 it lies around the control.
    property real focusRingMargin: -3

    implicitWidth: Math.max(implicitBackgroundWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight, implicitContentHeight + topPadding + bottomPadding)
    focusPolicy: Qt.TabFocus
    opacity: down ? 0.5 : 1
    containmentMask: parts

    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()
    // The toolkit announces Press and then does nothing with it before Qt 6.5; Toggle would change
    // what is checked and tell nobody.
    Accessible.onPressAction: control.pressByReader()
    Accessible.onToggleAction: control.pressByReader()

    function pressByReader(): void {
        if (control.enabled)
            control.clicked();
    }

    PressableParts {
        id: parts

        control: control
        ringMargin: control.focusRingMargin
    }
}
