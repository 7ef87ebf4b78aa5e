import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    title: "Bars and pages"

    Specimen {
        caption: "TitleBar: at the root, pushed, while a large title goes under it, with a long title"

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
            headlineOpacity: 0.5
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
    Specimen {
        caption: "PullToRefresh: half pulled, reloading"

        Row {
            width: parent.width
            spacing: 8

            Item {
                width: (parent.width - 8) / 2
                height: 100

                Flickable {
                    id: pulled

                    anchors.fill: parent
                    contentWidth: width
                    contentHeight: height
                    clip: true
                    // As a finger would hold it.
                    Component.onCompleted: contentY = -Metrics.refreshThreshold / 2

                    Surface {
                        width: parent.width
                        height: 100
                    }
                }
                PullToRefresh {
                    flickable: pulled
                    contentTop: 0
                }
            }
            Item {
                width: (parent.width - 8) / 2
                height: 100

                Flickable {
                    id: reloading

                    anchors.fill: parent
                    contentWidth: width
                    contentHeight: height
                    topMargin: Metrics.refreshRestHeight
                    contentY: -topMargin
                    clip: true

                    Surface {
                        width: parent.width
                        height: 100
                    }
                }
                PullToRefresh {
                    flickable: reloading
                    contentTop: 0
                    refreshing: true
                }
            }
        }
    }
    Specimen {
        caption: "ScrollMark: while it is scrolled, dragged by a pointer"

        Row {
            spacing: 40

            ScrollMark {
                height: 80
                orientation: Qt.Vertical
                size: 0.4
                position: 0.3
                active: true
            }
            ScrollMark {
                height: 80
                orientation: Qt.Vertical
                size: 0.4
                position: 0.3
                pressed: true
            }
        }
    }
}
