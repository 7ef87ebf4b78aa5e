import QtQuick
import TrellisportManager.Presentation

// Says announcements to screen readers: a notification that comes and goes, and is not seen.
Item {
    id: root

    width: 1
    height: 1
    visible: false

    Accessible.role: Accessible.Notification

    Connections {
        function onSaid(text: string): void {
            root.visible = false;
            root.Accessible.name = text;
            root.visible = true;
            rest.restart();
        }

        target: Announcements
    }
    Timer {
        id: rest

        interval: 3000
        onTriggered: root.visible = false
    }
}
