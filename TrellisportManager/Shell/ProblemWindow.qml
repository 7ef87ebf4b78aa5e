import QtQuick
import QtQuick.Templates as T
import TrellisportManager.Presentation

// In place of the console when it can't know its service.
Window {
    id: root

    required property string problem
    required property bool hasFrame

    width: 390
    height: 300
    minimumWidth: 320
    minimumHeight: 96
    flags: hasFrame ? Qt.Window : Qt.Window | Qt.FramelessWindowHint
    title: "TrellisportManager"
    color: Colors.background
    visible: true

    Item {
        anchors.fill: parent
        anchors.topMargin: SafeArea.top
        anchors.bottomMargin: SafeArea.bottom
        anchors.leftMargin: SafeArea.left
        anchors.rightMargin: SafeArea.right
        focus: true
        Keys.forwardTo: [keys]

        Flickable {
            id: area

            objectName: "problemScroll"
            anchors.fill: parent
            contentWidth: width
            contentHeight: Math.max(height, text.height + 2 * Metrics.inset)
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: keys.takesTab
            T.ScrollBar.vertical: ScrollMark {
                objectName: "scrollMark"
            }

            StyledText {
                id: text

                objectName: "problem"
                x: Math.round((area.width - width) / 2)
                y: Math.round((area.contentHeight - height) / 2)
                width: Math.min(area.width - 2 * Metrics.inset, Metrics.readableWidth)
                horizontalAlignment: Text.AlignHCenter
                text: root.problem
                Accessible.role: Accessible.AlertMessage
            }
        }
        ScrollKeys {
            id: keys

            anchors.fill: parent
            scrollArea: area
        }
    }
}
