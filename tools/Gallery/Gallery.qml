import QtQuick
import TrellisportManager.Presentation

// All pages, one below the other, to be scrolled through and tried.
Window {
    id: root

    width: 390
    height: 844
    visible: true
    title: "Gallery"
    color: Colors.background

    Flickable {
        anchors.fill: parent
        contentWidth: width
        contentHeight: pages.height

        Column {
            id: pages

            width: root.width

            ColorsPage {
                width: root.width
            }
            TextPage {
                width: root.width
            }
            ControlsPage {
                width: root.width
            }
            KeyboardPage {
                width: root.width
            }
            RowsPage {
                width: root.width
            }
            CardsPage {
                width: root.width
            }
            BarsPage {
                width: root.width
            }
        }
    }
}
