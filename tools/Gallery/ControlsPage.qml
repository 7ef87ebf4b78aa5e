import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    title: "Controls"

    Specimen {
        caption: "SwitchControl: on, off, pressed"

        Row {
            spacing: 20

            SwitchControl {
                checked: true
                Accessible.name: "on"
            }
            SwitchControl {
                Accessible.name: "off"
            }
            SwitchControl {
                down: true
                Accessible.name: "pressed"
            }
        }
    }
    Specimen {
        caption: "PressableControl: at rest, pressed, with the keyboard (FocusRing)"

        Row {
            spacing: 20

            PressableControl {
                text: "Save"
                contentItem: StyledText {
                    text: "Save"
                }
            }
            PressableControl {
                text: "Save"
                down: true
                contentItem: StyledText {
                    text: "Save"
                }
            }
            Item {
                property bool visualFocus: true

                implicitWidth: ringed.implicitWidth
                implicitHeight: ringed.implicitHeight

                StyledText {
                    id: ringed

                    text: "Save"
                }
                FocusRing {}
            }
        }
    }
    Specimen {
        caption: "SearchField: empty, filled"

        Column {
            width: parent.width
            spacing: 8

            SearchField {
                width: parent.width
                placeholderText: "Search projects"
            }
            SearchField {
                width: parent.width
                placeholderText: "Search projects"
                text: "garden"
            }
        }
    }
    Specimen {
        caption: "MultilineField: empty, three lines, more than fit; TextCursor"

        Column {
            width: parent.width
            spacing: 8

            MultilineField {
                width: parent.width
                placeholder: "Type your answer..."
            }
            MultilineField {
                width: parent.width
                text: "One\nTwo\nThree"
            }
            MultilineField {
                width: parent.width
                text: "1\n2\n3\n4\n5\n6\n7\n8"
            }
            // Seen here without the keyboard that it waits for.
            TextCursor {
                height: 20
                visible: true
            }
        }
    }
    Specimen {
        caption: "Badge: plain, monospaced, shortened; StatusBadge: every status"

        Flow {
            width: parent.width
            spacing: 8

            Badge {
                text: "plain"
                tint: Colors.accent
            }
            Badge {
                text: "TRM-001"
                tint: Colors.gray
                monospaced: true
            }
            Badge {
                width: 60
                text: "longer than there is room for"
                tint: Colors.red
            }
            Repeater {
                model: ["discovered", "questions_sent", "answers_received", "plan_sent", "bid_placed", "awarded", "rejected", "completed", "unknown"]

                StatusBadge {
                    required property string modelData

                    status: modelData
                }
            }
        }
    }
    Specimen {
        caption: "Spinner"

        Spinner {}
    }
}
