import QtQuick
import QtQuick.Templates as T
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
        caption: "CardGround"

        CardGround {
            width: parent.width
            height: 32
        }
    }
    Specimen {
        caption: "CardGround in three pieces"

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
        caption: "CardRow in a CardList: titled, plain, in two pieces"

        CardList {
            id: cards

            width: parent.width
            height: contentHeight
            topMargin: 0
            bottomMargin: 0
            interactive: false
            model: [
                {
                    "first": true,
                    "last": true,
                    "heading": "Titled",
                    "words": "A card with a title."
                },
                {
                    "first": true,
                    "last": true,
                    "heading": "",
                    "words": "A card without one."
                },
                {
                    "first": true,
                    "last": false,
                    "heading": "",
                    "words": "The first piece of a long card,"
                },
                {
                    "first": false,
                    "last": true,
                    "heading": "",
                    "words": "and its last."
                }
            ]
            delegate: CardRow {
                id: row

                required property var modelData

                first: modelData.first
                last: modelData.last
                titled: modelData.heading.length > 0
                title: modelData.heading
                contentHeight: text.height

                StyledText {
                    id: text

                    width: parent.width
                    text: row.modelData.words
                    textStyle: Typography.Caption
                }
            }
        }
    }
    Specimen {
        caption: "CopyKeys: the frame around the card whose text is offered"

        Item {
            width: parent.width
            height: 48

            CardGround {
                anchors.fill: parent
            }
            CopyKeys {
                width: parent.width
                height: parent.height
                // Seen here without the menu that it goes with.
                visible: true
                cards: ListView {}
                copying: CopyGesture {
                    area: Item {}
                }
            }
        }
    }
    Specimen {
        caption: "CopyMenu"

        Item {
            id: menuPlace

            width: 80
            height: Metrics.touchTarget

            CopyMenu {
                visible: true
                focus: false
                margins: -1
                closePolicy: T.Popup.NoAutoClose
                text: "A text to be copied"
                onOpened: contentItem.focus = false
            }
        }
    }
}
