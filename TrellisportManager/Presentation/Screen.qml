import QtQuick
import TrellisportManager.Presentation

// The frame of a screen or tab that loads something: its model loads each time it comes into view
// and stops when it goes.
Item {
    id: root

    required property ScreenModel screenModel

    function followVisibility(): void {
        if (root.visible)
            root.screenModel.appear();
        else
            root.screenModel.disappear();
    }

    onVisibleChanged: followVisibility()
    Component.onCompleted: followVisibility()
    Component.onDestruction: screenModel?.disappear()
}
