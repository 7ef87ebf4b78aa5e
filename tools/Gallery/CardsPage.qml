import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    title: "Cards"

    Specimen {
        caption: "CardView"

        CardView {
            width: parent.width
            title: "Description"
            content: Component {
                StyledText {
                    text: "Two tills and a web shop sell from one store room and should agree on what is left."
                    textStyle: Typography.Caption
                }
            }
        }
    }
    Specimen {
        caption: "CardGround: whole, and in three pieces"

        CardGround {
            width: parent.width
            height: 32
        }
        Item {
            width: 1
            height: 8
        }
        CardGround {
            width: parent.width
            height: 24
            last: false
        }
        CardGround {
            width: parent.width
            height: 24
            first: false
            last: false
        }
        CardGround {
            width: parent.width
            height: 24
            first: false
        }
    }
    Specimen {
        caption: "CardRow: titled, plain, in two pieces"

        CardRow {
            width: parent.width
            index: 0
            first: true
            last: true
            titled: true
            title: "Titled"
            contentHeight: 15

            StyledText {
                width: parent.width
                text: "A card with a title."
                textStyle: Typography.Caption
            }
        }
        CardRow {
            width: parent.width
            index: 1
            first: true
            last: true
            contentHeight: 15

            StyledText {
                width: parent.width
                text: "A card without one."
                textStyle: Typography.Caption
            }
        }
        CardRow {
            width: parent.width
            index: 2
            first: true
            last: false
            contentHeight: 15

            StyledText {
                width: parent.width
                text: "The first piece of a long card,"
                textStyle: Typography.Caption
            }
        }
        CardRow {
            width: parent.width
            index: 3
            first: false
            last: true
            contentHeight: 15

            StyledText {
                width: parent.width
                text: "and its last."
                textStyle: Typography.Caption
            }
        }
    }
}
