import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    title: "Bars and pages"

    Specimen {
        caption: "TitleBar: at the root, pushed, under a large title, with a long title"

        TitleBar {
            width: parent.width
            title: "Dashboard"
        }
        TitleBar {
            width: parent.width
            title: "Stock levels"
            backTitle: "Projects"
        }
        TitleBar {
            width: parent.width
            title: "Dashboard"
            headlineOpacity: 0
            separated: false
        }
        TitleBar {
            width: parent.width
            title: "A project whose title is far too long for one line of a bar"
            backTitle: "Projects"
        }
    }
    Specimen {
        caption: "BackLabel"

        BackLabel {
            width: implicitWidth
            height: 44
            text: "Projects"
        }
    }
    Specimen {
        caption: "NavigationPage: with a large title, and reloading (PullToRefresh)"

        Row {
            width: parent.width
            spacing: 8

            NavigationPage {
                width: (parent.width - 8) / 2
                height: 220
                title: "Projects"
                scrollArea: Flickable {
                    contentWidth: width
                    contentHeight: 60

                    Surface {
                        x: 8
                        width: parent.width - 16
                        height: 60
                    }
                }
            }
            NavigationPage {
                width: (parent.width - 8) / 2
                height: 220
                title: "Projects"
                refreshable: true
                refreshing: true
                scrollArea: Flickable {
                    contentWidth: width
                    contentHeight: 60

                    Surface {
                        x: 8
                        width: parent.width - 16
                        height: 60
                    }
                }
            }
        }
    }
}
