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
        caption: "CardList with CardRow: titled, plain, in two pieces; ScrollMark"

        CardList {
            width: parent.width
            height: 300
            model: ListModel {
                ListElement {
                    first: true
                    last: true
                    heading: "Titled"
                    body: "A card with a title."
                }
                ListElement {
                    first: true
                    last: true
                    heading: ""
                    body: "A card without one."
                }
                ListElement {
                    first: true
                    last: false
                    heading: ""
                    body: "The first piece of a long card,"
                }
                ListElement {
                    first: false
                    last: true
                    heading: ""
                    body: "and its last."
                }
            }
            delegate: CardRow {
                id: row

                required property string heading
                required property string body

                titled: heading.length > 0
                title: heading
                contentHeight: words.height

                StyledText {
                    id: words

                    width: parent.width
                    text: row.body
                    textStyle: Typography.Caption
                }
            }
        }
    }
}
