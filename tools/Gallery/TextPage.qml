import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    id: page

    readonly property LinkController links: LinkController {}

    title: "Texts"

    Repeater {
        model: [
            {
                "name": "LargeTitle",
                "style": Typography.LargeTitle
            },
            {
                "name": "Title",
                "style": Typography.Title
            },
            {
                "name": "Title2",
                "style": Typography.Title2
            },
            {
                "name": "Title3",
                "style": Typography.Title3
            },
            {
                "name": "Headline",
                "style": Typography.Headline
            },
            {
                "name": "Body",
                "style": Typography.Body
            },
            {
                "name": "Callout",
                "style": Typography.Callout
            },
            {
                "name": "Subheadline",
                "style": Typography.Subheadline
            },
            {
                "name": "Footnote",
                "style": Typography.Footnote
            },
            {
                "name": "Caption",
                "style": Typography.Caption
            },
            {
                "name": "Caption2",
                "style": Typography.Caption2
            }
        ]

        StyledText {
            required property var modelData

            text: modelData.name
            textStyle: modelData.style
        }
    }
    Specimen {
        caption: "StyledText: monospaced; the system's font at 10; markup shown as it was sent"

        StyledText {
            text: "monospaced 0O 1lI"
            textStyle: Typography.Callout
            monospaced: true
        }
        StyledText {
            text: "ten points"
            systemSize: 10
        }
        StyledText {
            text: "<b>not bold</b> &amp; no picture"
        }
    }
    Specimen {
        caption: "LineText: shortened"

        LineText {
            width: 200
            text: "A line that is longer than its place"
        }
    }
    Specimen {
        caption: "PieceText with CopyGesture: press long, or click with the other button"

        Item {
            width: parent.width
            height: copied.height

            PieceText {
                id: copied

                part: 0
                text: "A text to be copied"
            }
            CopyGesture {
                area: copied.parent
            }
        }
    }
    Specimen {
        caption: "LinkText"

        LinkText {
            text: "agent.example"
            url: "https://agent.example"
            links: page.links
        }
    }
    Specimen {
        caption: "LargeTitle"

        LargeTitle {
            width: parent.width
            title: "Projects"
        }
    }
    Specimen {
        caption: "CardTitle"

        CardTitle {
            text: "Delivery Plan"
        }
    }
    Specimen {
        caption: "SectionHeader"

        SectionHeader {
            width: parent.width
            text: "BID PLACED"
        }
    }
    Specimen {
        caption: "EmptyText"

        EmptyText {
            width: parent.width
            topInset: 0
            text: "No messages yet"
        }
    }
}
