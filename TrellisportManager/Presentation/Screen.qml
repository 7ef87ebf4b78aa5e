import QtQuick
import TrellisportManager.Presentation

// The frame of a screen or tab that loads something: its model loads each time it comes into view
// and stops when it goes.
Item {
    id: root

    required property ScreenModel screenModel
    // What somebody is told who can't see what the screen has come to show.
    property string announcement

    function followVisibility(): void {
        if (root.visible)
            root.screenModel.appear();
        else
            root.screenModel.disappear();
    }

    onAnnouncementChanged: {
        if (root.visible)
            Announcements.say(root.announcement);
    }
    onVisibleChanged: followVisibility()
    Component.onCompleted: followVisibility()
    Component.onDestruction: screenModel?.disappear()
}
