import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// An on and off switch, 51 by 31.
T.Switch {
    id: control

    property color tint: Colors.accent

    implicitWidth: 51
    implicitHeight: 31
    padding: 0
    focusPolicy: Qt.TabFocus
    opacity: down ? 0.5 : 1
    containmentMask: parts
    Keys.onReturnPressed: control.flip()
    Keys.onEnterPressed: control.flip()
    // The toolkit's own handling changes the state and tells nobody.
    Accessible.onToggleAction: control.flip()
    Accessible.onPressAction: control.flip()

    function flip(): void {
        control.toggle();
        control.toggled();
    }

    indicator: Rectangle {
        objectName: "track"
        width: 51
        height: 31
        radius: height / 2
        color: control.checked ? control.tint : Colors.fieldFill

        Rectangle {
            objectName: "thumb"
            x: 2 + control.visualPosition * 20
            y: 2
            width: 27
            height: 27
            radius: height / 2
            color: Colors.white

            Behavior on x {
                enabled: !control.pressed
                NumberAnimation { duration: 150; easing.type: Easing.OutCubic }
            }
        }
        Behavior on color {
            ColorAnimation { duration: 150 }
        }
    }
    PressableParts {
        id: parts

        control: control
        ringRadius: 19
    }
}
